// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/write_all_p.h"

#include <QList>
#include <QTest>

#include <memory>

class TestWriteAll : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void goes_on_by_what_remains_data();
    void goes_on_by_what_remains();
    void nothing_to_write_is_done();
    void a_write_is_at_most_2147483647_bytes();
};

void TestWriteAll::goes_on_by_what_remains_data()
{
    QTest::addColumn<QList<int>>("taken");
    QTest::addColumn<QByteArray>("offered");
    QTest::addColumn<bool>("ok");
    using List = QList<int>;
    QTest::newRow("whole") << List{10} << QByteArray("abcdefghij") << true;
    QTest::newRow("failed") << List{-1} << QByteArray("abcdefghij") << false;
    QTest::newRow("none taken") << List{0} << QByteArray("abcdefghij") << false;
    // 4 remain: on to the fifth byte, and 4 bytes from there.
    QTest::newRow("most") << List{6, 4} << QByteArray("abcdefghij|efgh") << true;
    QTest::newRow("most, then fails") << List{6, -1} << QByteArray("abcdefghij|efgh") << false;
    QTest::newRow("most, twice") << List{6, 3, 1} << QByteArray("abcdefghij|efgh|f") << true;
    QTest::newRow("half") << List{5, 5} << QByteArray("abcdefghij|fghij") << true;
    // 6 remain, but only 4 lie behind the seventh byte.
    QTest::newRow("less than half") << List{4} << QByteArray("abcdefghij") << false;
    QTest::newRow("one") << List{1} << QByteArray("abcdefghij") << false;
    QTest::newRow("one behind half") << List{5, 1} << QByteArray("abcdefghij|fghij") << false;
}

void TestWriteAll::goes_on_by_what_remains()
{
    QFETCH(QList<int>, taken);
    // Of its exact size on the heap, so that a byte outside shows under the address sanitizer.
    auto const data = std::make_unique<char[]>(10);
    std::copy_n("abcdefghij", 10, data.get());
    QByteArrayList offered;
    auto const send = [&](char const *from, unsigned long long count) {
        offered.append(QByteArray(from, qsizetype(count)));
        return static_cast<long long>(taken.takeFirst());
    };
    QTEST(VCTP3::write_all(send, data.get(), 10), "ok");
    QTEST(offered.join('|'), "offered");
    QCOMPARE(taken.size(), 0);
}

void TestWriteAll::nothing_to_write_is_done()
{
    auto const send = [](char const *, unsigned long long) { return -1LL; };
    QVERIFY(VCTP3::write_all(send, nullptr, 0));
}

void TestWriteAll::a_write_is_at_most_2147483647_bytes()
{
    QList<unsigned long long> counts;
    auto const send = [&](char const *, unsigned long long count) {
        counts.append(count);
        return -1LL;
    };
    char const byte = 0;
    QVERIFY(!VCTP3::write_all(send, &byte, 5000000000ULL));
    QCOMPARE(counts, QList<unsigned long long>{2147483647ULL});
}

QTEST_GUILESS_MAIN(TestWriteAll)
#include "tst_write_all.moc"
