// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_format.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_list.h"

#include <QTest>

class TestAString : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void smoke()
    {
        QString const q(AString::l1("Hallo"));
        QCOMPARE(q, QStringLiteral("Hallo"));
        QVERIFY(AString() == AString::l1(""));
        AString s = AString::l1("%1 and %1").arg(AString::l1("a")).arg(AString::l1("b"));
        QCOMPARE(s.to_string(), std::string("a and b"));
        QString big(1000, QLatin1Char('x'));
        AString b(big);
        QCOMPARE(QString(b), big);
        QCOMPARE(b.length(), 1000u);
        QCOMPARE(AString::l1(",a,,b,").split(AString::l1(","), true).size(), 5u);
        QCOMPARE(AString::l1(",a,,b,").split(AString::l1(","), false).size(), 2u);
        int speed = 0;
        QVERIFY(AString::l1("-0.5X").to_speed(&speed));
        QCOMPARE(speed, -32768);
        QCOMPARE(AString::from_speed(98304, 15).to_string(), std::string("1.5X"));
        QCOMPARE(AString::from_int64_t(-5, 4).to_string(), std::string("-  5"));
        QCOMPARE(AString::from_int64_t(-5, -4).to_string(), std::string("-5  "));
        QCOMPARE(AString::from_int64_t(7, 3, AChar(U'0')).to_string(), std::string("007"));
        std::string text;
        for (AChar c : b)
            text += char(c.ord());
        QCOMPARE(text, big.toStdString());
    }
};

QTEST_GUILESS_MAIN(TestAString)
#include "tst_astring.moc"
