// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/timerat.h"
#include "tests/support/virtual_time.h"

#include <QTest>
#include <thread>
#include <vector>

class TestTimeRat : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void measure_keeps_name_and_start();
    void null_name_counts_as_empty();
    void empty_run_reports_its_total_alone();
    void each_measure_lasts_until_the_next();
    void cleared_run_starts_over();
    void measures_come_from_any_thread();

private:
    VirtualTime time;
};

void TestTimeRat::measure_keeps_name_and_start()
{
    time.advance_ms(100);
    TimeRat::Measure const measure("load");
    QCOMPARE(QString(measure.get_name()), QStringLiteral("load"));
    QVERIFY(measure.get_start() == HRTime::now());
    time.advance_ms(1500);
    QVERIFY(measure.elapsed() == HRTime::mseconds(1500));
    QVERIFY(measure.get_start() < HRTime::now());
}

void TestTimeRat::null_name_counts_as_empty()
{
    QVERIFY(TimeRat::Measure(nullptr).get_name().empty());
}

void TestTimeRat::empty_run_reports_its_total_alone()
{
    QCOMPARE(QString(TimeRat::MeasureRun().report()), QStringLiteral("0.000 Total\n"));
}

void TestTimeRat::each_measure_lasts_until_the_next()
{
    TimeRat::MeasureRun run;
    run.measure("read");
    time.advance_ms(250);
    run.measure("parse");
    time.advance_ms(61000);
    run.measure("store");
    time.advance_ms(5);
    QCOMPARE(QString(run.report()),
        QStringLiteral("   0.250 read\n"
                       "1:01.000 parse\n"
                       "   0.005 store\n"
                       "1:01.255 Total\n"));
    time.advance_ms(1);
    QCOMPARE(QString(run.report()),
        QStringLiteral("   0.250 read\n"
                       "1:01.000 parse\n"
                       "   0.006 store\n"
                       "1:01.256 Total\n"));
}

void TestTimeRat::cleared_run_starts_over()
{
    TimeRat::MeasureRun run;
    run.measure("first");
    time.advance_ms(250);
    run.clear();
    run.measure("second");
    time.advance_ms(3);
    QCOMPARE(QString(run.report()), QStringLiteral("0.003 second\n0.003 Total\n"));
}

void TestTimeRat::measures_come_from_any_thread()
{
    TimeRat::MeasureRun run;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&run] {
            for (int n = 0; n < 100; ++n)
                run.measure("step");
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(QString(run.report()).count(QLatin1String("step\n")), 400);
}

QTEST_GUILESS_MAIN(TestTimeRat)
#include "tst_timerat.moc"
