// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_sim.h"
#include "tests/support/loopback_address.h"
#include "tests/support/wire_peer.h"

#include <QTest>

/// Who is told what.
class TestVeskRegistrationCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tells_nothing_to_those_who_did_not_register();
    void tells_a_group_to_those_registered_for_it_data();
    void tells_a_group_to_those_registered_for_it();
    void tells_the_state_of_a_channel_group_behind_the_ok_data();
    void tells_the_state_of_a_channel_group_behind_the_ok();
    void tells_the_state_of_a_server_group_behind_the_ok_data();
    void tells_the_state_of_a_server_group_behind_the_ok();
    void tells_the_state_with_each_registration();
    void tells_the_state_again_after_an_unregistration();
    void registers_sets_of_channels_and_groups();
    void registers_sets_of_server_groups();
    void takes_empty_sets();
    void keeps_channels_and_groups_apart();
    void begins_a_new_connection_with_none();
    void sends_the_reports_of_a_field_in_channel_order();
    void sends_the_reports_of_a_command_behind_its_reply();
};

namespace {

QByteArray registration(QByteArray const &verb, QByteArray const &channel, QByteArray const &group)
{
    return "<channel_report_" + verb + "><Channel>" + channel + "</Channel><ChannelReportType>"
        + group + "</ChannelReportType></channel_report_" + verb + ">";
}

QByteArray registration(QByteArray const &verb, QByteArray const &group)
{
    return "<report_" + verb + "><ReportType>" + group + "</ReportType></report_" + verb + ">";
}

QByteArray const ok = "<ok />";

} // namespace

void TestVeskRegistrationCommands::tells_nothing_to_those_who_did_not_register()
{
    VeskSimOptions options;
    options.demo = true;
    VeskSim server(LoopbackAddress::unique(), options);
    WirePeer peer(server.address());
    WirePeer other(server.address());
    other.call("<cue_clip><Channel>A</Channel><ClipID>Bank 1/101-01</ClipID></cue_clip>");
    other.call("<play><Channel>A</Channel></play>");
    other.call("<create_directory><DirectoryName>new</DirectoryName></create_directory>");
    server.advance(400);
    QCOMPARE(peer.sync_reports(), QByteArrayList());
    QCOMPARE(other.sync_reports(), QByteArrayList());
}

void TestVeskRegistrationCommands::tells_a_group_to_those_registered_for_it_data()
{
    QTest::addColumn<int>("group");
    for (int group = 0; VCTP3::valid_ReportType(group); ++group)
        QTest::newRow(VCTP3::ReportType_to_string(VCTP3::ReportType(group)).to_string().c_str())
            << group;
}

void TestVeskRegistrationCommands::tells_a_group_to_those_registered_for_it()
{
    QFETCH(int, group);
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    WirePeer other(server.address());
    QByteArray const name = QByteArray::fromStdString(
        VCTP3::ReportType_to_string(VCTP3::ReportType(group)).to_string());
    QCOMPARE(peer.call(registration("register", name)), QByteArrayList{ok});
    for (int rest = 0; VCTP3::valid_ReportType(rest); ++rest)
        if (rest != group)
            other.call(registration("register",
                QByteArray::fromStdString(
                    VCTP3::ReportType_to_string(VCTP3::ReportType(rest)).to_string())));
    peer.sync_reports();
    other.sync_reports();
    server.report(VCTP3::ReportType(group), XMLTree(AString::l1("news")));
    QCOMPARE(peer.sync_reports(), QByteArrayList{"<news />"});
    QCOMPARE(other.sync_reports(), QByteArrayList());
    QCOMPARE(peer.call(registration("unregister", name)), QByteArrayList{ok});
    server.report(VCTP3::ReportType(group), XMLTree(AString::l1("news")));
    QCOMPARE(peer.sync_reports(), QByteArrayList());
}

void TestVeskRegistrationCommands::tells_the_state_of_a_channel_group_behind_the_ok_data()
{
    QTest::addColumn<QByteArray>("group");
    QTest::addColumn<QByteArray>("begin");
    static char const *const rows[][2] = {
        {"status", "<channel_status><Channel>C</Channel><ChannelStatus>idle</ChannelStatus>"},
        {"clipid", "<channel_clipid><Channel>C</Channel><ClipID />"},
        {"speed", "<channel_speed><Channel>C</Channel><Speed>0X</Speed>"},
        {"timecode", "<channel_timecode><Channel>C</Channel><ClipPosition>0</ClipPosition>"},
        {"info", "<channel_info><Channel>C</Channel><ChannelInformation><ClipID />"},
        {"peak", "<channel_peak><Channel>C</Channel><LevelsString>0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0"},
        {"aux_audio_status", "<channel_aux_audio_status><Channel>C</Channel><ChannelStatus>idle"},
        {"aux_audio_clipid", "<channel_aux_audio_clipid><Channel>C</Channel><ClipID />"},
        {"aux_audio_speed", "<channel_aux_audio_speed><Channel>C</Channel><Speed>0X</Speed>"},
        {"aux_audio_timecode",
            "<channel_aux_audio_timecode><Channel>C</Channel><ClipPosition>0</ClipPosition>"},
        {"aux_audio_info", "<channel_aux_audio_info><Channel>C</Channel><ChannelInformation>"},
        {"aux_audio_peak", "<channel_aux_audio_peak><Channel>C</Channel><LevelsString>0 0"},
        {"listplay", "<channel_listplay_unloaded><Channel>C</Channel>"},
        {"chaseplay", "<channel_chaseplay_unloaded><Channel>C</Channel>"},
    };
    for (auto const &row : rows)
        QTest::newRow(row[0]) << QByteArray(row[0]) << QByteArray(row[1]);
}

void TestVeskRegistrationCommands::tells_the_state_of_a_channel_group_behind_the_ok()
{
    QFETCH(QByteArray, group);
    QFETCH(QByteArray, begin);
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QCOMPARE(peer.call(registration("register", "C", group)), QByteArrayList{ok});
    QByteArrayList const reports = peer.sync_reports();
    QCOMPARE(reports.size(), 1);
    QVERIFY2(reports.at(0).startsWith(begin), reports.at(0));
    QVERIFY(peer.received().indexOf(ok) < peer.received().indexOf("<report>"));
}

void TestVeskRegistrationCommands::tells_the_state_of_a_server_group_behind_the_ok_data()
{
    QTest::addColumn<QByteArray>("group");
    QTest::addColumn<QByteArray>("begin");
    static char const *const rows[][2] = {
        {"disk_space", "<disk_space_changed><DiskSpaceChange><TotalDiskSpace>"},
        {"temperature", "<temperature><Temperature10>410</Temperature10></temperature>"},
        {"ltc_input", "<ltc_timecode><Timecode><Valid>true</Valid>"},
        {"clip_change", ""},
        {"config_change", ""},
        {"melt", ""},
        {"directory_change", ""},
        {"playlist_change", ""},
        {"chaselist_change", ""},
        {"export", ""},
        {"alerts", ""},
        {"chase_ltc_timecode", ""},
    };
    for (auto const &row : rows)
        QTest::newRow(row[0]) << QByteArray(row[0]) << QByteArray(row[1]);
}

void TestVeskRegistrationCommands::tells_the_state_of_a_server_group_behind_the_ok()
{
    QFETCH(QByteArray, group);
    QFETCH(QByteArray, begin);
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QCOMPARE(peer.call(registration("register", group)), QByteArrayList{ok});
    QByteArrayList const reports = peer.sync_reports();
    QCOMPARE(reports.size(), begin.isEmpty() ? 0 : 1);
    if (!reports.isEmpty())
        QVERIFY2(reports.at(0).startsWith(begin), reports.at(0));
}

void TestVeskRegistrationCommands::tells_the_state_with_each_registration()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(registration("register", "A", "status"));
    peer.call(registration("register", "temperature"));
    QCOMPARE(peer.sync_reports().size(), 2);
    QCOMPARE(peer.call(registration("register", "A", "status")), QByteArrayList{ok});
    QCOMPARE(peer.call(registration("register", "temperature")), QByteArrayList{ok});
    // So that whoever comes later learns it too; what changes is told once all the same.
    QCOMPARE(peer.sync_reports().size(), 2);
    server.advance(60 * 5);
    QCOMPARE(peer.sync_reports().size(), 1);
}

void TestVeskRegistrationCommands::tells_the_state_again_after_an_unregistration()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(registration("register", "A", "status"));
    peer.call(registration("unregister", "A", "status"));
    peer.sync_reports();
    peer.call(registration("register", "A", "status"));
    QCOMPARE(peer.sync_reports().size(), 1);
}

void TestVeskRegistrationCommands::registers_sets_of_channels_and_groups()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QByteArray const sets = "<ChannelSet><Channel>AN</Channel><Channel>B</Channel></ChannelSet>"
                            "<ChannelReportSet><ChannelReportType>speed</ChannelReportType>"
                            "<ChannelReportType>clipid</ChannelReportType></ChannelReportSet>";
    QCOMPARE(peer.call("<channel_reports_register>" + sets + "</channel_reports_register>"),
        QByteArrayList{ok});
    QCOMPARE(peer.sync_reports(),
        (QByteArrayList{
            "<channel_speed><Channel>AN</Channel><Speed>0X</Speed></channel_speed>",
            "<channel_clipid><Channel>AN</Channel><ClipID /></channel_clipid>",
            "<channel_speed><Channel>B</Channel><Speed>0X</Speed></channel_speed>",
            "<channel_clipid><Channel>B</Channel><ClipID /></channel_clipid>",
        }));
    QCOMPARE(peer.call("<channel_reports_unregister>" + sets + "</channel_reports_unregister>"),
        QByteArrayList{ok});
    peer.call("<create_clip><ClipID>new</ClipID><TrackSet><TrackType>video</TrackType></TrackSet>"
              "<Channel>B</Channel></create_clip>");
    QCOMPARE(peer.sync_reports(), QByteArrayList());
}

void TestVeskRegistrationCommands::registers_sets_of_server_groups()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QByteArray const set = "<ReportSet><ReportType>temperature</ReportType>"
                           "<ReportType>alerts</ReportType></ReportSet>";
    QCOMPARE(peer.call("<reports_register>" + set + "</reports_register>"), QByteArrayList{ok});
    QCOMPARE(peer.sync_reports().size(), 1);
    server.report(VCTP3::ReportType::alerts, XMLTree(AString::l1("news")));
    QCOMPARE(peer.sync_reports(), QByteArrayList{"<news />"});
    QCOMPARE(peer.call("<reports_unregister>" + set + "</reports_unregister>"), QByteArrayList{ok});
    server.report(VCTP3::ReportType::alerts, XMLTree(AString::l1("news")));
    QCOMPARE(peer.sync_reports(), QByteArrayList());
}

void TestVeskRegistrationCommands::takes_empty_sets()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QCOMPARE(peer.call("<reports_register><ReportSet /></reports_register>"), QByteArrayList{ok});
    QCOMPARE(peer.call("<channel_reports_register><ChannelSet /><ChannelReportSet />"
                       "</channel_reports_register>"),
        QByteArrayList{ok});
    QCOMPARE(peer.sync_reports(), QByteArrayList());
}

void TestVeskRegistrationCommands::keeps_channels_and_groups_apart()
{
    VeskSimOptions options;
    options.demo = true;
    VeskSim server(LoopbackAddress::unique(), options);
    WirePeer peer(server.address());
    peer.call(registration("register", "A", "clipid"));
    peer.call(registration("register", "B", "speed"));
    peer.sync_reports();
    for (QByteArray const channel : {"A", "B", "C"})
        peer.call("<cue_clip><Channel>" + channel
            + "</Channel><ClipID>Bank 1/101-01</ClipID></cue_clip>");
    QCOMPARE(peer.sync_reports(),
        QByteArrayList{
            "<channel_clipid><Channel>A</Channel><ClipID>Bank 1/101-01</ClipID></channel_clipid>"});
}

void TestVeskRegistrationCommands::begins_a_new_connection_with_none()
{
    VeskSim server(LoopbackAddress::unique());
    {
        WirePeer first(server.address());
        first.call(registration("register", "alerts"));
    }
    WirePeer second(server.address());
    second.call("<sync/>");
    server.report(VCTP3::ReportType::alerts, XMLTree(AString::l1("news")));
    QCOMPARE(second.sync_reports(), QByteArrayList());
}

void TestVeskRegistrationCommands::sends_the_reports_of_a_field_in_channel_order()
{
    VeskSimOptions options;
    options.demo = true;
    VeskSim server(LoopbackAddress::unique(), options);
    WirePeer peer(server.address());
    for (QByteArray const channel : {"AN", "B", "A"}) {
        peer.call("<cue_clip><Channel>" + channel
            + "</Channel><ClipID>Bank 1/101-01</ClipID></cue_clip>");
        peer.call("<play><Channel>" + channel + "</Channel></play>");
        peer.call(registration("register", channel, "aux_audio_speed"));
        peer.call(registration("register", channel, "timecode"));
    }
    server.advance(10);
    peer.sync_reports();
    server.advance(2);
    QByteArrayList channels;
    for (QByteArray const &report : peer.sync_reports()) {
        QVERIFY2(report.startsWith("<channel_timecode>"), report);
        qsizetype const at = report.indexOf("<Channel>") + 9;
        channels += report.mid(at, report.indexOf("</Channel>") - at);
    }
    QCOMPARE(channels, (QByteArrayList{"A", "B", "AN", "A", "B", "AN"}));
}

void TestVeskRegistrationCommands::sends_the_reports_of_a_command_behind_its_reply()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(registration("register", "directory_change"));
    peer.call("<create_directory><DirectoryName>new</DirectoryName></create_directory>");
    peer.sync_reports();
    QVERIFY(peer.received().contains(
        "<reply><xid>2</xid><ok /></reply><report><directory_created>"
        "<DirectoryName>new</DirectoryName></directory_created></report>"));
}

QTEST_GUILESS_MAIN(TestVeskRegistrationCommands)
#include "tst_vesk_registration_commands.moc"
