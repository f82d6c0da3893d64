// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_command.h"
#include "tests/protocol/protocol_texts.h"
#include "tests/support/assert_log.h"

#include <QByteArray>
#include <QList>
#include <QTest>
#include <atomic>
#include <thread>
#include <vector>

using namespace VCTP3;

/// Keeps the blocks that are written.
class BlockKeeper : public APICommand
{
public:
    QByteArray take()
    {
        QByteArray const all = blocks.join();
        blocks.clear();
        return all;
    }

    using APICommand::send;
    QByteArrayList blocks;

protected:
    void send(void const *data, unsigned long long size) override
    {
        blocks.append(QByteArray(static_cast<char const *>(data), static_cast<int>(size)));
    }
};

class TestAPICommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writes_the_stated_bytes_data();
    void writes_the_stated_bytes();
    void writes_a_small_command_at_once();
    void writes_blocks_of_1500_bytes_and_a_rest();
    void writes_speeds_data();
    void writes_speeds();
    void runs_the_send_hook_before_it_writes();
    void the_send_hook_sees_whatever_is_written_data();
    void the_send_hook_sees_whatever_is_written();
    void never_mixes_the_messages_of_threads();
    void survives_a_sink_that_sends();

    void sends_a_tree_in_lines_and_short_tags();
    void sends_a_tree_in_blocks_of_1500_bytes_and_a_rest_data();
    void sends_a_tree_in_blocks_of_1500_bytes_and_a_rest();
    void shows_the_hook_the_tree_before_it_is_sent();
    void sends_nothing_of_a_null_tree();
    void never_mixes_trees_with_commands();
};

using Call = void (*)(APICommand &);
Q_DECLARE_METATYPE(Call)

/// One command of each family at least, typed as it stands on the wire.
void TestAPICommand::writes_the_stated_bytes_data()
{
    QTest::addColumn<Call>("call");
    QTest::addColumn<QByteArray>("command");
    auto const row = [](char const *name, Call call, QByteArray const &command) {
        QTest::newRow(name) << call << command;
    };
    row(
        "stop of no channel",
        [](APICommand &c) { c.cmd_stop(l1("7"), static_cast<Channel>(40), Layer(-1)); },
        "<stop>\r\n<Channel />\r\n<Layer />\r\n</stop>");
    row(
        "gang_stop of no channel",
        [](APICommand &c) {
            Channel const channels[] = {Channel::B, static_cast<Channel>(-1)};
            c.cmd_gang_stop(l1("7"), ChannelSet(channels, 2));
        },
        "<gang_stop>\r\n<ChannelSet>\r\n<Channel>B</Channel>\r\n<Channel />\r\n</ChannelSet>\r\n"
        "</gang_stop>");
    row(
        "stop", [](APICommand &c) { c.cmd_stop(l1("7"), Channel::A); },
        "<stop>\r\n<Channel>A</Channel>\r\n</stop>");
    row(
        "sync", [](APICommand &c) { c.cmd_sync(l1("7")); }, "<sync />");
    row(
        "play", [](APICommand &c) { c.cmd_play(l1("7"), Channel::AB); },
        "<play>\r\n<Channel>AB</Channel>\r\n</play>");
    row(
        "play with two options",
        [](APICommand &c) { c.cmd_play(l1("7"), Channel::A, 98304, Layer::bed); },
        "<play>\r\n<Channel>A</Channel>\r\n<Speed>1.5X</Speed>\r\n<Layer>bed</Layer>\r\n</play>");
    row(
        "play with a flag that is false",
        [](APICommand &c) { c.cmd_play(l1("7"), Channel::A, -65536, Layer::normal, false); },
        "<play>\r\n<Channel>A</Channel>\r\n<Speed>-1X</Speed>\r\n<Layer>normal</Layer>\r\n"
        "</play>");
    row(
        "play in full",
        [](APICommand &c) {
            c.cmd_play(l1("7"), Channel::A, false, 65536, true, Layer::bed, true, true);
        },
        "<play>\r\n<Channel>A</Channel>\r\n<Layer>bed</Layer>\r\n<MinLatency />\r\n</play>");
    row(
        "play in full, flag present and false",
        [](APICommand &c) {
            c.cmd_play(l1("7"), Channel::A, true, 65536, false, Layer::bed, true, false);
        },
        "<play>\r\n<Channel>A</Channel>\r\n<Speed>1X</Speed>\r\n</play>");
    row(
        "play in full, flag absent and true",
        [](APICommand &c) {
            c.cmd_play(l1("7"), Channel::A, true, 65536, false, Layer::bed, false, true);
        },
        "<play>\r\n<Channel>A</Channel>\r\n<Speed>1X</Speed>\r\n</play>");
    row(
        "stop at once", [](APICommand &c) { c.cmd_stop(l1("7"), Channel::A, Layer::normal, true); },
        "<stop>\r\n<Channel>A</Channel>\r\n<Layer>normal</Layer>\r\n<MinLatency />\r\n</stop>");
    row(
        "cue_clip",
        [](APICommand &c) {
            c.cmd_cue_clip(l1("7"), Channel::C, l1("Tor <1>"), true, Loop::auto_, true, 12U, false,
                0U, true, static_cast<unsigned char>(2), true, Playback::f12, true, 32768, true,
                ClipScope::clip, false, 0U, false, 0U, false, Layer::normal, true, -6, true, false);
        },
        "<cue_clip>\r\n<Channel>C</Channel>\r\n<ClipID>Tor &lt;1&gt;</ClipID>\r\n"
        "<Loop>auto</Loop>\r\n<GotoPosition>12</GotoPosition>\r\n<Angle>2</Angle>\r\n"
        "<Playback>f12</Playback>\r\n<Speed>0.5X</Speed>\r\n<ClipScope>clip</ClipScope>\r\n"
        "<Gain>-6</Gain>\r\n</cue_clip>");
    row(
        "sending_chase_ltcin",
        [](APICommand &c) {
            Timecode timecode;
            timecode.valid = true;
            timecode.set_std(VideoStandard::v1080_59_94i);
            timecode.set_position(-3);
            timecode.set_dfflag(DropFrameFlag::ndf);
            c.cmd_sending_chase_ltcin(l1("7"), timecode);
        },
        "<sending_chase_ltcin>\r\n<Timecode>\r\n<Valid>true</Valid>\r\n"
        "<VideoStandard>1080_59_94i</VideoStandard>\r\n<FieldNumber>-3</FieldNumber>\r\n"
        "<DropFrameFlag>ndf</DropFrameFlag>\r\n</Timecode>\r\n</sending_chase_ltcin>");
    row(
        "precue",
        [](APICommand &c) {
            c.cmd_precue(l1("7"), Channel::A, l1("c"), PrecueCondition::end_of_clip2, 5U, 100U);
        },
        "<precue>\r\n<Channel>A</Channel>\r\n<ClipID>c</ClipID>\r\n"
        "<PrecueCondition>end_of_clip2</PrecueCondition>\r\n<GotoPosition>5</GotoPosition>\r\n"
        "<ClipLength>100</ClipLength>\r\n</precue>");
    row(
        "set_loop", [](APICommand &c) { c.cmd_set_loop(l1("7"), Channel::A, Loop::pingpongto); },
        "<set_loop>\r\n<Channel>A</Channel>\r\n<Loop>pingpongto</Loop>\r\n</set_loop>");
    row(
        "gang_play",
        [](APICommand &c) {
            Channel const channels[] = {Channel::B, Channel::A};
            c.cmd_gang_play(l1("7"), ChannelSet(channels, 2), 65536, true);
        },
        "<gang_play>\r\n<ChannelSet>\r\n<Channel>B</Channel>\r\n<Channel>A</Channel>\r\n"
        "</ChannelSet>\r\n<Speed>1X</Speed>\r\n<MinLatency />\r\n</gang_play>");
    row(
        "gang_ee of no channel",
        [](APICommand &c) {
            c.cmd_gang_ee(l1("7"), ChannelSet(), static_cast<unsigned short>(513), false);
        },
        "<gang_ee>\r\n<ChannelSet />\r\n<SonyEditMask>513</SonyEditMask>\r\n"
        "<AutoEE>false</AutoEE>\r\n</gang_ee>");
    row(
        "steal_channel",
        [](APICommand &c) {
            c.cmd_steal_channel(l1("7"), Channel::A, PlayOrRecord::record, l1("me"));
        },
        "<steal_channel>\r\n<Channel>A</Channel>\r\n<PlayOrRecord>record</PlayOrRecord>\r\n"
        "<StealClient>me</StealClient>\r\n</steal_channel>");
    row(
        "create_clip",
        [](APICommand &c) {
            TrackType const tracks[] = {TrackType::video, TrackType::audio};
            c.cmd_create_clip(l1("7"), l1("c"), TrackSet(tracks, 2), 500U, Channel::AN);
        },
        "<create_clip>\r\n<ClipID>c</ClipID>\r\n<TrackSet>\r\n<TrackType>video</TrackType>\r\n"
        "<TrackType>audio</TrackType>\r\n</TrackSet>\r\n<ClipLength>500</ClipLength>\r\n"
        "<Channel>AN</Channel>\r\n</create_clip>");
    row(
        "modify_clip_attributes of nothing",
        [](APICommand &c) { c.cmd_modify_clip_attributes(l1("7"), l1("c"), ClipAttrChange()); },
        "<modify_clip_attributes>\r\n<ClipID>c</ClipID>\r\n<ClipAttrChange />\r\n"
        "</modify_clip_attributes>");
    row(
        "rename_dir", [](APICommand &c) { c.cmd_rename_dir(l1("7"), l1("a"), l1("b")); },
        "<rename_dir>\r\n<FromDir>a</FromDir>\r\n<ToDir>b</ToDir>\r\n</rename_dir>");
    row(
        "set_configuration",
        [](APICommand &c) { c.cmd_set_configuration(l1("7"), l1("Board 1"), AString()); },
        "<set_configuration>\r\n<ConfigurationItemName>Board 1</ConfigurationItemName>\r\n"
        "<ConfigurationItemValue />\r\n</set_configuration>");
    row(
        "log",
        [](APICommand &c) { c.cmd_log(l1("7"), l1("a.cpp"), 12U, l1("me"), l1("it's"), true); },
        "<log>\r\n<LogFilename>a.cpp</LogFilename>\r\n<LogLine>12</LogLine>\r\n"
        "<LogClient>me</LogClient>\r\n<LogText>it&apos;s</LogText>\r\n<LogError />\r\n</log>");
    row(
        "get_version_info", [](APICommand &c) { c.cmd_get_version_info(l1("7")); },
        "<get_version_info />");
    row(
        "get_current_timecode",
        [](APICommand &c) { c.cmd_get_current_timecode(l1("7"), Channel::AN); },
        "<get_current_timecode>\r\n<Channel>AN</Channel>\r\n</get_current_timecode>");
    row(
        "get_volatile_file_info",
        [](APICommand &c) { c.cmd_get_volatile_file_info(l1("7"), l1("a/b & c")); },
        "<get_volatile_file_info>\r\n<ClipID>a/b &amp; c</ClipID>\r\n</get_volatile_file_info>");
    row(
        "set_pgm_dbkey",
        [](APICommand &c) { c.cmd_set_pgm_dbkey(l1("7"), PGMChannel::PGM4, l1("k \"1\"")); },
        "<set_pgm_dbkey>\r\n<PGMChannel>PGM4</PGMChannel>\r\n"
        "<DBKey>k &quot;1&quot;</DBKey>\r\n</set_pgm_dbkey>");
    row(
        "debug_label", [](APICommand &c) { c.cmd_debug_label(l1("7"), l1(">")); },
        "<debug_label>\r\n<DebugString>&gt;</DebugString>\r\n</debug_label>");
    row(
        "list_save_start", [](APICommand &c) { c.cmd_list_save_start(l1("7"), l1("l")); },
        "<list_save_start>\r\n<ListID>l</ListID>\r\n</list_save_start>");
    row(
        "list_save_end", [](APICommand &c) { c.cmd_list_save_end(l1("7")); }, "<list_save_end />");
    row(
        "list_save_element",
        [](APICommand &c) {
            ListElement element;
            element.content_id.set_vclipid(l1("v"));
            element.set_atstart(ListElementAtStart::pause);
            Transition transition;
            transition.transition_type = TransitionType::dissolve;
            transition.set_tlen(30);
            element.set_transition(transition);
            c.cmd_list_save_element(l1("7"), element);
        },
        "<list_save_element>\r\n<ListElement>\r\n<ContentID>\r\n<VClipID>v</VClipID>\r\n"
        "</ContentID>\r\n<ListElementAtStart>pause</ListElementAtStart>\r\n<Transition>\r\n"
        "<TransitionType>dissolve</TransitionType>\r\n"
        "<TransitionDuration>30</TransitionDuration>\r\n</Transition>\r\n</ListElement>\r\n"
        "</list_save_element>");
    row(
        "list_load", [](APICommand &c) { c.cmd_list_load(l1("7"), Channel::A, l1("l")); },
        "<list_load>\r\n<Channel>A</Channel>\r\n<ListID>l</ListID>\r\n</list_load>");
    row(
        "list_load_squall",
        [](APICommand &c) {
            c.cmd_list_load_squall(
                l1("7"), Channel::A, l1("l"), ListPlayMode::pgm_pvw, Transition());
        },
        "<list_load_squall>\r\n<Channel>A</Channel>\r\n<ListID>l</ListID>\r\n"
        "<ListPlayMode>pgm_pvw</ListPlayMode>\r\n<Transition>\r\n"
        "<TransitionType>cut</TransitionType>\r\n</Transition>\r\n</list_load_squall>");
    row(
        "list_play_now",
        [](APICommand &c) {
            c.cmd_list_play_now(
                l1("7"), Channel::A, static_cast<unsigned short>(65535), Roll::cueonly, -1);
        },
        "<list_play_now>\r\n<Channel>A</Channel>\r\n<ListIndex>65535</ListIndex>\r\n"
        "<Roll>cueonly</Roll>\r\n<JogDistance>-1</JogDistance>\r\n</list_play_now>");
    row(
        "list_play_reorder_start",
        [](APICommand &c) { c.cmd_list_play_reorder_start(l1("7"), Channel::B); },
        "<list_play_reorder_start>\r\n<Channel>B</Channel>\r\n</list_play_reorder_start>");
    row(
        "list_play_reorder_item",
        [](APICommand &c) {
            c.cmd_list_play_reorder_item(l1("7"), static_cast<unsigned short>(4));
        },
        "<list_play_reorder_item>\r\n<ListIndex>4</ListIndex>\r\n</list_play_reorder_item>");
    row(
        "chase_save_element",
        [](APICommand &c) {
            ChaseElement element;
            element.content_id.set_clipid(l1("c"));
            element.set_clip_start_offset(1);
            element.set_tc_start_trigger(2);
            element.set_atend(ChaseElementAtEnd::black);
            c.cmd_chase_save_element(l1("7"), element);
        },
        "<chase_save_element>\r\n<ChaseElement>\r\n<ContentID>\r\n<ClipID>c</ClipID>\r\n"
        "</ContentID>\r\n<ChaseElementAtEnd>black</ChaseElementAtEnd>\r\n"
        "<ClipStartOffset>1</ClipStartOffset>\r\n<TcStartTrigger>2</TcStartTrigger>\r\n"
        "</ChaseElement>\r\n</chase_save_element>");
    row(
        "chase_play_modify_item",
        [](APICommand &c) {
            ChaseElementChange change;
            change.set_clip_start_offset(1);
            change.set_tc_start_trigger(2);
            c.cmd_chase_play_modify_item(
                l1("7"), Channel::A, static_cast<unsigned short>(3), change);
        },
        "<chase_play_modify_item>\r\n<Channel>A</Channel>\r\n<ChaseIndex>3</ChaseIndex>\r\n"
        "<ChaseElementChange>\r\n<TcStartTrigger>2</TcStartTrigger>\r\n"
        "<ClipStartOffset>1</ClipStartOffset>\r\n</ChaseElementChange>\r\n"
        "</chase_play_modify_item>");
    row(
        "metadata_set of nothing",
        [](APICommand &c) { c.cmd_metadata_set(l1("7"), l1("d"), std::list<Metadata>()); },
        "<metadata_set>\r\n<MetadataDatabase>d</MetadataDatabase>\r\n<MetadataList />\r\n"
        "</metadata_set>");
    row(
        "metadata_erase",
        [](APICommand &c) {
            c.cmd_metadata_erase(l1("7"), l1("d"), std::list<AString>{l1("b"), l1("a")}, l1("p"));
        },
        "<metadata_erase>\r\n<MetadataDatabase>d</MetadataDatabase>\r\n<KeyList>\r\n<Key>b</Key>"
        "\r\n<Key>a</Key>\r\n</KeyList>\r\n<MetadataPrefix>p</MetadataPrefix>\r\n"
        "</metadata_erase>");
    row(
        "userdict_own", [](APICommand &c) { c.cmd_userdict_own(l1("7"), l1("k"), l1("v")); },
        "<userdict_own>\r\n<Key>k</Key>\r\n<Value>v</Value>\r\n</userdict_own>");
    row(
        "vclip_create",
        [](APICommand &c) {
            c.cmd_vclip_create(l1("7"), l1("v"), 4294967295U, static_cast<unsigned char>(255));
        },
        "<vclip_create>\r\n<VClipID>v</VClipID>\r\n<ClipLength>4294967295</ClipLength>\r\n"
        "<SCCount>255</SCCount>\r\n</vclip_create>");
    row(
        "vclip_ripple",
        [](APICommand &c) {
            TrackType const tracks[] = {TrackType::timecode, TrackType::video};
            c.cmd_vclip_ripple(l1("7"), l1("v"), TrackSet(tracks, 2), 9U, -4);
        },
        "<vclip_ripple>\r\n<VClipID>v</VClipID>\r\n<TrackSet>\r\n"
        "<TrackType>timecode</TrackType>\r\n<TrackType>video</TrackType>\r\n</TrackSet>\r\n"
        "<VClipPosition>9</VClipPosition>\r\n<VClipDistance>-4</VClipDistance>\r\n"
        "</vclip_ripple>");
    row(
        "vclip_add_segment",
        [](APICommand &c) {
            c.cmd_vclip_add_segment(
                l1("7"), l1("v"), l1("c"), 1U, TrackSet(TrackType::key), 2U, 3U, 65536, -1);
        },
        "<vclip_add_segment>\r\n<VClipID>v</VClipID>\r\n<ClipID>c</ClipID>\r\n"
        "<ClipPosition>1</ClipPosition>\r\n<TrackSet>\r\n<TrackType>key</TrackType>\r\n"
        "</TrackSet>\r\n<VClipPosition>2</VClipPosition>\r\n<ClipLength>3</ClipLength>\r\n"
        "<Speed>1X</Speed>\r\n<VClipAngle>-1</VClipAngle>\r\n</vclip_add_segment>");
    row(
        "vclip_modify_segment",
        [](APICommand &c) {
            TrackChangeVector changes;
            changes.push_back(ClipIDTrack{l1("c"), 1, 2, 3, 4});
            c.cmd_vclip_modify_segment(l1("7"), l1("v"), 5U, TrackSet(), 6U, changes);
        },
        "<vclip_modify_segment>\r\n<VClipID>v</VClipID>\r\n<ClipPosition>5</ClipPosition>\r\n"
        "<TrackSet />\r\n<VClipPosition>6</VClipPosition>\r\n<TrackChangeVector>\r\n"
        "<ClipIDTrack>\r\n<ClipID>c</ClipID>\r\n<TrackCount>1</TrackCount>\r\n"
        "<ClipPos>2</ClipPos>\r\n<ClipLen>3</ClipLen>\r\n<ClipAngle>4</ClipAngle>\r\n"
        "</ClipIDTrack>\r\n</TrackChangeVector>\r\n</vclip_modify_segment>");
    row(
        "export_add", [](APICommand &c) { c.cmd_export_add(l1("7"), l1("c"), l1("f.mov")); },
        "<export_add>\r\n<ClipID>c</ClipID>\r\n<Filename>f.mov</Filename>\r\n</export_add>");
    row(
        "export_add of a part",
        [](APICommand &c) {
            c.cmd_export_add(
                l1("7"), l1("c"), l1("f.mov"), 10U, 20U, static_cast<unsigned char>(3));
        },
        "<export_add>\r\n<ClipID>c</ClipID>\r\n<Filename>f.mov</Filename>\r\n"
        "<ClipPosition>10</ClipPosition>\r\n<ClipLength>20</ClipLength>\r\n<Angle>3</Angle>\r\n"
        "</export_add>");
    row(
        "export_initiate", [](APICommand &c) { c.cmd_export_initiate(l1("7"), Channel::AA); },
        "<export_initiate>\r\n<Channel>AA</Channel>\r\n</export_initiate>");
    row(
        "download_melts", [](APICommand &c) { c.cmd_download_melts(l1("7")); },
        "<download_melts />");
    row(
        "get_panel_mode", [](APICommand &c) { c.cmd_get_panel_mode(l1("7")); },
        "<get_panel_mode />");
    row(
        "set_panel_event",
        [](APICommand &c) { c.cmd_set_panel_event(l1("7"), 18446744073709551615ULL, l1("e")); },
        "<set_panel_event>\r\n<Panel>18446744073709551615</Panel>\r\n<EventName>e</EventName>\r\n"
        "</set_panel_event>");
    row(
        "report_register",
        [](APICommand &c) { c.cmd_report_register(l1("7"), ReportType::ltc_input); },
        "<report_register>\r\n<ReportType>ltc_input</ReportType>\r\n</report_register>");
    row(
        "reports_unregister of nothing",
        [](APICommand &c) { c.cmd_reports_unregister(l1("7"), ReportSet()); },
        "<reports_unregister>\r\n<ReportSet />\r\n</reports_unregister>");
    row(
        "channel_report_unregister",
        [](APICommand &c) {
            c.cmd_channel_report_unregister(
                l1("7"), Channel::Z, ChannelReportType::aux_audio_status);
        },
        "<channel_report_unregister>\r\n<Channel>Z</Channel>\r\n"
        "<ChannelReportType>aux_audio_status</ChannelReportType>\r\n"
        "</channel_report_unregister>");
    row(
        "channel_reports_register",
        [](APICommand &c) {
            ChannelReportType const types[] = {ChannelReportType::peak, ChannelReportType::info};
            c.cmd_channel_reports_register(
                l1("7"), ChannelSet(Channel::A), ChannelReportSet(types, 2));
        },
        "<channel_reports_register>\r\n<ChannelSet>\r\n<Channel>A</Channel>\r\n</ChannelSet>\r\n"
        "<ChannelReportSet>\r\n<ChannelReportType>peak</ChannelReportType>\r\n"
        "<ChannelReportType>info</ChannelReportType>\r\n</ChannelReportSet>\r\n"
        "</channel_reports_register>");
}

void TestAPICommand::writes_the_stated_bytes()
{
    QFETCH(Call, call);
    QFETCH(QByteArray, command);
    BlockKeeper commands;
    call(commands);
    QCOMPARE(commands.take(), "<cmd>\r\n<xid>7</xid>\r\n" + command + "\r\n</cmd>");
}

void TestAPICommand::writes_a_small_command_at_once()
{
    BlockKeeper commands;
    for (int i = 0; i < 20; ++i)
        commands.cmd_debug_label(l1("1"), AString::rep(l1("x"), 100));
    QCOMPARE(commands.blocks.size(), 20);
}

void TestAPICommand::writes_blocks_of_1500_bytes_and_a_rest()
{
    for (unsigned int letters : {1380U, 1394U, 1395U, 1396U, 4000U, 100000U}) {
        BlockKeeper commands;
        commands.cmd_debug_label(l1("1"), AString::rep(l1("x"), letters));
        for (int i = 0; i + 1 < commands.blocks.size(); ++i)
            QCOMPARE(commands.blocks[i].size(), 1500);
        QVERIFY(!commands.blocks.isEmpty() && commands.blocks.last().size() <= 1500);
        QCOMPARE(commands.take(),
            "<cmd>\r\n<xid>1</xid>\r\n<debug_label>\r\n<DebugString>"
                + QByteArray(int(letters), 'x') + "</DebugString>\r\n</debug_label>\r\n</cmd>");
    }
}

void TestAPICommand::writes_speeds_data()
{
    QTest::addColumn<int>("speed");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("0") << 0 << QByteArray("0X");
    QTest::newRow("1") << 65536 << QByteArray("1X");
    QTest::newRow("-1") << -65536 << QByteArray("-1X");
    QTest::newRow("20") << 20 * 65536 << QByteArray("20X");
    QTest::newRow("1.5") << 98304 << QByteArray("1.5X");
    QTest::newRow("-0.5") << -32768 << QByteArray("-0.5X");
    QTest::newRow("the least") << 1 << QByteArray("0.000015258789063X");
    QTest::newRow("the lowest") << (-2147483647 - 1) << QByteArray("-32768X");
    QTest::newRow("the highest") << 2147483647 << QByteArray("32767.999984741210938X");
}

void TestAPICommand::writes_speeds()
{
    QFETCH(int, speed);
    QFETCH(QByteArray, text);
    QCOMPARE(AString::from_speed(speed, 15), AString::from_latin1(text));
    BlockKeeper commands;
    commands.cmd_play(l1("7"), Channel::A, speed);
    QCOMPARE(commands.take(),
        "<cmd>\r\n<xid>7</xid>\r\n<play>\r\n<Channel>A</Channel>\r\n<Speed>" + text
            + "</Speed>\r\n</play>\r\n</cmd>");
}

void TestAPICommand::runs_the_send_hook_before_it_writes()
{
    struct Seen
    {
        BlockKeeper *commands;
        QByteArrayList lines;
    };
    BlockKeeper commands;
    Seen seen{&commands, {}};
    commands.set_send_debug_hook({[](void *place, XMLTree const &message) {
                                      auto *s = static_cast<Seen *>(place);
                                      QCOMPARE(s->commands->blocks.size(), 0);
                                      s->lines.append(QByteArray::fromStdString(line_of(message)));
                                  },
        &seen});
    commands.cmd_sync(l1("5"));
    QCOMPARE(seen.lines, QByteArrayList{"<cmd><xid>5</xid><sync /></cmd>"});
    commands.set_send_debug_hook(AFunction1<XMLTree const &>());
    commands.cmd_sync(l1("6"));
    QCOMPARE(seen.lines.size(), 1);
}

void TestAPICommand::the_send_hook_sees_whatever_is_written_data()
{
    QTest::addColumn<QString>("label");
    QTest::newRow("entities") << QStringLiteral("<'&\">");
    QTest::newRow("an entity in the text") << QStringLiteral("&lt;");
    QTest::newRow("above the basic plane") << QStringLiteral("\u00e4\u20ac\U0001f3ac");
    QTest::newRow("white space alone") << QStringLiteral(" \r\n\t");
    QTest::newRow("nothing") << QString();
    QTest::newRow("long") << QString(5000, QLatin1Char('x'));
    QTest::newRow("a zero") << QStringLiteral("a") + QChar(0) + QStringLiteral("b");
    QTest::newRow("zeros") << QString(2, QChar(0));
}

void TestAPICommand::the_send_hook_sees_whatever_is_written()
{
    QFETCH(QString, label);
    std::u32string const codes = label.toStdU32String();
    AString const text = AString::from_utf32(codes.data(), codes.size());
    BlockKeeper commands;
    XMLTree seen;
    commands.set_send_debug_hook(
        {[](void *to, XMLTree const &message) { *static_cast<XMLTree *>(to) = message; }, &seen});
    commands.cmd_debug_label(l1("7"), text);
    QCOMPARE(
        seen.get_subnode(l1("debug_label")).get_subnode(l1("DebugString")).get_content(), text);
    QCOMPARE(commands.take(), QByteArray::fromStdString(seen.flatten().to_string()));
}

void TestAPICommand::never_mixes_the_messages_of_threads()
{
    BlockKeeper commands;
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t) {
        threads.emplace_back([t, &commands] {
            for (int i = 0; i < 50; ++i)
                commands.cmd_debug_label(
                    AString::from_int(t * 100 + i), AString::rep(AString::from_int(t), 2000));
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QByteArray const all = commands.take();
    qsizetype messages = 0;
    for (qsizetype at = 0; at < all.size(); ++messages) {
        qsizetype const end = all.indexOf("</cmd>", at) + 6;
        XMLTree const message = tree_of(all.mid(at, end - at));
        int xid = -1;
        QVERIFY(message.get_subnode(l1("xid")).get_content().to_int(&xid));
        AString const label
            = message.get_subnode(l1("debug_label")).get_subnode(l1("DebugString")).get_content();
        QCOMPARE(label, AString::rep(AString::from_int(xid / 100), 2000));
        at = end;
    }
    QCOMPARE(messages, 400);
}

void TestAPICommand::survives_a_sink_that_sends()
{
    class Echoing : public APICommand
    {
    public:
        QByteArray all;
        int depth = 0;

    protected:
        void send(void const *data, unsigned long long size) override
        {
            all += QByteArray(static_cast<char const *>(data), static_cast<int>(size));
            if (depth++ == 0)
                cmd_sync(l1("inner"));
        }
    };
    Echoing commands;
    commands.cmd_sync(l1("outer"));
    QCOMPARE(commands.all.count("<cmd>"), 2);
    QVERIFY(commands.all.indexOf("outer") < commands.all.indexOf("inner"));
}

/// A message that no command makes.
static XMLTree own_message(unsigned int letters)
{
    XMLTree message(l1("cmd"), XMLTree(l1("xid"), l1("7")));
    XMLTree command(l1("own"), XMLTree(l1("Flag")));
    command.add_subnode(XMLTree(l1("Text"), AString::rep(l1("x"), letters)));
    command.add_subnode(XMLTree(l1("Quote"), l1("<'>")));
    message.add_subnode(command);
    return message;
}

static QByteArray own_bytes(unsigned int letters)
{
    return "<cmd>\r\n<xid>7</xid>\r\n<own>\r\n<Flag />\r\n<Text>" + QByteArray(int(letters), 'x')
        + "</Text>\r\n<Quote>&lt;&apos;&gt;</Quote>\r\n</own>\r\n</cmd>";
}

void TestAPICommand::sends_a_tree_in_lines_and_short_tags()
{
    BlockKeeper commands;
    commands.send(own_message(3));
    QCOMPARE(commands.blocks, QByteArrayList{own_bytes(3)});
    QCOMPARE(commands.messages_sent(), 1ULL);
}

void TestAPICommand::sends_a_tree_in_blocks_of_1500_bytes_and_a_rest_data()
{
    QTest::addColumn<unsigned int>("letters");
    QTest::addColumn<int>("blocks");
    auto const rest = static_cast<unsigned int>(own_bytes(0).size());
    QTest::newRow("1499 bytes") << 1499 - rest << 1;
    QTest::newRow("1500 bytes") << 1500 - rest << 1;
    QTest::newRow("1501 bytes") << 1501 - rest << 2;
    QTest::newRow("3000 bytes") << 3000 - rest << 2;
    QTest::newRow("3001 bytes") << 3001 - rest << 3;
    QTest::newRow("150000 bytes") << 150000 - rest << 100;
}

void TestAPICommand::sends_a_tree_in_blocks_of_1500_bytes_and_a_rest()
{
    QFETCH(unsigned int, letters);
    QFETCH(int, blocks);
    BlockKeeper commands;
    commands.send(own_message(letters));
    QCOMPARE(commands.blocks.size(), qsizetype(blocks));
    for (int i = 0; i + 1 < blocks; ++i)
        QCOMPARE(commands.blocks[i].size(), 1500);
    QCOMPARE(commands.take(), own_bytes(letters));
}

void TestAPICommand::shows_the_hook_the_tree_before_it_is_sent()
{
    struct Seen
    {
        BlockKeeper *commands;
        QList<XMLTree> trees;
    };
    BlockKeeper commands;
    Seen seen{&commands, {}};
    commands.set_send_debug_hook({[](void *place, XMLTree const &message) {
                                      auto *s = static_cast<Seen *>(place);
                                      QCOMPARE(s->commands->blocks.size(), 0);
                                      s->trees.append(message);
                                  },
        &seen});
    commands.send(own_message(3));
    QCOMPARE(seen.trees.size(), 1);
    QVERIFY(seen.trees.front() == own_message(3));
}

void TestAPICommand::sends_nothing_of_a_null_tree()
{
    AssertLog asserts;
    BlockKeeper commands;
    commands.send(XMLTree());
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("!tree.is_null()")});
    QVERIFY(commands.blocks.isEmpty());
}

void TestAPICommand::never_mixes_trees_with_commands()
{
    BlockKeeper commands;
    std::thread other([&commands] {
        for (int i = 0; i < 100; ++i)
            commands.send(own_message(4000));
    });
    for (int i = 0; i < 100; ++i)
        commands.cmd_debug_label(l1("8"), AString::rep(l1("y"), 4000));
    other.join();
    QByteArray const label = "<cmd>\r\n<xid>8</xid>\r\n<debug_label>\r\n<DebugString>"
        + QByteArray(4000, 'y') + "</DebugString>\r\n</debug_label>\r\n</cmd>";
    QByteArray all = commands.take();
    QCOMPARE(all.count(own_bytes(4000)), 100);
    QCOMPARE(all.count(label), 100);
    QCOMPARE(all.size(), 100 * (own_bytes(4000).size() + label.size()));
}

QTEST_GUILESS_MAIN(TestAPICommand)
#include "tst_api_command.moc"
