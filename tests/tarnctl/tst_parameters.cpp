// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/parameters.h"

#include "tests/support/assert_log.h"

#include <QTest>

using TarnCtl::Parameters;

class TestParameters : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads_leaves_in_wire_form();
    void what_is_not_given_is_absent();
    void splits_at_the_first_equals_sign();
    void an_empty_text_is_a_text();
    void reads_records_from_json();
    void reads_collections_from_json();
    void json_takes_numbers_as_numbers_or_texts();
    void accepts_values_up_to_the_limits_data();
    void accepts_values_up_to_the_limits();
    void refuses_bad_values_data();
    void refuses_bad_values();
    void refuses_wrong_arguments_data();
    void refuses_wrong_arguments();
    void knows_every_command_and_similar_names();
};

namespace {

Parameters read(char const *command, QStringList const &arguments)
{
    Parameters parameters;
    QString error;
    TarnCtl::CommandInfo const *const info = TarnCtl::find_command(QLatin1String(command));
    if (!info || !parameters.read(*info, arguments, &error))
        qFatal("%s: %s", command, qPrintable(error));
    return parameters;
}

QString reading_error(char const *command, QStringList const &arguments)
{
    Parameters parameters;
    QString error;
    if (parameters.read(*TarnCtl::find_command(QLatin1String(command)), arguments, &error))
        return QStringLiteral("no error");
    return error;
}

} // namespace

void TestParameters::reads_leaves_in_wire_form()
{
    Parameters const in = read("cue_clip",
        {QStringLiteral("Speed=-0.5X"), QStringLiteral("ClipID=Demo/ü"),
            QStringLiteral("Channel=AN"), QStringLiteral("Gain=-3"), QStringLiteral("Angle=7"),
            QStringLiteral("BlackOnCue=true"), QStringLiteral("Layer=bed"),
            QStringLiteral("GotoPosition=4294967295")});
    QCOMPARE(int(in.value<VCTP3::Channel>("Channel")), 39);
    QCOMPARE(QString(in.value<AString>("ClipID")), QStringLiteral("Demo/ü"));
    QCOMPARE(*in.option_speed("Speed"), -32768);
    QCOMPARE(*in.option<int>("Gain"), -3);
    QCOMPARE(*in.option<unsigned char>("Angle"), static_cast<unsigned char>(7));
    QCOMPARE(*in.option<bool>("BlackOnCue"), true);
    QCOMPARE(*in.option<VCTP3::Layer>("Layer"), VCTP3::Layer::bed);
    QCOMPARE(*in.option<unsigned int>("GotoPosition"), 4294967295U);
}

void TestParameters::what_is_not_given_is_absent()
{
    Parameters const in
        = read("play", {QStringLiteral("Channel=B"), QStringLiteral("MinLatency=false")});
    QVERIFY(!in.option_speed("Speed").has_value());
    QVERIFY(!in.option<VCTP3::Layer>("Layer").has_value());
    QVERIFY(in.option<bool>("MinLatency").has_value());
    QCOMPARE(*in.option<bool>("MinLatency"), false);
}

void TestParameters::splits_at_the_first_equals_sign()
{
    Parameters const in = read("debug_label", {QStringLiteral("DebugString=a=b=")});
    QCOMPARE(QString(in.value<AString>("DebugString")), QStringLiteral("a=b="));
}

void TestParameters::an_empty_text_is_a_text()
{
    Parameters const in = read("debug_label", {QStringLiteral("DebugString=")});
    QVERIFY(in.has("DebugString"));
    QCOMPARE(QString(in.value<AString>("DebugString")), QString());
}

void TestParameters::reads_records_from_json()
{
    Parameters const in = read("list_insert",
        {QStringLiteral("Channel=A"), QStringLiteral("ListIndex=65535"),
            QStringLiteral(
                R"(ListElement={"Speed":"0.5X","ContentID":{"ClipID":"a\"b"},)"
                R"("Transition":{"TransitionType":"dissolve","TransitionDuration":25}})")});
    auto const element = in.value<VCTP3::ListElement>("ListElement");
    QVERIFY(element.content_id.has_clipid);
    QCOMPARE(QString(element.content_id.clipid), QStringLiteral("a\"b"));
    QVERIFY(!element.content_id.has_vclipid);
    QVERIFY(element.has_speed);
    QCOMPARE(element.speed, 32768);
    QVERIFY(element.has_transition);
    QCOMPARE(element.transition.transition_type, VCTP3::TransitionType::dissolve);
    QCOMPARE(element.transition.tlen, 25U);
    QVERIFY(!element.has_angle);
    QCOMPARE(in.value<unsigned short>("ListIndex"), static_cast<unsigned short>(65535));
}

void TestParameters::reads_collections_from_json()
{
    Parameters const set = read("gang_stop", {QStringLiteral(R"(ChannelSet=["B","A","AN"])")});
    VCTP3::ChannelSet expected;
    for (auto const channel : {VCTP3::Channel::B, VCTP3::Channel::A, VCTP3::Channel::AN})
        expected.add_to_set(channel);
    QVERIFY(set.value<VCTP3::ChannelSet>("ChannelSet") == expected);
    QVERIFY(
        read("gang_stop", {QStringLiteral("ChannelSet=[]")}).value<VCTP3::ChannelSet>("ChannelSet")
        == VCTP3::ChannelSet());

    Parameters const list = read("metadata_set",
        {QStringLiteral("MetadataDatabase=d"),
            QStringLiteral(R"(MetadataList=[{"Key":"k","Value":"v"},{"Value":"","Key":"l"}])")});
    auto const pairs = list.value<std::list<VCTP3::Metadata>>("MetadataList");
    QCOMPARE(pairs.size(), std::size_t(2));
    QCOMPARE(QString(pairs.front().value), QStringLiteral("v"));
    QCOMPARE(QString(pairs.back().key), QStringLiteral("l"));

    Parameters const keys = read("metadata_erase",
        {QStringLiteral("MetadataDatabase=d"), QStringLiteral(R"(KeyList=["a","b"])")});
    QCOMPARE(keys.value<std::list<AString>>("KeyList").size(), std::size_t(2));
}

void TestParameters::json_takes_numbers_as_numbers_or_texts()
{
    QString const form = QStringLiteral(R"(TrackChangeVector=[{"ClipID":"c","TrackCount":%1,)"
                                        R"("ClipPos":%1,"ClipLen":%1,"ClipAngle":%1}])");
    for (char const *number : {"18446744073709551615", "\"18446744073709551615\""}) {
        Parameters const in = read("vclip_modify_segment",
            {QStringLiteral("VClipID=v"), QStringLiteral("ClipPosition=0"),
                QStringLiteral("TrackSet=[]"), QStringLiteral("VClipPosition=0"),
                form.arg(QLatin1String(number))});
        auto const changes = in.value<VCTP3::TrackChangeVector>("TrackChangeVector");
        QCOMPARE(changes.begin()->clip_len, 18446744073709551615ULL);
    }
}

void TestParameters::accepts_values_up_to_the_limits_data()
{
    QTest::addColumn<QString>("element");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("good");
    auto const row = [](char const *element, char const *value, bool good) {
        QTest::addRow("%s=%s", element, value)
            << QString::fromLatin1(element) << QString::fromLatin1(value) << good;
    };
    row("Angle", "0", true);
    row("Angle", "255", true);
    row("Angle", "256", false);
    row("Angle", "-1", false);
    row("GotoPosition", "4294967295", true);
    row("GotoPosition", "4294967296", false);
    row("Gain", "-2147483648", true);
    row("Gain", "2147483648", false);
    row("Gain", "1.5", false);
    row("Gain", "", false);
    row("Speed", "32767X", true);
    row("Speed", "32768X", false);
    row("Speed", "65536", true);
    row("Speed", "fast", false);
    row("Loop", "pingpong", true);
    row("Loop", "PingPong", false);
    row("BlackOnCue", "true", true);
    row("BlackOnCue", "1", false);
    row("Channel", "AN", true);
    row("Channel", "AO", false);
}

void TestParameters::accepts_values_up_to_the_limits()
{
    QFETCH(QString, element);
    QFETCH(QString, value);
    QFETCH(bool, good);
    TarnCtl::CommandInfo const *const command = TarnCtl::find_command(QStringLiteral("cue_clip"));
    XMLTree tree;
    QString error;
    QCOMPARE(TarnCtl::read_argument(
                 *TarnCtl::find_field(command->parameters, element), value, &tree, &error),
        good);
    QCOMPARE(error.isEmpty(), good);
}

void TestParameters::refuses_bad_values_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("argument");
    QTest::addColumn<QString>("error");
    auto const row = [](char const *command, char const *argument, char const *error) {
        QTest::newRow(argument) << QString::fromUtf8(command) << QString::fromUtf8(argument)
                                << QString::fromUtf8(error);
    };
    row("play", "Layer=top", "bad value 'top' for Layer: expected one of normal, bed");
    row("play", "Speed=2",
        "no error"); // the raw form of the wire
    row("play", "Speed=2x", "bad value '2x' for Speed: expected a speed such as 1X or -0.5X");
    row("play", "MinLatency=yes", "bad value 'yes' for MinLatency: expected true or false");
    row("iso_angle", "Angle=256", "bad value '256' for Angle: expected a number from 0 to 255");
    row("insert_edit", "SonyEditMask=-1",
        "bad value '-1' for SonyEditMask: expected a number from 0 to 65535");
    row("jog", "JogDistance=x",
        "bad value 'x' for JogDistance: expected a number from -2147483648 to 2147483647");
    row("get_panel_event", "Panel=18446744073709551616",
        "bad value '18446744073709551616' for Panel: expected a number from 0 to "
        "18446744073709551615");
    row("list_save_element", "ListElement=x",
        "bad value for ListElement: no JSON: expected a value (texts stand in double quotes) at "
        "character 1; expected a JSON object of ContentID, GotoPosition?, ClipPosition?, Speed?, "
        "Angle?, ListElementAtStart?, ListElementAtEnd?, Transition?, Gain?, ThumbPosition?, "
        "Layer?, NickName?, Duration?");
    row("list_save_element", "ListElement={}",
        "ListElement.ContentID is missing: expected a JSON object of ClipID?, VClipID?");
    row("list_save_element", R"(ListElement={"ContentID":{"ClipId":"a"}})",
        "ListElement.ContentID has no element ClipId: it holds ClipID?, VClipID?");
    row("list_save_element", R"(ListElement={"ContentID":[]})",
        "bad value '[]' for ListElement.ContentID: expected a JSON object of ClipID?, VClipID?");
    row("list_save_element", R"(ListElement={"ContentID":{"ClipID":7}})",
        "bad value '7' for ListElement.ContentID.ClipID: expected a text");
    row("list_save_element", R"(ListElement={"ContentID":{},"Angle":true})",
        "bad value 'true' for ListElement.Angle: expected a number from 0 to 255");
    row("list_save_element", R"(ListElement={"ContentID":{},"Transition":{"TransitionType":"x"}})",
        "bad value 'x' for ListElement.Transition.TransitionType: expected one of cut, dissolve");
    row("list_save_element", R"(ListElement={"ContentID":{},"ContentID":{}})",
        "bad value for ListElement: no JSON: expected each name once at character 28; expected a "
        "JSON object of ContentID, GotoPosition?, ClipPosition?, Speed?, Angle?, "
        "ListElementAtStart?, ListElementAtEnd?, Transition?, Gain?, ThumbPosition?, Layer?, "
        "NickName?, Duration?");
    row("vclip_track_enable", R"(TrackSet=["video","film"])",
        "bad value 'film' for TrackSet[1]: expected one of video, key, audio, timecode");
    row("vclip_track_enable", R"(TrackSet="video")",
        "bad value 'video' for TrackSet: expected a JSON array of at most 4 TrackType, each one "
        "of video, key, audio, timecode");
    row("metadata_erase", R"(KeyList=["a",null])",
        "bad value 'null' for KeyList[1]: expected a text");
    row("metadata_erase", R"(KeyList={})",
        "bad value '{}' for KeyList: expected a JSON array of Key, each a text");
    QString const item
        = QStringLiteral(R"({"ClipID":"c","TrackCount":0,"ClipPos":0,"ClipLen":0,"ClipAngle":0})");
    QTest::newRow("too many")
        << QStringLiteral("vclip_modify_segment")
        << QStringLiteral("TrackChangeVector=[%1]").arg(QStringList(18, item).join(u','))
        << QStringLiteral("TrackChangeVector has 18 items: expected a JSON array of at "
                          "most 17 ClipIDTrack, each a JSON object of ClipID, "
                          "TrackCount, ClipPos, ClipLen, ClipAngle");
}

void TestParameters::refuses_bad_values()
{
    QFETCH(QString, command);
    QFETCH(QString, argument);
    QFETCH(QString, error);
    QString const element = argument.section(u'=', 0, 0);
    auto const *const field
        = TarnCtl::find_field(TarnCtl::find_command(command)->parameters, element);
    QVERIFY(field);
    XMLTree tree;
    QString reason = QStringLiteral("no error");
    TarnCtl::read_argument(*field, argument.section(u'=', 1), &tree, &reason);
    QCOMPARE(reason, error);
}

void TestParameters::refuses_wrong_arguments_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");
    auto const row = [](char const *name, char const *command, QStringList const &arguments,
                         char const *error) {
        QTest::newRow(name) << QString::fromLatin1(command) << arguments
                            << QString::fromLatin1(error);
    };
    row("missing", "take", {},
        "Channel is missing: expected one of A, B, C, D, E, F, G, H, I, J, K, L, M, N, O, P, Q, R, "
        "S, T, U, V, W, X, Y, Z, AA, AB, AC, AD, AE, AF, AG, AH, AI, AJ, AK, AL, AM, AN");
    row("second missing", "jog", {QStringLiteral("Channel=A")},
        "JogDistance is missing: expected a number from -2147483648 to 2147483647");
    row("unknown", "play", {QStringLiteral("channel=A")},
        "no parameter is named 'channel': play takes Channel, Speed?, Layer?, MinLatency?");
    row("unknown of none", "sync", {QStringLiteral("Channel=A")},
        "no parameter is named 'Channel': sync takes no parameters");
    row("no equals sign", "play", {QStringLiteral("A")},
        "'A' is not of the form ELEMENT=VALUE: play takes Channel, Speed?, Layer?, MinLatency?");
    row("twice", "play", {QStringLiteral("Channel=A"), QStringLiteral("Channel=A")},
        "Channel is given twice: expected once, one of A, B, C, D, E, F, G, H, I, J, K, L, M, N, "
        "O, P, "
        "Q, R, S, T, U, V, W, X, Y, Z, AA, AB, AC, AD, AE, AF, AG, AH, AI, AJ, AK, AL, AM, AN");
    row("twice with another value", "iso_angle",
        {QStringLiteral("Angle=1"), QStringLiteral("Angle=2")},
        "Angle is given twice: expected once, a number from 0 to 255");
}

void TestParameters::refuses_wrong_arguments()
{
    QFETCH(QString, command);
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);
    QCOMPARE(reading_error(command.toLatin1().constData(), arguments), error);
}

void TestParameters::knows_every_command_and_similar_names()
{
    QCOMPARE(TarnCtl::all_commands().size(), std::size_t(140));
    QCOMPARE(TarnCtl::all_reports().size(), std::size_t(57));
    QVERIFY(!TarnCtl::find_command(QStringLiteral("Play")));
    auto const similar = [](QString const &typed) {
        return TarnCtl::similar_names(typed, TarnCtl::command_names());
    };
    QCOMPARE(similar(QStringLiteral("plya")).value(0), QStringLiteral("play"));
    QVERIFY(similar(QStringLiteral("clipids")).contains(QStringLiteral("download_clipids")));
    QVERIFY(similar(QStringLiteral("xxxxxxxxxx")).isEmpty());
}

QTEST_GUILESS_MAIN(TestParameters)
#include "tst_parameters.moc"
