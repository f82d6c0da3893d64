// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/achar.h"
#include "tests/support/astring_print.h"

#include <QTest>
#include <cstring>

namespace {

bool in(char const *set, char32_t code)
{
    return code != 0 && code < 256 && std::strchr(set, static_cast<int>(code));
}

constexpr char32_t codes_of_interest = 700; // all that is classified, and some beyond

} // namespace

class TestAChar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void default_is_code_point_zero()
    {
        QCOMPARE(AChar().ord(), 0u);
        QCOMPARE(AChar::chr(0x10ffff).ord(), 0x10ffffu);
        QCOMPARE(AChar::from_latin1(0xe4).ord(), 0xe4u);
    }

    void compares_by_number()
    {
        AChar const a(U'a'), b(U'b');
        QVERIFY(a < b && a <= b && b > a && b >= a && a != b && a == AChar(97));
        QVERIFY(AChar(0xffffffffu) > AChar(1));
    }

    void space_is_six_characters_zero_and_all_beyond_latin1()
    {
        for (char32_t code = 0; code < codes_of_interest; ++code)
            QCOMPARE(AChar(code).is_space(), in(" \t\n\r\v\f", code) || code == 0 || code > 255);
        QVERIFY(AChar(0xffffffffu).is_space());
    }

    void digits_are_ascii_only()
    {
        for (char32_t code = 0; code < codes_of_interest; ++code) {
            bool const digit = in("0123456789", code);
            QCOMPARE(AChar(code).is_digit(), digit);
            QCOMPARE(AChar(code).to_digit(-7), digit ? static_cast<int>(code) - '0' : -7);
        }
    }

    void hexadecimal_digits_are_the_whole_alphabet()
    {
        for (char32_t code = 0; code < codes_of_interest; ++code) {
            int value = -7;
            if (code >= '0' && code <= '9')
                value = static_cast<int>(code) - '0';
            if (code >= 'A' && code <= 'Z')
                value = static_cast<int>(code) - 'A' + 10;
            if (code >= 'a' && code <= 'z')
                value = static_cast<int>(code) - 'a' + 10;
            QCOMPARE(AChar(code).to_hexdigit(-7), value);
            QCOMPARE(AChar(code).is_hexdigit(), value >= 0);
        }
        QCOMPARE(AChar(U'Z').to_hexdigit(-1), 35);
    }

    void lower_case_leaves_latin1_capitals()
    {
        for (char32_t code = 0; code < codes_of_interest; ++code) {
            char32_t const lower = code >= 'A' && code <= 'Z' ? code + 32 : code;
            QCOMPARE(AChar(code).to_lower().ord(), lower);
        }
    }

    void tells_ascii_and_latin1()
    {
        QVERIFY(AChar(127).is_ascii() && !AChar(128).is_ascii());
        QVERIFY(AChar(255).is_latin1() && !AChar(256).is_latin1());
        QCOMPARE(AChar(255).to_latin1('?'), 255);
        QCOMPARE(AChar(256).to_latin1('?'), '?');
    }

    void reads_utf8_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<uint>("code"); // 0xffffffff: fails
        QTest::addColumn<uint>("length");
        auto const row = [](char const *name, QByteArray const &bytes, uint code, uint length) {
            QTest::newRow(name) << bytes << code << length;
        };
        uint const fails = 0xffffffffu;
        row("nothing", "", fails, 0);
        row("zero byte", QByteArray("\0", 1), fails, 0);
        row("first of one", "\x01", 1, 1);
        row("last of one", "\x7f", 127, 1);
        row("lone continuation", "\x80", fails, 0);
        row("last continuation", "\xbf", fails, 0);
        row("lead 192", "\xc0\x80", fails, 0);
        row("lead 193", "\xc1\xbf", fails, 0);
        row("first of two", "\xc2\x80", 128, 2);
        row("last of two", "\xdf\xbf", 2047, 2);
        row("first of three", "\xe0\xa0\x80", 2048, 3);
        row("last of three", "\xef\xbf\xbf", 65535, 3);
        row("first of four", "\xf0\x90\x80\x80", 65536, 4);
        row("last of four", "\xf4\x8f\xbf\xbf", 1114111, 4);
        row("above the last", "\xf4\x90\x80\x80", fails, 0);
        row("lead 245", "\xf5\x80\x80\x80", fails, 0);
        row("lead 247", "\xf7\x80\x80\x80", fails, 0);
        row("lead 248", "\xf8\x80\x80\x80\x80", fails, 0);
        row("lead 255", "\xff\x80\x80\x80", fails, 0);
        row("overlong of three", "\xe0\x80\x81", 1, 3);
        row("overlong zero", "\xe0\x80\x80", 0, 3);
        row("overlong of four", "\xf0\x80\x80\x81", 1, 4);
        row("high surrogate", "\xed\xa0\x80", 0xd800, 3);
        row("low surrogate", "\xed\xbf\xbf", 0xdfff, 3);
        row("two cut short", "\xc2", fails, 0);
        row("three cut short", "\xe2\x82", fails, 0);
        row("four cut short", "\xf0\x9f\x8e", fails, 0);
        row("second not a continuation", "\xe2\x28\xa1", fails, 0);
        row("second is a lead", "\xc3\xc3", fails, 0);
        row("third not a continuation", "\xe2\x82\x28", fails, 0);
        row("fourth not a continuation", "\xf0\x9f\x8e\x7f", fails, 0);
        row("more behind", "abc", 'a', 1);
    }
    void reads_utf8()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(uint, code);
        QFETCH(uint, length);
        AChar c(U'x');
        unsigned long long consumed = 77;
        bool const read = AChar::consume_utf8(
            bytes.constData(), static_cast<unsigned long long>(bytes.size()), &c, &consumed);
        QCOMPARE(read, code != 0xffffffffu);
        QCOMPARE(c.ord(), read ? code : U'x');
        QCOMPARE(consumed, read ? length : 77u);
    }

    void writes_utf8_data()
    {
        QTest::addColumn<uint>("code");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("zero") << 0u << QByteArray("\0", 1);
        QTest::newRow("last of one") << 127u << QByteArray("\x7f");
        QTest::newRow("first of two") << 128u << QByteArray("\xc2\x80");
        QTest::newRow("last of two") << 2047u << QByteArray("\xdf\xbf");
        QTest::newRow("first of three") << 2048u << QByteArray("\xe0\xa0\x80");
        QTest::newRow("surrogate") << 0xd800u << QByteArray("\xed\xa0\x80");
        QTest::newRow("last of three") << 65535u << QByteArray("\xef\xbf\xbf");
        QTest::newRow("first of four") << 65536u << QByteArray("\xf0\x90\x80\x80");
        QTest::newRow("last of four") << 1114111u << QByteArray("\xf4\x8f\xbf\xbf");
        QTest::newRow("too high") << 1114112u << QByteArray();
        QTest::newRow("highest") << 0xffffffffu << QByteArray();
    }
    void writes_utf8()
    {
        QFETCH(uint, code);
        QFETCH(QByteArray, bytes);
        for (unsigned long long room = 0; room <= 5; ++room) {
            char buffer[6] = "-----";
            unsigned long long written = 0;
            unsigned long long const length = static_cast<unsigned long long>(bytes.size());
            bool const fits = length != 0 && room >= length;
            QCOMPARE(AChar(code).to_utf8(buffer, room, &written), fits);
            QCOMPARE(written, fits ? length : 0);
            QCOMPARE(QByteArray(buffer, 5),
                fits ? bytes + QByteArray(5 - bytes.size(), '-') : QByteArray("-----"));
        }
    }

    void reads_utf16_data()
    {
        QTest::addColumn<QString>("units");
        QTest::addColumn<uint>("code"); // 0xffffffff: fails
        QTest::addColumn<uint>("length");
        auto const units = [](std::initializer_list<ushort> list) {
            QString text;
            for (ushort unit : list)
                text.append(QChar(unit));
            return text;
        };
        uint const fails = 0xffffffffu;
        QTest::newRow("nothing") << QString() << fails << 0u;
        QTest::newRow("zero") << units({0}) << fails << 0u;
        QTest::newRow("one") << units({1}) << 1u << 1u;
        QTest::newRow("below surrogates") << units({0xd7ff}) << 0xd7ffu << 1u;
        QTest::newRow("above surrogates") << units({0xe000}) << 0xe000u << 1u;
        QTest::newRow("highest unit") << units({0xffff}) << 0xffffu << 1u;
        QTest::newRow("first pair") << units({0xd800, 0xdc00}) << 0x10000u << 2u;
        QTest::newRow("last pair") << units({0xdbff, 0xdfff}) << 0x10ffffu << 2u;
        QTest::newRow("lone low") << units({0xdc00, 0xd800}) << fails << 0u;
        QTest::newRow("lone high") << units({0xd800}) << fails << 0u;
        QTest::newRow("high and a letter") << units({0xd800, 'a'}) << fails << 0u;
        QTest::newRow("high twice") << units({0xd800, 0xd800}) << fails << 0u;
    }
    void reads_utf16()
    {
        QFETCH(QString, units);
        QFETCH(uint, code);
        QFETCH(uint, length);
        auto const *p = reinterpret_cast<char16_t const *>(units.utf16());
        auto const n = static_cast<unsigned long long>(units.size());
        for (auto reader : {&AChar::consume_utf16, &AChar::consume_wchars}) {
            AChar c(U'x');
            unsigned long long consumed = 77;
            bool const read = reader(p, n, &c, &consumed);
            QCOMPARE(read, code != 0xffffffffu);
            QCOMPARE(c.ord(), read ? code : U'x');
            QCOMPARE(consumed, read ? length : 77u);
        }
    }

    void writes_utf16_data()
    {
        QTest::addColumn<uint>("code");
        QTest::addColumn<uint>("length"); // 0: cannot be written
        QTest::newRow("zero") << 0u << 1u;
        QTest::newRow("below surrogates") << 0xd7ffu << 1u;
        QTest::newRow("first surrogate") << 0xd800u << 0u;
        QTest::newRow("last surrogate") << 0xdfffu << 0u;
        QTest::newRow("above surrogates") << 0xe000u << 1u;
        QTest::newRow("highest unit") << 0xffffu << 1u;
        QTest::newRow("first pair") << 0x10000u << 2u;
        QTest::newRow("last pair") << 0x10ffffu << 2u;
        QTest::newRow("too high") << 0x110000u << 0u;
    }
    void writes_utf16()
    {
        QFETCH(uint, code);
        QFETCH(uint, length);
        for (auto writer : {&AChar::to_utf16, &AChar::to_wchars}) {
            for (unsigned long long room = 0; room <= 2; ++room) {
                char16_t units[2] = {};
                unsigned long long written = 0;
                bool const fits = length != 0 && room >= length;
                QCOMPARE((AChar(code).*writer)(units, room, &written), fits);
                QCOMPARE(written, fits ? length : 0u);
                AChar again;
                if (fits && code != 0) {
                    QVERIFY(AChar::consume_utf16(units, length, &again, &written));
                    QCOMPARE(again.ord(), code);
                }
            }
        }
    }

    void every_code_point_survives_utf8()
    {
        char bytes[4];
        for (char32_t code = 1; code <= AChar::max_code_point; ++code) {
            unsigned long long written = 0, consumed = 0;
            AChar again;
            if (!AChar(code).to_utf8(bytes, 4, &written)
                || !AChar::consume_utf8(bytes, written, &again, &consumed) || again != AChar(code)
                || consumed != written)
                QFAIL(qPrintable(QString::number(code, 16)));
        }
    }
};

QTEST_GUILESS_MAIN(TestAChar)
#include "tst_achar.moc"
