// SPDX-License-Identifier: Apache-2.0
// Every field of a day and of the first seconds of the next, at every frequency and flag.
#include "ATarnLib/timecode/atimecode.h"
#include "tests/support/thoroughness.h"
#include "tests/timecode/standard_numbers.h"

#include <QTest>

using namespace Corvane;

namespace {

/// A clock that is moved on by one field at a time, so it divides nothing.
struct Clock
{
    unsigned int fields_per_second;
    unsigned int fields_per_frame;
    unsigned int left_out; // by the minutes of ten, all but the first, at their begin
    unsigned int minute; // how long these last
    unsigned int ten_minutes;

    unsigned int days = 0;
    unsigned int hours = 0;
    unsigned int minutes = 0;
    unsigned int field = 0; // of the minute, of those left out too
    unsigned int left_in_minute = minute + left_out;
    unsigned int left_in_ten = ten_minutes;

    unsigned int seconds() const { return field / fields_per_second; }
    unsigned int frames() const { return field % fields_per_second / fields_per_frame; }
    bool f2() const { return field % fields_per_second % fields_per_frame != 0; }

    void tick()
    {
        ++field;
        --left_in_minute;
        if (--left_in_ten == 0)
            next_ten();
        else if (left_in_minute == 0)
            next_minute(left_out, minute);
    }
    void next_minute(unsigned int from, unsigned int lasts)
    {
        ++minutes;
        field = from;
        left_in_minute = lasts;
    }
    void next_ten()
    {
        next_minute(0, minute + left_out);
        left_in_ten = ten_minutes;
        if (minutes < 60)
            return;
        minutes = 0;
        if (++hours == 24) {
            hours = 0;
            ++days;
        }
    }
    bool shows(ATimecode const &t) const
    {
        return t.get_days() == days && t.get_hours() == hours && t.get_minutes() == minutes
            && t.get_seconds() == seconds() && t.get_frames() == frames() && t.get_f2() == f2();
    }
};

QString where(ATimecode const &t)
{
    return QStringLiteral("%1: %2").arg(t.get_nfields()).arg(QString(t.toString(5)));
}

/// Dropframe leaves out 4 fields at every frequency, as breakdowns look at the flag alone. The 60
/// seconds of a minute are that long only at 59.94 Hz; elsewhere some fields read as second 60.
Clock clock_of(VideoFrequency f, DropframeFlag d)
{
    return {timecode_fields_per_second(f, d), timecode_fields_per_frame(f),
        d == DropframeFlag::df ? 4u : 0u, timecode_fields_per_minute(f, d),
        timecode_fields_per_10minutes(f, d)};
}

} // namespace

class TestATimecodeDay : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void counts_break_down_as_a_clock_runs_and_back_data();
    void counts_break_down_as_a_clock_runs_and_back();
    void text_gives_the_count_back_where_a_frame_is_two_fields_data();
    void text_gives_the_count_back_where_a_frame_is_two_fields();
    void text_doubles_the_frames_where_a_frame_is_one_field_data();
    void text_doubles_the_frames_where_a_frame_is_one_field();

private:
    static void add_rates(bool (*wanted)(VideoFrequency, DropframeFlag));
};

void TestATimecodeDay::add_rates(bool (*wanted)(VideoFrequency, DropframeFlag))
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("flag_value");
    for (int f = 1; f <= 10; ++f) {
        for (int d = 1; d <= 2; ++d) {
            if (wanted(frequency(f), flag(d)))
                QTest::addRow(
                    "%s, %s", qPrintable(QString(toString(frequency(f)))), d == 1 ? "df" : "ndf")
                    << f << d;
        }
    }
}

void TestATimecodeDay::counts_break_down_as_a_clock_runs_and_back_data()
{
    add_rates([](VideoFrequency, DropframeFlag) { return true; });
}

void TestATimecodeDay::counts_break_down_as_a_clock_runs_and_back()
{
    QFETCH(int, value);
    QFETCH(int, flag_value);
    VideoFrequency const f = frequency(value);
    DropframeFlag const d = flag(flag_value);
    Clock clock = clock_of(f, d);
    ATimecode t(f, d, 0, 1);
    unsigned int const day = t.get_fields_per_day();
    for (unsigned int n = 0; n < day + 1000; ++n, clock.tick()) {
        if (n % one_in != 0)
            continue;
        t.set_nfields(n);
        unsigned int const back = timecode_numfields(f, d, clock.days, t.get_hours(),
            t.get_minutes(), t.get_seconds(), t.get_frames(), t.get_f2());
        if (!clock.shows(t) || back != n)
            QFAIL(qPrintable(where(t)));
    }
    QCOMPARE(clock.days, 1u);
}

void TestATimecodeDay::text_gives_the_count_back_where_a_frame_is_two_fields_data()
{
    // Without a flag that the text does not show.
    add_rates([](VideoFrequency f, DropframeFlag d) {
        return timecode_fields_per_frame(f) == 2 && dropframeByVideoFrequency(f, d) == d;
    });
}

void TestATimecodeDay::text_gives_the_count_back_where_a_frame_is_two_fields()
{
    QFETCH(int, value);
    QFETCH(int, flag_value);
    ATimecode t(frequency(value), flag(flag_value), 0, 1);
    unsigned int const day = t.get_fields_per_day();
    // All at 59.94 Hz with dropframe, and each 17th elsewhere: that meets every frame and field.
    unsigned int const step = one_in * (hasDropframe(frequency(value)) && flag_value == 1 ? 1 : 17);
    for (unsigned int n = 0; n < day; n += step) {
        t.set_nfields(n);
        // The text tells the flag, too.
        ATimecode const back = fromString(t.toString(4), frequency(value), flag(0));
        if (back.get_nfields() != n || number(back.get_df()) != flag_value)
            QFAIL(qPrintable(where(t)));
    }
}

void TestATimecodeDay::text_doubles_the_frames_where_a_frame_is_one_field_data()
{
    add_rates([](VideoFrequency f, DropframeFlag d) {
        return timecode_fields_per_frame(f) == 1 && d == DropframeFlag::ndf;
    });
}

void TestATimecodeDay::text_doubles_the_frames_where_a_frame_is_one_field()
{
    QFETCH(int, value);
    QFETCH(int, flag_value);
    ATimecode t(frequency(value), flag(flag_value), 0, 1);
    unsigned int const day = t.get_fields_per_day();
    for (unsigned int n = 0; n < day; n += 17 * one_in) {
        t.set_nfields(n);
        ATimecode const back = fromString(t.toString(4), frequency(value), flag(flag_value));
        if (back.get_nfields() != n + t.get_frames())
            QFAIL(qPrintable(where(t)));
    }
}

QTEST_GUILESS_MAIN(TestATimecodeDay)
#include "tst_atimecode_day.moc"
