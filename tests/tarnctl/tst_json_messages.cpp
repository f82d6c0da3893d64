// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/json_messages.h"

#include <QTest>

using namespace TarnCtl;

/// The lines that scripts read, typed by hand.
class TestJsonMessages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void replies_name_their_elements_in_wire_order();
    void numbers_of_64_bits_are_texts();
    void absent_optional_elements_are_left_out();
    void flags_are_booleans();
    void collections_are_arrays();
    void a_full_clip_stands_in_table_order();
    void reports_leave_out_what_was_not_there();
    void speeds_stand_in_wire_text();
};

namespace {

/// A function, since moc does not understand raw strings in the arguments of a macro.
void expect(JsonValue const &message, char const *json)
{
    QCOMPARE(message.to_json(), QByteArray(json));
}

} // namespace

void TestJsonMessages::replies_name_their_elements_in_wire_order()
{
    expect(reply_ok(), R"({"reply":"ok"})");
    expect(reply_error(AString::l1("no \"x\""), VCTP3::ErrorCode::clipnotfound),
        R"({"reply":"error","ErrorMessage":"no \"x\"","ErrorCode":"clipnotfound"})");
    expect(reply_clipexists(AString::l1("x"), true),
        R"({"reply":"clipexists","ClipID":"x","Exists":true})");
    expect(reply_video_standard(VCTP3::VideoStandard::v1080_50i, VCTP3::VideoRate::v50,
               VCTP3::VideoResolution::v1080i),
        R"({"reply":"video_standard","VideoStandard":"1080_50i","VideoRate":"50",)"
        R"("VideoResolution":"1080i"})");
    VCTP3::Timecode timecode;
    timecode.valid = true;
    timecode.set_position(-5);
    timecode.set_dfflag(VCTP3::DropFrameFlag::ndf);
    expect(reply_channel_current_timecode(VCTP3::Channel::AN, timecode, 4294967295U, 0),
        R"({"reply":"channel_current_timecode","Channel":"AN","DisplayTimecode":)"
        R"({"Valid":true,"FieldNumber":-5,"DropFrameFlag":"ndf"},)"
        R"("ClipLength":4294967295,"ClipPosition":0})");
}

void TestJsonMessages::numbers_of_64_bits_are_texts()
{
    expect(reply_disk_usage(18446744073709551615ULL, 0, 7),
        R"({"reply":"disk_usage","TotalDiskSpace":"18446744073709551615",)"
        R"("AvailableDiskSpace":"0","FieldSize":7})");
    expect(report_panel_num_event(9007199254740993ULL, AString::l1("e")),
        R"({"report":"panel_num_event","Panel":"9007199254740993","EventName":"e"})");
}

void TestJsonMessages::absent_optional_elements_are_left_out()
{
    expect(report_channel_listplay_air_now(VCTP3::Channel::A, VCTP3::ListPlaybackIndex()),
        R"({"report":"channel_listplay_air_now","Channel":"A","ListPlaybackIndex":{}})");
    VCTP3::ListElement element;
    element.content_id.set_vclipid(AString::l1("v"));
    element.set_gain(-2);
    expect(reply_list_element(element),
        R"({"reply":"list_element","ListElement":{"ContentID":{"VClipID":"v"},"Gain":-2}})");
}

void TestJsonMessages::flags_are_booleans()
{
    VCTP3::MeltFlags flags;
    flags.melt_client_id = 1;
    flags.melt_flag_inhibit_list_numbering = true;
    expect(reply_melt_flags(flags),
        R"({"reply":"melt_flags","MeltFlags":{"MeltClientID":1,)"
        R"("MeltFlagInhibitPortNumbering":false,"MeltFlagInhibitListNumbering":true,)"
        R"("MeltFlagInhibitElementNumbering":false,)"
        R"("MeltFlagInhibitUserInteraction":false,)"
        R"("MeltFlagInhibitTimecodeNumbering":false}})");
}

void TestJsonMessages::collections_are_arrays()
{
    VCTP3::Metadata pair;
    pair.key = AString::l1("k");
    pair.value = AString::l1("<v>");
    expect(reply_metadata(AString::l1("d"), AString(), {pair, pair}),
        R"({"reply":"metadata","MetadataDatabase":"d","MetadataPrefix":"",)"
        R"("MetadataList":[{"Key":"k","Value":"<v>"},{"Key":"k","Value":"<v>"}]})");
    expect(reply_volatile_file_info({AString::l1("a"), AString::l1("b")}),
        R"({"reply":"volatile_file_info","KeyList":["a","b"]})");
    expect(report_config_changed({}), R"({"report":"config_changed"})");
    expect(report_config_changed(std::list<VCTP3::ConfigurationItem>()),
        R"({"report":"config_changed","ConfigurationChange":[]})");
}

void TestJsonMessages::a_full_clip_stands_in_table_order()
{
    VCTP3::ClipInfo clip;
    clip.clip_id = AString::l1("x");
    clip.video_standard = VCTP3::VideoStandard::v1080_50i;
    VCTP3::TrackInfo track;
    track.track_type = VCTP3::TrackType::audio;
    clip.track_info_vector.push_back(track);
    clip.read_only = true;
    clip.set_last_loaded(12);
    clip.set_special_type(VCTP3::SpecialClipType::ssm2);
    expect(reply_clipinfo(clip),
        R"({"reply":"clipinfo","ClipInfo":{"ClipID":"x","VideoStandard":"1080_50i",)"
        R"("TrackInfoVector":[{"TrackType":"audio"}],"Title":"","Creator":"",)"
        R"("Project":"","Playback":"auto","Interp":"auto","Loop":"off","LoopOut":0,)"
        R"("LoopIn":0,"ClipLength":0,"TimecodeSource":"zerobased",)"
        R"("StripeTimecode":{"Valid":false},"ReadOnly":true,"SpecialClipType":"ssm2",)"
        R"("LoadedStamp":"12"}})");
}

void TestJsonMessages::reports_leave_out_what_was_not_there()
{
    expect(report_channel_status(VCTP3::Channel::A, VCTP3::ChannelStatus::play, {}),
        R"({"report":"channel_status","Channel":"A","ChannelStatus":"play"})");
    expect(report_channel_status(VCTP3::Channel::A, VCTP3::ChannelStatus::record, AString::l1("c")),
        R"({"report":"channel_status","Channel":"A","ChannelStatus":"record",)"
        R"("ClipID":"c"})");
}

void TestJsonMessages::speeds_stand_in_wire_text()
{
    expect(report_channel_speed(VCTP3::Channel::B, -32768),
        R"({"report":"channel_speed","Channel":"B","Speed":"-0.5X"})");
    VCTP3::ChannelInformation information;
    information.set_natural_speed(65537);
    expect(report_channel_info(VCTP3::Channel::B, information),
        R"({"report":"channel_info","Channel":"B","ChannelInformation":{"ClipID":"",)"
        R"("NaturalSpeed":"1.000015258789063X"}})");
}

QTEST_GUILESS_MAIN(TestJsonMessages)
#include "tst_json_messages.moc"
