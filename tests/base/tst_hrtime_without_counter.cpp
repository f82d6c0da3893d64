// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/hrtime.h"
#include "tests/support/virtual_time.h"

#include <QTest>

/// In a program of its own, since a process keeps the frequency that it first finds.
class TestHRTimeWithoutCounter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void text_says_so();
    void bad_time_stays_bad();
    void durations_have_no_ticks();

private:
    VirtualTime time{0};
};

void TestHRTimeWithoutCounter::initTestCase()
{
    time.set_extra_ticks(7);
}

void TestHRTimeWithoutCounter::text_says_so()
{
    QCOMPARE(HRTime::now().to_string(), std::string("<hr time not initialized>"));
    QCOMPARE(HRTime(false, 1).to_string(), std::string("<hr time not initialized>"));
}

void TestHRTimeWithoutCounter::bad_time_stays_bad()
{
    QCOMPARE(HRTime().to_string(), std::string("<bad time>"));
}

void TestHRTimeWithoutCounter::durations_have_no_ticks()
{
    QVERIFY(HRTime::days(1) == HRTime(false, 0));
    QVERIFY(HRTime::useconds(1500000) == HRTime(false, 0));
}

QTEST_GUILESS_MAIN(TestHRTimeWithoutCounter)
#include "tst_hrtime_without_counter.moc"
