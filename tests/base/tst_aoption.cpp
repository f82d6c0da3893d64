// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"

#include <QTest>
#include <string>

namespace {

AOption<std::string> name_of(int n)
{
    if (n == 0)
        return {};
    return std::string(static_cast<std::size_t>(n), 'x');
}

} // namespace

class TestAOption : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void absent_leaves_the_value_default()
    {
        AOption<std::string> const none = name_of(0);
        QVERIFY(!none.has_value() && !none);
        QCOMPARE(none.value(), std::string());
        QCOMPARE(*none, std::string());
        QVERIFY(none->empty());
        QCOMPARE(AOption<int>().value(), 0);
        QCOMPARE(none.value_or("other"), std::string("other"));
    }

    void present_holds_the_value()
    {
        AOption<std::string> const some = name_of(2);
        QVERIFY(some.has_value() && some);
        QCOMPARE(some.value(), std::string("xx"));
        QCOMPARE(some->size(), 2u);
        QCOMPARE(some.value_or("other"), std::string("xx"));
    }

    void a_default_value_can_be_present()
    {
        AOption<int> const zero = 0;
        QVERIFY(zero.has_value());
        QVERIFY(zero != AOption<int>());
    }

    void clear_makes_it_absent_and_default()
    {
        AOption<int> n = 5;
        n.clear();
        QVERIFY(!n.has_value());
        QCOMPARE(n.value(), 0);
        n = 6;
        QCOMPARE(n.value(), 6);
    }

    void absent_sorts_first()
    {
        AOption<int> const none, one = 1, two = 2;
        QVERIFY(none < one && one < two && !(two < one) && !(one < none) && !(none < none));
        QVERIFY(none == AOption<int>() && one == AOption<int>(1) && one != two && one != none);
    }
};

QTEST_GUILESS_MAIN(TestAOption)
#include "tst_aoption.moc"
