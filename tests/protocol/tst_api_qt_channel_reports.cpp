// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt.h"
#include "tests/protocol/link_up.h"
#include "tests/protocol/server_texts.h"
#include "tests/support/patience.h"
#include "tests/support/scripted_server.h"

#include <QSignalSpy>
#include <QTest>

using namespace VCTP3;

namespace {

QByteArray speed_report(QByteArray const &speed)
{
    return channel_report("speed", "<Speed>" + speed + "X</Speed>");
}

/// The eight kinds, in the order in which `all_kinds` says them.
QStringList kinds()
{
    QStringList result;
    for (char const *layer : {"", "aux_audio_"})
        for (char const *kind : {"status", "clipid", "speed", "info"})
            result.append(QString::fromLatin1(layer) + QString::fromLatin1(kind));
    return result;
}

QByteArray all_kinds()
{
    QByteArray result;
    for (QByteArray const layer : {"", "aux_audio_"})
        result += channel_report(layer + "status", "<ChannelStatus>play</ChannelStatus>")
            + channel_report(layer + "clipid", "<ClipID>c</ClipID>")
            + channel_report(layer + "speed", "<Speed>1X</Speed>")
            + channel_report(
                layer + "info", "<ChannelInformation><ClipID>i</ClipID></ChannelInformation>");
    return result;
}

/// Notes the kinds that come as signals.
void note_signals(APIQt *api, QStringList *seen)
{
    auto const note = [api, seen](auto signal, char const *kind) {
        QObject::connect(
            api, signal, api, [seen, kind] { seen->append(QString::fromLatin1(kind)); });
    };
    note(&APIQt::report_channel_status, "status");
    note(&APIQt::report_channel_clipid, "clipid");
    note(&APIQt::report_channel_speed, "speed");
    note(&APIQt::report_channel_info, "info");
    note(&APIQt::report_channel_aux_audio_status, "aux_audio_status");
    note(&APIQt::report_channel_aux_audio_clipid, "aux_audio_clipid");
    note(&APIQt::report_channel_aux_audio_speed, "aux_audio_speed");
    note(&APIQt::report_channel_aux_audio_info, "aux_audio_info");
}

/// Says which report passes, and keeps those of the one kind from its signal.
class ActingQt : public APIQt
{
public:
    QStringList seen;
    QString kept;

protected:
    void do_report_channel_status(
        Channel channel, ChannelStatus status, AOption<AString> const &clip_id) override
    {
        if (passes("status"))
            APIQt::do_report_channel_status(channel, status, clip_id);
    }
    void do_report_channel_clipid(Channel channel, AString const &clip_id) override
    {
        if (passes("clipid"))
            APIQt::do_report_channel_clipid(channel, clip_id);
    }
    void do_report_channel_speed(Channel channel, int speed) override
    {
        if (passes("speed"))
            APIQt::do_report_channel_speed(channel, speed);
    }
    void do_report_channel_info(Channel channel, ChannelInformation const &information) override
    {
        if (passes("info"))
            APIQt::do_report_channel_info(channel, information);
    }
    void do_report_channel_aux_audio_status(
        Channel channel, ChannelStatus status, AOption<AString> const &clip_id) override
    {
        if (passes("aux_audio_status"))
            APIQt::do_report_channel_aux_audio_status(channel, status, clip_id);
    }
    void do_report_channel_aux_audio_clipid(Channel channel, AString const &clip_id) override
    {
        if (passes("aux_audio_clipid"))
            APIQt::do_report_channel_aux_audio_clipid(channel, clip_id);
    }
    void do_report_channel_aux_audio_speed(Channel channel, int speed) override
    {
        if (passes("aux_audio_speed"))
            APIQt::do_report_channel_aux_audio_speed(channel, speed);
    }
    void do_report_channel_aux_audio_info(
        Channel channel, ChannelInformation const &information) override
    {
        if (passes("aux_audio_info"))
            APIQt::do_report_channel_aux_audio_info(channel, information);
    }

private:
    bool passes(char const *kind)
    {
        seen.append(QStringLiteral("before ") + QString::fromLatin1(kind));
        return kept != QLatin1String(kind);
    }
};

/// Keeps the reports of one kind from the parser.
class InterceptingQt : public APIQt
{
public:
    QString kept;
    int intercepted = 0;

protected:
    bool parse_intercept(XMLTree const &message) override
    {
        bool const mine = message.has_subnodes(AString(QStringLiteral("channel_") + kept));
        intercepted += mine;
        return mine;
    }
};

/// Counts messages in an int.
AFunction1<XMLTree const &> count_into(int *count)
{
    return {[](void *to, XMLTree const &) { ++*static_cast<int *>(to); }, count};
}

} // namespace

/// What channels report of their status, clip id, speed and information is read before its turn
/// comes, and is delivered as any other report.
class TestAPIQtChannelReports : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void a_subclass_may_act_before_or_instead_of_a_signal_data();
    void a_subclass_may_act_before_or_instead_of_a_signal();
    void a_subclass_may_intercept_a_report_data();
    void a_subclass_may_intercept_a_report();
    void a_hook_that_is_set_meanwhile_sees_the_reports_that_wait();
    void a_hook_that_is_ended_meanwhile_sees_no_more();
    void a_bad_report_is_counted_once_data();
    void a_bad_report_is_counted_once();
    void reports_that_wait_go_with_their_connection();
};

namespace {

void add_row_for_each_kind()
{
    QTest::addColumn<QString>("kind");
    for (QString const &kind : kinds())
        QTest::newRow(qPrintable(kind)) << kind;
}

} // namespace

void TestAPIQtChannelReports::a_subclass_may_act_before_or_instead_of_a_signal_data()
{
    add_row_for_each_kind();
}

void TestAPIQtChannelReports::a_subclass_may_act_before_or_instead_of_a_signal()
{
    QFETCH(QString, kind);
    ScriptedServer server;
    ActingQt api;
    api.kept = kind;
    note_signals(&api, &api.seen);
    QVERIFY(link_up(&api, server));
    server.say(all_kinds());
    QStringList expected;
    for (QString const &one : kinds()) {
        expected.append(QStringLiteral("before ") + one);
        if (one != kind)
            expected.append(one);
    }
    QTRY_COMPARE(api.seen.size(), expected.size());
    QCOMPARE(api.seen, expected);
}

void TestAPIQtChannelReports::a_subclass_may_intercept_a_report_data()
{
    add_row_for_each_kind();
}

void TestAPIQtChannelReports::a_subclass_may_intercept_a_report()
{
    QFETCH(QString, kind);
    ScriptedServer server;
    InterceptingQt api;
    api.kept = kind;
    QStringList seen;
    note_signals(&api, &seen);
    QVERIFY(link_up(&api, server));
    server.say(all_kinds() + all_kinds());
    QStringList expected = kinds() + kinds();
    expected.removeAll(kind);
    QTRY_COMPARE(seen.size(), expected.size());
    QCOMPARE(seen, expected);
    QTRY_COMPARE(api.intercepted, 2);
}

void TestAPIQtChannelReports::a_hook_that_is_set_meanwhile_sees_the_reports_that_wait()
{
    ScriptedServer server;
    APIQt api;
    int hooked = 0;
    QList<int> speeds;
    connect(&api, &APIQt::report_channel_speed, &api, [&](Channel, int speed) {
        speeds.append(speed);
        if (speeds.size() == 2)
            api.set_receive_debug_hook(count_into(&hooked));
    });
    QVERIFY(link_up(&api, server));
    server.say(speed_report("1") + speed_report("2") + speed_report("3") + speed_report("4"));
    QTRY_COMPARE(speeds.size(), 4);
    QCOMPARE(speeds, QList<int>({65536, 2 * 65536, 3 * 65536, 4 * 65536}));
    QCOMPARE(hooked, 2);
}

void TestAPIQtChannelReports::a_hook_that_is_ended_meanwhile_sees_no_more()
{
    ScriptedServer server;
    APIQt api;
    int hooked = 0;
    api.set_receive_debug_hook(count_into(&hooked));
    int reports = 0;
    connect(&api, &APIQt::report_channel_speed, &api, [&] {
        if (++reports == 2)
            api.set_receive_debug_hook({});
    });
    QVERIFY(link_up(&api, server));
    server.say(speed_report("1").repeated(5));
    QTRY_COMPARE(reports, 5);
    QCOMPARE(hooked, 2);
}

void TestAPIQtChannelReports::a_bad_report_is_counted_once_data()
{
    QTest::addColumn<QByteArray>("bad");
    QTest::addColumn<QString>("word"); // of the reason
    for (QByteArray const layer : {"", "aux_audio_"}) {
        QTest::newRow(layer + "status of an unknown word") << channel_report(layer + "status",
            "<ChannelStatus>levitating</ChannelStatus>") << QStringLiteral("ChannelStatus");
        QTest::newRow(layer + "clipid without one")
            << channel_report(layer + "clipid", "") << QStringLiteral("ClipID");
        QTest::newRow(layer + "speed that is none")
            << channel_report(layer + "speed", "<Speed>fast</Speed>") << QStringLiteral("Speed");
        QTest::newRow(layer + "speed twice")
            << channel_report(layer + "speed", "<Speed>1X</Speed><Speed>1X</Speed>")
            << QStringLiteral("Speed");
        QTest::newRow(layer + "information without a clip") << channel_report(layer + "info",
            "<ChannelInformation></ChannelInformation>") << QStringLiteral("ClipID");
    }
    QByteArray const speed = speed_report("1");
    QTest::newRow("two in one message") << QByteArray(speed).replace("</report>",
        speed.mid(qstrlen("<report>"))) << QStringLiteral("multiple commands");
}

void TestAPIQtChannelReports::a_bad_report_is_counted_once()
{
    QFETCH(QByteArray, bad);
    QFETCH(QString, word);
    ScriptedServer server;
    APIQt api;
    QStringList seen;
    note_signals(&api, &seen);
    QVERIFY(link_up(&api, server));
    server.say(bad + speed_report("1"));
    QTRY_COMPARE(seen, QStringList(QStringLiteral("speed")));
    QCOMPARE(api.traffic().messages_received, 2ULL);
    QCOMPARE(api.traffic().messages_dropped, 1ULL);
    QString const reason(api.traffic().last_drop_reason);
    QVERIFY2(reason.contains(word), qPrintable(reason));
}

void TestAPIQtChannelReports::reports_that_wait_go_with_their_connection()
{
    ScriptedServer server;
    APIQt api;
    QSignalSpy disconnects(&api, &APIQt::disconnected);
    QList<int> speeds;
    connect(&api, &APIQt::report_channel_speed, &api, [&](Channel, int speed) {
        speeds.append(speed);
        if (speeds.size() == 1)
            api.disconnect_from_server();
    });
    QVERIFY(link_up(&api, server));
    server.say(speed_report("1") + speed_report("2").repeated(500));
    QTRY_COMPARE(disconnects.count(), 1);
    api.reconnect();
    QTRY_COMPARE(server.connections_made(), 2);
    QTRY_VERIFY(api.is_connected());
    server.say(speed_report("3"));
    QTRY_COMPARE(speeds.size(), 2);
    QCOMPARE(speeds, QList<int>({65536, 3 * 65536}));
}

QTEST_GUILESS_MAIN(TestAPIQtChannelReports)
#include "tst_api_qt_channel_reports.moc"
