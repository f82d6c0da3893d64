// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_format.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_list.h"
#include "tests/support/astring_make.h"
#include "tests/support/astring_print.h"

#include <QTest>
#include <map>
#include <type_traits>
#include <unordered_map>

namespace {

/// The hash of one code point, written out: FNV-1a over its four bytes.
std::uint64_t fnv(char32_t code)
{
    std::uint64_t hash = 14695981039346656037ull;
    for (int i = 0; i < 4; ++i) {
        hash ^= code & 255;
        hash *= 1099511628211ull;
        code >>= 8;
    }
    return hash;
}

/// The cursor in front of a string.
AStringSegmentPosition before_first(AString const &s)
{
    AStringSegmentPosition at = s.get_first_position();
    s.get_prev_position(&at, nullptr);
    return at;
}

int sign(int n)
{
    return n < 0 ? -1 : n > 0 ? 1 : 0;
}

} // namespace

class TestAString : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // --- construct ---
    void null_and_no_characters_are_one_value()
    {
        QCOMPARE(AString(), AString::l1(""));
        QVERIFY(AString().empty() && AString::l1("").empty());
        QCOMPARE(AString().length(), 0u);
        QVERIFY(!(AString() < AString()));
    }

    void no_construction_from_a_narrow_literal()
    {
        static_assert(!std::is_convertible_v<char const *, AString>);
        static_assert(!std::is_constructible_v<AString, char const *>);
        static_assert(!std::is_constructible_v<AString, char const(&)[4]>);
        static_assert(!std::is_convertible_v<int, AString>);
    }

    void constructed_from_each_kind_of_text()
    {
        QString const film = QStringLiteral("a\u20ac\U0001f3ac");
        AString const expected = AString::from_utf32(U"a\u20ac\U0001f3ac");
        QCOMPARE(AString(film), expected);
        QCOMPARE(AString(u"a\u20ac\U0001f3ac"), expected);
        QCOMPARE(AString(u"a\u20ac\U0001f3acrest", 4), expected);
        QCOMPARE(AString(AWString(u"a\u20ac\U0001f3ac")), expected);
        QCOMPARE(AString(std::string("a\xe2\x82\xac\xf0\x9f\x8e\xac")), expected);
        QCOMPARE(AString(AChar(U'\u20ac')), expected.mid(1, 1));
        QCOMPARE(AString(expected, 1, 1), expected.mid(1, 1));
        QCOMPARE(AString(AStringList{"a"_a, "b"_a}), "ab"_a);
        QCOMPARE(AString(AStringList{"a"_a, "b"_a}, ", "_a), "a, b"_a);
        AWChar const *null = nullptr;
        QVERIFY(AString(null).empty() && AString(null, 3).empty());
        QVERIFY(AString(QString()).empty());
    }

    // --- inspect ---
    void getchar_outside_gives_the_default()
    {
        AString const s = "abc"_a;
        QCOMPARE(s.getchar(0), AChar(U'a'));
        QCOMPARE(s.getchar(2), AChar(U'c'));
        QCOMPARE(s.getchar(3), AChar());
        QCOMPARE(s.getchar(3, AChar(U'-')), AChar(U'-'));
        QCOMPARE(s.mid(1, 1).getchar(1, AChar(U'-')), AChar(U'-'));
        QCOMPARE(s.firstchar(), AChar(U'a'));
        QCOMPARE(s.lastchar(), AChar(U'c'));
        QCOMPARE(AString().firstchar(AChar(U'-')), AChar(U'-'));
        QCOMPARE(AString().lastchar(AChar(U'-')), AChar(U'-'));
    }

    void counts_spaces_by_the_wide_set()
    {
        QCOMPARE("  \t\r\n\v\fx "_a.count_spaces_front(), 7u);
        QCOMPARE(AString::from_utf32(U"\u20ac x").count_spaces_front(), 2u);
        QVERIFY(AString().all_space() && " \t"_a.all_space() && !" x "_a.all_space());
        QCOMPARE(even_string(std::u32string(600, U' ') + U"x").count_spaces_front(), 600u);
    }

    // --- borders ---
    void a_text_reads_the_same_wherever_it_lies_data()
    {
        // Chunks of an even store end every 256 code points.
        QTest::addColumn<unsigned int>("before");
        for (unsigned int const before : {0u, 1u, 240u, 244u, 248u, 250u, 252u, 254u, 255u, 256u})
            QTest::addRow("%u", before) << before;
    }
    void a_text_reads_the_same_wherever_it_lies()
    {
        QFETCH(unsigned int, before);
        auto const placed = [before](char32_t const *text) {
            std::u32string const whole
                = std::u32string(before, U'#') + text + std::u32string(300, U'#');
            return even_string(whole).mid(before, std::u32string_view(text).size());
        };
        AString const number = placed(U"  -1234567890  ");
        int value = 0;
        QVERIFY(number.to_int(&value));
        QCOMPARE(value, -1234567890);
        QCOMPARE(number.despace(), "-1234567890"_a);
        QCOMPARE(number.count_spaces_front(), 2u);
        QCOMPARE(placed(U"12345678901234x").leading_digits(), "12345678901234"_a);
        for (auto const &[text, speed] : {std::pair{U"-12345.5X", -(12345 * 65536 + 32768)},
                 std::pair{U"  +7.250X  ", 7 * 65536 + 16384},
                 std::pair{U"1234567890", 1234567890}}) {
            QVERIFY(placed(text).to_speed(&value));
            QCOMPARE(value, speed);
        }
        QCOMPARE(placed(U"192.168.100.200").to_ipaddr(0), 0xc864a8c0u);

        AString const text = placed(U"Message one, two");
        QVERIFY(text.equal_z("Message one, two") && !text.equal_z("Message one, twO"));
        QCOMPARE(text, "Message one, two"_a);
        QCOMPARE(text.compare("message ONE, TWO"_a, AString::CaseInsensitive), 0);
        QCOMPARE(text.hash(), "Message one, two"_a.hash());
        QVERIFY(text.has_prefix("Message one"_a) && text.has_suffix("one, two"_a));
        QCOMPARE(text.find("one, t"_a), 8);
        QCOMPARE(text.rfind(AChar(U'e')), 10);
        QCOMPARE(text.split(", "_a, true), (AStringList{"Message one"_a, "two"_a}));
        QCOMPARE(text.split_any(" ,"_a, true), (AStringList{"Message"_a, "one"_a, "two"_a}));
        QCOMPARE(text.replace(8, 3, "1"_a), "Message 1, two"_a);
        QCOMPARE(text.to_string(), std::string("Message one, two"));
        QCOMPARE(QString(text), QStringLiteral("Message one, two"));
        QCOMPARE(text.lastchar(), AChar(U'o'));
        QVERIFY(placed(U"%1 of %2").arg("a"_a).arg("b"_a) == "a of b"_a);
    }

    // --- hash ---
    void hash_is_the_sum_over_the_code_points()
    {
        std::u32string const text = U"A\u00e4\u0100\u20ac\U0001f3ac";
        std::uint64_t sum = 0;
        for (char32_t c : text)
            sum += fnv(c);
        QCOMPARE(even_string(text).hash(), sum);
        QCOMPARE(even_string(text).hash(), sum);
    }

    void hash_does_not_see_the_order()
    {
        QCOMPARE("ab"_a.hash(), "ba"_a.hash());
        QVERIFY("ab"_a != "ba"_a);
        QVERIFY("ab"_a.hash() != "ac"_a.hash());
    }

    void hash_of_nothing_is_one() { QCOMPARE(AString().hash(), 1u); }

    void hash_follows_the_text_through_copies_and_assignment()
    {
        AString a = "first"_a;
        std::uint64_t const first = a.hash();
        AString const copy = a;
        a = "second"_a;
        QVERIFY(a.hash() != first);
        QCOMPARE(copy.hash(), first);
        a = copy;
        QCOMPARE(a.hash(), first);
        QCOMPARE("xfirst"_a.mid(1).hash(), first);
        AString moved = std::move(a);
        QCOMPARE(moved.hash(), first);
        std::unordered_map<AString, int> map;
        map["key"_a] = 7;
        QCOMPARE(map["key"_a], 7);
    }

    // --- search ---
    void finds_a_character()
    {
        AString const s = "abcabc"_a;
        QCOMPARE(s.find(AChar(U'b')), 1);
        QCOMPARE(s.find(AChar(U'b'), 1), 1);
        QCOMPARE(s.find(AChar(U'b'), 2), 4);
        QCOMPARE(s.find(AChar(U'b'), 5), -1);
        QCOMPARE(s.find(AChar(U'b'), 100), -1);
        QCOMPARE(s.find(AChar(U'b'), -100), 1);
        QCOMPARE(s.find(AChar(U'x')), -1);
        QCOMPARE(AString().find(AChar(U'x')), -1);
        QVERIFY(s.contains(AChar(U'c')) && !s.contains(AChar(U'd')));
        QCOMPARE(s.mid(2, 2).find(AChar(U'b')), -1);
    }

    void finds_the_last_of_a_character()
    {
        AString const s = "abcabc"_a;
        QCOMPARE(s.rfind(AChar(U'b')), 4);
        QCOMPARE(s.rfind(AChar(U'b'), 4), 4);
        QCOMPARE(s.rfind(AChar(U'b'), 3), 1);
        QCOMPARE(s.rfind(AChar(U'b'), 0), -1);
        QCOMPARE(s.rfind(AChar(U'a'), 0), 0);
        QCOMPARE(s.rfind(AChar(U'b'), 100), 4);
        QCOMPARE(s.rfind(AChar(U'b'), -1), -1);
        QCOMPARE(AString().rfind(AChar(U'b')), -1);
        QCOMPARE(s.left(4).rfind(AChar(U'b')), 1);
    }

    void finds_a_text()
    {
        AString const s = "abcabd"_a;
        QCOMPARE(s.find("ab"_a), 0);
        QCOMPARE(s.find("abd"_a), 3);
        QCOMPARE(s.find("ab"_a, 1), 3);
        QCOMPARE(s.find("abc"_a, 1), -1);
        QCOMPARE(s.find("d"_a), 5);
        QCOMPARE(s.find("abcabdx"_a), -1);
        QCOMPARE(s.find(s), 0);
        QVERIFY(s.contains("cab"_a) && !s.contains("cb"_a));
        QCOMPARE("aaab"_a.find("aab"_a), 1);
    }

    void an_empty_text_is_found_at_zero()
    {
        QCOMPARE("abc"_a.find(AString()), 0);
        QCOMPARE("abc"_a.find(AString(), 2), 0);
        QCOMPARE(AString().find(AString()), 0);
    }

    void search_agrees_with_the_standard_string()
    {
        std::u32string const text = counted_text(1500);
        for (AString const &s : {even_string(text), chained_string(text)}) {
            for (std::size_t from = 0; from < 1500; from += 37) {
                for (std::size_t n : {1u, 5u, 300u}) {
                    std::u32string const part = text.substr(700, n);
                    QCOMPARE(s.find(even_string(part), static_cast<long long>(from)),
                        static_cast<long long>(text.find(part, from)));
                }
                QCOMPARE(s.find(AChar(text[900]), static_cast<long long>(from)),
                    static_cast<long long>(text.find(text[900], from)));
                QCOMPARE(s.rfind(AChar(text[900]), static_cast<long long>(from)),
                    static_cast<long long>(text.rfind(text[900], from)));
            }
        }
    }

    void tells_prefix_and_suffix()
    {
        AString const s = "Message"_a;
        QVERIFY(s.has_prefix("Mess"_a) && s.has_suffix("sage"_a));
        QVERIFY(s.has_prefix(s) && s.has_suffix(s));
        QVERIFY(s.has_prefix(AString()) && s.has_suffix(AString()));
        QVERIFY(AString().has_prefix(AString()) && !AString().has_prefix(s));
        QVERIFY(!s.has_prefix("mess"_a) && !s.has_suffix("SAGE"_a));
        QVERIFY(s.has_prefix("mESS"_a, AString::CaseInsensitive));
        QVERIFY(s.has_suffix("SAGE"_a, AString::CaseInsensitive));
        QVERIFY(!s.has_prefix("Messages"_a) && !s.has_suffix("aMessage"_a));
    }

    // --- compare ---
    void compares_by_the_first_difference_data()
    {
        QTest::addColumn<QString>("a");
        QTest::addColumn<QString>("b");
        QTest::addColumn<int>("exact");
        QTest::addColumn<int>("folded");
        auto const row = [](char const *name, QString const &a, QString const &b, int e, int f) {
            QTest::newRow(name) << a << b << e << f;
        };
        row("same", QStringLiteral("abc"), QStringLiteral("abc"), 0, 0);
        row("less", QStringLiteral("abc"), QStringLiteral("abd"), -1, -1);
        row("shorter", QStringLiteral("ab"), QStringLiteral("abc"), -1, -1);
        row("empty", QString(), QStringLiteral("a"), -1, -1);
        row("case", QStringLiteral("ABC"), QStringLiteral("abc"), -1, 0);
        row("case later", QStringLiteral("Zx"), QStringLiteral("ay"), -1, 1);
        row("no fold of umlauts", QStringLiteral("\u00c4"), QStringLiteral("\u00e4"), -1, -1);
        row("by number", QStringLiteral("\uffff"), QStringLiteral("\U00010000"), -1, -1);
        row("long", QString(700, QLatin1Char('x')), QString(699, QLatin1Char('x')), 1, 1);
    }
    void compares_by_the_first_difference()
    {
        QFETCH(QString, a);
        QFETCH(QString, b);
        QFETCH(int, exact);
        QFETCH(int, folded);
        AString const x(a), y(b);
        QCOMPARE(x.compare(y), exact);
        QCOMPARE(y.compare(x), -exact);
        QCOMPARE(AString::compare(x, y), exact);
        QCOMPARE(x.compare(y, AString::CaseInsensitive), folded);
        QCOMPARE(AString::compare(y, x, AString::CaseInsensitive), -folded);
        QCOMPARE(x < y, exact < 0);
        QCOMPARE(y<x, exact> 0);
        QCOMPARE(x == y, exact == 0);
        QCOMPARE(x != y, exact != 0);
        QCOMPARE(x.equal(y), exact == 0);
        QCOMPARE(x.equal(y, AString::CaseInsensitive), folded == 0);
    }

    void compares_parts()
    {
        AString const a = "xxabcd"_a, b = "yabce"_a;
        QCOMPARE(AString::compare(a, 2, b, 1, 3), 0);
        QCOMPARE(AString::compare(a, 2, b, 1, 4), -1);
        QCOMPARE(AString::compare(a, 2, b, 1, 0), 0);
        QCOMPARE(AString::compare(a, 5, b, 1, 1), 1);
        QCOMPARE(AString::compare(a, 6, b, 1, 1), -1);
        QCOMPARE(AString::compare(a, 5, b, 99, 1), 1);
        QCOMPARE(AString::compare(a, 99, b, 99, 1), 0);
        QCOMPARE(AString::compare(a, 2, "ABCX"_a, 0, 3, AString::CaseInsensitive), 0);
    }

    void one_and_the_same_slice_is_equal_at_any_position()
    {
        AString const a = "abc"_a;
        AString const same = a, part = a.left(2);
        QCOMPARE(AString::compare(a, 0, same, 1, 2), 0);
        QCOMPARE(AString::compare(a, 0, part, 1, 1), -1);
        QCOMPARE(AString::compare("abc"_a, 0, "abc"_a, 1, 2), -1);
    }

    void comparison_sees_across_chunks()
    {
        std::u32string const text = counted_text(900);
        AString const even = even_string(text), chained = chained_string(text, 100);
        QCOMPARE(even, chained);
        QCOMPARE(even.compare(chained), 0);
        for (std::size_t at : {0u, 99u, 100u, 255u, 256u, 899u}) {
            std::u32string other = text;
            other[at] += 1;
            QCOMPARE(sign(even.compare(chained_string(other))), -1);
            QVERIFY(even != chained_string(other));
            QCOMPARE(even_string(other).compare(chained, AString::CaseInsensitive), 1);
        }
    }

    void equal_z_compares_bytes_with_code_points()
    {
        QVERIFY("abc"_a.equal_z("abc"));
        QVERIFY(!"abc"_a.equal_z("ab") && !"ab"_a.equal_z("abc") && !"abc"_a.equal_z("abd"));
        QVERIFY(AString().equal_z("") && !AString().equal_z("x") && AString().equal_z(nullptr));
        QVERIFY(AString::l1("\xe4").equal_z("\xe4"));
        QVERIFY(!AString::l1("\xe4").equal_z("\xc3\xa4"));
        QVERIFY(!AString::from_latin1("a\0b", 3).equal_z("a"));
    }

    void serves_as_a_key_in_order()
    {
        std::map<AString, int> map{{"b"_a, 2}, {"a"_a, 1}, {"B"_a, 0}};
        int expected = 0;
        for (auto const &[key, value] : map)
            QCOMPARE(value, expected++);
    }

    // --- slice ---
    void slices_are_clamped_data()
    {
        QTest::addColumn<unsigned long long>("n");
        QTest::addColumn<QByteArray>("left");
        QTest::addColumn<QByteArray>("right");
        QTest::addColumn<QByteArray>("without_front");
        QTest::addColumn<QByteArray>("without_end");
        auto const row
            = [](unsigned long long n, char const *l, char const *r, char const *f, char const *e) {
                  QTest::addRow("%llu", n)
                      << n << QByteArray(l) << QByteArray(r) << QByteArray(f) << QByteArray(e);
              };
        row(0, "", "", "abcd", "abcd");
        row(1, "a", "d", "bcd", "abc");
        row(4, "abcd", "abcd", "", "");
        row(5, "abcd", "abcd", "", "");
        row(~0ull, "abcd", "abcd", "", "");
    }
    void slices_are_clamped()
    {
        QFETCH(unsigned long long, n);
        QFETCH(QByteArray, left);
        QFETCH(QByteArray, right);
        QFETCH(QByteArray, without_front);
        QFETCH(QByteArray, without_end);
        AString const s = "xabcdx"_a.mid(1, 4);
        QCOMPARE(s.left(n).to_string(), left.toStdString());
        QCOMPARE(s.front(n).to_string(), left.toStdString());
        QCOMPARE(s.right(n).to_string(), right.toStdString());
        QCOMPARE(s.end(n).to_string(), right.toStdString());
        QCOMPARE(s.remove_front(n).to_string(), without_front.toStdString());
        QCOMPARE(s.remove_left(n).to_string(), without_front.toStdString());
        QCOMPARE(s.remove_end(n).to_string(), without_end.toStdString());
        QCOMPARE(s.remove_right(n).to_string(), without_end.toStdString());
    }

    void mid_is_clamped()
    {
        AString const s = "xabcdx"_a.mid(1, 4);
        QCOMPARE(s.mid(1, 2), "bc"_a);
        QCOMPARE(s.mid(1), "bcd"_a);
        QCOMPARE(s.mid(3, 9), "d"_a);
        QCOMPARE(s.mid(3, ~0ull - 1), "d"_a);
        QVERIFY(s.mid(4).empty() && s.mid(~0ull, 1).empty() && s.mid(1, 0).empty());
    }

    void removes_prefix_and_suffix()
    {
        AString const s = "NameValueEnd"_a;
        bool there = false;
        QCOMPARE(s.remove_prefix("Name"_a, &there), "ValueEnd"_a);
        QVERIFY(there);
        QCOMPARE(s.remove_prefix("name"_a, &there), s);
        QVERIFY(!there);
        QCOMPARE(s.remove_prefix("name"_a, &there, AString::CaseInsensitive), "ValueEnd"_a);
        QVERIFY(there);
        QCOMPARE(s.remove_suffix("End"_a), "NameValue"_a);
        QCOMPARE(s.remove_suffix("END"_a, &there), s);
        QVERIFY(!there);
        QCOMPARE(s.remove_suffix("END"_a, &there, AString::CaseInsensitive), "NameValue"_a);
        QVERIFY(s.remove_prefix(s).empty() && s.remove_suffix(s).empty());
        QCOMPARE(s.remove_prefix(AString(), &there), s);
        QVERIFY(there);
    }

    void leading_digits_is_the_longest_prefix_of_digits()
    {
        QCOMPARE("123abc4"_a.leading_digits(), "123"_a);
        QCOMPARE("123"_a.leading_digits(), "123"_a);
        QVERIFY(" 1"_a.leading_digits().empty() && AString().leading_digits().empty());
    }

    // --- trim ---
    void trims_by_the_wide_set_of_spaces()
    {
        AString const s = AString::from_utf32(U" \t\u20ac a b \u0100\n", 9);
        QCOMPARE(s.despace(), "a b"_a);
        QCOMPARE(u32(s.despace_front()), std::u32string(U"a b \u0100\n").substr(0, 5));
        QCOMPARE(u32(s.despace_end()), std::u32string(U" \t\u20ac a b"));
        QVERIFY(" \t "_a.despace().empty() && " "_a.despace_end().empty());
        QCOMPARE("tight"_a.despace(), "tight"_a);
        QCOMPARE(AString::from_latin1("\0a\0", 3).despace(), "a"_a);
    }

    // --- walk ---
    void iterates_over_every_layout()
    {
        std::u32string const text = counted_text(1000);
        for (AString const &s : {even_string(text), chained_string(text, 7)}) {
            for (AString const &part : {s, s.mid(100, 600), s.mid(256, 1), s.left(256)}) {
                std::u32string seen;
                for (AChar c : part)
                    seen += c.ord();
                QCOMPARE(seen, u32(part));
            }
        }
        QVERIFY(AString().begin() == AString().end());
        AString const ab = "ab"_a;
        auto it = ab.begin();
        QCOMPARE((*it++).ord(), U'a');
        QCOMPARE(it->ord(), U'b');
        QVERIFY(++it == ab.end());
    }

    void cursor_walks_forward_and_back()
    {
        std::u32string const text = counted_text(700);
        for (AString const &whole : {even_string(text), chained_string(text, 7)}) {
            AString const s = whole.mid(10, 600);
            AChar c;
            AStringSegmentPosition at = s.get_first_position();
            for (std::size_t i = 0; i < 600; ++i) {
                QCOMPARE(at.absolute, i + 10);
                QVERIFY(s.get_next_position(&at, &c));
                QCOMPARE(c.ord(), text[i + 10]);
            }
            QVERIFY(!s.get_next_position(&at, &c) && !s.get_prev_position(&at, &c));
            at = s.get_last_position();
            for (std::size_t i = 600; i-- > 0;) {
                QVERIFY(s.get_prev_position(&at, &c));
                QCOMPARE(c.ord(), text[i + 10]);
            }
            QVERIFY(!s.get_prev_position(&at, &c) && !s.get_next_position(&at, &c));
        }
    }

    void cursor_steps_by_many()
    {
        std::u32string const text = counted_text(700);
        AString const s = chained_string(text, 7);
        AChar c;
        for (unsigned long long step : {1ull, 6ull, 7ull, 256ull, 263ull, 699ull}) {
            AStringSegmentPosition at = s.get_first_position();
            QVERIFY(s.get_next_position(&at, step));
            QVERIFY(s.get_next_position(&at, &c));
            QCOMPARE(c.ord(), text[step]);
        }
        AStringSegmentPosition at = s.get_first_position();
        QVERIFY(s.get_next_position(&at, 700ull));
        QVERIFY(s.get_next_position(&at, 0ull));
        QVERIFY(!s.get_next_position(&at, 1ull));
        at = s.get_first_position();
        QVERIFY(!s.get_next_position(&at, 701ull));
        QVERIFY(!s.get_next_position(&at, &c));
    }

    void cursor_is_put_on_a_position()
    {
        AString const s = "xabcx"_a.mid(1, 3);
        AStringSegmentPosition at;
        AChar c;
        QVERIFY(s.get_position(&at, &c, 2));
        QCOMPARE(c, AChar(U'c'));
        QVERIFY(s.get_position(&at, nullptr, 0));
        QVERIFY(s.get_next_position(&at, &c));
        QCOMPARE(c, AChar(U'a'));
        QVERIFY(!s.get_position(&at, &c, 3));
        QVERIFY(!AString().get_position(&at, &c, 0));
    }

    void cursor_serves_other_slices_of_the_store()
    {
        AString const s = "abcdef"_a, part = s.mid(2, 2);
        AStringSegmentPosition at = s.get_first_position();
        AChar const *run = nullptr;
        QCOMPARE(part.linear_access(at, &run), 0u);
        AChar c;
        QVERIFY(s.get_next_position(&at, 2ull) && part.get_next_position(&at, 2ull));
        QVERIFY(!part.get_next_position(&at, &c));
        QVERIFY(s.get_next_position(&at, &c));
        QCOMPARE(c, AChar(U'e'));
        at = part.get_first_position();
        while (part.get_next_position(&at, &c)) { }
        QCOMPARE(s.linear_access(at, &run), 2u);
        QCOMPARE(*run, AChar(U'e'));
    }

    void cursor_that_has_left_its_slice_serves_the_whole()
    {
        std::u32string const text = counted_text(600);
        AString const whole = even_string(text);
        // In front of a slice that begins with a chunk, where it has no chunk itself.
        AStringSegmentPosition const before = before_first(whole.mid(256));
        QCOMPARE(before.absolute, std::uint64_t(255));
        AStringSegmentPosition at = before;
        AChar c;
        QVERIFY(whole.get_next_position(&at, 2ull) && whole.get_next_position(&at, &c));
        QCOMPARE(c.ord(), text[257]);
        at = before;
        QVERIFY(whole.get_prev_position(&at, &c));
        QCOMPARE(c.ord(), text[255]);
        AChar const *run = nullptr;
        QCOMPARE(whole.linear_access(before, &run), 1u);
        QCOMPARE(run->ord(), text[255]);
    }

    void runs_are_bounded_by_chunk_and_slice()
    {
        AString const s = even_string(counted_text(600));
        AString const part = s.mid(200, 300);
        AChar const *run = nullptr;
        AStringSegmentPosition at = part.get_first_position();
        QCOMPARE(part.linear_access(at, &run), 56u);
        QCOMPARE(run->ord(), counted_text(600)[200]);
        QCOMPARE(part.linear_access(at, &run), 56u);
        QVERIFY(part.get_next_position(&at, 56ull));
        QCOMPARE(part.linear_access(at, &run), 244u);
        QVERIFY(part.get_next_position(&at, 244ull));
        QCOMPARE(part.linear_access(at, &run), 0u);
        QCOMPARE(AString().linear_access(AString().get_first_position(), &run), 0u);
    }

    void send_achars_hands_over_each_run()
    {
        std::u32string const text = counted_text(600);
        struct Seen
        {
            std::u32string text;
            std::vector<unsigned long long> sizes;
            void take(AChar const *p, unsigned long long n)
            {
                sizes.push_back(n);
                for (; n > 0; --n)
                    this->text += (p++)->ord();
            }
        } seen;
        even_string(text).mid(200).send_achars(
            AFunction2<AChar const *, unsigned long long>::bind<&Seen::take>(&seen));
        QCOMPARE(seen.text, text.substr(200));
        QCOMPARE(seen.sizes, (std::vector<unsigned long long>{56, 256, 88}));
    }
};

QTEST_GUILESS_MAIN(TestAString)
#include "tst_astring.moc"
