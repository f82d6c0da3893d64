// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/atimecode.h"
#include "tests/support/astring_make.h"
#include "tests/support/astring_print.h"
#include "tests/timecode/standard_numbers.h"

#include <QTest>
#include <climits>

using namespace Corvane;

class TestATimecodeText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void prints_all_components_that_are_not_0_data();
    void prints_all_components_that_are_not_0();
    void separator_tells_flag_and_field_data();
    void separator_tells_flag_and_field();
    void undefined_prints_as_invalid();
    void reads_data();
    void reads();
    void invalid_flag_comes_from_the_separator_data();
    void invalid_flag_comes_from_the_separator();
    void frame_is_read_as_two_fields_at_every_frequency();
    void numbers_left_out_are_raised_to_2_data();
    void numbers_left_out_are_raised_to_2();
    void invalid_frequency_gives_undefined();
    void speed_of_a_text_is_1();
    void all_forms_read_the_same();
    void reads_long_texts_piece_by_piece();
    void reads_toolkit_strings_with_any_units();
};

void TestATimecodeText::prints_all_components_that_are_not_0_data()
{
    QTest::addColumn<unsigned>("count"); // at 25 Hz
    QTest::addColumn<unsigned>("parts");
    QTest::addColumn<QString>("text");
    auto const row = [](unsigned count, unsigned parts, char const *text) {
        QTest::addRow("%u, %u parts", count, parts) << count << parts << QString::fromLatin1(text);
    };
    unsigned int const day = 2160000;
    row(0, 0, "00");
    row(0, 1, "00");
    row(0, 2, "00.00");
    row(0, 3, "00.00.00");
    row(0, 4, "00.00.00.00");
    row(0, 5, "0+00.00.00.00");
    row(0, 6, "0+00.00.00.00");
    row(0, UINT_MAX, "0+00.00.00.00");
    row(24, 0, "24");
    row(25, 0, "01.00");
    row(25, 1, "01.00");
    row(25, 3, "00.01.00");
    row(1500, 0, "01.00.00");
    row(90000, 2, "01.00.00.00");
    row(90000 + 2 * 1500 + 3 * 25 + 4, 4, "01.02.03.04");
    row(day - 1, 4, "23.59.59.24");
    row(day, 0, "1+00.00.00.00");
    row(day + 90000 + 2 * 1500 + 3 * 25 + 4, 4, "1+01.02.03.04");
    row(UINT_MAX, 0, "1988+09.51.31.20");
}

void TestATimecodeText::prints_all_components_that_are_not_0()
{
    QFETCH(unsigned, count);
    QFETCH(unsigned, parts);
    QFETCH(QString, text);
    ATimecode const t(VideoFrequency::v25, count, 1);
    QCOMPARE(t.toString(parts), AString(text));
    QCOMPARE(toString(t, parts), AString(text));
}

void TestATimecodeText::separator_tells_flag_and_field_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("flag_value");
    QTest::addColumn<bool>("f2");
    QTest::addColumn<QString>("text");
    QTest::newRow("df F1") << 2 << 1 << false << QStringLiteral("01,02,03,04");
    QTest::newRow("df F2") << 2 << 1 << true << QStringLiteral("01;02;03;04");
    QTest::newRow("ndf F1") << 2 << 2 << false << QStringLiteral("01.02.03.04");
    QTest::newRow("ndf F2") << 2 << 2 << true << QStringLiteral("01:02:03:04");
    QTest::newRow("50 Hz F2") << 3 << 2 << true << QStringLiteral("01:02:03:04");
    QTest::newRow("50 Hz, told to drop, F1") << 3 << 1 << false << QStringLiteral("01.02.03.04");
    QTest::newRow("50 Hz, told to drop, F2") << 3 << 1 << true << QStringLiteral("01:02:03:04");
    QTest::newRow("29.97 Hz has no F2") << 7 << 1 << true << QStringLiteral("01,02,03,04");
    QTest::newRow("25 Hz has no F2") << 8 << 2 << true << QStringLiteral("01.02.03.04");
}

void TestATimecodeText::separator_tells_flag_and_field()
{
    QFETCH(int, value);
    QFETCH(int, flag_value);
    QFETCH(bool, f2);
    QFETCH(QString, text);
    ATimecode const t(frequency(value), flag(flag_value), 1, 2, 3, 4, f2);
    QCOMPARE(t.toString(4), AString(text));
}

void TestATimecodeText::undefined_prints_as_invalid()
{
    QCOMPARE(ATimecode().toString(4), "(invalid)"_a);
    QCOMPARE(toString(ATimecode(), 0), "(invalid)"_a);
}

void TestATimecodeText::reads_data()
{
    QTest::addColumn<QString>("text"); // at 50 Hz
    QTest::addColumn<unsigned>("count");
    auto const row = [](char const *text, unsigned count) {
        QTest::addRow("'%s'", text) << QString::fromUtf8(text) << count;
    };
    unsigned int const at = 180000 + 2 * 3000 + 3 * 50 + 2 * 4;
    row("01.02.03.04", at);
    row("01:02:03:04", at + 1);
    row("01,02,03,04", at);
    row("01;02;03;04", at + 1);
    // Of different separators none counts.
    row("01:02:03.04", at);
    row("01:02;03:04", at);
    row("01:02:03:04.", at);
    row("1:2:3:4", at + 1);
    row("", 0);
    row("...", 0);
    row(":::", 1);
    row("4", 8);
    row("3.4", 158);
    row("3:4", 159);
    row("2.3.4", 6158);
    // Empty pieces are no pieces.
    row("..3..4..", 158);
    row("01..02.03.04", at);
    // More than four: those in front are ignored.
    row("9.1.2.3.4", at);
    row("8.9.01.02.03.04", at);
    // Digits are joined whatever stands between them.
    row("1+01.02.03.04", 101 * 180000 + 6158);
    row("1-0x1.02.03.04", 101 * 180000 + 6158);
    row(" 0 1 . 0 2 . 0 3 . 0 4 ", at);
    // A piece without a digit is a piece.
    row("1.2.x.4", 180000 + 2 * 3000 + 8);
    row("a.b.c.d", 0);
    row("x:4", 9);
    row("\xc3\xa9\xe2\x82\xac"
        "4",
        8);
    // Arabic digits are no digits.
    row("\xd9\xa4.4", 8);
    // Numbers are not held to their range.
    row("0.0.0.100", 200);
    row("0.0.100.0", 5000);
    row("0.100.0.0", 300000);
    // One of more than 32 bits is 0; a count of more wraps.
    row("4294967295", 4294967294);
    row("4294967296", 0);
    row("42949672950", 0);
    row("99999999999999999999999999.5", 10);
    row("5.18446744073709551617", 250);
    row("0000000000000000000000000000004", 8);
}

void TestATimecodeText::reads()
{
    QFETCH(QString, text);
    QFETCH(unsigned, count);
    ATimecode const t = fromString(AString(text), VideoFrequency::v50);
    QVERIFY(t.is_defined());
    QCOMPARE(t.get_nfields(), count);
    QCOMPARE(number(t.get_df()), 2);
    QCOMPARE(fromString(text, VideoFrequency::v50, flag(0)).get_nfields(), count);
}

void TestATimecodeText::invalid_flag_comes_from_the_separator_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("on_59_94");
    QTest::newRow("comma") << QStringLiteral("1,2,3,4") << 1;
    QTest::newRow("semicolon") << QStringLiteral("1;2;3;4") << 1;
    QTest::newRow("stop") << QStringLiteral("1.2.3.4") << 2;
    QTest::newRow("colon") << QStringLiteral("1:2:3:4") << 2;
    QTest::newRow("mixed: the default") << QStringLiteral("1:2.3.4") << 1;
    QTest::newRow("none: the default") << QStringLiteral("4") << 1;
}

void TestATimecodeText::invalid_flag_comes_from_the_separator()
{
    QFETCH(QString, text);
    QFETCH(int, on_59_94);
    for (int n : {0, 3, -1}) {
        QCOMPARE(number(fromString(text, frequency(2), flag(n)).get_df()), on_59_94);
        QCOMPARE(number(fromString(text, frequency(7), flag(n)).get_df()), on_59_94);
        QCOMPARE(number(fromString(text, frequency(3), flag(n)).get_df()), 2);
    }
    for (int n : {1, 2}) {
        QCOMPARE(number(fromString(text, frequency(2), flag(n)).get_df()), n);
        QCOMPARE(number(fromString(text, frequency(3), flag(n)).get_df()), 2);
    }
    QCOMPARE(number(fromString(AString(text), frequency(2)).get_df()), 1);
}

void TestATimecodeText::frame_is_read_as_two_fields_at_every_frequency()
{
    for (int n = 1; n <= 10; ++n) {
        QCOMPARE(fromString("0.0.0.7"_a, frequency(n), flag(2)).get_nfields(), 14u);
        QCOMPARE(fromString("0:0:0:7"_a, frequency(n), flag(2)).get_nfields(), 15u);
    }
    ATimecode const t(VideoFrequency::v25, 1, 2, 3, 4, false);
    QCOMPARE(fromString(t.toString(4), VideoFrequency::v25).toString(4), "01.02.03.08"_a);
}

void TestATimecodeText::numbers_left_out_are_raised_to_2_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("flag_value");
    QTest::addColumn<unsigned>("count");
    auto const row_at = [](int value, char const *text, int flag_value, unsigned count) {
        QTest::addRow("%d: %s, %d", value, text, flag_value)
            << value << QString::fromLatin1(text) << flag_value << count;
    };
    auto const row = [&row_at](char const *text, int flag_value, unsigned count) {
        row_at(2, text, flag_value, count);
    };
    row("00:01:00:00", 1, 3601);
    row("00,01,00,00", 1, 3600);
    row("00,01,00,01", 1, 3600);
    row("00,01,00,02", 1, 3600);
    row("00,01,00,03", 1, 3602);
    row("00,01,01,00", 1, 3656);
    row("00,10,00,00", 1, 35964);
    row("00,00,00,00", 1, 0);
    row("00,11,00,00", 1, 39564);
    row("00,01,00,00", 2, 3600);
    row("00.01.00.01", 2, 3602);
    row_at(7, "00,01,00,00", 1, 1802);
    row_at(7, "00,01,00,01", 1, 1802);
    row_at(7, "00,01,00,03", 1, 1804);
    row_at(7, "00,10,00,00", 1, 17982);
    row_at(7, "00,01,00,00", 2, 1800);
    // Where there is no dropframe it is not what was passed that counts.
    row_at(8, "00.01.00.00", 1, 1500);
    row_at(3, "00.01.00.01", 1, 3002);
}

void TestATimecodeText::numbers_left_out_are_raised_to_2()
{
    QFETCH(int, value);
    QFETCH(QString, text);
    QFETCH(int, flag_value);
    QFETCH(unsigned, count);
    QCOMPARE(fromString(text, frequency(value), flag(flag_value)).get_nfields(), count);
}

void TestATimecodeText::invalid_frequency_gives_undefined()
{
    for (int n : {-1, 0, 11}) {
        QVERIFY(fromString("1:2:3:4"_a, frequency(n)).is_undefined());
        QVERIFY(fromString("1:2:3:4"_a, frequency(n), flag(1)).is_undefined());
        QVERIFY(fromString(QStringLiteral("1:2:3:4"), frequency(n), flag(2)).is_undefined());
    }
    for (int n : {-1, 0, 27}) {
        QVERIFY(fromString("1:2:3:4"_a, standard(n)).is_undefined());
        QVERIFY(fromString("1:2:3:4"_a, standard(n), flag(1)).is_undefined());
    }
}

void TestATimecodeText::speed_of_a_text_is_1()
{
    QCOMPARE(fromString("1:2:3:4"_a, VideoFrequency::v50).get_ssm_speed(), 1u);
}

void TestATimecodeText::all_forms_read_the_same()
{
    AString const text = "01;02;00;00"_a;
    for (int n = 1; n <= 26; ++n) {
        VideoFrequency const f = toVideoFrequency(standard(n));
        ATimecode const by_default = fromString(text, f);
        QCOMPARE(number(by_default.get_std()), number(f));
        QVERIFY(fromString(text, standard(n)) == by_default);
        QVERIFY(ATimecode(f, text) == by_default);
        for (int d = 1; d <= 2; ++d) {
            ATimecode const by_flag = fromString(text, f, flag(d));
            QVERIFY(fromString(text, standard(n), flag(d)) == by_flag);
            QVERIFY(fromString(QString(text), f, flag(d)) == by_flag);
            QVERIFY(ATimecode(f, flag(d), text) == by_flag);
            QCOMPARE(number(ATimecode(f, flag(d), text).get_df()), number(by_flag.get_df()));
        }
    }
}

void TestATimecodeText::reads_long_texts_piece_by_piece()
{
    std::u32string text(300, U'0');
    text += U"1.";
    text += std::u32string(300, U'x');
    text += U"2.3.4";
    QCOMPARE(fromString(even_string(text), VideoFrequency::v50).get_nfields(), 186158u);
    QCOMPARE(fromString(chained_string(text, 3), VideoFrequency::v50).get_nfields(), 186158u);
    // A slice that begins within.
    QCOMPARE(
        fromString(chained_string(text, 3).remove_front(301), VideoFrequency::v50).get_nfields(),
        6158u);
}

void TestATimecodeText::reads_toolkit_strings_with_any_units()
{
    // Neither a NUL nor half of a pair ends the text.
    QString text = QStringLiteral("1.2?3.4");
    for (char16_t unit : {u'\0', u'\xd800', u'\xdc00', u'\xffff'}) {
        text[3] = QChar(unit);
        QCOMPARE(fromString(text, VideoFrequency::v50, flag(0)).get_nfields(), 3000u + 23 * 50 + 8);
    }
    QCOMPARE(fromString(QString(), VideoFrequency::v50, flag(0)).get_nfields(), 0u);
}

QTEST_GUILESS_MAIN(TestATimecodeText)
#include "tst_atimecode_text.moc"
