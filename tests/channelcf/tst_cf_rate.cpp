// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/cf_rate.h"
#include "tests/support/assert_log.h"

#include <QTest>
#include <climits>

class TestCFRate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void every_step_has_its_rates_data()
    {
        QTest::addColumn<unsigned int>("hd60");
        QTest::addColumn<unsigned int>("hd50");
        QTest::addColumn<unsigned int>("hd48");
        QTest::addColumn<unsigned int>("sd60");
        QTest::addColumn<unsigned int>("sd50");
        QTest::newRow("0") << 25u << 20u << 20u << 15u << 15u;
        QTest::newRow("1") << 30u << 25u << 25u << 20u << 15u;
        QTest::newRow("2") << 35u << 30u << 30u << 25u << 20u;
        QTest::newRow("3") << 40u << 35u << 30u << 30u << 25u;
        QTest::newRow("4") << 50u << 40u << 40u << 35u << 30u;
        QTest::newRow("5") << 60u << 50u << 50u << 40u << 35u;
        QTest::newRow("6") << 70u << 60u << 55u << 45u << 35u;
        QTest::newRow("7") << 80u << 65u << 65u << 50u << 40u;
        QTest::newRow("8") << 90u << 75u << 70u << 55u << 45u;
        QTest::newRow("9") << 100u << 85u << 80u << 60u << 50u;
        QTest::newRow("10") << 110u << 90u << 90u << 65u << 55u;
        QTest::newRow("11") << 120u << 100u << 95u << 70u << 60u;
        QTest::newRow("12") << 130u << 110u << 105u << 75u << 60u;
        QTest::newRow("13") << 140u << 115u << 110u << 80u << 65u;
        QTest::newRow("14") << 150u << 125u << 120u << 90u << 75u;
        QTest::newRow("15") << 160u << 135u << 130u << 100u << 85u;
        QTest::newRow("16") << 170u << 140u << 135u << 110u << 90u;
        QTest::newRow("17") << 180u << 150u << 145u << 120u << 100u;
        QTest::newRow("18") << 190u << 160u << 150u << 130u << 110u;
        QTest::newRow("19") << 200u << 165u << 160u << 140u << 115u;
    }
    void every_step_has_its_rates()
    {
        QFETCH(unsigned int, hd60);
        QFETCH(unsigned int, hd50);
        QFETCH(unsigned int, hd48);
        QFETCH(unsigned int, sd60);
        QFETCH(unsigned int, sd50);
        AssertLog log;
        unsigned int const q_index = QString::fromLatin1(QTest::currentDataTag()).toUInt();
        QCOMPARE(CFRate::hd60_rate(q_index), hd60);
        QCOMPARE(CFRate::hd50_rate(q_index), hd50);
        QCOMPARE(CFRate::hd48_rate(q_index), hd48);
        QCOMPARE(CFRate::sd60_rate(q_index), sd60);
        QCOMPARE(CFRate::sd50_rate(q_index), sd50);
        QVERIFY(log.take().isEmpty());
    }

    void beyond_the_last_step_the_best_holds()
    {
        QStringList const texts(5, QStringLiteral("q_index < countof(compression_rates)"));
        for (unsigned int q_index : {20u, 21u, UINT_MAX}) {
            AssertLog log;
            QCOMPARE(CFRate::hd60_rate(q_index), 200u);
            QCOMPARE(CFRate::hd50_rate(q_index), 165u);
            QCOMPARE(CFRate::hd48_rate(q_index), 160u);
            QCOMPARE(CFRate::sd60_rate(q_index), 140u);
            QCOMPARE(CFRate::sd50_rate(q_index), 115u);
            QCOMPARE(log.take(), texts);
        }
    }
};

QTEST_GUILESS_MAIN(TestCFRate)
#include "tst_cf_rate.moc"
