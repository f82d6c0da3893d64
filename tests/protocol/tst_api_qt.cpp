// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt.h"
#include "tests/protocol/link_up.h"
#include "tests/protocol/server_texts.h"
#include "tests/support/answers.h"
#include "tests/support/own_network.h"
#include "tests/support/patience.h"
#include "tests/support/scripted_server.h"
#include "tests/support/socket_probe.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include <netinet/tcp.h>
#include <thread>

using namespace VCTP3;

namespace {

using State = QAbstractSocket::SocketState;

/// A list of two clips.
QByteArray two_clips(QByteArray const &command)
{
    return clip_listed(command, "a") + clip_listed(command, "b") + ScriptedServer::ok_to(command);
}

/// A group that notes what it hears.
struct Heard
{
    Heard()
    {
        QObject::connect(&group, &CallbackGroup_set1::sig_ok, &group, [this] { ++oks; });
        QObject::connect(&group, &CallbackGroup_set1::sig_error, &group,
            [this](AString const &text, ErrorCode code) {
                errors.append(QStringLiteral("%1 (%2)").arg(
                    QString(text), QString(ErrorCode_to_string(code))));
            });
    }

    CallbackGroup_set1 group;
    int oks = 0;
    QStringList errors;
};

QString const failing_all = Answers::failing_all();

/// Hears which clips were created, in order.
struct Clips
{
    explicit Clips(APIQt *api)
    {
        QObject::connect(api, &APIQt::report_clip_created, api,
            [this](AString const &clip) { ids.append(QString(clip)); });
    }

    QStringList ids;
};

} // namespace

class TestAPIQt : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reconnect_before_any_connect_does_nothing();
    void connects_by_address_and_by_name_data();
    void connects_by_address_and_by_name();
    void reconnect_goes_where_the_last_connect_went();
    void sets_no_delay();
    void a_command_gets_its_answer();
    void a_list_streams_until_ok();
    void a_command_without_a_connection_fails();
    void an_empty_write_does_nothing();
    void every_state_but_connected_fails_commands();
    void connect_while_connected_fails_commands_first();
    void disconnect_fails_commands_first();
    void fail_all_is_there_for_the_owner();
    void a_lost_connection_fails_each_command_once_data();
    void a_lost_connection_fails_each_command_once();
    void a_message_of_65536_bytes_is_read_data();
    void a_message_of_65536_bytes_is_read();
    void reads_may_split_at_every_byte();
    void a_deleted_group_hears_nothing();
    void a_group_may_be_deleted_by_its_slot();
    void a_group_serves_several_commands();
    void intercepted_messages_go_no_further();
    void a_subclass_may_act_before_or_instead_of_a_signal();
    void reading_goes_on_while_a_slot_runs_an_event_loop();
    void hooks_see_both_ways();
    void channel_reports_arrive_as_they_were_sent_data();
    void channel_reports_arrive_as_they_were_sent();
    void a_bad_channel_report_is_dropped_and_later_ones_go_on();
    void a_channel_report_outlives_a_disconnect_by_its_slot();
    void a_disconnect_from_inside_ends_the_stream();
    void is_localhost_only_while_connected_to_it();
    void is_localhost_over_a_loopback_address_alone();
    void the_rest_of_a_message_never_begins_a_connection();
    void destruction_drops_commands_in_silence();
    void what_a_server_said_last_arrives();
};

void TestAPIQt::reconnect_before_any_connect_does_nothing()
{
    APIQt api;
    QSignalSpy states(&api, &APIQt::stateChanged);
    api.reconnect();
    QCOMPARE(states.count(), 0);
    QCOMPARE(api.findChild<QTcpSocket *>()->state(), State::UnconnectedState);
}

void TestAPIQt::connects_by_address_and_by_name_data()
{
    QTest::addColumn<bool>("by_name");
    QTest::newRow("address") << false;
    QTest::newRow("name") << true;
}

void TestAPIQt::connects_by_address_and_by_name()
{
    QFETCH(bool, by_name);
    ScriptedServer server;
    APIQt api;
    QSignalSpy connects(&api, &APIQt::connected);
    QSignalSpy disconnects(&api, &APIQt::disconnected);
    QSignalSpy states(&api, &APIQt::stateChanged);
    QVERIFY(!api.is_connected());
    if (by_name)
        api.connect_to_server(server.address().toString());
    else
        api.connect_to_server(server.address());
    QTRY_COMPARE(connects.count(), 1);
    QVERIFY(api.is_connected());
    QTRY_COMPARE(server.connections_open(), 1);
    QCOMPARE(states.constLast().constFirst().value<State>(), State::ConnectedState);

    api.disconnect_from_server();
    QTRY_COMPARE(disconnects.count(), 1);
    QVERIFY(!api.is_connected());
    QTRY_COMPARE(server.connections_open(), 0);
    QCOMPARE(states.constLast().constFirst().value<State>(), State::UnconnectedState);
}

void TestAPIQt::reconnect_goes_where_the_last_connect_went()
{
    ScriptedServer first;
    ScriptedServer second;
    APIQt api;
    QSignalSpy disconnects(&api, &APIQt::disconnected);
    auto const lose = [&](ScriptedServer &server) {
        qsizetype const before = disconnects.count();
        QTRY_COMPARE(server.connections_open(), 1);
        server.hang_up();
        QTRY_COMPARE(disconnects.count(), before + 1);
    };
    api.connect_to_server(first.address());
    lose(first);
    api.reconnect();
    lose(first);
    QCOMPARE(first.connections_made(), 2);

    api.connect_to_server(second.address().toString());
    lose(second);
    api.reconnect();
    lose(second);
    QCOMPARE(second.connections_made(), 2);

    api.connect_to_server(first.address());
    lose(first);
    api.reconnect();
    lose(first);
    QCOMPARE(first.connections_made(), 4);
    QCOMPARE(second.connections_made(), 2);
}

void TestAPIQt::sets_no_delay()
{
    ScriptedServer server;
    APIQt api;
    QVERIFY(link_up(&api, server));
    int const descriptor = SocketProbe::descriptor_to(server.address(), ScriptedServer::port);
    QCOMPARE(SocketProbe::option(descriptor, IPPROTO_TCP, TCP_NODELAY), 1);
}

void TestAPIQt::a_command_gets_its_answer()
{
    ScriptedServer server;
    server.answer_with([](QByteArray const &command) {
        return ScriptedServer::reply(command,
            command.contains("<stop>") ? "<error><ErrorMessage>no</"
                                         "ErrorMessage><ErrorCode>clipnotfound</ErrorCode></error>"
                                       : "<ok/>");
    });
    APIQt api;
    QVERIFY(link_up(&api, server));
    Heard heard;
    api.cmd_sync(heard.group);
    QTRY_COMPARE(heard.oks, 1);
    QCOMPARE(server.received(),
        "<cmd>\r\n<xid>" + ScriptedServer::xid(server.received()) + "</xid>\r\n<sync />\r\n</cmd>");
    api.cmd_stop(Channel::A, heard.group);
    QTRY_COMPARE(heard.errors, QStringList({QStringLiteral("no (clipnotfound)")}));
    api.cmd_sync();
    QTRY_COMPARE(server.commands().size(), 3);
    QVERIFY(ScriptedServer::xid(server.commands()[2]).startsWith("none"));
    QCOMPARE(heard.oks, 1);
}

void TestAPIQt::a_list_streams_until_ok()
{
    ScriptedServer server;
    server.answer_with(two_clips);
    APIQt api;
    QVERIFY(link_up(&api, server));
    CallbackGroup_set2 group;
    QSignalSpy clips(&group, &CallbackGroup_set2::sig_clipid);
    QSignalSpy oks(&group, &CallbackGroup_set2::sig_ok);
    api.cmd_download_clipids(group);
    QTRY_COMPARE(oks.count(), 1);
    QCOMPARE(clips.count(), 2);
    QCOMPARE(QString(clips[1][0].value<AString>()), QStringLiteral("b"));
}

void TestAPIQt::a_command_without_a_connection_fails()
{
    APIQt api;
    Heard heard;
    api.cmd_sync(heard.group);
    QCOMPARE(heard.errors, QStringList({failing_all}));
    api.cmd_sync(heard.group);
    QCOMPARE(heard.errors.size(), 2);
    QCOMPARE(heard.oks, 0);
}

/// Keeps what is written to itself, so that commands can be in flight in any state.
class SwallowingQt : public APIQt
{
public:
    void write_through(void const *data, unsigned long long size) { APIQt::send(data, size); }

protected:
    void send(void const *, unsigned long long) override { }
};

void TestAPIQt::an_empty_write_does_nothing()
{
    SwallowingQt api;
    Heard heard;
    api.cmd_sync(heard.group);
    api.write_through("", 0);
    QCOMPARE(heard.errors, QStringList());
    api.write_through("x", 1);
    QCOMPARE(heard.errors, QStringList({failing_all}));
}

void TestAPIQt::every_state_but_connected_fails_commands()
{
    ScriptedServer server;
    SwallowingQt api;
    Heard heard;
    QStringList seen;
    connect(&api, &APIQt::stateChanged, &api, [&](State state) {
        seen.append(QStringLiteral("%1: %2").arg(int(state)).arg(heard.errors.size()));
        api.cmd_sync(heard.group);
    });
    api.connect_to_server(server.address().toString());
    QTRY_VERIFY(api.is_connected());
    QTRY_COMPARE(server.connections_open(), 1);
    server.hang_up();
    QTRY_VERIFY(!api.is_connected());
    api.findChild<QTcpSocket *>()->abort();
    // At each state one more has failed, but for the command that was in flight at the connect.
    QCOMPARE(seen,
        QStringList({QStringLiteral("1: 0"), QStringLiteral("2: 1"), QStringLiteral("3: 1"),
            QStringLiteral("6: 3"), QStringLiteral("0: 4")}));
    QCOMPARE(QSet<QString>(heard.errors.cbegin(), heard.errors.cend()), QSet<QString>{failing_all});
}

void TestAPIQt::connect_while_connected_fails_commands_first()
{
    ScriptedServer server;
    APIQt api;
    QVERIFY(link_up(&api, server));
    Heard heard;
    api.cmd_sync(heard.group);
    QTRY_COMPARE(server.commands().size(), 1);
    // The toolkit does not leave a connection for another.
    QTest::ignoreMessage(QtWarningMsg,
        QRegularExpression(QStringLiteral("connectToHost\\(\\) called when already")));
    api.connect_to_server(server.address());
    QCOMPARE(heard.errors, QStringList({failing_all}));
    QVERIFY(api.is_connected());
    QCOMPARE(server.connections_made(), 1);

    // The late answer is nobody's, and what follows is read.
    server.say(ScriptedServer::ok_to(server.commands().constFirst()));
    server.answer_with(ScriptedServer::ok_to);
    api.cmd_sync(heard.group);
    QTRY_COMPARE(heard.oks, 1);
    QCOMPARE(heard.errors.size(), 1);
}

void TestAPIQt::disconnect_fails_commands_first()
{
    ScriptedServer server;
    APIQt api;
    QVERIFY(link_up(&api, server));
    Heard heard;
    bool connected_at_error = false;
    connect(&heard.group, &CallbackGroup_set1::sig_error, this,
        [&] { connected_at_error = api.is_connected(); });
    api.cmd_sync(heard.group);
    api.disconnect_from_server();
    QCOMPARE(heard.errors, QStringList({failing_all}));
    QVERIFY(connected_at_error);
    QTRY_COMPARE(server.connections_open(), 0);
}

void TestAPIQt::fail_all_is_there_for_the_owner()
{
    ScriptedServer server;
    APIQt api;
    QVERIFY(link_up(&api, server));
    Heard heard;
    api.cmd_sync(heard.group);
    api.cmd_sync(heard.group);
    api.fail_all_pending_commands();
    QCOMPARE(heard.errors, QStringList(2, failing_all));
    QVERIFY(api.is_connected());
}

void TestAPIQt::a_lost_connection_fails_each_command_once_data()
{
    QTest::addColumn<QByteArray>("last_words");
    QTest::newRow("killed") << QByteArray();
    QTest::newRow("malformed") << QByteArray("<reply><xid>1</xid><ok></reply>");
    QTest::newRow("one byte too long") << report_of_size(65537);
    QTest::newRow("no end to it") << "<report>" + QByteArray(70000, 'x');
    QTest::newRow("no root tag") << QByteArray(70000, 'x');
}

void TestAPIQt::a_lost_connection_fails_each_command_once()
{
    QFETCH(QByteArray, last_words);
    ScriptedServer server;
    APIQt api;
    Clips clips(&api);
    QSignalSpy connects(&api, &APIQt::connected);
    QSignalSpy disconnects(&api, &APIQt::disconnected);
    connect(&api, &APIQt::disconnected, &api, &APIQt::reconnect);
    Heard heard;
    api.connect_to_server(server.address());
    for (int round = 1; round <= 3; ++round) {
        QTRY_VERIFY(api.is_connected());
        for (int i = 0; i < 20; ++i)
            api.cmd_sync(heard.group);
        QTRY_COMPARE(server.commands().size(), 20 * round);
        QCOMPARE(heard.errors.size(), 20 * (round - 1));
        if (last_words.isEmpty()) {
            server.kill();
            server.restart();
        } else {
            server.say(last_words);
        }
        QTRY_COMPARE(disconnects.count(), round);
        QCOMPARE(heard.errors, QStringList(20 * round, failing_all));
        QTRY_COMPARE(connects.count(), round + 1);
    }
    QCOMPARE(heard.oks, 0);
    QCOMPARE(clips.ids, QStringList());

    // Nothing of an old stream is left behind.
    server.answer_with(ScriptedServer::ok_to);
    api.cmd_sync(heard.group);
    QTRY_COMPARE(heard.oks, 1);
    QCOMPARE(heard.errors.size(), 60);
}

void TestAPIQt::a_message_of_65536_bytes_is_read_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("65535") << 65535;
    QTest::newRow("65536") << 65536;
}

void TestAPIQt::a_message_of_65536_bytes_is_read()
{
    QFETCH(int, size);
    ScriptedServer server;
    APIQt api;
    Clips clips(&api);
    QVERIFY(link_up(&api, server));
    server.say(report_of_size(size) + report_of_size(size) + clip_created("last"));
    QTRY_COMPARE(clips.ids.size(), 3);
    QCOMPARE(clips.ids[1].size(), size - clip_created("").size());
    QVERIFY(api.is_connected());
}

void TestAPIQt::reads_may_split_at_every_byte()
{
    ScriptedServer server;
    APIQt api;
    Clips clips(&api);
    QVERIFY(link_up(&api, server));
    Heard heard;
    api.cmd_sync(heard.group);
    QTRY_COMPARE(server.commands().size(), 1);
    QByteArray const utf8 = QByteArrayLiteral("caf\xC3\xA9 \xE2\x82\xAC");
    QByteArray const bytes = clip_created("a &lt;") + "\r\n" + clip_created(utf8)
        + ScriptedServer::ok_to(server.commands().constFirst()) + clip_created("b");
    int const descriptor = SocketProbe::descriptor_to(server.address(), ScriptedServer::port);
    std::thread speaker([&] { server.say_bytewise(bytes, descriptor); });
    QTRY_COMPARE(clips.ids.size(), 3);
    speaker.join();
    QCOMPARE(clips.ids,
        QStringList({QStringLiteral("a <"), QString::fromUtf8(utf8), QStringLiteral("b")}));
    QCOMPARE(heard.oks, 1);
}

void TestAPIQt::a_deleted_group_hears_nothing()
{
    ScriptedServer server;
    APIQt api;
    Clips clips(&api);
    QVERIFY(link_up(&api, server));
    Heard other;
    auto *group = new CallbackGroup_set1;
    bool heard = false;
    connect(group, &CallbackGroup_set1::sig_ok, this, [&] { heard = true; });
    connect(group, &CallbackGroup_set1::sig_error, this, [&] { heard = true; });
    api.cmd_sync(*group);
    api.cmd_sync(*group);
    api.cmd_sync(other.group);
    delete group;
    QTRY_COMPARE(server.commands().size(), 3);
    // The first is answered, the second fails with the other one's.
    server.say(ScriptedServer::ok_to(server.commands().constFirst()) + clip_created("a"));
    QTRY_COMPARE(clips.ids.size(), 1);
    api.disconnect_from_server();
    QCOMPARE(other.errors, QStringList({failing_all}));
    QVERIFY(!heard);
}

void TestAPIQt::a_group_may_be_deleted_by_its_slot()
{
    ScriptedServer server;
    server.answer_with(two_clips);
    APIQt api;
    QVERIFY(link_up(&api, server));
    auto *streaming = new CallbackGroup_set2;
    int clips = 0;
    connect(streaming, &CallbackGroup_set2::sig_clipid, this, [&] {
        ++clips;
        delete streaming;
    });
    auto *last = new CallbackGroup_set1;
    int oks = 0;
    connect(last, &CallbackGroup_set1::sig_ok, this, [&] {
        ++oks;
        delete last;
    });
    api.cmd_download_clipids(*streaming);
    api.cmd_sync(*last);
    QTRY_COMPARE(oks, 1);
    QCOMPARE(clips, 1);
}

void TestAPIQt::a_group_serves_several_commands()
{
    ScriptedServer server;
    server.answer_with(ScriptedServer::ok_to);
    APIQt api;
    QVERIFY(link_up(&api, server));
    Heard heard;
    api.cmd_sync(heard.group);
    api.cmd_stop(Channel::A, heard.group);
    QTRY_COMPARE(heard.oks, 2);
    QCOMPARE(heard.errors, QStringList());
}

/// Keeps back what holds a word.
class InterceptingQt : public APIQt
{
public:
    QStringList intercepted;

protected:
    bool parse_intercept(XMLTree const &message) override
    {
        AString const clip = message.get_subnode(AString::l1("clip_created"))
                                 .get_subnode(AString::l1("ClipID"))
                                 .get_content();
        if (!clip.has_prefix(AString::l1("secret")))
            return false;
        intercepted.append(QString(clip));
        return true;
    }
};

void TestAPIQt::intercepted_messages_go_no_further()
{
    ScriptedServer server;
    InterceptingQt api;
    Clips clips(&api);
    int received = 0;
    api.set_receive_debug_hook(
        {[](void *count, XMLTree const &) { ++*static_cast<int *>(count); }, &received});
    QVERIFY(link_up(&api, server));
    server.say(clip_created("a") + clip_created("secret b") + clip_created("c"));
    QTRY_COMPARE(clips.ids, QStringList({QStringLiteral("a"), QStringLiteral("c")}));
    QCOMPARE(api.intercepted, QStringList({QStringLiteral("secret b")}));
    QCOMPARE(received, 2);
}

/// Keeps reports of secret clips from the signal, and says when one passes.
class DelayingQt : public APIQt
{
public:
    QStringList seen;

protected:
    void do_report_clip_created(AString const &clip_id) override
    {
        seen.append(QStringLiteral("before ") + QString(clip_id));
        if (!clip_id.has_prefix(AString::l1("secret")))
            APIQt::do_report_clip_created(clip_id);
    }
};

void TestAPIQt::a_subclass_may_act_before_or_instead_of_a_signal()
{
    ScriptedServer server;
    DelayingQt api;
    connect(&api, &APIQt::report_clip_created, this,
        [&](AString const &clip) { api.seen.append(QStringLiteral("signal ") + QString(clip)); });
    QVERIFY(link_up(&api, server));
    server.say(clip_created("a") + clip_created("secret b") + clip_created("c"));
    QTRY_COMPARE(api.seen,
        QStringList({QStringLiteral("before a"), QStringLiteral("signal a"),
            QStringLiteral("before secret b"), QStringLiteral("before c"),
            QStringLiteral("signal c")}));
}

void TestAPIQt::reading_goes_on_while_a_slot_runs_an_event_loop()
{
    for (int round = 0; round < 20; ++round) {
        ScriptedServer server;
        APIQt api;
        QStringList seen;
        connect(&api, &APIQt::report_clip_created, this, [&](AString const &clip) {
            seen.append(QString(clip));
            if (seen.size() > 1)
                return;
            server.say(clip_created("meanwhile"));
            QTRY_COMPARE(seen.size(), 2);
        });
        api.connect_to_server(server.address());
        QTRY_COMPARE(server.connections_open(), 1);
        server.say(clip_created("first"));
        QTRY_COMPARE(seen.size(), 2);
        QCOMPARE(seen.last(), QStringLiteral("meanwhile"));
    }
}

void TestAPIQt::hooks_see_both_ways()
{
    ScriptedServer server;
    server.answer_with(ScriptedServer::ok_to);
    APIQt api;
    QStringList seen;
    AFunction1<XMLTree const &> const note(
        [](void *list, XMLTree const &message) {
            static_cast<QStringList *>(list)->append(
                QString(message.flatten(XMLTree::FlattenCompact, true)));
        },
        &seen);
    api.set_send_debug_hook(note);
    api.set_receive_debug_hook(note);
    QVERIFY(link_up(&api, server));
    Heard heard;
    api.cmd_sync(heard.group);
    QTRY_COMPARE(heard.oks, 1);
    QString const xid = QString::fromUtf8(ScriptedServer::xid(server.received()));
    QCOMPARE(seen,
        QStringList({QStringLiteral("<cmd><xid>%1</xid><sync /></cmd>").arg(xid),
            QStringLiteral("<reply><xid>%1</xid><ok /></reply>").arg(xid)}));

    api.set_send_debug_hook({});
    api.set_receive_debug_hook({});
    api.cmd_sync(heard.group);
    QTRY_COMPARE(heard.oks, 2);
    QCOMPARE(seen.size(), 2);
}

namespace {

/// Texts of the reports that are read on the parser's thread.
struct ChannelReports
{
    explicit ChannelReports(APIQt *api)
    {
        hear_layer("", api, &APIQt::report_channel_status, &APIQt::report_channel_clipid,
            &APIQt::report_channel_speed, &APIQt::report_channel_info);
        hear_layer("aux_audio_", api, &APIQt::report_channel_aux_audio_status,
            &APIQt::report_channel_aux_audio_clipid, &APIQt::report_channel_aux_audio_speed,
            &APIQt::report_channel_aux_audio_info);
    }
    QStringList texts;

private:
    template <typename Status, typename Clip, typename Speed, typename Info>
    void hear_layer(char const *layer, APIQt *api, Status status, Clip clip, Speed speed, Info info)
    {
        auto const note = [this, layer](Channel channel, char const *kind, QString const &value) {
            texts.append(QLatin1String(layer)
                + QStringLiteral("%1 %2 %3").arg(QLatin1String(kind)).arg(int(channel)).arg(value));
        };
        QObject::connect(api, status, api,
            [note](Channel channel, ChannelStatus value, AOption<AString> const &id) {
                note(channel, "status",
                    QString(ChannelStatus_to_string(value))
                        + (id ? QLatin1Char(' ') + QString(*id) : QStringLiteral(", no id")));
            });
        QObject::connect(api, clip, api,
            [note](Channel channel, AString const &id) { note(channel, "clipid", QString(id)); });
        QObject::connect(api, speed, api,
            [note](Channel channel, int value) { note(channel, "speed", QString::number(value)); });
        QObject::connect(api, info, api, [note](Channel channel, ChannelInformation const &value) {
            note(channel, "info",
                QString(value.clip_id) + QLatin1Char(' ') + QString::number(value.loopin));
        });
    }
};

} // namespace

void TestAPIQt::channel_reports_arrive_as_they_were_sent_data()
{
    QTest::addColumn<QByteArray>("layer");
    QTest::addColumn<bool>("hooked");
    QTest::newRow("of a channel") << QByteArray() << false;
    QTest::newRow("of its auxiliary audio") << QByteArray("aux_audio_") << false;
    QTest::newRow("of a channel, seen by a hook") << QByteArray() << true;
    QTest::newRow("of its auxiliary audio, seen by a hook") << QByteArray("aux_audio_") << true;
}

void TestAPIQt::channel_reports_arrive_as_they_were_sent()
{
    QFETCH(QByteArray, layer);
    QFETCH(bool, hooked);
    ScriptedServer server;
    APIQt api;
    ChannelReports heard(&api);
    int seen = 0;
    if (hooked)
        api.set_receive_debug_hook(
            {[](void *count, XMLTree const &) { ++*static_cast<int *>(count); }, &seen});
    QVERIFY(link_up(&api, server));
    server.say(channel_report(layer + "status",
                   "<ChannelStatus>play</ChannelStatus><ClipID>x &amp; y</ClipID>")
        + channel_report(layer + "status", "<ChannelStatus>idle</ChannelStatus>")
        + channel_report(layer + "clipid", "<ClipID>c</ClipID>")
        + channel_report(layer + "speed", "<Speed>-0.5X</Speed>")
        + channel_report(layer + "info",
            "<ChannelInformation><ClipID>i</ClipID><LoopIn>7</LoopIn></ChannelInformation>"));
    QString const before = QString::fromLatin1(layer);
    QTRY_COMPARE(heard.texts,
        QStringList({before + QStringLiteral("status 1 play x & y"),
            before + QStringLiteral("status 1 idle, no id"), before + QStringLiteral("clipid 1 c"),
            before + QStringLiteral("speed 1 -32768"), before + QStringLiteral("info 1 i 7")}));
    QCOMPARE(seen, hooked ? 5 : 0);
}

void TestAPIQt::a_bad_channel_report_is_dropped_and_later_ones_go_on()
{
    ScriptedServer server;
    APIQt api;
    ChannelReports heard(&api);
    QVERIFY(link_up(&api, server));
    QByteArray const good = channel_report("speed", "<Speed>1X</Speed>");
    QByteArray twice = good;
    twice.replace("</report>", good.mid(8));
    server.say(channel_report("status", "<ChannelStatus>levitating</ChannelStatus>")
        + channel_report("info", "<ChannelInformation></ChannelInformation>")
        + channel_report("speed", "<Speed>fast</Speed>") + channel_report("clipid", "") + twice
        + good);
    QTRY_COMPARE(heard.texts, QStringList(QStringLiteral("speed 1 65536")));
}

void TestAPIQt::a_channel_report_outlives_a_disconnect_by_its_slot()
{
    ScriptedServer server;
    APIQt api;
    QSignalSpy disconnects(&api, &APIQt::disconnected);
    QStringList ids;
    connect(&api, &APIQt::report_channel_info, &api,
        [&](Channel, ChannelInformation const &information) {
            api.disconnect_from_server();
            ids.append(QString(information.clip_id));
        });
    QVERIFY(link_up(&api, server));
    QByteArray const report
        = channel_report("info", "<ChannelInformation><ClipID>held</ClipID></ChannelInformation>");
    server.say(report + report);
    QTRY_COMPARE(disconnects.count(), 1);
    QCOMPARE(ids, QStringList(QStringLiteral("held")));
}

void TestAPIQt::a_disconnect_from_inside_ends_the_stream()
{
    ScriptedServer server;
    APIQt api;
    Clips clips(&api);
    QSignalSpy disconnects(&api, &APIQt::disconnected);
    connect(&api, &APIQt::report_clip_created, &api, &APIQt::disconnect_from_server);
    QVERIFY(link_up(&api, server));
    server.say(clip_created("a") + clip_created("b"));
    QTRY_COMPARE(disconnects.count(), 1);
    QCOMPARE(clips.ids, QStringList({QStringLiteral("a")}));
    api.reconnect();
    QTRY_COMPARE(server.connections_made(), 2); // the old one may still be open there
    QTRY_VERIFY(api.is_connected());
    server.say(clip_created("c"));
    QTRY_COMPARE(disconnects.count(), 2);
    QCOMPARE(clips.ids, QStringList({QStringLiteral("a"), QStringLiteral("c")}));
}

void TestAPIQt::is_localhost_only_while_connected_to_it()
{
    ScriptedServer server;
    APIQt api;
    QVERIFY(!api.is_localhost());
    api.connect_to_server(server.address());
    QVERIFY(!api.is_localhost());
    QTRY_VERIFY(api.is_connected());
    QVERIFY(api.is_localhost());
    api.disconnect_from_server();
    QTRY_VERIFY(!api.is_connected());
    QVERIFY(!api.is_localhost());
}

void TestAPIQt::is_localhost_over_a_loopback_address_alone()
{
    if (!OwnNetwork::is_inside()) {
        QCOMPARE(OwnNetwork::run("is_localhost_over_a_loopback_address_alone"), QString());
        return;
    }
    auto const is_localhost_at = [](QHostAddress const &address) -> AOption<bool> {
        QTcpServer server;
        APIQt api;
        if (!server.listen(address, ScriptedServer::port))
            return {};
        api.connect_to_server(address);
        if (!QTest::qWaitFor([&] { return api.is_connected(); }, patience_ms))
            return {};
        return api.is_localhost();
    };
    QCOMPARE(is_localhost_at(QHostAddress(QHostAddress::LocalHost)), AOption<bool>(true));
    QCOMPARE(is_localhost_at(QHostAddress(QHostAddress::LocalHostIPv6)), AOption<bool>(true));
    QCOMPARE(is_localhost_at(QHostAddress(QLatin1String(OwnNetwork::other_address))),
        AOption<bool>(false));
}

void TestAPIQt::the_rest_of_a_message_never_begins_a_connection()
{
    ScriptedServer server;
    server.answer_with(ScriptedServer::ok_to);
    APIQt api;
    Heard torn;
    // The first block meets no connection; before the others are written there is one.
    connect(&torn.group, &CallbackGroup_set1::sig_error, &api, [&] {
        api.connect_to_server(server.address());
        QTRY_VERIFY(api.is_connected());
    });
    api.cmd_debug_label(AString(QString(5000, QLatin1Char('x'))), torn.group);
    QVERIFY(api.is_connected());
    QCOMPARE(torn.errors, QStringList{failing_all});

    Heard whole;
    api.cmd_sync(whole.group);
    QTRY_COMPARE(whole.oks, 1);
    QVERIFY(server.received().startsWith("<cmd>"));
    QCOMPARE(server.commands().size(), 1);
    QCOMPARE(torn.oks, 0);
}

void TestAPIQt::destruction_drops_commands_in_silence()
{
    ScriptedServer server;
    Heard heard;
    bool state_seen = false;
    {
        APIQt api;
        QVERIFY(link_up(&api, server));
        api.cmd_sync(heard.group);
        connect(&api, &APIQt::stateChanged, this, [&] { state_seen = true; });
    }
    QCOMPARE(heard.errors, QStringList());
    QCOMPARE(heard.oks, 0);
    QVERIFY(!state_seen);
    QTRY_COMPARE(server.connections_open(), 0);
}

void TestAPIQt::what_a_server_said_last_arrives()
{
    constexpr int reports = 3000;
    ScriptedServer server;
    APIQt api;
    Clips clips(&api);
    QVERIFY(link_up(&api, server));
    QByteArray farewell;
    for (int i = 0; i < reports; ++i)
        farewell += clip_created(QByteArray::number(i) + QByteArray(3000, ' '));
    server.say(farewell);
    QTRY_COMPARE(server.bytes_sent(), farewell.size());
    server.hang_up();
    QTRY_COMPARE(clips.ids.size(), reports);
    for (int i = 0; i < reports; ++i)
        QCOMPARE(clips.ids[i].trimmed().toInt(), i);
    QTRY_VERIFY(!api.is_connected());
}

QTEST_GUILESS_MAIN(TestAPIQt)
#include "tst_api_qt.moc"
