// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_sim.h"
#include "sim/vesk/vesk_world.h"
#include "tests/glint/wire_log.h"
#include "tests/support/loopback_address.h"
#include "tests/tarnctl/demo_server.h"
#include "tests/tarnctl/exposition_check.h"
#include "tests/tarnctl/tool_run.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <memory>

/// `tarnctl outputs`, `tally`, `alerts` and `health`: what the hub's models hold, told once.
class TestTarnctlSnapshots : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void outputs_tell_what_feeds_them_and_what_they_show();
    void outputs_of_a_channel_with_a_key_are_told_apart();
    void outputs_register_the_channels_that_feed_them_alone();
    void outputs_are_none_without_a_board();
    void outputs_for_a_collector();
    void tally_of_each_channel();
    void tally_for_a_collector();
    void tally_of_all_forty_channels_without_a_board();
    void alerts_are_told_by_name();
    void alerts_that_are_over_are_ok();
    void alerts_for_a_collector();
    void health_tells_every_number();
    void health_for_a_collector();
    void health_takes_a_round_trip();
    void every_verb_ends_as_its_neighbours_data();
    void every_verb_ends_as_its_neighbours();

private:
    /// The lines of a run with --json; empty after a failure.
    QList<QJsonObject> objects(char const *verb);
    /// The text of a run, which a collector must be able to read.
    QString metrics(char const *verb);
    void raise(char const *name, VCTP3::AlertingLevel level, QString const &value);

    QHostAddress address;
    std::unique_ptr<WireLog> log;
    std::unique_ptr<VeskSim> server;
};

namespace {

QString text_of(QJsonObject const &object, char const *key)
{
    return object.value(QLatin1String(key)).toString();
}

int number_of(QJsonObject const &object, char const *key)
{
    return object.value(QLatin1String(key)).toInt(-1);
}

} // namespace

void TestTarnctlSnapshots::init()
{
    address = LoopbackAddress::unique();
    log = std::make_unique<WireLog>();
    server = std::make_unique<VeskSim>(address, log->options(demo_options()));
}

void TestTarnctlSnapshots::cleanup()
{
    server.reset();
    log.reset();
}

QList<QJsonObject> TestTarnctlSnapshots::objects(char const *verb)
{
    ToolRun const run = run_json(address, words(verb));
    QList<QJsonObject> result;
    if (run.code != 0 || !run.err.isEmpty())
        return result;
    for (QString const &line : run.lines()) {
        QJsonParseError error;
        result << QJsonDocument::fromJson(line.toUtf8(), &error).object();
        if (error.error != QJsonParseError::NoError)
            return {};
    }
    return result;
}

QString TestTarnctlSnapshots::metrics(char const *verb)
{
    ToolRun const run = run_text(address, words(verb));
    QString const error = ExpositionCheck::error_in(run.out);
    return run.code == 0 && run.err.isEmpty() && error.isEmpty() ? run.out : run.err + error;
}

void TestTarnctlSnapshots::raise(char const *name, VCTP3::AlertingLevel level, QString const &value)
{
    VCTP3::Alert alert;
    alert.alerting_priority = VCTP3::AlertingPriority::malfunction;
    alert.alerting_level = level;
    alert.alert_name = AString::l1(name);
    alert.alert_name_description = AString::l1("Fan of \"rack\" 1");
    alert.alert_value_description = AString(value);
    server->with_world([&](VeskWorld &world) { world.alerts.set(alert); });
}

void TestTarnctlSnapshots::outputs_tell_what_feeds_them_and_what_they_show()
{
    QCOMPARE(
        run_json(address, words("cue B") << QStringLiteral("Bank 1/101-01") << QStringLiteral("25"))
            .code,
        0);
    server->advance(2);
    QList<QJsonObject> const outputs = objects("outputs");
    QCOMPARE(outputs.size(), 8);
    QJsonObject const second = outputs[1];
    QCOMPARE(number_of(second, "output"), 2);
    QCOMPARE(text_of(second, "channel"), QStringLiteral("B"));
    QCOMPARE(number_of(second, "angle"), 1);
    QCOMPARE(second.value(QStringLiteral("key")), QJsonValue(false));
    QCOMPARE(text_of(second, "status"), QStringLiteral("stop"));
    QCOMPARE(text_of(second, "clipid"), QStringLiteral("Bank 1/101-01"));
    QCOMPARE(text_of(second, "speed"), QStringLiteral("0X"));
    QCOMPARE(number_of(second, "clip_position"), 25);
    QCOMPARE(number_of(second, "aux_position"), 0);
    QVERIFY(text_of(second, "display_timecode").contains(QLatin1Char('1')));
    QCOMPARE(text_of(second, "input_timecode"), QStringLiteral("10.00.00.01"));
    QCOMPARE(number_of(second.value(QStringLiteral("information")).toObject(), "ClipLength"), 4500);
    QVERIFY(second.value(QStringLiteral("playback_mode")).isNull());
    QCOMPARE(text_of(outputs[7], "channel"), QStringLiteral("H"));
    QCOMPARE(text_of(outputs[7], "status"), QStringLiteral("idle"));
    QCOMPARE(text_of(outputs[7], "display_timecode"), QStringLiteral("(invalid)"));
}

void TestTarnctlSnapshots::outputs_of_a_channel_with_a_key_are_told_apart()
{
    set_board(server.get(), "VKVK", "absent");
    QList<QJsonObject> const outputs = objects("outputs");
    QCOMPARE(outputs.size(), 4);
    // First the pictures of both channels, then their keys.
    QStringList told;
    for (QJsonObject const &output : outputs)
        told << text_of(output, "channel")
                + (output.value(QStringLiteral("key")).toBool() ? u'k' : u'v');
    QCOMPARE(told, words("Av Bv Ak Bk"));
    QVERIFY(metrics("outputs").contains(
        QStringLiteral("output=\"3\",channel=\"A\",angle=\"1\",key=\"true\",clip=\"\"} 1\n")));
}

void TestTarnctlSnapshots::outputs_register_the_channels_that_feed_them_alone()
{
    set_board(server.get(), "VKVK", "absent");
    QSet<QString> channels;
    for (QJsonObject const &output : objects("outputs"))
        channels.insert(text_of(output, "channel"));
    QCOMPARE(channels.size(), 2);
    QSet<QString> wanted{QStringLiteral("config_change")};
    for (QString const &channel : channels)
        for (char const *report :
            {"status", "clipid", "speed", "timecode", "info", "aux_audio_timecode"})
            wanted.insert(channel + u' ' + QLatin1String(report));
    QCOMPARE(log->registered(), wanted);
}

void TestTarnctlSnapshots::outputs_are_none_without_a_board()
{
    set_board(server.get(), "absent", "absent");
    ToolRun const run = run_json(address, words("outputs"));
    QCOMPARE(run.code, 0);
    QCOMPARE(run.out, QString());
    QString const text = metrics("outputs");
    QVERIFY2(text.startsWith(QStringLiteral("# HELP tarn_output_info ")), qPrintable(text));
    QVERIFY(!text.contains(u'{'));
}

void TestTarnctlSnapshots::outputs_for_a_collector()
{
    QCOMPARE(run_json(address,
                 words("cue C") << QStringLiteral("Bank 1/101-01") << QStringLiteral("100"))
                 .code,
        0);
    server->advance(2);
    QCOMPARE(run_json(address, words("play C -0.5")).code, 0);
    server->advance(4);
    QString const text = metrics("outputs");
    QString const start = QStringLiteral("{server=\"%1\",output=\"3\"").arg(address.toString());
    for (QString const &line :
        {QStringLiteral("tarn_output_info%1,channel=\"C\",angle=\"1\",key=\"false\","
                        "clip=\"Bank 1/101-01\"} 1\n"),
            QStringLiteral("tarn_output_status%1,state=\"play\"} 1\n"),
            QStringLiteral("tarn_output_status%1,state=\"idle\"} 0\n"),
            QStringLiteral("tarn_output_speed_ratio%1} -0.5\n"),
            QStringLiteral("tarn_output_clip_position_fields%1} 98\n"),
            QStringLiteral("tarn_output_aux_position_fields%1} 0\n")})
        QVERIFY2(text.contains(u'\n' + line.arg(start)), qPrintable(line));
    QCOMPARE(text.count(QStringLiteral("\ntarn_output_clip_position_fields{")), 8);
    QCOMPARE(text.count(QStringLiteral("state=\"play\"} 1\n")), 1);
    QCOMPARE(text.count(QStringLiteral("state=\"idle\"} 1\n")), 7);
}

void TestTarnctlSnapshots::tally_of_each_channel()
{
    server->with_world([](VeskWorld &world) {
        world.dictionary.set(AString::l1("Tally2"), AString::l1("offline"));
        world.dictionary.set(AString::l1("Tally3"), AString::l1("yellow"));
        world.dictionary.set(AString::l1("Tally4"), AString::l1("pink"));
    });
    QStringList const expected
        = words("A=green B=red C=offline D=yellow E=none F=none G=none H=none");
    QStringList told;
    for (QJsonObject const &line : objects("tally"))
        told << text_of(line, "channel") + u'=' + text_of(line, "tally");
    QCOMPARE(told, expected);
}

void TestTarnctlSnapshots::tally_for_a_collector()
{
    QString const text = metrics("tally");
    QString const start = QStringLiteral("\ntarn_tally{server=\"%1\",channel=\"B\",state=\"")
                              .arg(address.toString());
    for (char const *state : {"none", "offline", "yellow", "green"})
        QVERIFY2(text.contains(start + QLatin1String(state) + QLatin1String("\"} 0\n")), state);
    QVERIFY2(text.contains(start + QLatin1String("red\"} 1\n")), qPrintable(text));
    QCOMPARE(text.count(QStringLiteral("} 1\n")), 8);
    QCOMPARE(text.count(QStringLiteral("} 0\n")), 32);
}

void TestTarnctlSnapshots::tally_of_all_forty_channels_without_a_board()
{
    set_board(server.get(), "absent", "absent");
    QList<QJsonObject> const lines = objects("tally");
    QCOMPARE(lines.size(), 40);
    QCOMPARE(text_of(lines[39], "channel"), QStringLiteral("AN"));
}

void TestTarnctlSnapshots::alerts_are_told_by_name()
{
    QCOMPARE(run_json(address, words("alerts")).out, QString());
    raise("power", VCTP3::AlertingLevel::error, QStringLiteral("0 V"));
    raise("fan", VCTP3::AlertingLevel::warning, QStringLiteral("slow\n\x1b[31m"));
    ToolRun const run = run_json(address, words("alerts"));
    QCOMPARE(run.code, 0);
    QVERIFY(!run.out.contains(QChar(0x1b)));
    QList<QJsonObject> const alerts = objects("alerts");
    QCOMPARE(alerts.size(), 2);
    QCOMPARE(text_of(alerts[0], "alert"), QStringLiteral("fan"));
    QCOMPARE(text_of(alerts[0], "level"), QStringLiteral("warning"));
    QCOMPARE(text_of(alerts[0], "priority"), QStringLiteral("malfunction"));
    QCOMPARE(text_of(alerts[0], "description"), QStringLiteral("Fan of \"rack\" 1"));
    QCOMPARE(text_of(alerts[0], "value"), QStringLiteral("slow\n\x1b[31m"));
    QCOMPARE(text_of(alerts[1], "alert"), QStringLiteral("power"));
    QCOMPARE(log->registered(),
        QSet<QString>({QStringLiteral("config_change"), QStringLiteral("alerts")}));
}

void TestTarnctlSnapshots::alerts_that_are_over_are_ok()
{
    raise("fan", VCTP3::AlertingLevel::error, QStringLiteral("stands"));
    raise("fan", VCTP3::AlertingLevel::ok, QStringLiteral("turns"));
    QList<QJsonObject> const alerts = objects("alerts");
    QCOMPARE(alerts.size(), 1);
    QCOMPARE(text_of(alerts[0], "level"), QStringLiteral("ok"));
    QCOMPARE(text_of(alerts[0], "value"), QStringLiteral("turns"));
}

void TestTarnctlSnapshots::alerts_for_a_collector()
{
    QVERIFY(metrics("alerts").startsWith(QStringLiteral("# HELP tarn_alert_level ")));
    raise("fan", VCTP3::AlertingLevel::warning, QStringLiteral("C:\\fan\nslow\x1b[31m"));
    QString const text = metrics("alerts");
    QString const start = QStringLiteral("{server=\"%1\",alert=\"fan\"").arg(address.toString());
    QVERIFY2(text.contains(QStringLiteral("\ntarn_alert_level") + start
                 + QStringLiteral(",state=\"warning\"} 1\n")),
        qPrintable(text));
    QVERIFY(text.contains(QStringLiteral("\ntarn_alert_info") + start
        + QStringLiteral(",priority=\"malfunction\",description=\"Fan of \\\"rack\\\" 1\","
                         "value=\"C:\\\\fan\\nslow\\\\u001b[31m\"} 1\n")));
    QCOMPARE(text.count(QStringLiteral("\ntarn_alert_level{")), 4);
}

void TestTarnctlSnapshots::health_tells_every_number()
{
    QList<QJsonObject> const lines = objects("health");
    QCOMPARE(lines.size(), 1);
    QJsonObject const health = lines[0];
    QCOMPARE(health.size(), 19);
    QCOMPARE(text_of(health, "state"), QStringLiteral("connected"));
    QCOMPARE(text_of(health, "last_error"), QString());
    QVERIFY(health.value(QStringLiteral("last_drop_reason")).isString());
    QVERIFY(health.value(QStringLiteral("state_since_ms")).toDouble() > 1e12);
    QCOMPARE(number_of(health, "connect_attempts"), 1);
    QCOMPARE(number_of(health, "reconnections"), 0);
    QVERIFY(number_of(health, "messages_sent") > 10);
    QVERIFY(number_of(health, "bytes_received") > number_of(health, "messages_received"));
    QCOMPARE(number_of(health, "messages_dropped"), 0);
    QCOMPARE(number_of(health, "messages_to_decode"), 0);
    QVERIFY(number_of(health, "round_trip_us") >= 0);
}

void TestTarnctlSnapshots::health_for_a_collector()
{
    QString const text = metrics("health");
    QString const server_label = QStringLiteral("{server=\"%1\"").arg(address.toString());
    for (QString const &line : {QStringLiteral("tarn_connection_state%1,state=\"connected\"} 1\n"),
             QStringLiteral("tarn_connection_state%1,state=\"closing\"} 0\n"),
             QStringLiteral("tarn_connection_attempts_total%1} 1\n"),
             QStringLiteral("tarn_reconnections_total%1} 0\n"),
             QStringLiteral("tarn_messages_dropped_total%1} 0\n")})
        QVERIFY2(text.contains(u'\n' + line.arg(server_label)), qPrintable(text));
    QVERIFY(text.contains(QStringLiteral("\n# TYPE tarn_sent_bytes_total counter\n")));
    QVERIFY(text.contains(QStringLiteral("\n# TYPE tarn_round_trip_seconds gauge\n")));
    QVERIFY(text.contains(QStringLiteral("\ntarn_round_trip_seconds") + server_label));
    QVERIFY(!text.contains(QStringLiteral("\ntarn_last_error_info{")));
    QVERIFY(text.endsWith(u'\n'));
}

void TestTarnctlSnapshots::health_takes_a_round_trip()
{
    QCOMPARE(run_json(address, words("health")).code, 0);
    // Two of its own, as all of these verbs have, and at least one of the probe.
    QVERIFY(server->counters().count("sync") >= 3);
}

void TestTarnctlSnapshots::every_verb_ends_as_its_neighbours_data()
{
    QTest::addColumn<QString>("verb");
    for (char const *verb : {"outputs", "tally", "alerts", "health"})
        QTest::newRow(verb) << QString::fromLatin1(verb);
}

void TestTarnctlSnapshots::every_verb_ends_as_its_neighbours()
{
    QFETCH(QString, verb);
    QStringList const quick = words("--timeout 0.5") << verb;
    QString const host = address.toString();
    ToolRun const full = run_redirected(
        QStringLiteral("--server %1 %2").arg(host, verb), QStringLiteral(">/dev/full"));
    QCOMPARE(full.err,
        QStringLiteral("tarnctl: cannot write to standard output: No space left on device\n"));
    QCOMPARE(full.code, 5);

    server->fail_command("sync", "not now");
    ToolRun const refused = run_text(address, {verb});
    QCOMPARE(refused.err, QStringLiteral("tarnctl: the server answered: not now (general)\n"));
    QCOMPARE(refused.out, QString());
    QCOMPARE(refused.code, 1);
    ToolRun const refused_json = run_json(address, {verb});
    QCOMPARE(refused_json.out,
        QStringLiteral(
            "{\"reply\":\"error\",\"ErrorMessage\":\"not now\",\"ErrorCode\":\"general\"}\n"));
    QCOMPARE(refused_json.code, 1);
    server->clear_faults();

    server->stay_silent(true);
    ToolRun const silent = run_text(address, quick);
    QCOMPARE(silent.err, QStringLiteral("tarnctl: %1 did not answer in time\n").arg(host));
    QCOMPARE(silent.out, QString());
    QCOMPARE(silent.code, 4);
    server->clear_faults();

    server->close_after(10);
    ToolRun const lost = run_text(address, {verb});
    QCOMPARE(lost.err, QStringLiteral("tarnctl: the connection to %1 was lost\n").arg(host));
    QCOMPARE(lost.code, 3);

    server->stop();
    ToolRun const nobody = run_text(address, {verb});
    QCOMPARE(nobody.err, QStringLiteral("tarnctl: no connection to %1\n").arg(host));
    QCOMPARE(nobody.out, QString());
    QCOMPARE(nobody.code, 3);
}

QTEST_GUILESS_MAIN(TestTarnctlSnapshots)
#include "tst_tarnctl_snapshots.moc"
