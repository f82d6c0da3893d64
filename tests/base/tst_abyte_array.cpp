// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/abyte_array.h"
#include "tests/support/assert_log.h"
#include "tests/support/astring_print.h"

#include <QTest>
#include <cstdint>

namespace {

AByteArray bytes(char const *text)
{
    return AByteArray::fromLatin1(text);
}

AByteArray counting(unsigned int n)
{
    AByteArray result;
    for (unsigned int i = 0; i < n; ++i)
        result.append(static_cast<unsigned char>(i));
    return result;
}

std::string text_of(AByteArray const &array)
{
    return std::string(reinterpret_cast<char const *>(array.const_data()), array.size());
}

} // namespace

class TestAByteArray : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void never_written_is_empty_and_has_no_block()
    {
        AByteArray const empty;
        QVERIFY(empty.empty());
        QCOMPARE(empty.size(), 0u);
        QCOMPARE(empty.reserved_size(), 0u);
        QCOMPARE(*empty.const_data(), 0);
    }

    void first_access_for_change_makes_the_smallest_block()
    {
        AByteArray array;
        QVERIFY(array.data() != nullptr);
        QCOMPARE(array.reserved_size(), 32u);
        QCOMPARE(array.size(), 0u);
    }

    void built_from_one_to_four_bytes_and_from_memory()
    {
        QCOMPARE(text_of(AByteArray('a')), std::string("a"));
        QCOMPARE(text_of(AByteArray('a', 'b')), std::string("ab"));
        QCOMPARE(text_of(AByteArray('a', 'b', 'c')), std::string("abc"));
        QCOMPARE(text_of(AByteArray('a', 'b', 'c', 'd')), std::string("abcd"));
        QCOMPARE(text_of(AByteArray("ab\0c", 4)), std::string("ab\0c", 4));
        QCOMPARE(AByteArray(0, 1).size(), 2u);
        char const *null = nullptr;
        QVERIFY(AByteArray(null, 5).empty());
        QVERIFY(AByteArray::fromLatin1(nullptr).empty());
    }

    void set_replaces_all()
    {
        AByteArray array = bytes("before");
        array.set('x');
        QCOMPARE(text_of(array), std::string("x"));
        array.set('x', 'y');
        QCOMPARE(text_of(array), std::string("xy"));
        array.set('x', 'y', 'z');
        QCOMPARE(text_of(array), std::string("xyz"));
        array.set('w', 'x', 'y', 'z');
        QCOMPARE(text_of(array), std::string("wxyz"));
        array.set("mem", 2);
        QCOMPARE(text_of(array), std::string("me"));
        array.set(bytes("other"));
        QCOMPARE(text_of(array), std::string("other"));
        array.clear();
        QVERIFY(array.empty());
    }

    void append_adds_behind()
    {
        AByteArray array;
        array.append('a');
        array.append('b', 'c');
        array.append('d', 'e', 'f');
        array.append('g', 'h', 'i', 'j');
        array.append("kl", 2);
        array.append(bytes("mn"));
        array += bytes("op");
        QCOMPARE(text_of(array + bytes("q")), std::string("abcdefghijklmnopq"));
        QCOMPARE(text_of(array), std::string("abcdefghijklmnop"));
    }

    void append_takes_its_own_bytes()
    {
        AByteArray array = bytes("0123456789abcdef");
        array.append(array);
        array.append(array.const_data() + 30, 2);
        QCOMPARE(text_of(array), std::string("0123456789abcdef0123456789abcdefef"));
    }

    void reserved_size_doubles_until_one_more_fits_data()
    {
        QTest::addColumn<unsigned int>("request");
        QTest::addColumn<unsigned int>("reserved");
        QTest::newRow("none") << 0u << 32u;
        QTest::newRow("smallest") << 31u << 32u;
        QTest::newRow("one more") << 32u << 64u;
        QTest::newRow("below a page") << 2047u << 2048u;
        QTest::newRow("a page") << 2048u << 4096u;
        QTest::newRow("above") << 5000u << 8192u;
    }
    void reserved_size_doubles_until_one_more_fits()
    {
        QFETCH(unsigned int, request);
        QFETCH(unsigned int, reserved);
        AByteArray array;
        array.reserve(request);
        QCOMPARE(array.reserved_size(), reserved);
        QCOMPARE(array.size(), 0u);
    }

    void a_full_block_has_room_for_the_nul()
    {
        AByteArray array = counting(31);
        QCOMPARE(array.reserved_size(), 32u);
        array.append('x');
        QCOMPARE(array.reserved_size(), 64u);
        array.resize(63);
        QCOMPARE(array.reserved_size(), 64u);
        array.resize(64);
        QCOMPARE(array.reserved_size(), 128u);
    }

    void a_gibibyte_is_the_most_that_is_held()
    {
        constexpr unsigned long long most = 1ull << 30;
        QString const too_large = QStringLiteral("n <= max_size");
        AssertLog log;
        AByteArray array = bytes("kept");
        for (unsigned long long size : {most + 1, (1ull << 40) - 1, 1ull << 40, ~0ull}) {
            array.resize(size, 7);
            QCOMPARE(log.take(), QStringList{too_large});
            array.reserve(size);
            QCOMPARE(log.take(), QStringList{too_large});
            array.append(array.const_data(), size);
            QCOMPARE(log.take(), QStringList{QStringLiteral("n <= max_size - size()")});
        }
        QCOMPARE(text_of(array), std::string("kept"));
        QCOMPARE(array.reserved_size(), 32u);
    }

    void large_blocks_begin_at_a_page_data()
    {
        QTest::addColumn<unsigned int>("size");
        for (unsigned int size : {2048u, 4095u, 4096u, 5000u, 100000u})
            QTest::addRow("%u", size) << size;
    }
    void large_blocks_begin_at_a_page()
    {
        QFETCH(unsigned int, size);
        AByteArray array;
        array.resize(size, 7);
        QCOMPARE(reinterpret_cast<std::uintptr_t>(array.const_data()) % 4096, 0u);
        QCOMPARE(array[size - 1], 7);
    }

    void a_nul_follows_the_bytes()
    {
        AByteArray array;
        for (unsigned int i = 0; i < 200; ++i) {
            array.append('x');
            QCOMPARE(array.const_data()[array.size()], 0);
        }
        array.resize(40);
        QCOMPARE(array.const_data()[40], 0);
        QCOMPARE(array.left(3).const_data()[3], 0);
        array.resize(80, 9);
        QCOMPARE(array.const_data()[40], 9);
        QCOMPARE(array.const_data()[80], 0);
    }

    void copies_share_until_changed()
    {
        AByteArray a = bytes("shared");
        AByteArray b = a;
        QCOMPARE(a.const_data(), b.const_data());
        b[0] = 'S';
        QCOMPARE(text_of(a), std::string("shared"));
        QCOMPARE(text_of(b), std::string("Shared"));
        unsigned char const *alone = b.const_data();
        b[1] = 'H';
        QCOMPARE(b.const_data(), alone);
    }

    void every_change_leaves_the_copy_alone_data()
    {
        using Change = void (*)(AByteArray &);
        QTest::addColumn<Change>("change");
        auto const row = [](char const *name, Change change) { QTest::newRow(name) << change; };
        row("data", [](AByteArray &a) { *a.data() = 'X'; });
        row("[]", [](AByteArray &a) { a[2] = 'X'; });
        row("append a byte", [](AByteArray &a) { a.append('X'); });
        row("append two", [](AByteArray &a) { a.append('X', 'Y'); });
        row("append memory", [](AByteArray &a) { a.append("XY", 2); });
        row("append another", [](AByteArray &a) { a.append(bytes("X")); });
        row("append itself", [](AByteArray &a) { a.append(a); });
        row("append16", [](AByteArray &a) { a.append16(1); });
        row("append over the block", [](AByteArray &a) { a.append(counting(100)); });
        row("copy_from", [](AByteArray &a) { a.copy_from("X", 1, 1); });
        row("replace", [](AByteArray &a) { a.replace('b', 'X'); });
        row("shorter", [](AByteArray &a) { a.resize(2); });
        row("longer", [](AByteArray &a) { a.resize(9, 'X'); });
        row("set", [](AByteArray &a) { a.set('X'); });
        row("clear", [](AByteArray &a) { a.clear(); });
    }
    void every_change_leaves_the_copy_alone()
    {
        using Change = void (*)(AByteArray &);
        QFETCH(Change, change);
        AByteArray const before = bytes("abcd");
        AByteArray array = before;
        change(array);
        QVERIFY(array != before);
        QCOMPARE(text_of(before), std::string("abcd"));
        QCOMPARE(before.const_data()[4], 0);
    }

    void a_reserve_keeps_the_bytes_and_leaves_the_copy_alone()
    {
        AByteArray const before = bytes("abcd");
        AByteArray array = before;
        array.reserve(1000);
        QCOMPARE(text_of(array), std::string("abcd"));
        QCOMPARE(array.reserved_size(), 1024u);
        QCOMPARE(before.reserved_size(), 32u);
        AByteArray shorter = array;
        shorter.reserve(1);
        QCOMPARE(text_of(shorter), std::string("abcd"));
    }

    void access_outside_is_an_assertion()
    {
        AssertLog log;
        AByteArray array = bytes("ab");
        AByteArray const &reading = array;
        QCOMPARE(reading[2], 0);
        array[2] = 'x';
        QCOMPARE(text_of(array), std::string("ab"));
        QCOMPARE(array[5], 0);
        QCOMPARE(log.take().size(), 3);
    }

    void copies_in_and_out_only_within_the_size_data()
    {
        QTest::addColumn<unsigned long long>("offset");
        QTest::addColumn<unsigned long long>("n");
        QTest::addColumn<bool>("done");
        QTest::newRow("all") << 0ull << 4ull << true;
        QTest::newRow("nothing") << 1ull << 0ull << true;
        QTest::newRow("tail") << 3ull << 1ull << true;
        QTest::newRow("one too many") << 3ull << 2ull << false;
        QTest::newRow("nothing at the end") << 4ull << 0ull << false;
        QTest::newRow("overflowing") << 1ull << ~0ull << false;
    }
    void copies_in_and_out_only_within_the_size()
    {
        QFETCH(unsigned long long, offset);
        QFETCH(unsigned long long, n);
        QFETCH(bool, done);
        AByteArray array = bytes("abcd");
        char target[] = "....";
        QCOMPARE(array.copy_to(target, n, offset), done);
        QCOMPARE(std::string(target),
            done ? std::string("abcd").substr(offset, n) + std::string("....").substr(n)
                 : std::string("...."));
        QCOMPARE(array.copy_from("WXYZ", n, offset), done);
        std::string expected = "abcd";
        if (done)
            expected.replace(offset, n, std::string("WXYZ").substr(0, n));
        QCOMPARE(text_of(array), expected);
    }

    void slices_are_clamped()
    {
        AByteArray const array = bytes("abcd");
        QCOMPARE(text_of(array.left(2)), std::string("ab"));
        QCOMPARE(text_of(array.left(9)), std::string("abcd"));
        QCOMPARE(text_of(array.right(2)), std::string("cd"));
        QCOMPARE(text_of(array.right(9)), std::string("abcd"));
        QCOMPARE(text_of(array.mid(1, 2)), std::string("bc"));
        QCOMPARE(text_of(array.mid(1)), std::string("bcd"));
        QVERIFY(array.mid(4, 1).empty());
        QVERIFY(array.mid(9).empty());
    }

    void finds_bytes()
    {
        AByteArray const array = bytes("abcabc");
        QCOMPARE(array.find('b'), 1);
        QCOMPARE(array.find('b', 2), 4);
        QCOMPARE(array.find('b', 5), -1);
        QCOMPARE(array.find('b', 99), -1);
        QCOMPARE(array.find('b', -3), 1);
        QCOMPARE(array.rfind('b'), 4);
        QCOMPARE(array.rfind('b', 4), 4);
        QCOMPARE(array.rfind('b', 3), 1);
        QCOMPARE(array.rfind('b', 0), -1);
        QCOMPARE(array.rfind('b', -1), -1);
        QCOMPARE(array.rfind('b', 99), 4);
        QCOMPARE(AByteArray().find('b'), -1);
        QCOMPARE(AByteArray().rfind('b'), -1);
    }

    void tells_prefix_and_suffix()
    {
        AByteArray const array = bytes("abcd");
        QVERIFY(array.has_prefix(bytes("ab")) && array.has_suffix(bytes("cd")));
        QVERIFY(array.has_prefix(AByteArray()) && array.has_suffix(AByteArray()));
        QVERIFY(!array.has_prefix(bytes("b")) && !array.has_suffix(bytes("c")));
        QVERIFY(!array.has_prefix(bytes("abcde")) && !array.has_suffix(bytes("zabcd")));
    }

    void replace_changes_every_one()
    {
        AByteArray array = bytes("a.b.c");
        AByteArray const before = array;
        array.replace('.', '-');
        QCOMPARE(text_of(array), std::string("a-b-c"));
        QCOMPARE(text_of(before), std::string("a.b.c"));
    }

    void compares_bytes_then_length()
    {
        AByteArray const ab = bytes("ab"), abc = bytes("abc"), high('\x80' & 0xff);
        QCOMPARE(ab.cmp(ab), 0);
        QCOMPARE(ab.cmp(abc), -1);
        QCOMPARE(abc.cmp(ab), 1);
        QCOMPARE(high.cmp(abc), 1);
        QVERIFY(ab < abc && ab <= abc && ab != abc && abc > ab && abc >= ab && ab == bytes("ab"));
        QVERIFY(AByteArray() < ab && AByteArray() == AByteArray());
        QVERIFY(!(ab < ab) && ab <= ab && ab >= ab && !(ab > ab) && !(ab != ab));
    }

    void big_endian_append_puts_the_highest_byte_first()
    {
        AByteArray array;
        array.append32(16909060);
        QCOMPARE(text_of(array), std::string("\1\2\3\4"));
        array.clear();
        array.append16(0x0102);
        array.append64(0x0102030405060708ull);
        QCOMPARE(text_of(array), std::string("\1\2\1\2\3\4\5\6\7\x08"));
    }

    void base64_has_no_padding_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("empty") << QByteArray() << QByteArray();
        QTest::newRow("one byte") << QByteArray("M") << QByteArray("TQ");
        QTest::newRow("two bytes") << QByteArray("Ma") << QByteArray("TWE");
        QTest::newRow("three bytes") << QByteArray("Man") << QByteArray("TWFu");
        QTest::newRow("all ones") << QByteArray("\xff\xff\xff") << QByteArray("////");
        QTest::newRow("plus") << QByteArray("\xfb\xef\xbe") << QByteArray("++++");
    }
    void base64_has_no_padding()
    {
        QFETCH(QByteArray, input);
        QFETCH(QByteArray, text);
        AByteArray const array(input.constData(), static_cast<unsigned long long>(input.size()));
        QCOMPARE(array.toBase64().to_string(), text.toStdString());
        QCOMPARE(AByteArray::fromBase64(AString::from_utf8(text.constData())), array);
    }

    void base64_line_feed_follows_the_last_whole_symbol_of_20_bytes()
    {
        QCOMPARE(counting(19).toBase64().find(AChar(U'\n')), -1);
        AString const twenty = counting(20).toBase64();
        QCOMPARE(twenty.length(), 28u);
        QCOMPARE(twenty.find(AChar(U'\n')), 26);
        AString const sixty = counting(60).toBase64();
        QCOMPARE(sixty.length(), 83u);
        QCOMPARE(sixty.find(AChar(U'\n')), 26);
        QCOMPARE(sixty.find(AChar(U'\n'), 27), 54);
        QCOMPARE(sixty.lastchar(), AChar(U'\n'));
    }

    void base64_round_trip()
    {
        for (unsigned int n = 0; n < 300; ++n)
            QCOMPARE(AByteArray::fromBase64(counting(n).toBase64()), counting(n));
    }

    void from_base64_skips_all_else()
    {
        QCOMPARE(text_of(AByteArray::fromBase64(AString::l1("TQ==\r\n"))), std::string("M"));
        QCOMPARE(text_of(AByteArray::fromBase64(AString::l1(" T-W_F.u!"))), std::string("Man"));
        QVERIFY(AByteArray::fromBase64(AString::l1("T")).empty());
    }

    void from_base64_reserves_three_quarters_and_two()
    {
        AString const text = AString::rep(AString::l1("AAAA"), 21);
        QCOMPARE(AByteArray::fromBase64(text.left(38)).reserved_size(), 32u);
        QCOMPARE(AByteArray::fromBase64(text.left(39)).reserved_size(), 32u);
        QCOMPARE(AByteArray::fromBase64(text.left(40)).reserved_size(), 64u);
    }

    void hex_breaks_before_a_full_line_data()
    {
        QTest::addColumn<unsigned int>("width");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("zero is one") << 0u << QByteArray("\n00\nAB\nFF");
        QTest::newRow("one") << 1u << QByteArray("\n00\nAB\nFF");
        QTest::newRow("two") << 2u << QByteArray("00\nAB\nFF");
        QTest::newRow("three") << 3u << QByteArray("00\nAB\nFF");
        QTest::newRow("four") << 4u << QByteArray("00AB\nFF");
        QTest::newRow("five") << 5u << QByteArray("00AB\nFF");
        QTest::newRow("wide") << 80u << QByteArray("00ABFF");
    }
    void hex_breaks_before_a_full_line()
    {
        QFETCH(unsigned int, width);
        QFETCH(QByteArray, text);
        QCOMPARE(AByteArray(0, 0xab, 0xff).toHex(width).to_string(), text.toStdString());
    }

    void hex_lines_are_all_of_one_length()
    {
        QCOMPARE(counting(7).toHex(5).to_string(), std::string("0001\n0203\n0405\n06"));
        QCOMPARE(counting(7).toHex(7).to_string(), std::string("000102\n030405\n06"));
        AString const wide = counting(100).toHex(33);
        QCOMPARE(wide.length(), 206u);
        for (long long at = 32; at < 206; at += 33)
            QCOMPARE(wide.find(AChar(U'\n'), at - 32), at);
    }

    void hex_ascii_goes_both_ways()
    {
        QCOMPARE(text_of(AByteArray(0, 0xab, 0xff).toHexAscii()), std::string("00ABFF"));
        QCOMPARE(AByteArray::fromHexAscii(bytes("00abFF")), AByteArray(0, 0xab, 0xff));
        QCOMPARE(AByteArray::fromHexAscii(bytes(" 0:0\n4-1,")), AByteArray(0, 0x41));
        QVERIFY(AByteArray::fromHexAscii(bytes("7")).empty());
        // All 36 digits count: 35 * 16 + 35, of which 8 bits stay.
        QCOMPARE(AByteArray::fromHexAscii(bytes("zZ")), AByteArray(595 & 255));
    }

    void utf8_goes_both_ways()
    {
        AString const text = AString(QStringLiteral("Gr\u00fc\u00dfe \u20ac \U0001f3ac"));
        QCOMPARE(AByteArray::toUtf8(text).fromUtf8(), text);
        QVERIFY(AByteArray::toUtf8(AString()).empty());
        QVERIFY(AByteArray().fromUtf8().empty());
    }
};

QTEST_GUILESS_MAIN(TestAByteArray)
#include "tst_abyte_array.moc"
