// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_sim.h"
#include "tests/support/loopback_address.h"
#include "tests/support/patience.h"
#include "tests/support/wire_peer.h"

#include <QTest>

#include <algorithm>
#include <future>

/// The server as a whole: connections, faults, restarts and time.
class TestVeskSim : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listens_on_its_address_and_the_port_of_the_protocol();
    void tells_why_it_cannot_listen();
    void serves_several_connections();
    void ends_all_connections_when_it_goes();
    void refuses_connections();
    void does_commands_in_silence();
    void closes_after_so_many_bytes_data();
    void closes_after_so_many_bytes();
    void closes_a_later_connection_after_so_many_bytes();
    void splits_its_writes_at_every_byte();
    void sends_the_rest_at_once_when_splitting_ends();
    void holds_replies_for_so_many_fields();
    void reorders_replies_by_a_seed();
    void keeps_the_replies_to_one_command_together_when_it_reorders();
    void sends_what_is_left_of_a_window_with_the_next_field();
    void fails_a_command_by_name();
    void sends_given_bytes_to_every_connection();
    void clears_all_faults_and_sends_what_was_held_back();
    void gives_up_a_connection_that_does_not_read();
    void drops_connections_and_goes_on_listening();
    void knows_a_connection_as_soon_as_its_client_does();
    void stops_and_starts_again();
    void restarts_with_its_state();
    void restarts_without_its_state();
    void restarts_with_the_demo_event_again();
    void lets_time_stand_still_until_told();
    void lets_time_pass_by_itself_in_real_time();
    void traces_every_message_with_its_connection();
    void stands_still_on_an_empty_channel();
    void starts_with_the_demo_event();
};

namespace {

QByteArray const ok = "<ok />";
QByteArray const ok_reply = "<reply><xid>1</xid><ok /></reply>";

VeskSimOptions demo()
{
    VeskSimOptions options;
    options.demo = true;
    return options;
}

QByteArray set(QByteArray const &key)
{
    return "<userdict_set><Key>" + key + "</Key><Value>v</Value></userdict_set>";
}

/// The ids in the order in which the answers to so many commands came.
QByteArrayList order_of_answers(VeskSim *server, int count)
{
    WirePeer peer(server->address());
    QByteArray bytes;
    for (int number = 0; number < count; ++number)
        bytes += "<cmd><xid>" + QByteArray::number(number) + "</xid><sync/></cmd>";
    peer.send(bytes);
    peer.wait_for([&] { return peer.order_of_replies().size() >= count; });
    return peer.order_of_replies();
}

} // namespace

void TestVeskSim::listens_on_its_address_and_the_port_of_the_protocol()
{
    QHostAddress const address = LoopbackAddress::unique();
    VeskSim server(address);
    QVERIFY(server.is_listening());
    QVERIFY(server.listen_error().isEmpty());
    QCOMPARE(server.address(), address);
    QCOMPARE(server.port(), quint16(8913));
    WirePeer peer(address, 8913);
    QCOMPARE(peer.call("<sync/>"), QByteArrayList{ok});
}

void TestVeskSim::tells_why_it_cannot_listen()
{
    QHostAddress const address = LoopbackAddress::unique();
    VeskSim first(address);
    VeskSim second(address);
    QVERIFY(!second.is_listening());
    QVERIFY(!second.listen_error().isEmpty());
    WirePeer peer(address);
    peer.call("<sync/>");
    QCOMPARE(first.counters().connections, quint64(1));
}

void TestVeskSim::serves_several_connections()
{
    VeskSim server(LoopbackAddress::unique());
    std::vector<std::unique_ptr<WirePeer>> peers;
    for (int number = 0; number < 50; ++number)
        peers.push_back(std::make_unique<WirePeer>(server.address()));
    for (auto const &peer : peers)
        QCOMPARE(peer->call("<sync/>"), QByteArrayList{ok});
    QCOMPARE(server.counters().open_connections, quint64(50));
    peers.clear();
    QTRY_COMPARE(server.counters().open_connections, quint64(0));
    QCOMPARE(server.counters().connections, quint64(50));
}

void TestVeskSim::ends_all_connections_when_it_goes()
{
    auto server = std::make_unique<VeskSim>(LoopbackAddress::unique());
    WirePeer peer(server->address());
    QCOMPARE(peer.call("<sync/>"), QByteArrayList{ok});
    server.reset();
    QVERIFY(peer.wait_for_end());
}

void TestVeskSim::refuses_connections()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer before(server.address());
    before.call("<sync/>");
    server.refuse_connections(true);
    QVERIFY(!server.is_listening());
    WirePeer refused(server.address());
    QVERIFY(!refused.is_connected());
    QCOMPARE(refused.socket.error(), QAbstractSocket::ConnectionRefusedError);
    QCOMPARE(before.call("<sync/>"), QByteArrayList{ok});
    server.refuse_connections(false);
    WirePeer after(server.address());
    QCOMPARE(after.call("<sync/>"), QByteArrayList{ok});
}

void TestVeskSim::does_commands_in_silence()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call("<userdict_watch><Key>k</Key></userdict_watch>");
    server.stay_silent(true);
    QByteArray const before = peer.received();
    peer.command(set("k"));
    QTRY_VERIFY(server.dictionary_value(AString::l1("k")).has_value());
    server.stay_silent(false);
    QCOMPARE(peer.call("<sync/>"), QByteArrayList{ok});
    QCOMPARE(peer.received(), before + "<reply><xid>3</xid><ok /></reply>");
}

void TestVeskSim::closes_after_so_many_bytes_data()
{
    QTest::addColumn<int>("bytes");
    QTest::newRow("at once") << 0;
    QTest::newRow("one byte") << 1;
    QTest::newRow("in the middle") << 17;
    QTest::newRow("all but one") << int(ok_reply.size()) - 1;
    QTest::newRow("a whole reply") << int(ok_reply.size());
}

void TestVeskSim::closes_after_so_many_bytes()
{
    QFETCH(int, bytes);
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QVERIFY(peer.is_connected());
    QTRY_COMPARE(server.counters().open_connections, quint64(1));
    server.close_after(quint64(bytes));
    peer.command("<sync/>");
    peer.wait_for([] { return false; });
    QVERIFY(!peer.is_connected());
    QCOMPARE(peer.received(), ok_reply.left(bytes));
    QTRY_COMPARE(server.counters().open_connections, quint64(0));
    QCOMPARE(server.counters().bytes_sent, quint64(bytes));
}

void TestVeskSim::closes_a_later_connection_after_so_many_bytes()
{
    VeskSim server(LoopbackAddress::unique());
    server.close_after(40);
    for (int round = 0; round < 2; ++round) {
        WirePeer peer(server.address());
        peer.call("<sync/>");
        peer.command("<sync/>");
        peer.wait_for([] { return false; });
        QCOMPARE(peer.received().size(), 40);
    }
}

void TestVeskSim::splits_its_writes_at_every_byte()
{
    VeskSim server(LoopbackAddress::unique(), demo());
    WirePeer peer(server.address());
    server.split_writes(true);
    // A peer that looks after each byte sees many short pieces, and in the end the same text.
    QList<qsizetype> sizes;
    peer.command("<download_clipids/>");
    QVERIFY(peer.wait_for([&] {
        sizes += peer.received().size();
        return peer.received().endsWith("<ok /></reply>");
    }));
    QByteArray const split = peer.received();
    server.split_writes(false);
    WirePeer whole(server.address());
    whole.call("<download_clipids/>");
    QCOMPARE(split, whole.received());
    QVERIFY(std::adjacent_find(sizes.cbegin(), sizes.cend(), [](qsizetype a, qsizetype b) {
        return b == a + 1;
    }) != sizes.cend());
}

void TestVeskSim::sends_the_rest_at_once_when_splitting_ends()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call("<sync/>");
    server.split_writes(true);
    QByteArray const filler = "<report><x>" + QByteArray(1000000, 'x') + "</x></report>";
    server.say(filler);
    server.split_writes(false);
    QCOMPARE(peer.call("<sync/>"), QByteArrayList{ok});
    QVERIFY(peer.received().contains(filler));
}

void TestVeskSim::holds_replies_for_so_many_fields()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call("<userdict_watch><Key>k</Key></userdict_watch>");
    server.delay_replies(3);
    peer.command(set("k"));
    // The report is not held back: the command is done.
    QCOMPARE(peer.wait_for_reports(1).size(), 1);
    QByteArray const before = peer.received();
    server.advance(2);
    server.say("<report><mark/></report>");
    QCOMPARE(peer.wait_for_reports(1), QByteArrayList{"<mark/>"});
    QCOMPARE(peer.received(), before + "<report><mark/></report>");
    server.advance(1);
    QCOMPARE(peer.replies_to("2"), QByteArrayList{ok});
}

void TestVeskSim::reorders_replies_by_a_seed()
{
    VeskSim server(LoopbackAddress::unique());
    QByteArrayList const sorted = order_of_answers(&server, 100);
    server.reorder_replies(10, 1);
    QByteArrayList const first = order_of_answers(&server, 100);
    QByteArrayList const again = order_of_answers(&server, 100);
    server.reorder_replies(10, 2);
    QByteArrayList const other = order_of_answers(&server, 100);
    QVERIFY(first != sorted);
    QCOMPARE(again, first);
    QVERIFY(other != first);
    for (int window = 0; window < 10; ++window) {
        QByteArrayList here = first.mid(window * 10, 10);
        QByteArrayList expected = sorted.mid(window * 10, 10);
        std::sort(here.begin(), here.end());
        std::sort(expected.begin(), expected.end());
        QCOMPARE(here, expected);
    }
}

void TestVeskSim::keeps_the_replies_to_one_command_together_when_it_reorders()
{
    VeskSim server(LoopbackAddress::unique(), demo());
    WirePeer peer(server.address());
    server.reorder_replies(4, 7);
    QByteArray bytes;
    for (int number = 1; number <= 4; ++number)
        bytes += "<cmd><xid>" + QByteArray::number(number)
            + "</xid><download_directory_names/></cmd>";
    peer.send(bytes);
    QVERIFY(peer.wait_for([&] { return peer.order_of_replies().size() == 24; }));
    QByteArrayList const order = peer.order_of_replies();
    for (int answer = 0; answer < 4; ++answer)
        QCOMPARE(order.mid(answer * 6, 6).count(order.at(answer * 6)), 6);
    QCOMPARE(peer.replies_to("1").last(), ok);
}

void TestVeskSim::sends_what_is_left_of_a_window_with_the_next_field()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    server.reorder_replies(10, 1);
    peer.command("<sync/>");
    peer.command("<sync/>");
    QTRY_COMPARE(server.counters().count("sync"), quint64(2));
    QVERIFY(peer.received().isEmpty());
    server.advance(1);
    QVERIFY(peer.wait_for([&] { return peer.order_of_replies().size() == 2; }));
}

void TestVeskSim::fails_a_command_by_name()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    server.fail_command("userdict_set", "out of order", VCTP3::ErrorCode::clipnotfound);
    QCOMPARE(peer.call(set("k")),
        QByteArrayList{"<error><ErrorMessage>out of order</ErrorMessage>"
                       "<ErrorCode>clipnotfound</ErrorCode></error>"});
    QVERIFY(!server.dictionary_value(AString::l1("k")));
    QCOMPARE(peer.call("<sync/>"), QByteArrayList{ok});
    QCOMPARE(server.counters().count("userdict_set"), quint64(1));
}

void TestVeskSim::sends_given_bytes_to_every_connection()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer first(server.address());
    WirePeer second(server.address());
    first.call("<sync/>");
    second.call("<sync/>");
    server.say("<report/>\xFF nonsense");
    for (WirePeer *peer : {&first, &second})
        QVERIFY(peer->wait_for(
            [&] { return peer->received() == ok_reply + "<report/>\xFF nonsense"; }));
}

void TestVeskSim::clears_all_faults_and_sends_what_was_held_back()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call("<sync/>");
    server.refuse_connections(true);
    server.fail_command("sync", "no");
    server.close_after(100000);
    server.delay_replies(100);
    server.split_writes(true);
    QByteArray const xid = peer.command("<get_io_latency/>");
    QTRY_COMPARE(server.counters().count("get_io_latency"), quint64(1));
    server.clear_faults();
    QCOMPARE(peer.replies_to(xid).size(), 1);
    QCOMPARE(peer.call("<sync/>"), QByteArrayList{ok});
    server.say(QByteArray(200000, ' '));
    QVERIFY(peer.wait_for([&] { return peer.received().size() > 200000; }));
    QVERIFY(peer.is_connected());
    WirePeer after(server.address());
    QCOMPARE(after.call("<sync/>"), QByteArrayList{ok});
}

void TestVeskSim::gives_up_a_connection_that_does_not_read()
{
    QByteArrayList lines;
    VeskSimOptions options;
    options.trace = [&](QByteArray const &line) {
        if (line.size() < 200)
            lines += line;
    };
    VeskSim server(LoopbackAddress::unique(), options);
    WirePeer idle(server.address());
    idle.call("<sync/>");
    // So much as the kernel, which takes as much as it likes, leaves to the server.
    for (int round = 0; round < 20 && server.counters().open_connections > 0; ++round)
        server.say(QByteArray(10 * 1024 * 1024, ' '));
    QCOMPARE(server.counters().open_connections, quint64(0));
    QVERIFY(lines.contains("#1   closed, since it does not read"));
    WirePeer next(server.address());
    QCOMPARE(next.call("<sync/>"), QByteArrayList{ok});
}

void TestVeskSim::drops_connections_and_goes_on_listening()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer first(server.address());
    WirePeer second(server.address());
    first.call("<sync/>");
    second.call("<sync/>");
    server.drop_connections();
    QCOMPARE(server.counters().open_connections, quint64(0));
    QVERIFY(first.wait_for_end());
    QVERIFY(second.wait_for_end());
    WirePeer third(server.address());
    QCOMPARE(third.call("<sync/>"), QByteArrayList{ok});
}

void TestVeskSim::knows_a_connection_as_soon_as_its_client_does()
{
    VeskSim server(LoopbackAddress::unique());
    std::promise<void> busy;
    std::promise<void> connected;
    auto const holding = std::async(std::launch::async, [&] {
        server.with_world([&](VeskWorld &) {
            busy.set_value();
            connected.get_future().wait();
        });
    });
    busy.get_future().wait();
    WirePeer peer(server.address());
    connected.set_value();
    QVERIFY(peer.is_connected());
    QCOMPARE(server.counters().open_connections, quint64(1));
    server.drop_connections();
    QVERIFY(peer.wait_for_end());
}

void TestVeskSim::stops_and_starts_again()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(set("k"));
    server.stop();
    QVERIFY(peer.wait_for_end());
    WirePeer refused(server.address());
    QVERIFY(!refused.is_connected());
    server.restart(VeskState::keep);
    QVERIFY(server.is_listening());
    WirePeer after(server.address());
    QCOMPARE(after.call("<sync/>"), QByteArrayList{ok});
    QCOMPARE(server.dictionary_value(AString::l1("k")).value(), AString::l1("v"));
}

void TestVeskSim::restarts_with_its_state()
{
    VeskSim server(LoopbackAddress::unique(), demo());
    WirePeer peer(server.address());
    peer.call("<create_directory><DirectoryName>mine</DirectoryName></create_directory>");
    peer.call("<rename_clip><FromID>Bank 1/101-01</FromID><ToID>mine/x</ToID></rename_clip>");
    peer.call("<cue_clip><Channel>A</Channel><ClipID>mine/x</ClipID></cue_clip>");
    server.advance(10);
    QCOMPARE(server.channel_state(VCTP3::Channel::A).status, VCTP3::ChannelStatus::stop);
    server.restart(VeskState::keep);
    QVERIFY(peer.wait_for_end());
    QVERIFY(server.clip(AString::l1("mine/x")).has_value());
    QVERIFY(!server.clip(AString::l1("Bank 1/101-01")));
    QCOMPARE(server.channel_state(VCTP3::Channel::A).status, VCTP3::ChannelStatus::idle);
    QCOMPARE(server.fields(), quint64(0));
    WirePeer after(server.address());
    QCOMPARE(after.call("<clip_exists><ClipID>mine/x</ClipID></clip_exists>"),
        QByteArrayList{"<clipexists><ClipID>mine/x</ClipID><Exists>true</Exists></clipexists>"});
}

void TestVeskSim::restarts_without_its_state()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(set("k"));
    server.advance(5);
    server.restart(VeskState::lose);
    QVERIFY(peer.wait_for_end());
    QVERIFY(!server.dictionary_value(AString::l1("k")));
    QCOMPARE(server.fields(), quint64(0));
    // What was counted stays: a test counts over the restart.
    QCOMPARE(server.counters().count("userdict_set"), quint64(1));
    WirePeer after(server.address());
    QCOMPARE(after.call("<sync/>"), QByteArrayList{ok});
}

void TestVeskSim::restarts_with_the_demo_event_again()
{
    VeskSim server(LoopbackAddress::unique(), demo());
    std::vector<AString> const before = server.clip_ids();
    {
        WirePeer peer(server.address());
        peer.call("<delete_clip><ClipID>Bank 1/101-01</ClipID></delete_clip>");
    }
    QCOMPARE(server.clip_ids().size(), before.size() - 1);
    server.restart(VeskState::lose);
    QVERIFY(server.clip_ids() == before);
}

void TestVeskSim::lets_time_stand_still_until_told()
{
    VeskSim server(LoopbackAddress::unique(), demo());
    WirePeer peer(server.address());
    peer.call("<cue_clip><Channel>A</Channel><ClipID>Bank 1/101-01</ClipID></cue_clip>");
    QCOMPARE(server.channel_state(VCTP3::Channel::A).status, VCTP3::ChannelStatus::cueing);
    server.advance(2);
    peer.call("<play><Channel>A</Channel><Speed>2X</Speed></play>");
    server.advance(50);
    VeskChannelState const state = server.channel_state(VCTP3::Channel::A);
    QCOMPARE(state.status, VCTP3::ChannelStatus::play);
    QCOMPARE(state.clip, AString::l1("Bank 1/101-01"));
    QCOMPARE(state.position, 100U);
    QCOMPARE(state.speed, 131072);
    QCOMPARE(state.information.clip_id, AString::l1("Bank 1/101-01"));
    QCOMPARE(server.fields(), quint64(52));
}

void TestVeskSim::lets_time_pass_by_itself_in_real_time()
{
    VeskSim server(LoopbackAddress::unique());
    server.set_real_time(true);
    QTRY_VERIFY(server.fields() >= 30);
    server.set_real_time(false);
    quint64 const fields = server.fields();
    server.advance(1);
    QCOMPARE(server.fields(), fields + 1);
}

void TestVeskSim::traces_every_message_with_its_connection()
{
    QByteArrayList lines;
    VeskSimOptions options;
    options.trace = [&](QByteArray const &line) { lines += line; };
    VeskSim server(LoopbackAddress::unique(), options);
    WirePeer first(server.address());
    first.call("<sync/>");
    WirePeer second(server.address());
    second.call("<report_register><ReportType>temperature</ReportType></report_register>");
    server.say("bytes");
    QCOMPARE(lines,
        (QByteArrayList{
            "#1 < <cmd><xid>1</xid><sync /></cmd>",
            "#1 > <reply><xid>1</xid><ok /></reply>",
            "#2 < <cmd><xid>1</xid><report_register><ReportType>temperature</ReportType>"
            "</report_register></cmd>",
            "#2 > <reply><xid>1</xid><ok /></reply>",
            "#2 > <report><temperature><Temperature10>410</Temperature10></temperature></report>",
            "#1 > bytes",
            "#2 > bytes",
        }));
}

void TestVeskSim::stands_still_on_an_empty_channel()
{
    VeskSim server(LoopbackAddress::unique());
    server.advance(10);
    for (int channel = 0; VCTP3::valid_Channel(channel); ++channel) {
        VeskChannelState const state
            = server.channel_state(VCTP3::Channel(channel), VCTP3::Layer::bed);
        QCOMPARE(state.status, VCTP3::ChannelStatus::idle);
        QVERIFY(state.clip.empty());
        QCOMPARE(state.position, 0U);
    }
}

void TestVeskSim::starts_with_the_demo_event()
{
    VeskSim server(LoopbackAddress::unique(), demo());
    VeskSim empty(LoopbackAddress::unique());
    QVERIFY(empty.clip_ids().empty());
    QVERIFY(server.clip_ids().size() > 100);
    auto const goals = server.list(AString::l1("Goals"));
    auto const opening = server.list(AString::l1("Opening"));
    QVERIFY(goals && opening);
    for (auto const &elements : {goals.value(), opening.value()})
        for (VCTP3::ListElement const &element : elements)
            QVERIFY2(server.clip(element.content_id.clipid).has_value(),
                element.content_id.clipid.to_string().c_str());
    auto const match = server.chase(AString::l1("Whole match"));
    QCOMPARE(match.value().size(), std::size_t(2));
    for (VCTP3::ChaseElement const &element : match.value())
        QVERIFY(server.clip(element.content_id.clipid).has_value());
    QCOMPARE(server.metadata_value(AString::l1("demo"), AString::l1("score.home")).value(),
        AString::l1("2"));
    QCOMPARE(server.dictionary_value(AString::l1("Tally1")).value(), AString::l1("red"));
    QCOMPARE(server.setting(AString::l1("ControlPanel_Channels0")).value().effective,
        AString::l1("A,B,C,D"));
    // What every server tells of its board is there without the event, too.
    QCOMPARE(
        empty.dictionary_value(AString::l1("cf.orchard.type")).value(), AString::l1("tamarind"));
}

QTEST_GUILESS_MAIN(TestVeskSim)
#include "tst_vesk_sim.moc"
