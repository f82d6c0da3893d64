// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/auto_release.h"
#include "tests/support/two_threads.h"

#include <QTest>
#include <atomic>
#include <vector>

namespace {

struct Counter
{
    std::atomic<int> runs{0};
    void run() { ++runs; }
    AutoRelease make() { return AutoRelease(AFunction::bind<&Counter::run>(this)); }
};

} // namespace

class TestAutoRelease : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void runs_when_the_last_copy_goes()
    {
        Counter counter;
        {
            AutoRelease const first = counter.make();
            {
                AutoRelease const second = first;
                std::vector<AutoRelease> const more(5, second);
            }
            QCOMPARE(counter.runs.load(), 0);
        }
        QCOMPARE(counter.runs.load(), 1);
    }

    void runs_when_the_last_copy_is_released()
    {
        Counter counter;
        AutoRelease first = counter.make();
        AutoRelease second = first;
        first.release();
        QVERIFY(first.empty() && !second.empty());
        first.release();
        QCOMPARE(counter.runs.load(), 0);
        second.release();
        QCOMPARE(counter.runs.load(), 1);
        second.release();
        QCOMPARE(counter.runs.load(), 1);
    }

    void assignment_gives_up_what_was_held()
    {
        Counter one, two;
        AutoRelease a = one.make();
        AutoRelease const b = two.make();
        AutoRelease const &same = a;
        a = same;
        QCOMPARE(one.runs.load(), 0);
        a = b;
        QCOMPARE(one.runs.load(), 1);
        a = AutoRelease();
        QCOMPARE(two.runs.load(), 0);
        QVERIFY(a.empty());
    }

    void nothing_to_run_is_empty()
    {
        QVERIFY(AutoRelease().empty());
        QVERIFY(AutoRelease(AFunction()).empty());
        AutoRelease none;
        none.release();
        AutoRelease const copy = none;
        QVERIFY(copy.empty());
    }

    void two_threads_release_the_last_copies_once()
    {
        for (int round = 0; round < 300; ++round) {
            Counter counter;
            AutoRelease mine = counter.make();
            AutoRelease theirs = mine;
            in_two_threads([&](int which) { (which ? mine : theirs).release(); });
            QCOMPARE(counter.runs.load(), 1);
        }
    }

    void one_object_is_copied_while_another_thread_releases_it()
    {
        for (int round = 0; round < 300; ++round) {
            Counter counter;
            AutoRelease shared = counter.make();
            in_two_threads([&](int which) {
                if (which) {
                    shared.release();
                } else {
                    for (int i = 0; i < 20; ++i) {
                        AutoRelease const copy = shared;
                        QVERIFY(copy.empty() || counter.runs == 0);
                    }
                }
            });
            QCOMPARE(counter.runs.load(), 1);
        }
    }

    void one_object_is_assigned_by_two_threads()
    {
        Counter counters[2];
        {
            AutoRelease shared;
            in_two_threads([&](int which) {
                for (int i = 0; i < 500; ++i)
                    shared = counters[which].make();
            });
        }
        QCOMPARE(counters[0].runs.load(), 500);
        QCOMPARE(counters[1].runs.load(), 500);
    }
};

QTEST_GUILESS_MAIN(TestAutoRelease)
#include "tst_auto_release.moc"
