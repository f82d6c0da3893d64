// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_list.h"
#include "tests/support/assert_log.h"
#include "tests/support/astring_make.h"
#include "tests/support/astring_print.h"

#include <QTest>

namespace {

/// The pieces in brackets, so that empty ones show.
std::string show(AStringList const &pieces)
{
    std::string text;
    for (AString const &piece : pieces)
        text += "[" + piece.to_string() + "]";
    return text;
}

/// A run of "-" or of "=" is a separator.
bool find_rule(AString::SplitSearch &search)
{
    for (unsigned long long i = search.position; i < search.text.length(); ++i) {
        AChar const c = search.text.getchar(i);
        if (c != AChar(U'-') && c != AChar(U'='))
            continue;
        search.start = i;
        while (search.text.getchar(i + search.length) == c)
            ++search.length;
        return true;
    }
    return false;
}

/// A separator of length 0 in front of every capital.
bool find_capital(AString::SplitSearch &search)
{
    for (unsigned long long i = search.position; i < search.text.length(); ++i) {
        AChar const c = search.text.getchar(i);
        if (c >= AChar(U'A') && c <= AChar(U'Z')) {
            search.start = i;
            return true;
        }
    }
    return false;
}

} // namespace

class TestAStringText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // --- join two ---
    void cat_shares_when_a_side_is_empty()
    {
        AString const s = "text"_a;
        QCOMPARE(AString::cat(s, AString()).store().get(), s.store().get());
        QCOMPARE(AString::cat(AString(), s).store().get(), s.store().get());
        QVERIFY(AString::cat(AString(), AString()).empty());
    }

    void cat_makes_a_new_store()
    {
        AString const a = "xab"_a.mid(1), b = "cdx"_a.left(2);
        AString const both = a + b;
        QCOMPARE(both, "abcd"_a);
        QCOMPARE(both.store()->size, 4u);
        AString c = a;
        c += b;
        c += b;
        QCOMPARE(c, "abcdcd"_a);
        QCOMPARE(a, "ab"_a);
        c += c;
        QCOMPARE(c, "abcdcdabcdcd"_a);
    }

    void cat_over_chunks()
    {
        std::u32string const text = counted_text(700);
        QCOMPARE(u32(even_string(text) + chained_string(text)), text + text);
    }

    void rep_repeats()
    {
        QCOMPARE(AString::rep("ab"_a, 3), "ababab"_a);
        QCOMPARE("ab"_a * 1, "ab"_a);
        AString s = "ab"_a;
        s *= 2;
        QCOMPARE(s, "abab"_a);
        QVERIFY(("ab"_a * 0).empty() && (AString() * 5).empty());
        QCOMPARE(("abc"_a * 1000).length(), 3000u);
        QCOMPARE(("abc"_a * 1000).right(4), "cabc"_a);
    }

    void absurd_lengths_are_an_assertion()
    {
        AssertLog log;
        QVERIFY(AString::rep("ab"_a, ~0ull).empty());
        QCOMPARE("ab"_a.pad(std::numeric_limits<long long>::min()), "ab"_a);
        QCOMPARE("ab"_a.pad(std::numeric_limits<long long>::max()), "ab"_a);
        QCOMPARE(log.take().size(), 3);
    }

    void a_gibibyte_is_the_most_that_is_built()
    {
        constexpr long long most = 1ll << 28;
        QString const too_wide = QStringLiteral("target <= max_length");
        QString const too_often = QStringLiteral("n <= max_length / s.length()");
        AssertLog log;
        for (long long width : {most + 1, -most - 1, (1ll << 40) - 1}) {
            QCOMPARE("ab"_a.pad(width), "ab"_a);
            QCOMPARE(log.take(), QStringList{too_wide});
        }
        QCOMPARE(AString::from_int(7, most + 1), "7"_a);
        QCOMPARE(log.take(), QStringList{too_wide});
        QVERIFY(AString::rep("ab"_a, most / 2 + 1).empty());
        QCOMPARE(log.take(), QStringList{too_often});
        QVERIFY(("abc"_a * (1ull << 38)).empty());
        QCOMPARE(log.take(), QStringList{too_often});
    }

    void pads_on_the_left_or_right_data()
    {
        QTest::addColumn<long long>("width");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("0") << 0ll << QByteArray("abc");
        QTest::newRow("3") << 3ll << QByteArray("abc");
        QTest::newRow("-3") << -3ll << QByteArray("abc");
        QTest::newRow("2") << 2ll << QByteArray("abc");
        QTest::newRow("5") << 5ll << QByteArray("..abc");
        QTest::newRow("-5") << -5ll << QByteArray("abc..");
    }
    void pads_on_the_left_or_right()
    {
        QFETCH(long long, width);
        QFETCH(QByteArray, text);
        QCOMPARE("abc"_a.pad(width, AChar(U'.')).to_string(), text.toStdString());
    }

    void pads_with_blanks_over_chunks()
    {
        QCOMPARE("abc"_a.pad(4), " abc"_a);
        QCOMPARE(AString().pad(2), "  "_a);
        AString const wide = "abc"_a.pad(-600);
        QCOMPARE(wide.length(), 600u);
        QCOMPARE(wide.despace_end(), "abc"_a);
        QCOMPARE("abc"_a.pad(600).count_spaces_front(), 597u);
    }

    void replace_puts_text_in_between()
    {
        AString const s = "abcdef"_a;
        QCOMPARE(s.replace(2, 2, "XYZ"_a), "abXYZef"_a);
        QCOMPARE(s.replace(0, 0, "X"_a), "Xabcdef"_a);
        QCOMPARE(s.replace(6, 0, "X"_a), "abcdefX"_a);
        QCOMPARE(s.replace(9, 9, "X"_a), "abcdefX"_a);
        QCOMPARE(s.replace(4, 99, "X"_a), "abcdX"_a);
        QCOMPARE(s.replace(4, ~0ull, "X"_a), "abcdX"_a);
        QCOMPARE(s.replace(1, 4, AString()), "af"_a);
        QVERIFY(s.replace(0, 6, AString()).empty());
    }

    void joins_with_separators_between()
    {
        AStringList const list{"a"_a, AString(), "c"_a};
        QCOMPARE(AString::from_join(list, ", "_a), "a, , c"_a);
        QCOMPARE(AString::from_join(list, AString()), "ac"_a);
        QVERIFY(AString::from_join(AStringList(), ", "_a).empty());
        QCOMPARE(AString::from_join(AStringList("a"_a), ", "_a), "a"_a);
    }

    // --- deep copy ---
    void deep_copy_shares_up_to_the_threshold_data()
    {
        QTest::addColumn<unsigned long long>("surplus");
        QTest::addColumn<unsigned long long>("threshold");
        QTest::addColumn<bool>("shares");
        QTest::newRow("whole store") << 0ull << 0ull << true;
        QTest::newRow("one more") << 1ull << 0ull << false;
        QTest::newRow("at the threshold") << 32ull << 32ull << true;
        QTest::newRow("above it") << 33ull << 32ull << false;
    }
    void deep_copy_shares_up_to_the_threshold()
    {
        QFETCH(unsigned long long, surplus);
        QFETCH(unsigned long long, threshold);
        QFETCH(bool, shares);
        AString const whole = even_string(counted_text(400 + surplus));
        AString const part = whole.mid(surplus);
        AString const copy = part.deep_copy(threshold);
        QCOMPARE(copy, part);
        QCOMPARE(copy.store().get() == whole.store().get(), shares);
        if (!shares)
            QCOMPARE(copy.store()->size, 400u);
        QVERIFY(AString().deep_copy(threshold).empty());
    }

    // --- split ---
    void splits_at_a_text_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("separator");
        QTest::addColumn<QByteArray>("with_empty");
        QTest::addColumn<QByteArray>("without_empty");
        auto const row
            = [](char const *text, char const *separator, char const *with, char const *without) {
                  QTest::addRow("'%s' at '%s'", text, separator)
                      << QByteArray(text) << QByteArray(separator) << QByteArray(with)
                      << QByteArray(without);
              };
        row(",a,,b,", ",", "[][a][][b][]", "[a][b]");
        row("", ",", "", "");
        row("a", ",", "[a]", "[a]");
        row(",", ",", "[][]", "");
        row("a.b.c", ".", "[a][b][c]", "[a][b][c]");
        row("a--b---c", "--", "[a][b][-c]", "[a][b][-c]");
        row("abc", "abc", "[][]", "");
        row("abc", "", "[abc]", "[abc]");
    }
    void splits_at_a_text()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, separator);
        QFETCH(QByteArray, with_empty);
        QFETCH(QByteArray, without_empty);
        AString const s = AString::l1(text.constData());
        AString const at = AString::l1(separator.constData());
        QCOMPARE(show(s.split(at, true)), with_empty.toStdString());
        QCOMPARE(show(s.split(at, false)), without_empty.toStdString());
    }

    void pieces_share_the_store()
    {
        AString const s = "a.b"_a;
        AStringList const pieces = s.split("."_a, true);
        QCOMPARE(pieces.const_at(1).store().get(), s.store().get());
    }

    void split_any_takes_a_run_as_one_separator_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("with_empty");
        QTest::addColumn<QByteArray>("without_empty");
        auto const row = [](char const *text, char const *with, char const *without) {
            QTest::addRow("'%s'", text)
                << QByteArray(text) << QByteArray(with) << QByteArray(without);
        };
        row("a, b;c", "[a][b][c]", "[a][b][c]");
        row(",; a", "[][a]", "[a]");
        row("a ,;", "[a][]", "[a]");
        row(" ", "[][]", "");
        row("abc", "[abc]", "[abc]");
        row("", "", "");
    }
    void split_any_takes_a_run_as_one_separator()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, with_empty);
        QFETCH(QByteArray, without_empty);
        AString const s = AString::l1(text.constData());
        QCOMPARE(show(s.split_any(" ,;"_a, true)), with_empty.toStdString());
        QCOMPARE(show(s.split_any(" ,;"_a, false)), without_empty.toStdString());
    }

    void split_any_sees_runs_across_chunks()
    {
        std::u32string const text
            = std::u32string(250, U'a') + std::u32string(20, U',') + std::u32string(250, U'b');
        for (AString const &s : {even_string(text), chained_string(text, 3)}) {
            AStringList const pieces = s.split_any(","_a, true);
            QCOMPARE(pieces.size(), 2u);
            QCOMPARE(pieces.const_at(0).length(), 250u);
            QCOMPARE(pieces.const_at(1).length(), 250u);
        }
    }

    void split_any_of_no_characters_finds_nothing()
    {
        QCOMPARE(show("a,b"_a.split_any(AString(), true)), std::string("[a,b]"));
    }

    void a_finder_decides_where_and_what_stays_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("keep_separators");
        QTest::addColumn<bool>("keep_empty");
        QTest::addColumn<QByteArray>("pieces");
        auto const row = [](char const *text, bool separators, bool empty, char const *pieces) {
            QTest::addRow("'%s' %d %d", text, separators, empty)
                << QByteArray(text) << separators << empty << QByteArray(pieces);
        };
        row("-a-==b", false, false, "[a][b]");
        row("-a-==b", false, true, "[][a][][b]");
        row("-a-==b", true, false, "[-][a][-][==][b]");
        row("-a-==b", true, true, "[][-][a][-][][==][b]");
        row("a--", true, false, "[a][--]");
        row("a--", true, true, "[a][--][]");
    }
    void a_finder_decides_where_and_what_stays()
    {
        QFETCH(QByteArray, text);
        QFETCH(bool, keep_separators);
        QFETCH(bool, keep_empty);
        QFETCH(QByteArray, pieces);
        AString::SplitFinder const finder(&find_rule);
        QCOMPARE(show(AString::l1(text.constData()).split(finder, keep_separators, keep_empty)),
            pieces.toStdString());
    }

    void a_separator_of_no_length_takes_one_character()
    {
        AString::SplitFinder const finder(&find_capital);
        QCOMPARE(show("aBcD"_a.split(finder, true, true)), std::string("[a][c][]"));
        QCOMPARE(show("aBcD"_a.split(finder, true, false)), std::string("[a][c]"));
    }

    void a_null_finder_gives_the_string_itself()
    {
        QCOMPARE(show("a,b"_a.split(AString::SplitFinder(), true, true)), std::string("[a,b]"));
        QVERIFY(AString().split(AString::SplitFinder(), true, true).empty());
        QVERIFY(AString().split(AString::SplitFinder(&find_rule), true, true).empty());
    }

    void a_finder_that_goes_back_is_an_assertion()
    {
        AssertLog log;
        AString::SplitFinder const finder([](AString::SplitSearch &search) {
            search.start = 0;
            search.length = 1;
            return true;
        });
        QCOMPARE(show("abc"_a.split(finder, false, true)), std::string("[][bc]"));
        QCOMPARE(log.take(), QStringList{QStringLiteral("search.start >= position")});
    }
};

QTEST_GUILESS_MAIN(TestAStringText)
#include "tst_astring_text.moc"
