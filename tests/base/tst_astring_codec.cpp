// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "tests/support/astring_make.h"
#include "tests/support/astring_print.h"

#include <QTest>
#include <algorithm>
#include <cstring>
#include <vector>

namespace {

/// What a sink was handed.
struct Pieces
{
    std::string text;
    std::vector<std::size_t> sizes;

    void take(char const *p, unsigned long long n)
    {
        text.append(p, n);
        sizes.push_back(n);
    }
    auto sink() { return AFunction2<char const *, unsigned long long>::bind<&Pieces::take>(this); }
};

/// A UTF-8 text of two, three and four bytes a code point, with runs of ASCII of every length.
std::string mixed_utf8()
{
    std::string text;
    for (std::size_t run = 0; run < 40; ++run) {
        text += std::string(run, 'x') + "\xc3\xa4" + std::string(run * 7 % 11, 'y')
            + "\xe2\x82\xac\xf0\x9f\x8e\xac";
    }
    return text;
}

} // namespace

class TestAStringCodec : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // --- decode ---
    void latin1_takes_every_byte()
    {
        std::string bytes;
        std::u32string expected;
        for (unsigned int i = 0; i < 600; ++i) {
            bytes += static_cast<char>(i % 256);
            expected += i % 256;
        }
        QCOMPARE(u32(AString::from_latin1(bytes.data(), bytes.size())), expected);
        QCOMPARE(AString::from_latin1("ab\0c", 4).length(), 4u);
        QCOMPARE(AString::from_latin1("ab\0c"), "ab"_a);
        QCOMPARE(AString::l1("\xe4").firstchar().ord(), 0xe4u);
    }

    void z_forms_stop_at_nul_or_the_maximum()
    {
        QCOMPARE(AString::from_latin1z("abcdef", 3), "abc"_a);
        QCOMPARE(AString::from_latin1z("ab\0def", 5), "ab"_a);
        QVERIFY(AString::from_latin1z("abc", 0).empty());
        QCOMPARE(AString::from_utf8z("abcdef", 3), "abc"_a);
        QCOMPARE(AString::from_utf8z("ab\0def", 5), "ab"_a);
        // The maximum may cut a sequence, which then ends the text.
        QCOMPARE(AString::from_utf8z("a\xc3\xa4", 2), "a"_a);
    }

    void null_pointers_give_the_empty_string()
    {
        char const *null = nullptr;
        QVERIFY(AString::l1(nullptr).empty());
        QVERIFY(AString::from_latin1(null).empty() && AString::from_latin1(null, 4).empty());
        QVERIFY(AString::from_latin1z(null, 4).empty() && AString::from_utf8z(null, 4).empty());
        QVERIFY(AString::from_utf8(null).empty() && AString::from_utf8(null, 4).empty());
        char16_t const *null16 = nullptr;
        QVERIFY(AString::from_utf16(null16).empty() && AString::from_utf16(null16, 4).empty());
        QVERIFY(AString::from_wchars(null16).empty() && AString::from_wchars(null16, 4).empty());
        char32_t const *null32 = nullptr;
        QVERIFY(AString::from_utf32(null32).empty() && AString::from_utf32(null32, 4).empty());
        AChar const *chars = nullptr;
        QVERIFY(AString::from_achar(chars).empty() && AString::from_achar(chars, 4).empty());
    }

    void utf8_stops_silently_and_keeps_what_came_before_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("kept"); // code points
        QTest::newRow("nothing") << QByteArray() << 0;
        QTest::newRow("whole") << QByteArray("ab\xc3\xa4\xe2\x82\xac\xf0\x9f\x8e\xac") << 5;
        QTest::newRow("at once") << QByteArray("\x80x") << 0;
        QTest::newRow("lone continuation") << QByteArray("ab\x80x") << 2;
        QTest::newRow("cut short") << QByteArray("ab\xe2\x82") << 2;
        QTest::newRow("above the last") << QByteArray("ab\xf4\x90\x80\x80x") << 2;
        QTest::newRow("NUL") << QByteArray("ab\0cd", 5) << 2;
        QTest::newRow("NUL in a block of eight") << QByteArray("abcdefg\0ijklmnop", 16) << 7;
        QTest::newRow("bad byte in a block of eight") << QByteArray("abcde\xffghijklmno") << 5;
        QTest::newRow("bad byte far behind")
            << QByteArray(1000, 'x') + QByteArray("\xff") + QByteArray(50, 'y') << 1000;
        QTest::newRow("continuations only") << QByteArray("a") + QByteArray(100, '\x80') << 1;
    }
    void utf8_stops_silently_and_keeps_what_came_before()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, kept);
        AString const s
            = AString::from_utf8(bytes.constData(), static_cast<unsigned long long>(bytes.size()));
        QCOMPARE(s.length(), static_cast<unsigned long long>(kept));
        QVERIFY(bytes.startsWith(QByteArray::fromStdString(s.to_string())));
        QCOMPARE(AString::from_string(bytes.toStdString()), s);
        QCOMPARE(AString::from_utf8(bytes.constData()), s);
    }

    void utf8_round_trip_over_chunks()
    {
        std::string const text = mixed_utf8();
        AString const s = AString::from_utf8(text.data(), text.size());
        QCOMPARE(s.to_string(), text);
        QCOMPARE(std::string(s), text);
        QCOMPARE(QString(s), QString::fromStdString(text));
        QCOMPARE(AString(QString::fromStdString(text)), s);
        QCOMPARE(AString::from_wstring(s.to_wstring()), s);
        QVERIFY(s.store()->even);
    }

    void utf16_stops_at_nul_and_unpaired_surrogates_data()
    {
        QTest::addColumn<QList<ushort>>("units");
        QTest::addColumn<int>("kept");
        QTest::newRow("pair") << QList<ushort>{'a', 0xd83c, 0xdfac, 'b'} << 3;
        QTest::newRow("NUL") << QList<ushort>{'a', 0, 'b'} << 1;
        QTest::newRow("lone low") << QList<ushort>{'a', 0xdc00, 'b'} << 1;
        QTest::newRow("high and no low") << QList<ushort>{'a', 0xd800, 'b'} << 1;
        QTest::newRow("high at the end") << QList<ushort>{'a', 0xd800} << 1;
    }
    void utf16_stops_at_nul_and_unpaired_surrogates()
    {
        QFETCH(QList<ushort>, units);
        QFETCH(int, kept);
        AWString const text(units.begin(), units.end());
        AString const s = AString::from_utf16(text.data(), text.size());
        QCOMPARE(s.length(), static_cast<unsigned long long>(kept));
        QCOMPARE(AString::from_wchars(text.data(), text.size()), s);
        QCOMPARE(AString::from_wstring(text), s);
        QCOMPARE(AString::from_utf16(text.c_str()), s);
        QCOMPARE(AString(text), s);
    }

    void utf32_and_achar_take_every_value()
    {
        char32_t const text[] = {U'a', 0xd800, 0xffffffffu, 0};
        AChar const chars[] = {AChar(U'a'), AChar(0xd800), AChar(0xffffffffu), AChar()};
        QCOMPARE(u32(AString::from_utf32(text)), std::u32string(text, 3));
        QCOMPARE(u32(AString::from_utf32(text, 4)), std::u32string(text, 4));
        QCOMPARE(u32(AString::from_achar(chars)), std::u32string(text, 3));
        QCOMPARE(u32(AString::from_achar(chars, 4)), std::u32string(text, 4));
        QCOMPARE(AString::from_achar(chars[0]), "a"_a);
    }

    // --- encode ---
    void buffers_take_as_much_as_fits_data()
    {
        QTest::addColumn<unsigned long long>("size");
        for (unsigned long long size = 0; size <= 14; ++size)
            QTest::addRow("%llu", size) << size;
    }
    void buffers_take_as_much_as_fits()
    {
        QFETCH(unsigned long long, size);
        // 1, 2, 3, 4 and 1 bytes of UTF-8; the sums tell where a code point ends.
        AString const s = AString::from_utf32(U"a\u00e4\u20ac\U0001f3acz");
        std::string const utf8 = "a\xc3\xa4\xe2\x82\xac\xf0\x9f\x8e\xacz";
        std::size_t const ends[] = {0, 1, 3, 6, 10, 11};
        std::size_t fitting = 0;
        for (std::size_t end : ends)
            fitting = end <= size ? end : fitting;

        char bytes[16] = "---------------";
        unsigned long long count = 99;
        QCOMPARE(s.to_utf8(bytes, size, &count), size >= 11);
        QCOMPARE(count, fitting);
        QCOMPARE(std::string(bytes, 15), utf8.substr(0, fitting) + std::string(15 - fitting, '-'));

        s.to_utf8(bytes, size, &count, true, '.');
        std::size_t const filled = std::max<std::size_t>(size, fitting);
        QCOMPARE(count, fitting);
        QCOMPARE(std::string(bytes, 15),
            utf8.substr(0, fitting) + std::string(filled - fitting, '.')
                + std::string(15 - filled, '-'));
    }

    void latin1_writes_the_replacement_for_what_lies_above()
    {
        AString const s = AString::from_utf32(U"a\u00ff\u0100\U0001f3ac");
        char bytes[8] = "-------";
        unsigned long long count = 0;
        QVERIFY(s.to_latin1(bytes, 7, '*', &count));
        QCOMPARE(count, 4u);
        QCOMPARE(std::string(bytes), std::string("a\xff**---"));
        QVERIFY(s.to_latin1(bytes, 7, '*', &count, true, '.'));
        QCOMPARE(std::string(bytes), std::string("a\xff**..."));
        QVERIFY(!s.to_latin1(bytes, 3, '#', &count, true, '!'));
        QCOMPARE(count, 3u);
        QCOMPARE(std::string(bytes), std::string("a\xff#*..."));
        QVERIFY(s.to_latin1(bytes, 4));
        QCOMPARE(bytes[2], '?');
    }

    void utf16_and_utf32_fill_with_zero()
    {
        AString const s = AString::from_utf32(U"a\U0001f3acz");
        char16_t units[6] = {9, 9, 9, 9, 9, 9};
        unsigned long long count = 0;
        QVERIFY(!s.to_utf16(units, 2, &count, true));
        QCOMPARE(count, 1u);
        QCOMPARE(std::u16string(units, 3), (std::u16string{u'a', 0, 9}));
        QVERIFY(s.to_utf16(units, 6, &count));
        QCOMPARE(count, 4u);
        QCOMPARE(units[4], char16_t{9});
        QVERIFY(s.to_wchars(units, 6, &count, true));
        QCOMPARE(std::u16string(units, 6), (std::u16string{u'a', 0xd83c, 0xdfac, u'z', 0, 0}));
        char32_t codes[5] = {9, 9, 9, 9, 9};
        QVERIFY(!s.to_utf32(codes, 2, &count));
        QCOMPARE(count, 2u);
        QCOMPARE(codes[2], char32_t{9});
        QVERIFY(s.to_utf32(codes, 5, &count, true));
        QCOMPARE(std::u32string(codes, 5), (std::u32string{U'a', 0x1f3ac, U'z', 0, 0}));
    }

    void z_forms_leave_room_for_the_terminator_data()
    {
        QTest::addColumn<unsigned long long>("size");
        QTest::addColumn<unsigned long long>("text");
        QTest::newRow("no room") << 0ull << 0ull;
        QTest::newRow("terminator only") << 1ull << 0ull;
        QTest::newRow("cut") << 3ull << 2ull;
        QTest::newRow("exact") << 4ull << 3ull;
        QTest::newRow("more") << 6ull << 3ull;
    }
    void z_forms_leave_room_for_the_terminator()
    {
        QFETCH(unsigned long long, size);
        QFETCH(unsigned long long, text);
        AString const s = "abc"_a;
        std::string expected = std::string("abc").substr(0, text);
        if (size != 0)
            expected += '\0';
        expected += std::string(7 - expected.size(), '-');
        std::u16string const expected16(expected.begin(), expected.end());
        std::u32string const expected32(expected.begin(), expected.end());

        char bytes[8] = "-------";
        unsigned long long count = 99;
        QCOMPARE(s.to_latin1_z(bytes, size, '?', &count), size >= 4);
        QCOMPARE(count, text);
        QCOMPARE(std::string(bytes, 7), expected);
        std::memset(bytes, '-', 7);
        QCOMPARE(s.to_utf8_z(bytes, size, &count), size >= 4);
        QCOMPARE(count, text);
        QCOMPARE(std::string(bytes, 7), expected);
        char16_t units[8] = u"-------";
        QCOMPARE(s.to_utf16_z(units, size, &count), size >= 4);
        QCOMPARE(count, text);
        QCOMPARE(std::u16string(units, 7), expected16);
        char16_t wide[8] = u"-------";
        QCOMPARE(s.to_wchars_z(wide, size, &count), size >= 4);
        QCOMPARE(std::u16string(wide, 7), expected16);
        char32_t codes[8] = U"-------";
        QCOMPARE(s.to_utf32_z(codes, size, &count), size >= 4);
        QCOMPARE(count, text);
        QCOMPARE(std::u32string(codes, 7), expected32);
    }

    void z_forms_fill_in_front_of_the_terminator()
    {
        char bytes[8] = "-------";
        unsigned long long count = 0;
        QVERIFY("ab"_a.to_utf8_z(bytes, 6, &count, true, '.'));
        QCOMPARE(count, 2u);
        QCOMPARE(std::string(bytes, 7), std::string("ab...\0-", 7));
        QVERIFY("ab"_a.to_latin1_z(bytes, 5, '?', &count, true, '!'));
        QCOMPARE(std::string(bytes), std::string("ab!!"));
    }

    void what_a_form_cannot_hold_is_left_out()
    {
        AString const s = AString::from_utf32(U"a\xffffffff\xd800z");
        QCOMPARE(s.to_string(), std::string("a\xed\xa0\x80z"));
        QCOMPARE(s.to_wstring(), AWString(u"az"));
        char16_t units[2];
        QVERIFY(s.to_utf16(units, 2));
        Pieces pieces;
        s.send_utf8(pieces.sink());
        QCOMPARE(pieces.text, s.to_string());
    }

    void empty_strings_encode_to_nothing()
    {
        QVERIFY(AString().to_string().empty() && AString().to_wstring().empty());
        QVERIFY(QString(AString()).isEmpty());
        QVERIFY(AString().to_utf8(nullptr, 0));
        Pieces pieces;
        AString().send_utf8(pieces.sink());
        QVERIFY(pieces.sizes.empty());
    }

    void the_toolkits_string_gets_every_code_point()
    {
        std::u32string text = U"\ufeff" + std::u32string(255, U'x') + U"\ufeff\U0001f3acz";
        QString const expected = QStringLiteral("\ufeff") + QString(255, QLatin1Char('x'))
            + QStringLiteral("\ufeff\U0001f3acz");
        QCOMPARE(QString(even_string(text)), expected);
        QCOMPARE(QString(even_string(text).mid(1)), expected.mid(1));
        // A lone surrogate goes over as it is; from there it would end the text.
        QCOMPARE(QString(AString(AChar(0xd800))), QString(QChar(0xd800)));
        QCOMPARE(AString(QString(QChar(0xd800))), AString());
    }

    // --- send_utf8 ---
    void send_utf8_hands_out_whole_characters_in_small_pieces()
    {
        std::string const text = mixed_utf8();
        AString const s = AString::from_utf8(text.data(), text.size());
        Pieces pieces;
        s.send_utf8(pieces.sink());
        QCOMPARE(pieces.text, text);
        QCOMPARE(pieces.text, s.to_string());
        std::size_t at = 0;
        for (std::size_t size : pieces.sizes) {
            QVERIFY(size > 0 && size <= 128);
            QVERIFY((text[at] & 0xc0) != 0x80);
            at += size;
        }
    }

    void send_utf8_passes_the_block_on_from_125_bytes()
    {
        Pieces ascii;
        even_string(std::u32string(300, U'x')).send_utf8(ascii.sink());
        QCOMPARE(ascii.sizes, (std::vector<std::size_t>{128, 128, 44}));
        // 124 bytes and one code point of four fill the block exactly.
        Pieces tight;
        even_string(std::u32string(124, U'x') + U"\U0001f3acyy").send_utf8(tight.sink());
        QCOMPARE(tight.sizes, (std::vector<std::size_t>{128, 2}));
        // With 125 bytes held the next code point goes into a new block.
        Pieces full;
        even_string(std::u32string(125, U'x') + U"\U0001f3acyy").send_utf8(full.sink());
        QCOMPARE(full.sizes, (std::vector<std::size_t>{125, 6}));
    }

    void every_length_of_text_round_trips()
    {
        std::u32string const text = counted_text(600);
        for (std::size_t n = 0; n <= 600; ++n) {
            AString const s = even_string(text.substr(0, n));
            Pieces pieces;
            s.send_utf8(pieces.sink());
            QCOMPARE(AString::from_string(pieces.text), s);
            QCOMPARE(AString(QString(s)), s);
        }
    }
};

QTEST_GUILESS_MAIN(TestAStringCodec)
#include "tst_astring_codec.moc"
