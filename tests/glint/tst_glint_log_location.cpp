// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint_log_location.h"
#include "tests/glint/hub_bench.h"

#include <QTest>

/// What an application logs.
class TestGlintLogLocation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void goes_to_the_server_and_the_debug_output_data();
    void goes_to_the_server_and_the_debug_output();
    void goes_to_the_debug_output_without_a_hub();
    void a_format_is_cut_off_at_1023_bytes();
    void a_format_is_read_as_utf8();
    void percent_signs_are_text();
};

namespace {

GlintLogLocation const place(QStringLiteral("page.cpp"), 42, QStringLiteral("Page::open"));

/// The text that the next line of the debug output must be.
void expect(QString const &text)
{
    QTest::ignoreMessage(QtDebugMsg, text.toUtf8().constData());
}

} // namespace

void TestGlintLogLocation::goes_to_the_server_and_the_debug_output_data()
{
    QTest::addColumn<bool>("error");
    QTest::addColumn<bool>("narrow");
    QTest::addColumn<QString>("output");
    for (bool narrow : {false, true}) {
        QTest::addRow("log, %s", narrow ? "format" : "text")
            << false << narrow << QStringLiteral("page.cpp:42 [Page::open log] opened 3");
        QTest::addRow("error, %s", narrow ? "format" : "text")
            << true << narrow << QStringLiteral("page.cpp:42 [Page::open error] opened 3");
    }
}

void TestGlintLogLocation::goes_to_the_server_and_the_debug_output()
{
    QFETCH(bool, error);
    QFETCH(bool, narrow);
    QFETCH(QString, output);
    HubBench bench;
    QVERIFY(bench.connect());
    expect(output);
    if (error && narrow)
        place.send_error_entry(bench.hub.get(), "opened %d", 3);
    else if (error)
        place.send_error_entry(bench.hub.get(), QStringLiteral("opened 3"));
    else if (narrow)
        place.send_log_entry(bench.hub.get(), "opened %d", 3);
    else
        place.send_log_entry(bench.hub.get(), QStringLiteral("opened 3"));
    QVERIFY(bench.sync());
    QStringList const sent = bench.log.commands(QStringLiteral("log "));
    QCOMPARE(sent, QStringList(QStringLiteral("log page.cpp 42 Page::open opened 3")));
    std::vector<AString> const kept = bench.server.log();
    QCOMPARE(kept.size(), std::size_t(1));
    QCOMPARE(QString(kept[0]).contains(QStringLiteral("error"), Qt::CaseInsensitive), error);
}

void TestGlintLogLocation::goes_to_the_debug_output_without_a_hub()
{
    expect(QStringLiteral("page.cpp:42 [Page::open log] alone"));
    place.send_log_entry(nullptr, QStringLiteral("alone"));
    expect(QStringLiteral("page.cpp:42 [Page::open error] alone 1"));
    place.send_error_entry(nullptr, "alone %d", 1);
}

void TestGlintLogLocation::a_format_is_cut_off_at_1023_bytes()
{
    QByteArray const text(2000, 'y');
    expect(QStringLiteral("page.cpp:42 [Page::open log] ") + QString(1023, QLatin1Char('y')));
    place.send_log_entry(nullptr, "%s", text.constData());
}

void TestGlintLogLocation::a_format_is_read_as_utf8()
{
    expect(QStringLiteral("page.cpp:42 [Page::open log] \u00fc\u20ac"));
    place.send_log_entry(nullptr, "%s", "\xc3\xbc\xe2\x82\xac");
}

void TestGlintLogLocation::percent_signs_are_text()
{
    GlintLogLocation const odd(QStringLiteral("%2"), 7, QStringLiteral("%4"));
    expect(QStringLiteral("%2:7 [%4 log] %1 %99"));
    odd.send_log_entry(nullptr, QStringLiteral("%1 %99"));
}

QTEST_GUILESS_MAIN(TestGlintLogLocation)
#include "tst_glint_log_location.moc"
