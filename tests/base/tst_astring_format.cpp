// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_format.h"
#include "tests/support/astring_make.h"
#include "tests/support/astring_print.h"

#include <QTest>
#include <type_traits>

namespace {

template <typename T> constexpr bool fills_with = requires(AString s, T value)
{
    s.arg(value);
};

} // namespace

class TestAStringFormat : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void each_arg_fills_the_lowest_placeholder_data()
    {
        QTest::addColumn<QByteArray>("format");
        QTest::addColumn<QByteArray>("one");
        QTest::addColumn<QByteArray>("two");
        QTest::addColumn<QByteArray>("three");
        auto const row
            = [](char const *format, char const *one, char const *two, char const *three) {
                  QTest::newRow(format) << QByteArray(format) << QByteArray(one) << QByteArray(two)
                                        << QByteArray(three);
              };
        row("%1 and %1", "a and %1", "a and b", "a and b");
        row("%2 %1", "%2 a", "b a", "b a");
        row("%1%2%3", "a%2%3", "ab%3", "abc");
        row("%10 %9", "%10 a", "b a", "b a");
        row("%0 %1", "a %1", "a b", "a b");
        row("%01 %1", "a %1", "a b", "a b");
        row("%99x", "ax", "ax", "ax");
        row("100%", "100%", "100%", "100%");
        row("% 1", "% 1", "% 1", "% 1");
        row("%a %1", "%a a", "%a a", "%a a");
        row("%123", "%123", "%123", "%123");
        row("%1234 %1", "%1234 a", "%1234 a", "%1234 a");
        row("%%1", "%a", "%a", "%a");
        row("%1%", "a%", "a%", "a%");
        row("plain", "plain", "plain", "plain");
    }
    void each_arg_fills_the_lowest_placeholder()
    {
        QFETCH(QByteArray, format);
        QFETCH(QByteArray, one);
        QFETCH(QByteArray, two);
        QFETCH(QByteArray, three);
        AStringFormat filled(AString::l1(format.constData()));
        QCOMPARE(filled.to_astring().to_string(), format.toStdString());
        QCOMPARE(filled.arg("a"_a).to_astring().to_string(), one.toStdString());
        QCOMPARE(filled.arg("b"_a).to_astring().to_string(), two.toStdString());
        QCOMPARE(filled.arg("c"_a).to_astring().to_string(), three.toStdString());
    }

    void values_are_not_searched_for_placeholders()
    {
        QVERIFY("%1 %2"_a.arg("%2"_a).arg("%1"_a) == "%2 %1"_a);
    }

    void an_empty_value_fills_too()
    {
        QVERIFY("<%1><%1>"_a.arg(AString()).arg("b"_a) == "<><b>"_a);
    }

    void an_empty_format_stays_empty() { QVERIFY(AString().arg("a"_a) == AString()); }

    void numbers_print_with_width_and_fill()
    {
        AChar const zero(U'0');
        QVERIFY("%1"_a.arg(-5) == "-5"_a);
        QVERIFY("%1"_a.arg(-5, 4) == "-  5"_a);
        QVERIFY("%1"_a.arg(5u, 3, zero) == "005"_a);
        QVERIFY("%1"_a.arg(5l, -3, AChar(U'.')) == "5.."_a);
        QVERIFY("%1"_a.arg(5ul, 2, zero) == "05"_a);
        QVERIFY("%1"_a.arg(-5ll, 4, zero) == "-005"_a);
        QVERIFY("%1"_a.arg(~0ull) == "18446744073709551615"_a);
        QVERIFY("%1"_a.arg(short{7}) == "7"_a);
        QVERIFY(AStringFormat("%1%2%3%4%5%6"_a).arg(1).arg(2u).arg(3l).arg(4ul).arg(5ll).arg(6ull)
            == "123456"_a);
    }

    void pointers_print_in_sixteen_places()
    {
        void const *p = reinterpret_cast<void const *>(std::uintptr_t{0xabc123});
        QVERIFY("%1"_a.arg(p) == "0x          ABC123"_a);
        QVERIFY(AStringFormat("%1"_a).arg(static_cast<void const *>(nullptr))
            == "0x               0"_a);
    }

    void a_narrow_literal_is_not_taken_for_a_pointer()
    {
        static_assert(!fills_with<char const *>);
        static_assert(fills_with<QString> && fills_with<std::string> && fills_with<AChar>);
    }

    void converts_to_each_kind_of_text()
    {
        AStringFormat const format = "x%1y"_a.arg(QStringLiteral("\u20ac"));
        AString const expected = AString::from_utf32(U"x\u20acy");
        AString const copy_initialised = format;
        AString const direct(format);
        QString const q = format;
        std::string const narrow = format;
        AWString const wide = format;
        QCOMPARE(copy_initialised, expected);
        QCOMPARE(direct, expected);
        QCOMPARE(q, QString(expected));
        QCOMPARE(narrow, expected.to_string());
        QCOMPARE(wide, expected.to_wstring());
        AStringList const pieces = format;
        QCOMPARE(pieces, (AStringList{"x"_a, AString::from_utf32(U"\u20ac"), "y"_a}));
        QVERIFY(format == expected && expected == format && format != "x"_a);
    }

    void segments_alternate_between_text_and_placeholders()
    {
        QCOMPARE(
            AStringFormat("a%1%2b%"_a).to_list(), (AStringList{"a"_a, "%1"_a, "%2"_a, "b%"_a}));
    }
};

QTEST_GUILESS_MAIN(TestAStringFormat)
#include "tst_astring_format.moc"
