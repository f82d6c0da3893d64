// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/base/aobject_numbered_relay.h"
#include "ATarnLib/base/aobject_relay.h"

#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>

/// Signals that are passed on by number.
class TestAObjectRelay : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void names_carry_the_number_data();
    void names_carry_the_number();
    void every_slot_emits_its_signal_alone();
    void a_slot_with_a_number_emits_that_signal_data();
    void a_slot_with_a_number_emits_that_signal();
    void slots_are_reached_by_member_pointer();
    void a_numbered_relay_answers_its_number_alone();
    void a_numbered_relay_adds_its_number();
    void a_number_fans_out_and_comes_back();
};

void TestAObjectRelay::names_carry_the_number_data()
{
    QTest::addColumn<unsigned int>("number");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QByteArray>("slot");
    QTest::newRow("0") << 0u << QByteArray("2sig0()") << QByteArray("1slot0()");
    QTest::newRow("7") << 7u << QByteArray("2sig7()") << QByteArray("1slot7()");
    QTest::newRow("100") << 100u << QByteArray("2sig100()") << QByteArray("1slot100()");
    QTest::newRow("beyond") << 4294967295u << QByteArray("2sig4294967295()")
                            << QByteArray("1slot4294967295()");
}

void TestAObjectRelay::names_carry_the_number()
{
    QFETCH(unsigned int, number);
    QFETCH(QByteArray, signal);
    QFETCH(QByteArray, slot);
    QCOMPARE(AObjectRelay::sig_name(number), signal);
    QCOMPARE(AObjectRelay::slot_name(number), slot);
}

void TestAObjectRelay::every_slot_emits_its_signal_alone()
{
    for (unsigned int n = 0; n < AObjectRelay::count; ++n) {
        AObjectRelay source;
        AObjectRelay relay;
        QVERIFY(connect(&source, AObjectRelay::sig_name(5), &relay, AObjectRelay::slot_name(n)));
        std::vector<std::unique_ptr<QSignalSpy>> spies;
        for (unsigned int i = 0; i < AObjectRelay::count; ++i)
            spies.push_back(std::make_unique<QSignalSpy>(&relay, AObjectRelay::sig_name(i)));
        QSignalSpy numbered(&relay, qOverload<unsigned int>(&AObjectRelay::sig));
        Q_EMIT source.sig5();
        for (unsigned int i = 0; i < AObjectRelay::count; ++i)
            QCOMPARE(spies[i]->count(), i == n ? 1 : 0);
        QCOMPARE(numbered.count(), 0);
    }
}

void TestAObjectRelay::a_slot_with_a_number_emits_that_signal_data()
{
    QTest::addColumn<unsigned int>("number");
    QTest::newRow("0") << 0u;
    QTest::newRow("7") << 7u;
    QTest::newRow("100") << 100u;
    QTest::newRow("101") << 101u;
    QTest::newRow("the highest") << 4294967295u;
}

void TestAObjectRelay::a_slot_with_a_number_emits_that_signal()
{
    QFETCH(unsigned int, number);
    AObjectRelay relay;
    std::vector<std::unique_ptr<QSignalSpy>> spies;
    for (unsigned int i = 0; i < AObjectRelay::count; ++i)
        spies.push_back(std::make_unique<QSignalSpy>(&relay, AObjectRelay::sig_name(i)));
    QSignalSpy numbered(&relay, qOverload<unsigned int>(&AObjectRelay::sig));
    relay.slot(number);
    for (unsigned int i = 0; i < AObjectRelay::count; ++i)
        QCOMPARE(spies[i]->count(), i == number ? 1 : 0);
    QCOMPARE(numbered.count(), 0);
}

void TestAObjectRelay::slots_are_reached_by_member_pointer()
{
    AObjectRelay relay;
    QSignalSpy emitted(&relay, &AObjectRelay::sig42);
    QVERIFY(AObjectRelay::slot_method(42) == &AObjectRelay::slot42);
    (relay.*AObjectRelay::slot_method(42))();
    QCOMPARE(emitted.count(), 1);
    QVERIFY(AObjectRelay::slot_method(100) == &AObjectRelay::slot100);
    QVERIFY(AObjectRelay::slot_method(101) == nullptr);
}

void TestAObjectRelay::a_numbered_relay_answers_its_number_alone()
{
    AObjectNumberedRelay relay(3);
    QSignalSpy emitted(&relay, qOverload<>(&AObjectNumberedRelay::sig));
    QSignalSpy numbered(&relay, qOverload<unsigned int>(&AObjectNumberedRelay::sig));
    relay.slot(4);
    relay.slot(2);
    QCOMPARE(emitted.count(), 0);
    relay.slot(3);
    QCOMPARE(emitted.count(), 1);
    QCOMPARE(numbered.count(), 0);
}

void TestAObjectRelay::a_numbered_relay_adds_its_number()
{
    AObjectNumberedRelay relay(3);
    QSignalSpy emitted(&relay, qOverload<unsigned int>(&AObjectNumberedRelay::sig));
    QSignalSpy plain(&relay, qOverload<>(&AObjectNumberedRelay::sig));
    relay.slot();
    QCOMPARE(plain.count(), 0);
    QCOMPARE(emitted.count(), 1);
    QCOMPARE(emitted[0][0].toUInt(), 3u);
}

void TestAObjectRelay::a_number_fans_out_and_comes_back()
{
    AObjectNumberedRelay in(8);
    AObjectRelay middle;
    AObjectNumberedRelay out(8);
    AObjectNumberedRelay other(9);
    connect(&in, qOverload<unsigned int>(&AObjectNumberedRelay::sig), &middle, &AObjectRelay::slot);
    connect(&in, qOverload<unsigned int>(&AObjectNumberedRelay::sig), &out,
        qOverload<unsigned int>(&AObjectNumberedRelay::slot));
    connect(&in, qOverload<unsigned int>(&AObjectNumberedRelay::sig), &other,
        qOverload<unsigned int>(&AObjectNumberedRelay::slot));
    QSignalSpy eighth(&middle, &AObjectRelay::sig8);
    QSignalSpy reached(&out, qOverload<>(&AObjectNumberedRelay::sig));
    QSignalSpy passed_over(&other, qOverload<>(&AObjectNumberedRelay::sig));
    in.slot();
    QCOMPARE(eighth.count(), 1);
    QCOMPARE(reached.count(), 1);
    QCOMPARE(passed_over.count(), 0);
}

QTEST_GUILESS_MAIN(TestAObjectRelay)
#include "tst_aobject_relay.moc"
