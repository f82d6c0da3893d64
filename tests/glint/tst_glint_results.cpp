// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint_results_p.h"
#include "tests/support/assert_log.h"

#include <QTest>

namespace {

using Results = GlintResults<QString>;

/// Of connection 1, as "channel value", or "none".
QString take(Results *results, unsigned long long connection = 1)
{
    unsigned int channel = 0;
    QString value;
    if (!results->take(connection, &channel, &value))
        return QStringLiteral("none");
    return QStringLiteral("%1 %2").arg(channel).arg(value);
}

} // namespace

/// What waits between a worker and the hub.
class TestGlintResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void gives_the_newest_value_of_a_channel();
    void gives_channels_in_the_order_in_which_they_came();
    void an_overtaken_channel_keeps_its_place();
    void a_store_is_due_once_until_its_channel_is_taken();
    void is_raised_once_until_all_is_taken();
    void a_channel_of_200_is_an_assertion_and_is_stored_data();
    void a_channel_of_200_is_an_assertion_and_is_stored();
    void values_of_another_connection_are_passed_over();
    void a_value_of_a_new_connection_replaces_one_of_the_old();
};

void TestGlintResults::gives_the_newest_value_of_a_channel()
{
    Results results;
    QCOMPARE(take(&results), QStringLiteral("none"));
    results.store(3, 1, QStringLiteral("a"));
    results.store(3, 1, QStringLiteral("b"));
    QCOMPARE(results.waiting(), 1u);
    QCOMPARE(results.overtaken(), 1u);
    QCOMPARE(take(&results), QStringLiteral("3 b"));
    QCOMPARE(take(&results), QStringLiteral("none"));
    QCOMPARE(results.waiting(), 0u);
}

void TestGlintResults::gives_channels_in_the_order_in_which_they_came()
{
    Results results;
    for (unsigned int channel : {5u, 3u, 39u, 0u})
        results.store(channel, 1, QStringLiteral("x"));
    for (char const *expected : {"5 x", "3 x", "39 x", "0 x", "none"})
        QCOMPARE(take(&results), QString::fromLatin1(expected));
}

void TestGlintResults::an_overtaken_channel_keeps_its_place()
{
    Results results;
    results.store(5, 1, QStringLiteral("a"));
    results.store(3, 1, QStringLiteral("b"));
    results.store(5, 1, QStringLiteral("c"));
    QCOMPARE(take(&results), QStringLiteral("5 c"));
    results.store(5, 1, QStringLiteral("d"));
    QCOMPARE(take(&results), QStringLiteral("3 b"));
    QCOMPARE(take(&results), QStringLiteral("5 d"));
}

void TestGlintResults::a_store_is_due_once_until_its_channel_is_taken()
{
    Results results;
    QVERIFY(results.store(1, 1, QString()));
    QVERIFY(!results.store(1, 1, QString()));
    QVERIFY(results.store(2, 1, QString()));
    take(&results);
    QVERIFY(results.store(1, 1, QString()));
}

void TestGlintResults::is_raised_once_until_all_is_taken()
{
    Results results;
    results.store(1, 1, QString());
    QVERIFY(results.raise());
    QVERIFY(!results.raise());
    take(&results);
    QVERIFY(!results.raise());
    take(&results); // none
    QVERIFY(results.raise());
}

void TestGlintResults::a_channel_of_200_is_an_assertion_and_is_stored_data()
{
    QTest::addColumn<unsigned int>("channel");
    QTest::addColumn<int>("assertions");
    QTest::newRow("40") << 40u << 0;
    QTest::newRow("199") << 199u << 0;
    QTest::newRow("200") << 200u << 1;
    QTest::newRow("255") << 255u << 1;
}

void TestGlintResults::a_channel_of_200_is_an_assertion_and_is_stored()
{
    QFETCH(unsigned int, channel);
    QFETCH(int, assertions);
    AssertLog asserts;
    Results results;
    QVERIFY(results.store(channel, 1, QStringLiteral("v")));
    QCOMPARE(asserts.take(), QStringList(assertions, QStringLiteral("c < 200")));
    QCOMPARE(take(&results), QStringLiteral("%1 v").arg(channel));
    QCOMPARE(asserts.take(), QStringList());
}

void TestGlintResults::values_of_another_connection_are_passed_over()
{
    Results results;
    results.store(1, 1, QStringLiteral("old"));
    results.store(2, 2, QStringLiteral("new"));
    results.store(3, 1, QStringLiteral("old"));
    QCOMPARE(take(&results, 2), QStringLiteral("2 new"));
    QCOMPARE(take(&results, 2), QStringLiteral("none"));
    QVERIFY(results.store(1, 2, QStringLiteral("again")));
    QCOMPARE(take(&results, 2), QStringLiteral("1 again"));
}

void TestGlintResults::a_value_of_a_new_connection_replaces_one_of_the_old()
{
    Results results;
    results.store(1, 1, QStringLiteral("old"));
    QVERIFY(!results.store(1, 2, QStringLiteral("new")));
    QCOMPARE(take(&results, 2), QStringLiteral("1 new"));
}

QTEST_GUILESS_MAIN(TestGlintResults)
#include "tst_glint_results.moc"
