// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_sim.h"
#include "sim/vesk/vesk_station.h"
#include "tests/support/loopback_address.h"
#include "tests/support/patience.h"
#include "tests/support/storm_listener.h"
#include "tests/support/wire_peer.h"

#include <QSignalSpy>
#include <QTest>

#include <array>

using VCTP3::Channel;
using Group = VCTP3::ChannelReportType;
using VCTP3::Layer;
using VCTP3::VideoStandard;

/// The load of 40 channels of which everything changes with every field.
class TestVeskStorm : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void each_report_of_each_channel_comes_once_a_field_and_tells_the_truth_data();
    void each_report_of_each_channel_comes_once_a_field_and_tells_the_truth();
    void every_value_changes_from_field_to_field_data();
    void every_value_changes_from_field_to_field();
    void a_position_tells_its_field();
    void only_what_is_registered_is_sent();
    void nothing_comes_behind_an_unregistration();
    void each_connection_gets_its_own();
    void a_registration_is_told_the_present_field();
    void what_the_channels_do_is_not_reported();
    void parts_of_a_field_make_up_the_field_data();
    void parts_of_a_field_make_up_the_field();
    void each_part_is_told_before_it_is_written_data();
    void each_part_is_told_before_it_is_written();
    void a_connection_that_does_not_read_is_given_up();
    void a_restart_does_not_end_it_data();
    void a_restart_does_not_end_it();
    void fields_pass_in_real_time();
};

namespace {

constexpr int channel_count = StormListener::channel_count;
constexpr int group_count = StormListener::group_count;

VeskSimOptions storm(VideoStandard standard = VideoStandard::v1080_60i)
{
    VeskSimOptions options;
    options.standard = standard;
    options.storm = true;
    return options;
}

QByteArray element(char const *tag, QByteArray const &content)
{
    return QByteArray("<") + tag + ">" + content + "</" + tag + ">";
}

QByteArray name_of(Group group)
{
    return QByteArray::fromStdString(VCTP3::ChannelReportType_to_string(group).to_string());
}

QByteArray registration(char const *command, QByteArray const &channel, Group group)
{
    return element(
        command, element("Channel", channel) + element("ChannelReportType", name_of(group)));
}

/// Registers everything about all channels.
QByteArray everything()
{
    QByteArray channels;
    QByteArray groups;
    for (int channel = 0; channel < channel_count; ++channel)
        channels += element("Channel",
            QByteArray::fromStdString(VCTP3::Channel_to_string(Channel(channel)).to_string()));
    for (Group group : VeskStorm::groups)
        groups += element("ChannelReportType", name_of(group));
    return element("channel_reports_register",
        element("ChannelSet", channels) + element("ChannelReportSet", groups));
}

} // namespace

void TestVeskStorm::each_report_of_each_channel_comes_once_a_field_and_tells_the_truth_data()
{
    QTest::addColumn<VideoStandard>("standard");
    QTest::addColumn<unsigned int>("parts");
    QTest::newRow("60 fields a second") << VideoStandard::v1080_60i << 1U;
    QTest::newRow("50 fields a second") << VideoStandard::v1080_50i << 1U;
    QTest::newRow("drop frame, spread") << VideoStandard::v1080_59_94i << 16U;
    QTest::newRow("spread out of range") << VideoStandard::v1080_60i << 0U;
}

void TestVeskStorm::each_report_of_each_channel_comes_once_a_field_and_tells_the_truth()
{
    QFETCH(VideoStandard, standard);
    QFETCH(unsigned int, parts);
    VeskSimOptions options = storm(standard);
    options.storm_parts = parts;
    VeskSim server(LoopbackAddress::unique(), options);
    VCTP3::APIQt client;
    StormListener listener(&client, standard, StormListener::HighRate::all);
    client.connect_to_server(server.address());
    QTRY_VERIFY(client.is_connected());
    client.cmd_channel_reports_register(VeskStorm::channel_set(), VeskStorm::report_set());
    QTRY_COMPARE(listener.came(1), channel_count * group_count);
    // A second, which goes by as fast as it can.
    int const second = int(VeskFieldClock(standard).fields_per_second());
    server.advance(unsigned(second));
    VCTP3::CallbackGroup_set1 group;
    QSignalSpy done(&group, &VCTP3::CallbackGroup_set1::sig_ok);
    client.cmd_sync(group);
    QTRY_COMPARE(done.count(), 1);
    QCOMPARE(listener.came(1 + second), channel_count * group_count);
    QCOMPARE(listener.wrong(), 0);
}

void TestVeskStorm::every_value_changes_from_field_to_field_data()
{
    QTest::addColumn<int>("channel");
    QTest::newRow("first") << 0;
    QTest::newRow("last") << channel_count - 1;
}

void TestVeskStorm::every_value_changes_from_field_to_field()
{
    QFETCH(int, channel);
    VeskFieldClock clock(VideoStandard::v1080_60i);
    std::array<AString, group_count> before;
    for (int field = 0; field < 1000; ++field, clock.advance()) {
        for (Group group : VeskStorm::groups) {
            AString const text = VeskStorm::report(Channel(channel), group, clock)
                                     .flatten(XMLTree::FlattenCompact);
            QVERIFY2(text != before[std::size_t(group)], name_of(group));
            before[std::size_t(group)] = text;
        }
    }
}

void TestVeskStorm::a_position_tells_its_field()
{
    VeskFieldClock clock(VideoStandard::v1080_60i);
    for (int field = 0; field < 77; ++field)
        clock.advance();
    for (Channel channel : {Channel::A, Channel::AN})
        for (Layer layer : {Layer::normal, Layer::bed})
            QCOMPARE(VeskStormLayer::field_of(
                         channel, VeskStormLayer(channel, layer, &clock).position()),
                quint64(77));
}

void TestVeskStorm::only_what_is_registered_is_sent()
{
    VeskSim server(LoopbackAddress::unique(), storm());
    WirePeer peer(server.address());
    server.advance(2);
    QCOMPARE(peer.sync_reports(), QByteArrayList());
    peer.call(registration("channel_report_register", "B", Group::speed));
    peer.call(registration("channel_report_register", "AN", Group::aux_audio_speed));
    QCOMPARE(peer.sync_reports().size(), 2);
    server.advance(2);
    QByteArrayList begins;
    for (QByteArray const &report : peer.sync_reports())
        begins += report.left(report.indexOf("</Channel>"));
    QCOMPARE(begins,
        (QByteArrayList{"<channel_speed><Channel>B", "<channel_aux_audio_speed><Channel>AN",
            "<channel_speed><Channel>B", "<channel_aux_audio_speed><Channel>AN"}));
}

void TestVeskStorm::nothing_comes_behind_an_unregistration()
{
    VeskSim server(LoopbackAddress::unique(), storm());
    WirePeer peer(server.address());
    peer.call(registration("channel_report_register", "A", Group::peak));
    peer.call(registration("channel_report_register", "A", Group::clipid));
    peer.sync_reports();
    server.advance(1);
    QCOMPARE(peer.sync_reports().size(), 2);
    peer.call(registration("channel_report_unregister", "A", Group::clipid));
    server.advance(1);
    QByteArrayList const left = peer.sync_reports();
    QCOMPARE(left.size(), 1);
    QVERIFY2(left.at(0).startsWith("<channel_peak>"), left.at(0));
    peer.call(registration("channel_report_unregister", "A", Group::peak));
    server.advance(1);
    QCOMPARE(peer.sync_reports(), QByteArrayList());
}

void TestVeskStorm::each_connection_gets_its_own()
{
    VeskSim server(LoopbackAddress::unique(), storm());
    WirePeer all(server.address());
    WirePeer one(server.address());
    all.call(everything());
    one.call(registration("channel_report_register", "C", Group::info));
    QCOMPARE(all.sync_reports().size(), channel_count * group_count);
    QByteArrayList const before = one.sync_reports();
    server.advance(3);
    QByteArrayList const of_all = all.sync_reports();
    QByteArrayList const of_one = one.sync_reports();
    QCOMPARE(of_all.size(), 3 * channel_count * group_count);
    QCOMPARE(of_one.size(), 3);
    for (QByteArray const &report : of_one)
        QCOMPARE(of_all.count(report), 1);
    QCOMPARE(before.count(of_one.at(0)), 0);
}

void TestVeskStorm::a_registration_is_told_the_present_field()
{
    VeskSim server(LoopbackAddress::unique(), storm());
    WirePeer peer(server.address());
    server.advance(41);
    peer.call(registration("channel_report_register", "B", Group::aux_audio_timecode));
    QCOMPARE(peer.sync_reports(),
        QByteArrayList{"<channel_aux_audio_timecode><Channel>B</Channel><ClipPosition>100041"
                       "</ClipPosition></channel_aux_audio_timecode>"});
}

void TestVeskStorm::what_the_channels_do_is_not_reported()
{
    VeskSimOptions options = storm();
    options.demo = true;
    VeskSim server(LoopbackAddress::unique(), options);
    WirePeer peer(server.address());
    peer.call(registration("channel_report_register", "A", Group::clipid));
    peer.sync_reports();
    peer.call("<cue_clip><Channel>A</Channel><ClipID>Bank 1/101-01</ClipID></cue_clip>");
    peer.call("<play><Channel>A</Channel></play>");
    QCOMPARE(peer.sync_reports(), QByteArrayList());
    server.advance(10);
    QByteArrayList const reports = peer.sync_reports();
    QCOMPARE(reports.size(), 10);
    for (QByteArray const &report : reports)
        QVERIFY2(!report.contains("101-01"), report);
    QCOMPARE(server.channel_state(Channel::A).clip, AString::l1("Bank 1/101-01"));
}

void TestVeskStorm::parts_of_a_field_make_up_the_field_data()
{
    QTest::addColumn<unsigned int>("parts");
    for (unsigned int parts : {1U, 3U, 16U})
        QTest::newRow(std::to_string(parts).c_str()) << parts;
}

void TestVeskStorm::parts_of_a_field_make_up_the_field()
{
    QFETCH(unsigned int, parts);
    VeskStation station(VideoStandard::v1080_60i, VeskBoard::hd);
    station.world().storm = true;
    quint64 const connection = station.open();
    QByteArray const command = "<cmd><xid>1</xid>" + everything() + "</cmd>";
    QVERIFY(station.feed(connection, command.constData(), std::size_t(command.size())));
    station.take_output(connection);
    station.advance_field();
    QVERIFY(station.take_output(connection).isEmpty());
    station.send_storm(0, 1);
    QByteArray const whole = station.take_output(connection);
    QByteArray together;
    for (unsigned int part = 0; part < parts; ++part) {
        station.send_storm(part, parts);
        QByteArray const text = station.take_output(connection);
        // Channels are not cut, and are as even as they can be.
        auto const reports = text.count("<report>");
        QCOMPARE(reports % group_count, 0);
        QVERIFY(std::abs(int(reports) / group_count - channel_count / int(parts)) <= 1);
        together += text;
    }
    QCOMPARE(together, whole);
}

void TestVeskStorm::each_part_is_told_before_it_is_written_data()
{
    QTest::addColumn<bool>("on");
    QTest::addColumn<unsigned int>("parts");
    QTest::addColumn<QByteArray>("told");
    QTest::newRow("whole") << true << 1U << QByteArray("1.0 2.0 3.0 ");
    QTest::newRow("halves") << true << 2U << QByteArray("1.0 1.1 2.0 2.1 3.0 3.1 ");
    QTest::newRow("no storm") << false << 2U << QByteArray("1.0 2.0 3.0 ");
}

void TestVeskStorm::each_part_is_told_before_it_is_written()
{
    QFETCH(bool, on);
    QFETCH(unsigned int, parts);
    QFETCH(QByteArray, told);
    QByteArray passed;
    VeskSimOptions options = storm();
    options.storm = on;
    options.storm_parts = parts;
    options.passed = [&passed](quint64 field, unsigned int part) {
        passed += QByteArray::number(field) + '.' + QByteArray::number(part) + ' ';
    };
    VeskSim server(LoopbackAddress::unique(), options);
    server.advance(3);
    QCOMPARE(passed, told);
}

void TestVeskStorm::a_connection_that_does_not_read_is_given_up()
{
    VeskSim server(LoopbackAddress::unique(), storm());
    WirePeer idle(server.address());
    idle.call(everything());
    // Most of what it may leave unread, so that little of the storm makes it too much.
    for (int round = 0; round < 6; ++round)
        server.say(QByteArray(10 * 1024 * 1024, ' '));
    WirePeer reading(server.address());
    QCOMPARE(reading.call("<sync/>"), QByteArrayList{"<ok />"});
    QCOMPARE(server.counters().open_connections, quint64(2));
    // More than 100 bytes a report; some more megabytes lie in the sockets between the two.
    server.advance(400);
    QCOMPARE(server.counters().open_connections, quint64(1));
    QCOMPARE(reading.call("<sync/>"), QByteArrayList{"<ok />"});
}

void TestVeskStorm::a_restart_does_not_end_it_data()
{
    QTest::addColumn<bool>("keep");
    QTest::newRow("with its state") << true;
    QTest::newRow("without") << false;
}

void TestVeskStorm::a_restart_does_not_end_it()
{
    QFETCH(bool, keep);
    VeskSim server(LoopbackAddress::unique(), storm());
    server.advance(5);
    server.restart(keep ? VeskState::keep : VeskState::lose);
    WirePeer peer(server.address());
    peer.call(registration("channel_report_register", "A", Group::aux_audio_timecode));
    server.advance(2);
    QByteArrayList const reports = peer.sync_reports();
    QCOMPARE(reports.size(), 3);
    QVERIFY2(reports.at(2).contains("<ClipPosition>2</ClipPosition>"), reports.at(2));
}

void TestVeskStorm::fields_pass_in_real_time()
{
    VeskSimOptions options = storm();
    options.storm_parts = 4;
    options.real_time = true;
    VeskSim server(LoopbackAddress::unique(), options);
    WirePeer peer(server.address());
    peer.call(registration("channel_report_register", "AN", Group::timecode));
    QVERIFY(peer.wait_for_reports(20).size() >= 20);
}

QTEST_GUILESS_MAIN(TestVeskStorm)
#include "tst_vesk_storm.moc"
