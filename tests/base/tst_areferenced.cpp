// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/areferenced.h"
#include "tests/support/assert_log.h"
#include "tests/support/two_threads.h"

#include <QTest>

namespace {

struct Noted : AReferenced
{
    explicit Noted(int *count)
        : gone(count)
    {
    }
    ~Noted() override { ++*gone; }
    int *gone;
};

/// Goes back to a pool instead of being deleted.
struct Pooled : AReferenced
{
    int returned = 0;

protected:
    void full_release() override { ++returned; }
};

} // namespace

class TestAReferenced : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void deletes_itself_with_the_last_reference()
    {
        int gone = 0;
        auto *object = new Noted(&gone);
        QCOMPARE(object->reference_count(), 0u);
        QVERIFY(object->add_reference() && object->add_reference());
        QCOMPARE(object->reference_count(), 2u);
        object->release_reference();
        QCOMPARE(gone, 0);
        object->release_reference();
        QCOMPARE(gone, 1);
    }

    void full_release_may_keep_the_object()
    {
        Pooled object;
        object.add_reference();
        object.release_reference();
        QCOMPARE(object.returned, 1);
        object.add_reference();
        object.release_reference();
        QCOMPARE(object.returned, 2);
    }

    void a_release_too_many_is_an_assertion()
    {
        AssertLog log;
        Pooled object;
        object.release_reference();
        QCOMPARE(object.returned, 0);
        QCOMPARE(object.reference_count(), 0u);
        QCOMPARE(log.take(), QStringList{QStringLiteral("count != 0")});
    }

    void two_threads_count_exactly()
    {
        int gone = 0;
        for (int round = 0; round < 200; ++round) {
            auto *object = new Noted(&gone);
            object->add_reference();
            object->add_reference();
            in_two_threads([object](int) {
                for (int i = 0; i < 50; ++i) {
                    object->add_reference();
                    object->release_reference();
                }
                object->release_reference();
            });
        }
        QCOMPARE(gone, 200);
    }
};

QTEST_GUILESS_MAIN(TestAReferenced)
#include "tst_areferenced.moc"
