// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/enum_string.h"
#include "tests/protocol/protocol_texts.h"

#include <QTest>
#include <iterator>

using VCTP3::EnumString;

class TestEnumString : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void knows_both_directions();
    void gives_the_bad_value_and_name_for_unknown();
    void takes_rows_of_strings();
    void skips_rows_without_a_name();
    void uses_the_defaults_of_its_making();
    void is_case_sensitive_and_does_not_trim();
    void replaces_a_row_that_is_added_again();
    void reads_variants();
    void tells_validity_and_fills_what_is_given();
    void walks_in_numeric_order();
    void walks_nowhere_when_empty();
};

static constexpr EnumString::ByLatin1 rows[] = {{5, "five"}, {-1, "minus"}, {9, "nine"}};

void TestEnumString::knows_both_directions()
{
    EnumString const table(rows, std::size(rows));
    QCOMPARE(table.to_name(5), l1("five"));
    QCOMPARE(table.to_name(-1), l1("minus"));
    QCOMPARE(table.to_enumval(l1("nine")), 9);
}

void TestEnumString::gives_the_bad_value_and_name_for_unknown()
{
    EnumString const plain(rows, std::size(rows));
    QCOMPARE(plain.to_name(6), AString());
    QCOMPARE(plain.to_enumval(l1("six")), -1);
    QCOMPARE(plain.to_name(6, l1("none")), l1("none"));
    QCOMPARE(plain.to_enumval(l1("six"), 66), 66);
    EnumString const named(rows, std::size(rows), 77, l1("bad"));
    QCOMPARE(named.to_name(6), l1("bad"));
    QCOMPARE(named.to_enumval(l1("six")), 77);
    QCOMPARE(named.to_name(5, l1("none")), l1("five"));
    QCOMPARE(named.to_enumval(l1("five"), 66), 5);
}

void TestEnumString::takes_rows_of_strings()
{
    EnumString::ByAString const strings[] = {{0, l1("zero")}, {1, AString()}, {2, l1("two")}};
    EnumString const table(strings, std::size(strings), 7, l1("x"));
    QCOMPARE(table.to_name(2), l1("two"));
    QCOMPARE(table.to_name(1), l1("x"));
    QCOMPARE(table.to_enumval(AString()), 7);
}

void TestEnumString::skips_rows_without_a_name()
{
    EnumString::ByLatin1 const holes[] = {{0, nullptr}, {1, ""}, {2, "two"}};
    EnumString const table(holes, std::size(holes));
    QVERIFY(!table.valid_value(0));
    QVERIFY(!table.valid_value(1));
    QVERIFY(table.valid_value(2));
    QVERIFY(!table.valid_name(AString()));
}

void TestEnumString::uses_the_defaults_of_its_making()
{
    EnumString const before(rows, std::size(rows));
    EnumString::default_badval(-7);
    EnumString::default_badname(l1("?"));
    EnumString const after(rows, std::size(rows));
    EnumString const half(rows, std::size(rows), 3);
    EnumString::default_badval(-1);
    EnumString::default_badname(AString());
    QCOMPARE(before.to_enumval(l1("six")), -1);
    QCOMPARE(before.to_name(6), AString());
    QCOMPARE(after.to_enumval(l1("six")), -7);
    QCOMPARE(after.to_name(6), l1("?"));
    QCOMPARE(half.to_enumval(l1("six")), 3);
    QCOMPARE(half.to_name(6), l1("?"));
    QCOMPARE(EnumString().to_enumval(l1("six")), -1);
}

void TestEnumString::is_case_sensitive_and_does_not_trim()
{
    EnumString const table(rows, std::size(rows));
    QVERIFY(!table.valid_name(l1("Five")));
    QVERIFY(!table.valid_name(l1(" five")));
}

void TestEnumString::replaces_a_row_that_is_added_again()
{
    EnumString table(rows, std::size(rows));
    table.add(5, l1("cinq"));
    QCOMPARE(table.to_name(5), l1("cinq"));
    QCOMPARE(table.to_enumval(l1("five")), 5);
    table.add(10, l1("nine"));
    QCOMPARE(table.to_enumval(l1("nine")), 10);
    table.add(11, AString());
    QVERIFY(!table.valid_value(11));
}

void TestEnumString::reads_variants()
{
    EnumString const table(rows, std::size(rows), 77, l1("bad"));
    QCOMPARE(table.to_name(AVariant(5)), l1("five"));
    QCOMPARE(table.to_name(AVariant(6)), l1("bad"));
    QCOMPARE(table.to_name(AVariant(l1("five"))), l1("bad"));
    QCOMPARE(table.to_name(AVariant(), l1("none")), l1("none"));
    QCOMPARE(table.to_enumval(AVariant(l1("five"))), 5);
    QCOMPARE(table.to_enumval(AVariant(l1("six"))), 77);
    QCOMPARE(table.to_enumval(AVariant(5)), 77);
    QCOMPARE(table.to_enumval(AVariant(), 66), 66);
}

void TestEnumString::tells_validity_and_fills_what_is_given()
{
    EnumString const table(rows, std::size(rows));
    int value = 0;
    AString name;
    QVERIFY(table.valid_name(l1("nine"), &value));
    QCOMPARE(value, 9);
    QVERIFY(!table.valid_name(l1("ten"), &value));
    QCOMPARE(value, 9);
    QVERIFY(table.valid_value(5, &name));
    QCOMPARE(name, l1("five"));
    QVERIFY(!table.valid_value(4, &name));
    QCOMPARE(name, l1("five"));
    QVERIFY(table.valid_enum(AVariant(l1("minus")), &value));
    QCOMPARE(value, -1);
    QVERIFY(!table.valid_enum(AVariant(5), &value));
    QVERIFY(table.valid_name(l1("nine")) && table.valid_value(9));
    QVERIFY(table.valid_enum(AVariant(l1("nine"))));
}

void TestEnumString::walks_in_numeric_order()
{
    EnumString const table(rows, std::size(rows));
    int value = 0;
    QVERIFY(table.getfirst(&value));
    QCOMPARE(value, -1);
    QVERIFY(table.getnext(&value));
    QCOMPARE(value, 5);
    QVERIFY(table.getnext(value, &value));
    QCOMPARE(value, 9);
    QVERIFY(!table.getnext(&value));
    QCOMPARE(value, 9);
    QVERIFY(table.getprev(7, &value));
    QCOMPARE(value, 5);
    QVERIFY(table.getprev(&value));
    QCOMPARE(value, -1);
    QVERIFY(!table.getprev(&value));
    QVERIFY(table.getlast(&value));
    QCOMPARE(value, 9);
    QVERIFY(table.getnext(6, &value));
    QCOMPARE(value, 9);
}

void TestEnumString::walks_nowhere_when_empty()
{
    EnumString const table;
    int value = 3;
    QVERIFY(!table.getfirst(&value));
    QVERIFY(!table.getlast(&value));
    QVERIFY(!table.getnext(&value));
    QVERIFY(!table.getprev(0, &value));
    QCOMPARE(value, 3);
}

QTEST_GUILESS_MAIN(TestEnumString)
#include "tst_enum_string.moc"
