// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint_worker.h"
#include "tests/glint/report_text.h"
#include "tests/support/patience.h"

#include <QSemaphore>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

/// A worker that decodes a report when it is allowed to.
class HeldWorker : public GlintWorker
{
public:
    HeldWorker() { start_thread(); }
    ~HeldWorker() override
    {
        allowed.release(100);
        end_thread();
    }

    QSemaphore begun;
    QSemaphore allowed;
    QSemaphore published;

protected:
    bool decode(unsigned long long, XMLTree const &, AString *) override
    {
        begun.release();
        allowed.acquire();
        return true;
    }
    void publish() override { published.release(); }
};

} // namespace

class TestGlintWorker : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void work_waits_until_its_result_is_there();
};

void TestGlintWorker::work_waits_until_its_result_is_there()
{
    auto const worker = std::make_unique<HeldWorker>();
    QSignalSpy wakes(worker.get(), &GlintWorker::work_available);
    XMLTree const report = ReportText::parsed(ReportText::ltc(1));
    worker->add_work(1, report);
    QVERIFY(worker->begun.tryAcquire(1, patience_ms));
    // The worker has taken it, and is not through with it.
    QCOMPARE(worker->work_waiting(), 1U);
    worker->add_work(1, report);
    worker->add_work(1, report);
    QCOMPARE(worker->work_waiting(), 3U);
    // Awake as it is, it is not woken for them.
    QCOMPARE(wakes.count(), 1);
    worker->allowed.release(3);
    QVERIFY(worker->published.tryAcquire(1, patience_ms));
    QCOMPARE(worker->work_waiting(), 0U);
}

QTEST_GUILESS_MAIN(TestGlintWorker)
#include "tst_glint_worker.moc"
