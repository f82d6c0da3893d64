// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "tests/support/astring_make.h"
#include "tests/support/astring_print.h"

#include <QTest>
#include <limits>
#include <optional>

namespace {

/// Reads through one of the many forms; nothing when it fails.
template <typename T> std::optional<T> read(bool (AString::*reader)(T *) const, char const *text)
{
    T value = 77;
    AString const s = AString::l1(text);
    bool const done = (s.*reader)(&value);
    // The out pointer may be left out, and is untouched on failure.
    if (done != (s.*reader)(nullptr) || (!done && value != 77))
        return std::nullopt;
    return done ? std::optional<T>(value) : std::nullopt;
}

template <typename T> std::string show(std::optional<T> value)
{
    return value ? std::to_string(*value) : "fails";
}

} // namespace

class TestAStringNumber : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads_unsigned_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("value");
        auto const row = [](char const *text, char const *value) {
            QTest::addRow("'%s'", QByteArray(text).toPercentEncoding(" +").constData())
                << QByteArray(text) << QByteArray(value);
        };
        row("0", "0");
        row("42", "42");
        row(" 42 ", "42");
        row("\t\r\n\v\f42\n", "42");
        row("0042", "42");
        row("18446744073709551615", "18446744073709551615");
        // Wraps to 0, which lies below the value before.
        row("18446744073709551616", "fails");
        // Wraps to a value above the one before: the only overflow test does not see it.
        row("50000000000000000000", "13106511852580896768");
        row("", "fails");
        row(" ", "fails");
        row("4 2", "fails");
        row("+1", "fails");
        row("-1", "fails");
        row("1.0", "fails");
        row("12a", "fails");
        row("\xb2", "fails");
        row("0x", "fails");
        row("0x10", "10");
        row("0xFF", "165");
        row("0xff", "165");
        row("0xZ", "35");
        row("0xg1", "161");
        row(" 0x7 ", "7");
        row("0x 7", "fails");
        row("0X7", "fails");
        row("00x7", "fails");
        row("0x-7", "fails");
    }
    void reads_unsigned()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, value);
        QCOMPARE(show(read(&AString::to_uint64_t, text.constData())), value.toStdString());
        QCOMPARE(
            show(read(&AString::to_unsigned_long_long, text.constData())), value.toStdString());
    }

    void code_points_beyond_latin1_are_no_digits()
    {
        std::uint64_t value = 0;
        QVERIFY(!AString::from_utf32(U"1\u06612").to_uint64_t(&value));
        QVERIFY(!AString::from_utf32(U"0x\u0141A").to_uint64_t(&value));
        // At the ends they count as space.
        QVERIFY(AString::from_utf32(U"\u06601\u0661").to_uint64_t(&value));
        QCOMPARE(value, 1u);
    }

    void reads_numbers_across_chunks()
    {
        AString const s = chained_string(U"  " + std::u32string(600, U'0') + U"1234567 ", 5);
        std::uint64_t value = 0;
        QVERIFY(s.to_uint64_t(&value));
        QCOMPARE(value, 1234567u);
    }

    void reads_signed_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("value");
        auto const row = [](char const *text, char const *value) {
            QTest::addRow("'%s'", text) << QByteArray(text) << QByteArray(value);
        };
        row("42", "42");
        row("+42", "42");
        row("-42", "-42");
        row(" -42 ", "-42");
        row("- 42", "-42");
        row("-0", "0");
        row("-0x10", "-10");
        row("+", "fails");
        row("-", "fails");
        row("", "fails");
        row("--1", "fails");
        row("+-1", "fails");
        row("9223372036854775807", "9223372036854775807");
        row("9223372036854775808", "fails");
        row("-9223372036854775808", "-9223372036854775808");
        row("-9223372036854775809", "fails");
        row("1-", "fails");
    }
    void reads_signed()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, value);
        QCOMPARE(show(read(&AString::to_int64_t, text.constData())), value.toStdString());
        QCOMPARE(show(read(&AString::to_long_long, text.constData())), value.toStdString());
        QCOMPARE(show(read(&AString::to_signed_long_long, text.constData())), value.toStdString());
    }

    void narrow_forms_fail_beyond_their_range_data()
    {
        QTest::addColumn<QByteArray>("form");
        QTest::addColumn<QByteArray>("highest");
        QTest::addColumn<QByteArray>("above");
        QTest::addColumn<QByteArray>("lowest");
        QTest::addColumn<QByteArray>("below");
        auto const row = [](char const *form, char const *highest, char const *above,
                             char const *lowest, char const *below) {
            QTest::newRow(form) << QByteArray(form) << QByteArray(highest) << QByteArray(above)
                                << QByteArray(lowest) << QByteArray(below);
        };
        row("int8", "127", "128", "-128", "-129");
        row("int16", "32767", "32768", "-32768", "-32769");
        row("int32", "2147483647", "2147483648", "-2147483648", "-2147483649");
        row("uint8", "255", "256", "0", "-1");
        row("uint16", "65535", "65536", "0", "-1");
        row("uint32", "4294967295", "4294967296", "0", "-1");
    }
    void narrow_forms_fail_beyond_their_range()
    {
        QFETCH(QByteArray, form);
        auto const reads = [&form](char const *text) -> std::vector<std::string> {
            if (form == "int8")
                return {show(read(&AString::to_int8_t, text))};
            if (form == "int16")
                return {show(read(&AString::to_int16_t, text)),
                    show(read(&AString::to_short, text)),
                    show(read(&AString::to_signed_short, text))};
            if (form == "int32")
                return {show(read(&AString::to_int32_t, text)), show(read(&AString::to_int, text)),
                    show(read(&AString::to_signed_int, text))};
            if (form == "uint8")
                return {show(read(&AString::to_uint8_t, text))};
            if (form == "uint16")
                return {show(read(&AString::to_uint16_t, text)),
                    show(read(&AString::to_unsigned_short, text))};
            return {show(read(&AString::to_uint32_t, text)),
                show(read(&AString::to_unsigned, text)),
                show(read(&AString::to_unsigned_int, text))};
        };
        QFETCH(QByteArray, highest);
        QFETCH(QByteArray, above);
        QFETCH(QByteArray, lowest);
        QFETCH(QByteArray, below);
        for (std::string const &value : reads(highest.constData()))
            QCOMPARE(value, highest.toStdString());
        for (std::string const &value : reads(lowest.constData()))
            QCOMPARE(value, lowest.toStdString());
        for (QByteArray const &text : {above, below, QByteArray("99999999999999"), QByteArray("x")})
            for (std::string const &value : reads(text.constData()))
                QCOMPARE(value, std::string("fails"));
    }

    void prints_with_width_and_fill_data()
    {
        QTest::addColumn<long long>("value");
        QTest::addColumn<long long>("width");
        QTest::addColumn<QByteArray>("text");
        auto const row = [](long long value, long long width, char const *text) {
            QTest::addRow("%lld in %lld", value, width) << value << width << QByteArray(text);
        };
        row(0, 0, "0");
        row(42, 0, "42");
        row(42, 1, "42");
        row(42, 2, "42");
        row(42, 5, "...42");
        row(42, -5, "42...");
        row(-42, 0, "-42");
        row(-42, 1, "-42");
        row(-42, 3, "-42");
        row(-42, 4, "-.42");
        row(-42, 5, "-..42");
        row(-42, -5, "-42..");
        row(-42, -3, "-42");
        row(-42, -1, "-42");
        row(std::numeric_limits<long long>::max(), 0, "9223372036854775807");
        row(std::numeric_limits<long long>::min(), 0, "-9223372036854775808");
        row(std::numeric_limits<long long>::min(), 21, "-.9223372036854775808");
    }
    void prints_with_width_and_fill()
    {
        QFETCH(long long, value);
        QFETCH(long long, width);
        QFETCH(QByteArray, text);
        AChar const dot(U'.');
        std::string const expected = text.toStdString();
        QCOMPARE(AString::from_int64_t(value, width, dot).to_string(), expected);
        QCOMPARE(AString::from_long_long(value, width, dot).to_string(), expected);
        if (std::in_range<std::int8_t>(value)) {
            auto const narrow = static_cast<std::int8_t>(value);
            QCOMPARE(AString::from_int8_t(narrow, width, dot).to_string(), expected);
            QCOMPARE(AString::from_short(narrow, width, dot).to_string(), expected);
            QCOMPARE(AString::from_int(narrow, width, dot).to_string(), expected);
        }
        if (value < 0)
            return;
        auto const magnitude = static_cast<unsigned long long>(value);
        QCOMPARE(AString::from_uint64_t(magnitude, width, dot).to_string(), expected);
        QCOMPARE(AString::from_unsigned_long_long(magnitude, width, dot).to_string(), expected);
        if (std::in_range<std::uint8_t>(value)) {
            auto const narrow = static_cast<std::uint8_t>(value);
            QCOMPARE(AString::from_uint8_t(narrow, width, dot).to_string(), expected);
            QCOMPARE(AString::from_uint16_t(narrow, width, dot).to_string(), expected);
            QCOMPARE(AString::from_uint32_t(narrow, width, dot).to_string(), expected);
        }
    }

    void prints_the_highest_and_fills_with_blanks()
    {
        QCOMPARE(AString::from_uint64_t(~0ull), "18446744073709551615"_a);
        QCOMPARE(AString::from_int(7, 3), "  7"_a);
        QCOMPARE(AString::from_int(7, 300).length(), 300u);
        QCOMPARE(AString::from_int(-7, 300).left(2), "- "_a);
    }

    // --- speeds ---
    void reads_speeds_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("value");
        auto const row = [](char const *text, char const *value) {
            QTest::addRow("'%s'", text) << QByteArray(text) << QByteArray(value);
        };
        row("1.5X", "98304");
        row("-0.5X", "-32768");
        row(".25X", "16384");
        row("1X", "65536");
        row("+1X", "65536");
        row("1.X", "65536");
        row(" 1.5X ", "98304");
        row("X", "0");
        row("-X", "0");
        row(".X", "0");
        row("32767X", "2147418112");
        row("32768X", "fails");
        row("-32768X", "-2147483648");
        row("-32769X", "fails");
        // Below what 32 bits hold the sign is lost.
        row("-32768.5X", "2147450880");
        row("32767.99999999X", "2147483647");
        // The fraction is cut off, not rounded.
        row("0.99999999999999999999X", "65535");
        row("0.000015258789X", "0");
        row("0.0000152587890625X", "1");
        row("0.0000152587890626X", "1");
        row("0.333333333333333X", "21845");
        row("1.5x", "fails");
        row("1.2.3X", "fails");
        row("1.5 X", "fails");
        row("1 .5X", "98304");
        row(" X", "0");
        row("--1X", "fails");
        row("0x1X", "fails");
        row("+0x1X", "fails");
        row("-0x1X", "fails");
        row("1.0x1X", "fails");
        row("aX", "fails");
        row("1.aX", "fails");
        row("99999999999999999999X", "fails");
        row("65536", "65536");
        row("-65536", "-65536");
        row("+5", "5");
        row("2147483647", "2147483647");
        // Up to 32 bits without a sign are taken as the raw value.
        row("2147483648", "-2147483648");
        row("4294967295", "-1");
        row("4294967296", "fails");
        row("-2147483648", "-2147483648");
        row("-2147483649", "fails");
        row("0x10", "10");
        row("1.5", "fails");
        row("", "fails");
        row("  ", "fails");
    }
    void reads_speeds()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, value);
        QCOMPARE(show(read(&AString::to_speed, text.constData())), value.toStdString());
    }

    void prints_speeds_data()
    {
        QTest::addColumn<int>("speed");
        QTest::addColumn<uint>("precision");
        QTest::addColumn<QByteArray>("text");
        auto const row = [](int speed, uint precision, char const *text) {
            QTest::addRow("%d with %u", speed, precision) << speed << precision << QByteArray(text);
        };
        row(98304, 15, "1.5X");
        row(-98304, 15, "-1.5X");
        row(65536, 15, "1X");
        row(-65536, 15, "-1X");
        row(0, 0, "0X");
        row(0, 15, "0X");
        // Without digits it is rounded, and keeps its sign.
        row(98304, 0, "2X");
        row(98303, 0, "1X");
        row(-1, 0, "-0X");
        row(-98304, 0, "-2X");
        row(32768, 1, "0.5X");
        row(131072 + 32768, 3, "2.5X");
        row(21845, 15, "0.333328247070313X");
        row(21845, 16, "0.3333282470703125X");
        row(21845, 20, "0.3333282470703125X");
        row(1, 20, "0.0000152587890625X");
        row(65535, 20, "0.9999847412109375X");
        row(65535, 4294967295u, "0.9999847412109375X");
        // The digits round up into the whole number.
        row(65535, 2, "1X");
        row(-65535, 2, "-1X");
        row(131071, 4, "2X");
        row(62259, 1, "0.9X");
        row(62260, 2, "0.95X");
        // What rounds to nothing loses its sign.
        row(-1, 2, "0X");
        row(1, 4, "0X");
        row(2, 4, "0X");
        row(4, 4, "0.0001X");
        row(-4, 4, "-0.0001X");
        row(2147483647, 15, "32767.999984741210938X");
        row(std::numeric_limits<int>::min(), 15, "-32768X");
        row(std::numeric_limits<int>::min(), 0, "-32768X");
        row(2147483647, 0, "32768X");
    }
    void prints_speeds()
    {
        QFETCH(int, speed);
        QFETCH(uint, precision);
        QFETCH(QByteArray, text);
        QCOMPARE(AString::from_speed(speed, precision).to_string(), text.toStdString());
    }

    void speeds_with_a_short_fraction_come_back()
    {
        // 16 digits hold every fraction; the protocol's 15 hold those of 15 bits.
        for (int speed = -70000; speed < 70000; speed += 13) {
            int again = 0;
            QVERIFY(AString::from_speed(speed, 16).to_speed(&again));
            QCOMPARE(again, speed);
            QVERIFY(AString::from_speed(speed * 2, 15).to_speed(&again));
            QCOMPARE(again, speed * 2);
        }
    }

    // --- addresses ---
    void reads_addresses_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<uint>("address");
        auto const row = [](char const *text, uint address) {
            QTest::addRow("'%s'", text) << QByteArray(text) << address;
        };
        uint const otherwise = 0xdeadbeef;
        row("1.2.3.4", 0x04030201);
        row("255.255.255.255", 0xffffffff);
        row("127.0.0.1", 0x0100007f);
        row(" 1. 2 .3.4 ", 0x04030201);
        row("0x10.1.1.1", 0x0101010a);
        row("0x100.1.1.1", 0x01010164);
        row("0x1000.1.1.1", otherwise);
        row("256.2.3.4", otherwise);
        row("1.2.3", otherwise);
        row("1.2.3.4.5", otherwise);
        row("1.2.3.4.", otherwise);
        row("1..3.4", otherwise);
        row(".2.3.4", otherwise);
        row("1.2.3.-4", otherwise);
        row("a.b.c.d", otherwise);
        row("", otherwise);
    }
    void reads_addresses()
    {
        QFETCH(QByteArray, text);
        QFETCH(uint, address);
        QCOMPARE(AString::l1(text.constData()).to_ipaddr(0xdeadbeef), address);
    }

    void prints_addresses()
    {
        QCOMPARE(AString::from_ipaddr(0x04030201), "1.2.3.4"_a);
        QCOMPARE(AString::from_ipaddr(0), "0.0.0.0"_a);
        QCOMPARE(AString::from_ipaddr(0xffffffff), "255.255.255.255"_a);
    }

    // --- the C library's format ---
    void formats_by_the_rules_of_the_c_library()
    {
        QCOMPARE(AString::sprintf("%s-%03d-%c", "ab", 7, 'x'), "ab-007-x"_a);
        QCOMPARE(AString::sprintf("%s", "\xe4"), AString::l1("\xe4"));
        QVERIFY(AString::sprintf("%s", "").empty());
    }

    void formats_at_most_2047_characters()
    {
        std::string const text(3000, 'x');
        QCOMPARE(AString::sprintf("%s", text.c_str()).length(), 2047u);
        QCOMPARE(AString::sprintf("%.2047s", text.c_str()).length(), 2047u);
        QCOMPARE(AString::sprintf("%.2046s", text.c_str()).length(), 2046u);
    }
};

QTEST_GUILESS_MAIN(TestAStringNumber)
#include "tst_astring_number.moc"
