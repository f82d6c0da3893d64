// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint.h"
#include "ATarnLib/glint/glint_health.h"
#include "tests/tarnctl/exposition_check.h"
#include "tools/tarnctl/exposition.h"
#include "tools/tarnctl/health_facts.h"

#include <QMetaProperty>
#include <QTest>

using TarnCtl::Exposition;

/// What metrics collectors read, and the checker that the tests of the verbs hold it against.
class TestExposition : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void values_stand_behind_help_and_type();
    void numbers_keep_their_digits_data();
    void numbers_keep_their_digits();
    void labels_are_escaped_data();
    void labels_are_escaped();
    void states_are_1_for_the_present_one();
    void every_property_of_health_has_a_metric();
    void health_without_a_connection_leaves_out_what_it_lacks();
    void the_checker_refuses_data();
    void the_checker_refuses();
};

void TestExposition::values_stand_behind_help_and_type()
{
    Exposition metrics(QStringLiteral("vesk-1"));
    metrics.family("tarn_x", Exposition::Type::Gauge, "An x.");
    metrics.value({}, 1);
    metrics.value({{"channel", QStringLiteral("A")}}, -2);
    metrics.family("tarn_y_total", Exposition::Type::Counter, "A y.");
    QCOMPARE(metrics.text(),
        QStringLiteral("# HELP tarn_x An x.\n# TYPE tarn_x gauge\ntarn_x{server=\"vesk-1\"} 1\n"
                       "tarn_x{server=\"vesk-1\",channel=\"A\"} -2\n"
                       "# HELP tarn_y_total A y.\n# TYPE tarn_y_total counter"));
    QCOMPARE(ExpositionCheck::error_in(metrics.text() + u'\n'), QString());
}

void TestExposition::numbers_keep_their_digits_data()
{
    QTest::addColumn<double>("number");
    QTest::newRow("0") << 0.0;
    QTest::newRow("0.1") << 0.1;
    QTest::newRow("-0.5") << -0.5;
    QTest::newRow("1795291770.556") << 1795291770.556;
    QTest::newRow("999999999999999") << 999999999999999.0;
    QTest::newRow("8.7e-05") << 87e-6;
}

void TestExposition::numbers_keep_their_digits()
{
    QFETCH(double, number);
    Exposition metrics(QStringLiteral("h"));
    metrics.family("tarn_x", Exposition::Type::Gauge, "An x.");
    metrics.value({}, number);
    QCOMPARE(metrics.text().section(u' ', -1), QString::fromLatin1(QTest::currentDataTag()));
}

void TestExposition::labels_are_escaped_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("label");
    QTest::newRow("plain") << QStringLiteral("Bank 1/ü") << QStringLiteral("Bank 1/ü");
    QTest::newRow("quote") << QStringLiteral("a\"b") << QStringLiteral("a\\\"b");
    QTest::newRow("backslash") << QStringLiteral("a\\b") << QStringLiteral("a\\\\b");
    QTest::newRow("line feed") << QStringLiteral("a\nb") << QStringLiteral("a\\nb");
    QTest::newRow("tab") << QStringLiteral("a\tb") << QStringLiteral("a\\\\tb");
    QTest::newRow("escape") << QStringLiteral("\x1b[31m") << QStringLiteral("\\\\u001b[31m");
    QTest::newRow("brace") << QStringLiteral("}") << QStringLiteral("}");
    QTest::newRow("empty") << QString() << QString();
}

void TestExposition::labels_are_escaped()
{
    QFETCH(QString, text);
    QFETCH(QString, label);
    Exposition metrics(text);
    metrics.family("tarn_x", Exposition::Type::Gauge, "An x.");
    metrics.value({{"clip", text}}, 1);
    QCOMPARE(metrics.text().section(u'\n', 2),
        QStringLiteral("tarn_x{server=\"%1\",clip=\"%2\"} 1").arg(label, label));
    QCOMPARE(ExpositionCheck::error_in(metrics.text() + u'\n'), QString());
}

void TestExposition::states_are_1_for_the_present_one()
{
    Exposition metrics(QStringLiteral("h"));
    metrics.family("tarn_x", Exposition::Type::Gauge, "An x.");
    metrics.states({{"channel", QStringLiteral("A")}},
        {QStringLiteral("off"), QStringLiteral("on")}, QStringLiteral("on"));
    QCOMPARE(metrics.text().section(u'\n', 2),
        QStringLiteral("tarn_x{server=\"h\",channel=\"A\",state=\"off\"} 0\n"
                       "tarn_x{server=\"h\",channel=\"A\",state=\"on\"} 1"));
}

void TestExposition::every_property_of_health_has_a_metric()
{
    QMetaObject const &meta = GlintHealth::staticMetaObject;
    QStringList properties;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        properties << QLatin1String(meta.property(i).name());
    QStringList facts;
    QSet<QString> metrics;
    for (TarnCtl::HealthFact const &fact : TarnCtl::health_facts()) {
        facts << QLatin1String(fact.property);
        metrics.insert(QLatin1String(fact.metric));
    }
    QCOMPARE(facts, properties);
    QCOMPARE(metrics.size(), facts.size());
}

void TestExposition::health_without_a_connection_leaves_out_what_it_lacks()
{
    Glint hub(false);
    Exposition metrics(QStringLiteral("h"));
    TarnCtl::write_health(*hub.get_health(), &metrics);
    QString const text = metrics.text() + u'\n';
    QCOMPARE(ExpositionCheck::error_in(text), QString());
    QVERIFY(text.contains(
        QStringLiteral("\ntarn_connection_state{server=\"h\",state=\"unconnected\"} 1\n")));
    QVERIFY(text.contains(
        QStringLiteral("\ntarn_connection_state{server=\"h\",state=\"host_lookup\"} 0\n")));
    for (char const *unset : {"tarn_round_trip_seconds", "tarn_last_error_info"}) {
        QVERIFY2(
            text.contains(QStringLiteral("# TYPE %1 gauge\n").arg(QLatin1String(unset))), unset);
        QVERIFY2(!text.contains(QLatin1String(unset) + u'{'), unset);
    }
    TarnCtl::JsonValue const json = TarnCtl::health_json(*hub.get_health());
    QCOMPARE(json.scalar_of(QStringLiteral("state")), QStringLiteral("unconnected"));
    QCOMPARE(int(json.find(QStringLiteral("round_trip_us"))->kind()),
        int(TarnCtl::JsonValue::Kind::Null));
    QCOMPARE(int(json.find(QStringLiteral("bytes_sent"))->kind()),
        int(TarnCtl::JsonValue::Kind::Number));
}

void TestExposition::the_checker_refuses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("error");
    auto const row = [](char const *text, char const *error) {
        QTest::newRow(error) << QString::fromUtf8(text) << QString::fromUtf8(error);
    };
    row("# HELP a x\n# TYPE a gauge\na 1", "the last line has no end");
    row("# a comment\n", "line 1: a comment that is neither help nor type");
    row("# HELP a x\n# TYPE b gauge\n", "line 2: a type that does not follow its help");
    row("# HELP a x\n# TYPE a number\n", "line 2: no type 'number'");
    row("# HELP a x\n# TYPE a counter\n",
        "line 2: a name that ends in _total is that of a counter, and no other");
    row("a 1\n", "line 1: a sample outside of its family");
    row("# HELP a x\n# TYPE a gauge\nb 1\n", "line 3: a sample outside of its family");
    row("# HELP a x\n# TYPE a gauge\na one\n", "line 3: no value 'one'");
    row("# HELP a_total x\n# TYPE a_total counter\na_total -1\n", "line 3: no value '-1'");
    row("# HELP a x\n# TYPE a gauge\na{b=\"c\"d\"} 1\n", "line 3: no sample");
    row("# HELP a x\n# TYPE a gauge\na 1\na{b=\"\\t\"} 1\n", "line 4: no sample");
    row("# HELP a x\n# TYPE a gauge\na{b=\"c\"} 1\na{b=\"c\"} 2\n", "line 4: a{b=\"c\"} twice");
    row("# HELP a x\n# TYPE a gauge\na{b=\"c\",b=\"d\"} 1\n", "line 3: the label b twice");
    row("# HELP a x\n# TYPE a gauge\na 1\n# HELP a x\n", "line 4: a begins twice");
}

void TestExposition::the_checker_refuses()
{
    QFETCH(QString, text);
    QFETCH(QString, error);
    QCOMPARE(ExpositionCheck::error_in(text), error);
}

QTEST_GUILESS_MAIN(TestExposition)
#include "tst_exposition.moc"
