// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/command_line.h"
#include "tools/tarnctl/help.h"
#include "tools/tarnctl/usage.h"
#include "tools/tarnctl/verbs.h"
#include "tools/tarnctl/vocabulary_info.h"

#include <QRegularExpression>
#include <QTest>

using TarnCtl::CommandLine;
using TarnCtl::Settings;

class TestCommandLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void global_options_stand_before_and_after_the_verb();
    void options_take_values_in_both_ways();
    void a_word_with_one_dash_is_no_option();
    void two_dashes_end_the_options();
    void the_last_of_an_option_counts();
    void refuses_data();
    void refuses();
    void settings_have_defaults();
    void settings_are_checked_data();
    void settings_are_checked();
    void reads_channel_lists_data();
    void reads_channel_lists();
    void completes_data();
    void completes();
    void every_verb_tells_an_example();
    void help_lists_every_report_with_its_group();
    void usage_names_every_option();
};

namespace {

QStringList words(char const *line)
{
    return QString::fromLatin1(line).split(u' ', Qt::SkipEmptyParts);
}

CommandLine read(char const *text)
{
    CommandLine line;
    QString error;
    if (!line.read(words(text), &error))
        qFatal("%s: %s", text, qPrintable(error));
    return line;
}

} // namespace

void TestCommandLine::global_options_stand_before_and_after_the_verb()
{
    for (char const *text : {"--json --server h play A", "play --json A --server h",
             "--json play A --server h", "play A --json --server=h"}) {
        CommandLine const line = read(text);
        QCOMPARE(line.verb->name, "play");
        QCOMPARE(line.words, QStringList{QStringLiteral("A")});
        QVERIFY(line.has("json"));
        QVERIFY(!line.has("trace"));
        QCOMPARE(line.value("server"), QStringLiteral("h"));
    }
}

void TestCommandLine::options_take_values_in_both_ways()
{
    CommandLine const line = read("watch --for 2 --count=3 --reports=a=b");
    QCOMPARE(line.value("for"), QStringLiteral("2"));
    QCOMPARE(line.value("count"), QStringLiteral("3"));
    QCOMPARE(line.value("reports"), QStringLiteral("a=b"));
    QCOMPARE(line.value("channels", QStringLiteral("none")), QStringLiteral("none"));
}

void TestCommandLine::a_word_with_one_dash_is_no_option()
{
    QCOMPARE(read("play A -1X").words, words("A -1X"));
    QVERIFY(read("play -h").has("help"));
}

void TestCommandLine::two_dashes_end_the_options()
{
    CommandLine const line = read("call --json -- --trace -- -h");
    QVERIFY(line.has("json"));
    QVERIFY(!line.has("trace"));
    QVERIFY(!line.has("help"));
    QCOMPARE(line.words, words("--trace -- -h"));
}

void TestCommandLine::the_last_of_an_option_counts()
{
    QCOMPARE(read("--server a clips --server b").value("server"), QStringLiteral("b"));
}

void TestCommandLine::refuses_data()
{
    QTest::addColumn<QString>("error");
    QTest::newRow("fly A") << QStringLiteral(
        "no verb 'fly': expected one of call, watch, monitor, status, outputs, tally, alerts, "
        "health, "
        "clips, clip, play, stop, cue, record, meta, config, help");
    QTest::newRow("--for 2 watch") << QStringLiteral("no option --for before the verb");
    QTest::newRow("play --for 2") << QStringLiteral("no option --for of 'play'");
    QTest::newRow("play --jsno") << QStringLiteral("no option --jsno of 'play'");
    QTest::newRow("play --json=1") << QStringLiteral("--json takes no value");
    QTest::newRow("play --server") << QStringLiteral("--server needs a value: HOST");
}

void TestCommandLine::refuses()
{
    QFETCH(QString, error);
    CommandLine line;
    QString reason;
    QVERIFY(!line.read(words(QTest::currentDataTag()), &reason));
    QCOMPARE(reason, error);
}

void TestCommandLine::settings_have_defaults()
{
    Settings settings;
    QString error;
    QVERIFY(settings.read(read("clips"), &error));
    QCOMPARE(settings.server, QStringLiteral("127.0.0.1"));
    QCOMPARE(settings.timeout_ms, 10000);
    QVERIFY(!settings.json);
    QVERIFY(!settings.trace);
}

void TestCommandLine::settings_are_checked_data()
{
    QTest::addColumn<int>("timeout_ms");
    QTest::newRow("--timeout 0.25") << 250;
    QTest::newRow("--timeout 0.0001") << 1;
    QTest::newRow("--timeout 1000000") << 1000000000;
    QTest::newRow("--timeout 1000001") << 0;
    QTest::newRow("--timeout 0") << 0;
    QTest::newRow("--timeout -1") << 0;
    QTest::newRow("--timeout nan") << 0;
    QTest::newRow("--timeout inf") << 0;
    QTest::newRow("--timeout 5s") << 0;
    QTest::newRow("--timeout=") << 0;
    QTest::newRow("--server=") << 0;
    QTest::newRow("--server=h:1") << 0;
    QTest::newRow("--server=[::1]:8913") << 0;
    QTest::newRow("--server=::1") << 10000;
    QTest::newRow("--server=fe80::1%lo") << 10000;
}

void TestCommandLine::settings_are_checked()
{
    QFETCH(int, timeout_ms);
    Settings settings;
    QString error;
    QCOMPARE(settings.read(read(QTest::currentDataTag()), &error), timeout_ms > 0);
    QCOMPARE(error.isEmpty(), timeout_ms > 0);
    if (timeout_ms > 0)
        QCOMPARE(settings.timeout_ms, timeout_ms);
}

void TestCommandLine::reads_channel_lists_data()
{
    QTest::addColumn<QString>("names");
    QTest::newRow("A") << QStringLiteral("A");
    QTest::newRow("A-D,F") << QStringLiteral("A B C D F");
    QTest::newRow("F,A-B,B") << QStringLiteral("F A B");
    QTest::newRow("Y-AB") << QStringLiteral("Y Z AA AB");
    QTest::newRow("C-C") << QStringLiteral("C");
    QTest::newRow("") << QString();
    QTest::newRow("a") << QString();
    QTest::newRow("A,") << QString();
    QTest::newRow("D-A") << QString();
    QTest::newRow("A-B-C") << QString();
    QTest::newRow("A-AO") << QString();
    QTest::newRow("-B") << QString();
}

void TestCommandLine::reads_channel_lists()
{
    QFETCH(QString, names);
    QStringList read;
    QString error;
    QString const text = QString::fromLatin1(QTest::currentDataTag());
    QCOMPARE(TarnCtl::read_channels(text, &read, &error), !names.isEmpty());
    QCOMPARE(read.join(u' '), names);
    if (names.isEmpty())
        QCOMPARE(error,
            QStringLiteral("bad channels '%1': expected a list such as A-D,F of A to AN")
                .arg(text));
}

void TestCommandLine::completes_data()
{
    QTest::addColumn<QString>("expected");
    QTest::newRow("cl") << QStringLiteral("clips clip");
    QTest::newRow("--s") << QStringLiteral("--server=");
    QTest::newRow("watch --re") << QStringLiteral("--reports= --reconnect");
    QTest::newRow("meta --p") << QStringLiteral("--prefix=");
    QTest::newRow("meta set d --p") << QStringLiteral("--prefix=");
    QTest::newRow("meta get d --p") << QString();
    QTest::newRow("meta watch d --co") << QStringLiteral("--count=");
    QTest::newRow("play --re") << QString();
    QTest::newRow("watch --reports=channel_st") << QStringLiteral("--reports=channel_status");
    QTest::newRow("watch --reports=alerts,disk_")
        << QStringLiteral("--reports=alerts,disk_space --reports=alerts,disk_space_changed");
    QTest::newRow("monitor --s") << QStringLiteral("--server= --signals=");
    QTest::newRow("monitor --signals=aux_p")
        << QStringLiteral("--signals=aux_position --signals=aux_peak --signals=aux_peak_hold");
    QTest::newRow("monitor --signals=status,disp")
        << QStringLiteral("--signals=status,display_timecode");
    QTest::newRow("he") << QStringLiteral("health help");
    QTest::newRow("call list_re") << QStringLiteral("list_rename list_remove_item");
    QTest::newRow("call play Channel=A L") << QStringLiteral("Layer=");
    QTest::newRow("call play Channel=A Ch") << QString();
    QTest::newRow("call play Layer=") << QStringLiteral("Layer=normal Layer=bed");
    QTest::newRow("call play MinLatency=t") << QStringLiteral("MinLatency=true");
    QTest::newRow("call play Speed=") << QString();
    QTest::newRow("call nothing X") << QString();
    QTest::newRow("meta e") << QStringLiteral("erase");
    QTest::newRow("config s") << QStringLiteral("set");
    QTest::newRow("play AM") << QStringLiteral("AM");
    QTest::newRow("help wa") << QStringLiteral("watch");
    QTest::newRow("help call list_re") << QStringLiteral("list_rename list_remove_item");
    QTest::newRow("help meta e") << QStringLiteral("erase");
    QTest::newRow("help play A") << QString();
    QTest::newRow("help call play C") << QString();
    QTest::newRow("fly a") << QString();
    QTest::newRow("--server s") << QString();
}

void TestCommandLine::completes()
{
    QFETCH(QString, expected);
    QCOMPARE(TarnCtl::completions(words(QTest::currentDataTag())).join(u' '), expected);
}

void TestCommandLine::every_verb_tells_an_example()
{
    for (TarnCtl::VerbInfo const &verb : TarnCtl::all_verbs()) {
        CommandLine line;
        line.verb = &verb;
        QString const text = TarnCtl::help_text(line);
        QVERIFY2(text.contains(QStringLiteral("Example:\n  tarnctl")), verb.name);
        QVERIFY2(text.startsWith(QStringLiteral("usage: tarnctl ") + QLatin1String(verb.name)),
            verb.name);
        QVERIFY2(TarnCtl::help_text().contains(QLatin1String(verb.summary)), verb.name);
    }
}

void TestCommandLine::help_lists_every_report_with_its_group()
{
    QString const help = TarnCtl::report_list() + u'\n';
    int reports = 0;
    for (TarnCtl::ReportInfo const &report : TarnCtl::all_reports()) {
        QString const group = QLatin1String(report.registration);
        QRegularExpression const line(
            QStringLiteral("\n  %1 *([a-z_]+, )*%2[,\n]").arg(group, QLatin1String(report.name)));
        QVERIFY2(line.match(help).hasMatch(), report.name);
        ++reports;
    }
    QCOMPARE(reports, 57);
}

void TestCommandLine::usage_names_every_option()
{
    for (TarnCtl::VerbInfo const &verb : TarnCtl::all_verbs()) {
        CommandLine line;
        line.verb = &verb;
        for (TarnCtl::OptionInfo const &option : verb.options) {
            QString form = QStringLiteral("[--") + QLatin1String(option.name);
            if (option.value)
                form += u' ' + QLatin1String(option.value);
            QVERIFY2(TarnCtl::usage_text(line).contains(form + u']'), option.name);
        }
    }
}

QTEST_GUILESS_MAIN(TestCommandLine)
#include "tst_command_line.moc"
