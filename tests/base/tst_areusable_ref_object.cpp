// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/aprotect.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/areusable_ref_object.h"
#include "tests/support/assert_log.h"

#include <QSignalSpy>
#include <QTest>
#include <thread>
#include <utility>
#include <vector>

class TestAReusableRefObject : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void begins_without_references();
    void last_release_tells_the_owner_and_deletes_nothing();
    void can_be_revived_between_signal_and_deletion();
    void release_without_a_reference_is_an_assertion();
    void each_end_of_all_references_is_told_once();
    void released_under_the_lookups_lock_none_is_told_of_after_its_end();
};

void TestAReusableRefObject::begins_without_references()
{
    QObject parent;
    AReusableRefObject const object(&parent);
    QVERIFY(object.releasable());
    QVERIFY(object.parent() == &parent);
}

void TestAReusableRefObject::last_release_tells_the_owner_and_deletes_nothing()
{
    AReusableRefObject object;
    QSignalSpy told(&object, &AReusableRefObject::zero_references);
    QVERIFY(object.add_reference());
    QVERIFY(object.add_reference());
    object.release_reference();
    QCOMPARE(told.count(), 0);
    QVERIFY(!object.releasable());
    object.release_reference();
    QCOMPARE(told.count(), 1);
    QVERIFY(told.at(0).at(0).value<AReusableRefObject *>() == &object);
    QVERIFY(object.releasable());
}

void TestAReusableRefObject::can_be_revived_between_signal_and_deletion()
{
    auto *object = new AReusableRefObject;
    bool deleted = false;
    connect(object, &QObject::destroyed, this, [&] { deleted = true; });
    // The owner deletes when its event loop comes to it, and looks again first.
    connect(
        object, &AReusableRefObject::zero_references, this,
        [](AReusableRefObject *idle) {
            if (idle->releasable())
                delete idle;
        },
        Qt::QueuedConnection);
    object->add_reference();
    object->release_reference();
    object->add_reference();
    QCoreApplication::sendPostedEvents();
    QVERIFY(!deleted);
    object->release_reference();
    QCoreApplication::sendPostedEvents();
    QVERIFY(deleted);
}

void TestAReusableRefObject::release_without_a_reference_is_an_assertion()
{
    AssertLog log;
    AReusableRefObject object;
    QSignalSpy told(&object, &AReusableRefObject::zero_references);
    object.release_reference();
    QCOMPARE(log.take(), QStringList{QStringLiteral("count != 0")});
    QCOMPARE(told.count(), 0);
    QVERIFY(object.releasable());
}

void TestAReusableRefObject::each_end_of_all_references_is_told_once()
{
    AReusableRefObject object;
    std::atomic<int> told{0};
    connect(
        &object, &AReusableRefObject::zero_references, &object, [&] { ++told; },
        Qt::DirectConnection);
    object.add_reference();
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 10000; ++round) {
                object.add_reference();
                object.release_reference();
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(told.load(), 0);
    object.release_reference();
    QCOMPARE(told.load(), 1);
}

namespace {

/// Keeps one object as long as somebody refers to it, and makes another when it is looked up again.
class Shelf
{
public:
    void look_up_and_release()
    {
        AReusableRefObject *const found = look_up();
        Kept::Lock const lock(kept);
        found->release_reference();
    }
    /// For one thread: deletes what has been told of, unless it has been looked up meanwhile.
    void tidy()
    {
        Kept::Lock const lock(kept);
        for (AReusableRefObject *idle : std::exchange(lock->told_of, {})) {
            if (lock->object != idle || !idle->releasable())
                continue;
            delete std::exchange(lock->object, nullptr);
            ++deleted;
        }
    }

    std::atomic<int> made{0};
    int deleted = 0;

private:
    struct Content
    {
        AReusableRefObject *object = nullptr;
        std::vector<AReusableRefObject *> told_of;
    };
    using Kept = AProtect<Content>;

    AReusableRefObject *look_up()
    {
        Kept::Lock const lock(kept);
        if (!lock->object)
            lock->object = make();
        lock->object->add_reference();
        return lock->object;
    }
    AReusableRefObject *make()
    {
        ++made;
        auto *const fresh = new AReusableRefObject;
        QObject::connect(
            fresh, &AReusableRefObject::zero_references, fresh,
            [this](AReusableRefObject *idle) { Kept::Lock(kept)->told_of.push_back(idle); },
            Qt::DirectConnection);
        return fresh;
    }

    Kept kept;
};

} // namespace

void TestAReusableRefObject::released_under_the_lookups_lock_none_is_told_of_after_its_end()
{
    Shelf shelf;
    std::atomic<int> busy{4};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 2000; ++round)
                shelf.look_up_and_release();
            --busy;
        });
    }
    while (busy > 0)
        shelf.tidy();
    for (std::thread &thread : threads)
        thread.join();
    shelf.tidy();
    QVERIFY(shelf.made > 0);
    QCOMPARE(shelf.deleted, shelf.made.load());
}

QTEST_GUILESS_MAIN(TestAReusableRefObject)
#include "tst_areusable_ref_object.moc"
