// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/base/athreaded_object.h"
#include "tests/support/assert_log.h"
#include "tests/support/patience.h"

#include <QPointer>
#include <QTest>
#include <atomic>

namespace {

class Worker : public AThreadedObject
{
public:
    std::atomic<int> inits{0};
    std::atomic<QThread *> ran_on{nullptr};

    void threaded_init() override
    {
        ran_on = QThread::currentThread();
        ++inits;
    }
};

} // namespace

class TestAThreadedObject : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lives_on_a_thread_of_its_own_that_is_not_started();
    void start_runs_threaded_init_first_and_there();
    void start_inherits_the_priority();
    void moved_to_another_kind_of_thread_is_an_assertion();
    void delete_later_ends_the_thread();
    void unstarted_object_leaves_nothing();
    void base_class_can_be_started();
    void thread_ends_with_its_object();
    void thread_that_never_ran_can_be_deleted();
};

void TestAThreadedObject::lives_on_a_thread_of_its_own_that_is_not_started()
{
    Worker worker;
    AThread *thread = worker.thread();
    QVERIFY(thread);
    QVERIFY(thread != QThread::currentThread());
    QVERIFY(thread->parent() == nullptr);
    QVERIFY(!thread->isRunning());
    QCOMPARE(worker.inits.load(), 0);
}

void TestAThreadedObject::start_runs_threaded_init_first_and_there()
{
    auto *worker = new Worker;
    AThread *thread = worker->thread();
    // Posted before the start, and yet behind the initialisation.
    std::atomic<int> inits_before_call{-1};
    QMetaObject::invokeMethod(
        worker, [&, worker] { inits_before_call = worker->inits.load(); }, Qt::QueuedConnection);
    worker->start_thread();
    QTRY_COMPARE(inits_before_call.load(), 1);
    QVERIFY(worker->ran_on.load() == thread);
    worker->deleteLater();
    QPointer<AThread> const left(thread);
    QTRY_VERIFY(!left);
}

void TestAThreadedObject::start_inherits_the_priority()
{
    auto *worker = new Worker;
    QPointer<AThread> const thread(worker->thread());
    worker->start_thread();
    QTRY_COMPARE(worker->inits.load(), 1);
    QCOMPARE(thread->priority(), QThread::InheritPriority);
    worker->deleteLater();
    QTRY_VERIFY(!thread);
}

void TestAThreadedObject::moved_to_another_kind_of_thread_is_an_assertion()
{
    AssertLog log;
    auto *worker = new Worker;
    QPointer<AThread> const own(worker->thread());
    QThread *const here = QThread::currentThread();
    std::atomic<bool> moved{false};
    QMetaObject::invokeMethod(worker, [&, worker] {
        worker->moveToThread(here);
        moved = true;
    });
    worker->start_thread();
    QTRY_VERIFY(moved);
    QVERIFY(worker->thread() == nullptr);
    QCOMPARE(log.take(), QStringList{QStringLiteral("t != nullptr")});
    delete worker;
    QTRY_VERIFY(!own);
    QVERIFY(log.take().isEmpty());
}

void TestAThreadedObject::delete_later_ends_the_thread()
{
    auto *worker = new Worker;
    QPointer<AThread> const thread(worker->thread());
    std::atomic<int> finished{0};
    connect(
        thread, &QThread::finished, this, [&] { ++finished; }, Qt::DirectConnection);
    worker->start_thread();
    QTRY_COMPARE(worker->inits.load(), 1);
    worker->deleteLater();
    QTRY_VERIFY(!thread);
    QCOMPARE(finished.load(), 1);
}

void TestAThreadedObject::unstarted_object_leaves_nothing()
{
    QPointer<AThread> thread;
    {
        Worker worker;
        thread = worker.thread();
    }
    QTRY_VERIFY(!thread);
}

void TestAThreadedObject::base_class_can_be_started()
{
    auto *object = new AThreadedObject;
    QPointer<AThread> const thread(object->thread());
    bool started = false;
    connect(thread, &QThread::started, this, [&] { started = true; });
    object->start_thread();
    QTRY_VERIFY(started);
    object->deleteLater();
    QTRY_VERIFY(!thread);
}

void TestAThreadedObject::thread_ends_with_its_object()
{
    std::atomic<bool> finished{false};
    {
        AThread thread;
        connect(
            &thread, &QThread::finished, &thread, [&] { finished = true; }, Qt::DirectConnection);
        thread.start();
        QTRY_VERIFY(thread.isRunning());
    }
    QVERIFY(finished);
}

void TestAThreadedObject::thread_that_never_ran_can_be_deleted()
{
    QObject parent;
    AThread *thread = new AThread(&parent);
    QVERIFY(!thread->isRunning());
}

QTEST_GUILESS_MAIN(TestAThreadedObject)
#include "tst_athreaded_object.moc"
