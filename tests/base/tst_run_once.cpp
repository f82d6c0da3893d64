// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/run_once.h"
#include "tests/support/assert_log.h"

#include <QTest>

namespace {

int runs = 0;

void count_run()
{
    ++runs;
}

RunOnce const at_start(&count_run);

} // namespace

class TestRunOnce : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void a_static_object_runs_before_main();
    void construction_runs_the_function_once();
    void null_function_is_an_assertion();
};

void TestRunOnce::a_static_object_runs_before_main()
{
    QCOMPARE(runs, 1);
}

void TestRunOnce::construction_runs_the_function_once()
{
    runs = 0;
    {
        RunOnce const once(&count_run);
        QCOMPARE(runs, 1);
    }
    QCOMPARE(runs, 1);
}

void TestRunOnce::null_function_is_an_assertion()
{
    AssertLog log;
    RunOnce const once(nullptr);
    QCOMPARE(log.take(), QStringList{QStringLiteral("run_function != 0")});
}

QTEST_GUILESS_MAIN(TestRunOnce)
#include "tst_run_once.moc"
