// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_sim.h"
#include "tests/support/loopback_address.h"
#include "tests/support/wire_peer.h"

#include <QTest>

/// What the server tells of itself, and its log.
class TestVeskInformationCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tells_a_fact_data();
    void tells_a_fact();
    void tells_the_rate_and_the_raster_of_every_standard_data();
    void tells_the_rate_and_the_raster_of_every_standard();
    void tells_the_reference_source_that_is_configured();
    void keeps_the_keys_of_program_outputs_and_tells_everyone();
    void keeps_log_lines_and_labels();
    void keeps_the_last_thousand_lines();
    void counts_the_house_timecode_for_the_timecode_input();
    void tells_the_temperature_when_it_changes();
    void knows_no_list_on_a_channel();
};

namespace {

QByteArray const ok = "<ok />";

} // namespace

void TestVeskInformationCommands::tells_a_fact_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("reply");
    static char const *const rows[][2] = {
        {"get_computer_name", "<computername><ComputerName>vesk-sim</ComputerName></computername>"},
        {"get_version_info",
            "<version_info><SVNVersion>1000</SVNVersion><SVNPath>sim/vesk</SVNPath></"
            "version_info>"},
        {"get_reference_source",
            "<reference_source><ReferenceSource>refin</ReferenceSource></reference_source>"},
        {"get_video_standard",
            "<video_standard><VideoStandard>1080_59_94i</VideoStandard>"
            "<VideoRate>59_94</VideoRate><VideoResolution>1080i</VideoResolution>"
            "</video_standard>"},
        {"get_io_latency", "<io_latency><ClipPosition>6</ClipPosition></io_latency>"},
        {"get_compression_info",
            "<compression_info><CompressionInfo><CompressionYSize>131072</CompressionYSize>"
            "<CompressionCSize>131072</CompressionCSize><CompressionKSize>0</CompressionKSize>"
            "<AudioTrackCount>8</AudioTrackCount><CompressionVSymbol>avci</CompressionVSymbol>"
            "<CompressionKSymbol>none</CompressionKSymbol>"
            "<CompressionASymbol>pcm24</CompressionASymbol>"
            "<CompressionVFrameBased>false</CompressionVFrameBased>"
            "<CompressionKFrameBased>false</CompressionKFrameBased>"
            "<CompressionAFrameBased>false</CompressionAFrameBased></CompressionInfo>"
            "</compression_info>"},
    };
    for (auto const &row : rows)
        QTest::newRow(row[0]) << QByteArray(row[0]) << QByteArray(row[1]);
}

void TestVeskInformationCommands::tells_a_fact()
{
    QFETCH(QByteArray, command);
    QFETCH(QByteArray, reply);
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QCOMPARE(peer.call("<" + command + "/>"), QByteArrayList{reply});
}

void TestVeskInformationCommands::tells_the_rate_and_the_raster_of_every_standard_data()
{
    QTest::addColumn<QByteArray>("standard");
    QTest::addColumn<QByteArray>("rate");
    QTest::addColumn<QByteArray>("resolution");
    static char const *const rows[][3] = {
        {"4K_60p", "60", "4K"},
        {"4K_59_94p", "59_94", "4K"},
        {"4K_50p", "50", "4K"},
        {"1080_60p", "60", "1080p"},
        {"1080_59_94p", "59_94", "1080p"},
        {"1080_50p", "50", "1080p"},
        {"1080_60i", "60", "1080i"},
        {"1080_59_94i", "59_94", "1080i"},
        {"1080_50i", "50", "1080i"},
        {"720_60p", "60", "720p"},
        {"720_59_94p", "59_94", "720p"},
        {"720_50p", "50", "720p"},
        {"625_50i", "50", "625i"},
        {"525_59_94i", "59_94", "525i"},
    };
    for (auto const &row : rows)
        QTest::newRow(row[0]) << QByteArray(row[0]) << QByteArray(row[1]) << QByteArray(row[2]);
}

void TestVeskInformationCommands::tells_the_rate_and_the_raster_of_every_standard()
{
    QFETCH(QByteArray, standard);
    QFETCH(QByteArray, rate);
    QFETCH(QByteArray, resolution);
    VeskSimOptions options;
    QVERIFY(VCTP3::string_to_VideoStandard(
        AString::from_utf8(standard.constData()), &options.standard));
    VeskSim server(LoopbackAddress::unique(), options);
    WirePeer peer(server.address());
    QCOMPARE(peer.call("<get_video_standard/>"),
        QByteArrayList{"<video_standard><VideoStandard>" + standard + "</VideoStandard><VideoRate>"
            + rate + "</VideoRate><VideoResolution>" + resolution
            + "</VideoResolution></video_standard>"});
}

void TestVeskInformationCommands::tells_the_reference_source_that_is_configured()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call("<set_configuration><ConfigurationItemName>ReferenceSource</ConfigurationItemName>"
              "<ConfigurationItemValue>input2</ConfigurationItemValue></set_configuration>");
    QCOMPARE(peer.call("<get_reference_source/>"),
        QByteArrayList{
            "<reference_source><ReferenceSource>input2</ReferenceSource></reference_source>"});
}

void TestVeskInformationCommands::keeps_the_keys_of_program_outputs_and_tells_everyone()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    WirePeer other(server.address());
    other.call("<sync/>");
    QCOMPARE(peer.call("<set_pgm_dbkey><PGMChannel>PGM2</PGMChannel><DBKey>k 1</DBKey>"
                       "</set_pgm_dbkey>"),
        QByteArrayList{ok});
    QByteArray const report
        = "<pgm_dbkey><PGMChannel>PGM2</PGMChannel><DBKey>k 1</DBKey></pgm_dbkey>";
    QCOMPARE(peer.sync_reports(), QByteArrayList{report});
    QCOMPARE(other.sync_reports(), QByteArrayList{report});
    QCOMPARE(other.call("<get_pgm_dbkey><PGMChannel>PGM2</PGMChannel></get_pgm_dbkey>"),
        QByteArrayList{"<pgm_dbkey_reply><DBKey>k 1</DBKey></pgm_dbkey_reply>"});
    QCOMPARE(other.call("<get_pgm_dbkey><PGMChannel>PGM1</PGMChannel></get_pgm_dbkey>"),
        QByteArrayList{"<pgm_dbkey_reply><DBKey /></pgm_dbkey_reply>"});
}

void TestVeskInformationCommands::keeps_log_lines_and_labels()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QByteArray const line = "<LogFilename>a.cpp</LogFilename><LogLine>12</LogLine>"
                            "<LogClient>me</LogClient><LogText>some %1 text</LogText>";
    QCOMPARE(peer.call("<log>" + line + "</log>"), QByteArrayList{ok});
    QCOMPARE(peer.call("<log>" + line + "<LogError/></log>"), QByteArrayList{ok});
    QCOMPARE(peer.call("<debug_label><DebugString>here</DebugString></debug_label>"),
        QByteArrayList{ok});
    std::vector<AString> const log = server.log();
    QCOMPARE(log.size(), std::size_t(3));
    QCOMPARE(log[0], AString::l1("a.cpp:12 [me log] some %1 text"));
    QCOMPARE(log[1], AString::l1("a.cpp:12 [me error] some %1 text"));
    QCOMPARE(log[2], AString::l1("here"));
}

void TestVeskInformationCommands::keeps_the_last_thousand_lines()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QByteArray bytes;
    for (int number = 0; number < 1001; ++number)
        bytes += "<cmd><xid>" + QByteArray::number(number) + "</xid><debug_label><DebugString>"
            + QByteArray::number(number) + "</DebugString></debug_label></cmd>";
    peer.send(bytes);
    QVERIFY(peer.wait_for([&] { return peer.order_of_replies().size() == 1001; }));
    std::vector<AString> const log = server.log();
    QCOMPARE(log.size(), std::size_t(1000));
    QCOMPARE(log.front(), AString::l1("1"));
    QCOMPARE(log.back(), AString::l1("1000"));
}

void TestVeskInformationCommands::counts_the_house_timecode_for_the_timecode_input()
{
    VeskSimOptions options;
    options.standard = VCTP3::VideoStandard::v1080_50i;
    VeskSim server(LoopbackAddress::unique(), options);
    WirePeer peer(server.address());
    peer.call("<report_register><ReportType>ltc_input</ReportType></report_register>");
    server.advance(2);
    QByteArrayList reports;
    for (int field : {0, 1, 2})
        reports += "<ltc_timecode><Timecode><Valid>true</Valid>"
                   "<VideoStandard>1080_50i</VideoStandard><FieldNumber>"
            + QByteArray::number(10 * 60 * 60 * 50 + field)
            + "</FieldNumber><DropFrameFlag>ndf</DropFrameFlag></Timecode></ltc_timecode>";
    QCOMPARE(peer.sync_reports(), reports);
}

void TestVeskInformationCommands::tells_the_temperature_when_it_changes()
{
    VeskSimOptions options;
    options.standard = VCTP3::VideoStandard::v1080_50i;
    VeskSim server(LoopbackAddress::unique(), options);
    WirePeer peer(server.address());
    peer.call("<report_register><ReportType>temperature</ReportType></report_register>");
    peer.sync_reports();
    server.advance(249);
    QCOMPARE(peer.sync_reports(), QByteArrayList());
    server.advance(1);
    QCOMPARE(peer.sync_reports(),
        QByteArrayList{"<temperature><Temperature10>411</Temperature10></temperature>"});
    server.advance(250 * 17);
    QByteArrayList const reports = peer.sync_reports();
    QCOMPARE(reports.size(), 17);
    QVERIFY(reports.at(7).contains(">419<"));
    QVERIFY(reports.at(16).contains(">410<"));
}

void TestVeskInformationCommands::knows_no_list_on_a_channel()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QCOMPARE(peer.call("<get_playlist_status><Channel>D</Channel></get_playlist_status>"),
        QByteArrayList{"<playlist_status><Channel>D</Channel>"
                       "<PlaylistStatus>not_in_either_channel</PlaylistStatus>"
                       "</playlist_status>"});
}

QTEST_GUILESS_MAIN(TestVeskInformationCommands)
#include "tst_vesk_information_commands.moc"
