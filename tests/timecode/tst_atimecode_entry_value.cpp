// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/widgets/atimecode_entry.h"
#include "tests/support/astring_print.h"
#include "tests/timecode/standard_numbers.h"

#include <QSignalSpy>
#include <QTest>

using Corvane::ATimecode;
using Corvane::VideoFrequency;

namespace {

ATimecode emitted(QSignalSpy const &spy)
{
    return spy.last().first().value<ATimecode>();
}

} // namespace

class TestATimecodeEntryValue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void timecode_comes_back_data();
    void timecode_comes_back();
    void field_is_told_by_the_separators();
    void frame_is_read_as_two_fields_where_a_field_is_a_frame();
    void numbers_left_out_are_raised_to_2();
    void text_without_a_digit_is_undefined();
    void undefined_empties_the_entry_and_leaves_the_rate();
    void clear_empties_the_entry();
    void days_do_not_show();
    void flag_changes_the_separators_and_keeps_the_digits();
    void invalid_flag_changes_nothing();
    void flag_counts_only_where_there_is_dropframe();
    void frequency_keeps_the_digits();
    void invalid_frequency_gives_undefined();
    void nfields_are_taken_at_the_present_rate();
};

void TestATimecodeEntryValue::timecode_comes_back_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("flag_value");
    QTest::addColumn<unsigned>("count");
    QTest::addColumn<QString>("text");
    QTest::newRow("50 Hz") << 3 << 2 << 186158u << QStringLiteral("01.02.03.04");
    QTest::newRow("50 Hz F2") << 3 << 2 << 186159u << QStringLiteral("01:02:03:04");
    QTest::newRow("50 Hz, zero") << 3 << 2 << 0u << QStringLiteral("00.00.00.00");
    QTest::newRow("59.94 Hz df") << 2 << 1 << 3600u << QStringLiteral("00,01,00,02");
    QTest::newRow("59.94 Hz df F2") << 2 << 1 << 3601u << QStringLiteral("00;01;00;02");
    QTest::newRow("59.94 Hz ndf") << 2 << 2 << 3600u << QStringLiteral("00.01.00.00");
    QTest::newRow("60 Hz, last") << 1 << 2 << 5183999u << QStringLiteral("23:59:59:29");
}

void TestATimecodeEntryValue::timecode_comes_back()
{
    QFETCH(int, value);
    QFETCH(int, flag_value);
    QFETCH(unsigned, count);
    QFETCH(QString, text);
    ATimecodeEntry entry;
    entry.set_timecode(ATimecode(frequency(value), flag(flag_value), count, 1));
    QCOMPARE(entry.text(), text);
    QCOMPARE(entry.timecode().get_nfields(), count);
    QCOMPARE(number(entry.timecode().get_std()), value);
    QCOMPARE(number(entry.timecode().get_df()), flag_value);
    QCOMPARE(number(entry.frequency()), value);
    QCOMPARE(number(entry.dfflag()), flag_value);
}

void TestATimecodeEntryValue::field_is_told_by_the_separators()
{
    ATimecodeEntry entry;
    entry.set_timecode(ATimecode(VideoFrequency::v50, 101, 1));
    QCOMPARE(entry.text(), QStringLiteral("00:00:02:00"));
    // A digit that is added leaves the field, and one typed into an empty entry is of the first.
    QTest::keyClicks(&entry, QStringLiteral("4"));
    QCOMPARE(entry.text(), QStringLiteral("00:00:20:04"));
    QCOMPARE(entry.timecode().get_nfields(), 1009u);
    entry.selectAll();
    QTest::keyClicks(&entry, QStringLiteral("4"));
    QCOMPARE(entry.timecode().get_nfields(), 8u);
}

void TestATimecodeEntryValue::frame_is_read_as_two_fields_where_a_field_is_a_frame()
{
    ATimecodeEntry entry;
    entry.set_frequency(VideoFrequency::v25);
    QTest::keyClicks(&entry, QStringLiteral("104"));
    QCOMPARE(entry.text(), QStringLiteral("00.00.01.04"));
    QCOMPARE(entry.timecode().get_nfields(), 33u);
    // There is no second field.
    entry.setText(QStringLiteral("00:00:01:04"));
    QCOMPARE(entry.text(), QStringLiteral("00.00.01.04"));
    entry.blockSignals(true);
    entry.setText(QStringLiteral("00:00:01:04"));
    QCOMPARE(entry.timecode().get_nfields(), 33u);
}

void TestATimecodeEntryValue::numbers_left_out_are_raised_to_2()
{
    ATimecodeEntry entry;
    QTest::keyClicks(&entry, QStringLiteral("10000"));
    QCOMPARE(entry.text(), QStringLiteral("00,01,00,00"));
    QCOMPARE(entry.timecode().toString(4), AString::l1("00,01,00,02"));
}

void TestATimecodeEntryValue::text_without_a_digit_is_undefined()
{
    ATimecodeEntry entry;
    entry.blockSignals(true);
    for (char const *text : {"", "...", "(invalid)", "--:--:--:--"}) {
        entry.setText(QLatin1String(text));
        QVERIFY(entry.timecode().is_undefined());
    }
}

void TestATimecodeEntryValue::undefined_empties_the_entry_and_leaves_the_rate()
{
    ATimecodeEntry entry;
    entry.set_timecode(ATimecode(VideoFrequency::v29_97, flag(2), 100, 1));
    entry.set_timecode(ATimecode());
    QCOMPARE(entry.text(), QString());
    QVERIFY(entry.timecode().is_undefined());
    QCOMPARE(number(entry.frequency()), 7);
    QCOMPARE(number(entry.dfflag()), 2);
}

void TestATimecodeEntryValue::clear_empties_the_entry()
{
    ATimecodeEntry entry;
    entry.set_timecode(ATimecode(VideoFrequency::v50, 100, 1));
    entry.clear();
    QCOMPARE(entry.text(), QString());
    QVERIFY(entry.timecode().is_undefined());
}

void TestATimecodeEntryValue::days_do_not_show()
{
    ATimecodeEntry entry;
    entry.set_timecode(ATimecode(VideoFrequency::v50, 3 * 4320000u + 101, 1));
    QCOMPARE(entry.text(), QStringLiteral("00:00:02:00"));
    QCOMPARE(entry.timecode().get_nfields(), 101u);
    QCOMPARE(ATimecodeEntry::text_of(ATimecode(VideoFrequency::v50, 4320000, 1)),
        QStringLiteral("00.00.00.00"));
    QCOMPARE(ATimecodeEntry::text_of(ATimecode()), QString());
}

void TestATimecodeEntryValue::flag_changes_the_separators_and_keeps_the_digits()
{
    ATimecodeEntry entry;
    entry.setText(QStringLiteral("01020304"));
    QCOMPARE(entry.text(), QStringLiteral("01,02,03,04"));
    QSignalSpy changed(&entry, &ATimecodeEntry::changed);
    entry.set_dfflag_ndf();
    QCOMPARE(entry.text(), QStringLiteral("01.02.03.04"));
    QCOMPARE(changed.count(), 1);
    QVERIFY(emitted(changed).is_ndf());
    entry.set_dfflag_df();
    QCOMPARE(entry.text(), QStringLiteral("01,02,03,04"));
    entry.setText(QStringLiteral("01;02;03;04"));
    entry.set_dfflag(flag(2));
    QCOMPARE(entry.text(), QStringLiteral("01:02:03:04"));
    QCOMPARE(number(entry.dfflag()), 2);
}

void TestATimecodeEntryValue::invalid_flag_changes_nothing()
{
    ATimecodeEntry entry;
    for (int n : {-1, 0, 3}) {
        entry.set_dfflag(flag(n));
        QCOMPARE(number(entry.dfflag()), 1);
    }
}

void TestATimecodeEntryValue::flag_counts_only_where_there_is_dropframe()
{
    ATimecodeEntry entry;
    for (int n = 1; n <= 10; ++n) {
        bool const dropframe = n == 2 || n == 7;
        entry.clear();
        entry.set_frequency(frequency(n));
        QTest::keyClicks(&entry, QStringLiteral("1"));
        QCOMPARE(entry.text().at(2), QLatin1Char(dropframe ? ',' : '.'));
        QCOMPARE(entry.timecode().is_df(), dropframe);
        QCOMPARE(number(entry.dfflag()), 1);
    }
}

void TestATimecodeEntryValue::frequency_keeps_the_digits()
{
    ATimecodeEntry entry;
    entry.setText(QStringLiteral("01020304"));
    QSignalSpy changed(&entry, &ATimecodeEntry::changed);
    entry.set_frequency(VideoFrequency::v50);
    QCOMPARE(entry.text(), QStringLiteral("01.02.03.04"));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(emitted(changed).get_nfields(), 186158u);
    entry.set_frequency(VideoFrequency::v60);
    QCOMPARE(changed.count(), 1);
    // The second field goes where a field is a frame.
    entry.setText(QStringLiteral("01:02:03:04"));
    entry.set_frequency(VideoFrequency::v25);
    QCOMPARE(entry.text(), QStringLiteral("01.02.03.04"));
}

void TestATimecodeEntryValue::invalid_frequency_gives_undefined()
{
    ATimecodeEntry entry;
    for (int n : {-1, 0, 11}) {
        entry.set_frequency(frequency(n));
        QTest::keyClicks(&entry, QStringLiteral("12"));
        QVERIFY(entry.timecode().is_undefined());
    }
    entry.set_nfields(100);
    QCOMPARE(entry.text(), QString());
}

void TestATimecodeEntryValue::nfields_are_taken_at_the_present_rate()
{
    ATimecodeEntry entry;
    entry.set_nfields(3601);
    QCOMPARE(entry.text(), QStringLiteral("00;01;00;02"));
    entry.set_dfflag_ndf();
    entry.set_nfields(3601);
    QCOMPARE(entry.text(), QStringLiteral("00:01:00:00"));
    entry.set_frequency(VideoFrequency::v50);
    entry.set_nfields(3600);
    QCOMPARE(entry.text(), QStringLiteral("00.01.12.00"));
    QCOMPARE(entry.timecode().get_nfields(), 3600u);
}

QTEST_MAIN(TestATimecodeEntryValue)
#include "tst_atimecode_entry_value.moc"
