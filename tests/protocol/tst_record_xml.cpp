// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/record_xml.h"
#include "tests/protocol/protocol_texts.h"

#include <QTest>

using namespace VCTP3;

class TestRecordXml : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads_booleans_data();
    void reads_booleans();
    void reads_numbers_data();
    void reads_numbers();
    void reads_speeds_data();
    void reads_speeds();
    void keeps_the_white_space_of_a_text();
    void trims_before_it_looks_up_a_name();
    void names_the_parent_and_the_type_of_an_unknown_name();
    void reads_the_parent_itself_where_it_has_the_tag();
    void finds_exactly_one_child();
    void leaves_the_value_alone_on_failure();
    void needs_no_error_text();

    void writes_leaves();
    void writes_sets_in_their_order();
    void writes_an_empty_set_as_an_empty_element();
    void writes_nothing_for_a_value_out_of_range();
    void writes_lists();
    void writes_set_optional_fields_only();
    void writes_flags_only_when_raised();

    void reads_a_timecode_without_options();
    void reads_a_flag_by_its_presence();
    void ignores_unknown_children();
    void finds_fields_in_any_order();
    void counts_a_vector_before_reading();
    void ends_a_vector_at_a_bad_item();
    void fails_on_a_field_that_comes_twice();
    void fails_on_a_bad_optional_field();
    void compares_optional_fields_by_presence_first();
    void compares_required_fields_in_their_order();
    void raises_the_flag_with_the_setter();
};

void TestRecordXml::reads_booleans_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("expected"); // -1: fails
    QTest::newRow("true") << QByteArray("true") << 1;
    QTest::newRow("false") << QByteArray("false") << 0;
    QTest::newRow("spaces") << QByteArray(" true\r\n") << 1;
    QTest::newRow("two") << QByteArray("2") << 1;
    QTest::newRow("zero") << QByteArray("0") << 0;
    QTest::newRow("minus one") << QByteArray("-1") << 1;
    QTest::newRow("64 bits") << QByteArray("9223372036854775808") << 1;
    QTest::newRow("yes") << QByteArray("yes") << -1;
    QTest::newRow("True") << QByteArray("True") << -1;
    QTest::newRow("nothing") << QByteArray() << -1;
}

void TestRecordXml::reads_booleans()
{
    QFETCH(QByteArray, text);
    QFETCH(int, expected);
    XMLTree const parent = tree_of("<r><Exists>" + text + "</Exists></r>");
    bool value = expected == 0;
    AString error;
    QCOMPARE(read_element(parent, l1("Exists"), &value, &error), expected >= 0);
    if (expected >= 0)
        QCOMPARE(value, expected == 1);
    else
        QCOMPARE(error,
            AString(QStringLiteral("Tag Exists contains invalid boolean value '%1'")
                        .arg(QString::fromLatin1(text))));
}

void TestRecordXml::reads_numbers_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<qlonglong>("expected"); // meaningless where ok is false
    QTest::addColumn<bool>("ok");
    auto const row = [](char const *type, char const *text, qlonglong expected, bool ok = true) {
        QTest::addRow("%s %s", type, text)
            << QByteArray(text) << QByteArray(type) << expected << ok;
    };
    row("uchar", "255", 255);
    row("uchar", "256", 0, false);
    row("ushort", "65535", 65535);
    row("ushort", "65536", 0, false);
    row("uint", "4294967295", 4294967295LL);
    row("uint", "4294967296", 0, false);
    row("uint", "-1", 0, false);
    row("uint", " 7 ", 7);
    row("uint", "0x10", 10);
    row("uint", "007", 7);
    row("uint", "", 0, false);
    row("uint", "7 8", 0, false);
    row("int", "-2147483648", -2147483648LL);
    row("int", "2147483647", 2147483647);
    row("int", "2147483648", 0, false);
    row("int", "+5", 5);
    row("uint64", "9223372036854775807", 9223372036854775807LL);
    row("uint64", "18446744073709551615", -1);
    row("uint64", "123456789012345678", 123456789012345678LL);
    row("uint64", "-1", 0, false);
}

template <typename T> static bool read_as(XMLTree const &parent, qlonglong *out, AString *error)
{
    T value = 0;
    bool const ok = read_element(parent, l1("N"), &value, error);
    *out = static_cast<qlonglong>(value);
    return ok;
}

void TestRecordXml::reads_numbers()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, type);
    QFETCH(qlonglong, expected);
    QFETCH(bool, ok);
    XMLTree const parent = tree_of("<r><N>" + text + "</N></r>");
    qlonglong value = 0;
    AString error;
    bool const read = type == "uchar" ? read_as<unsigned char>(parent, &value, &error)
        : type == "ushort"            ? read_as<unsigned short>(parent, &value, &error)
        : type == "uint"              ? read_as<unsigned int>(parent, &value, &error)
        : type == "int"               ? read_as<int>(parent, &value, &error)
                                      : read_as<unsigned long long>(parent, &value, &error);
    QCOMPARE(read, ok);
    if (ok)
        QCOMPARE(value, expected);
    else
        QCOMPARE(error,
            AString(QStringLiteral("Tag N contains invalid value '%1'")
                        .arg(QString::fromLatin1(text.trimmed()))));
}

void TestRecordXml::reads_speeds_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("expected");
    QTest::addColumn<bool>("ok");
    QTest::newRow("2.5X") << QByteArray("2.5X") << 163840 << true;
    QTest::newRow("1X") << QByteArray(" 1X ") << 65536 << true;
    QTest::newRow("-0.5X") << QByteArray("-0.5X") << -32768 << true;
    QTest::newRow("raw") << QByteArray("65536") << 65536 << true;
    QTest::newRow("raw, unsigned") << QByteArray("4294967295") << -1 << true;
    QTest::newRow("raw, too large") << QByteArray("4294967296") << 0 << false;
    QTest::newRow("small x") << QByteArray("1x") << 0 << false;
}

void TestRecordXml::reads_speeds()
{
    QFETCH(QByteArray, text);
    QFETCH(int, expected);
    QFETCH(bool, ok);
    int value = 0;
    AString error;
    QCOMPARE(read_speed(tree_of("<Speed>" + text + "</Speed>"), l1("Speed"), &value, &error), ok);
    QCOMPARE(value, expected);
    if (!ok)
        QCOMPARE(error,
            AString(QStringLiteral("Tag Speed contains invalid value '%1'")
                        .arg(QString::fromLatin1(text))));
}

void TestRecordXml::keeps_the_white_space_of_a_text()
{
    AString text;
    QVERIFY(read_element(tree_of("<r><T> a &amp;\r\nb </T></r>"), l1("T"), &text, nullptr));
    QCOMPARE(text, l1(" a &\r\nb "));
}

void TestRecordXml::trims_before_it_looks_up_a_name()
{
    Channel channel = Channel::A;
    QVERIFY(read_element(
        tree_of("<r><Channel>\r\n AA </Channel></r>"), l1("Channel"), &channel, nullptr));
    QCOMPARE(channel, Channel::AA);
    QCOMPARE(static_cast<int>(channel), 26);
    QVERIFY(!string_to_Channel(l1(" AA"), &channel));
    QVERIFY(!string_to_Channel(l1("aa"), nullptr));
    QVERIFY(string_to_Channel(l1("AN"), nullptr));
}

void TestRecordXml::names_the_parent_and_the_type_of_an_unknown_name()
{
    ChannelStatus status = ChannelStatus::play;
    AString error;
    QVERIFY(!read_element(tree_of("<channel_status><ChannelStatus>Play</ChannelStatus>"
                                  "</channel_status>"),
        l1("ChannelStatus"), &status, &error));
    QCOMPARE(error, l1("Tag channel_status contains invalid value 'ChannelStatus'"));
    ChannelInformation information;
    QVERIFY(!read_element(tree_of("<ChannelInformation><ClipID/><ProgramChannel>7"
                                  "</ProgramChannel></ChannelInformation>"),
        l1("ChannelInformation"), &information, &error));
    QCOMPARE(error, l1("Tag ChannelInformation contains invalid value 'Channel'"));
}

void TestRecordXml::reads_the_parent_itself_where_it_has_the_tag()
{
    unsigned int value = 0;
    QVERIFY(read_element(tree_of("<ClipLength>5</ClipLength>"), l1("ClipLength"), &value, nullptr));
    QCOMPARE(value, 5U);
    EEStatus status;
    QVERIFY(read_element(tree_of("<EEStatus><SonyEditMask>3</SonyEditMask><AutoEE>true</AutoEE>"
                                 "</EEStatus>"),
        l1("EEStatus"), &status, nullptr));
    QCOMPARE(status.sony_edit_mask, static_cast<unsigned short>(3));
    QVERIFY(status.auto_ee);
}

void TestRecordXml::finds_exactly_one_child()
{
    AString text;
    AString error;
    QVERIFY(!read_element(tree_of("<r><B/></r>"), l1("A"), &text, &error));
    QCOMPARE(error, l1("Tag 'A' not found within 'r'"));
    QVERIFY(!read_element(tree_of("<r><A/><B/><A/></r>"), l1("A"), &text, &error));
    QCOMPARE(error, l1("More than one tag 'A' found within 'r'"));
}

void TestRecordXml::leaves_the_value_alone_on_failure()
{
    Timecode timecode;
    timecode.set_position(9);
    XMLTree const bad = tree_of("<Timecode><Valid>true</Valid><FieldNumber>x</FieldNumber>"
                                "</Timecode>");
    QVERIFY(!read_element(bad, l1("Timecode"), &timecode, nullptr));
    QVERIFY(!timecode.valid && timecode.position == 9);
    ChannelSet set(Channel::B);
    QVERIFY(!read_element(tree_of("<ChannelSet><Channel>A</Channel><Channel>?</Channel>"
                                  "</ChannelSet>"),
        l1("ChannelSet"), &set, nullptr));
    QVERIFY(set == ChannelSet(Channel::B));
}

void TestRecordXml::needs_no_error_text()
{
    unsigned int value = 0;
    QVERIFY(!read_element(tree_of("<r/>"), l1("A"), &value, nullptr));
    QVERIFY(!read_element(tree_of("<A>b</A>"), l1("A"), &value, nullptr));
}

void TestRecordXml::writes_leaves()
{
    QCOMPARE(line_of(write_element(l1("T"), l1("a<b"))), l1("<T>a&lt;b</T>"));
    QCOMPARE(line_of(write_element(l1("T"), -5)), l1("<T>-5</T>"));
    QCOMPARE(line_of(write_element(l1("T"), 4294967295U)), l1("<T>4294967295</T>"));
    QCOMPARE(
        line_of(write_element(l1("T"), static_cast<unsigned short>(65535))), l1("<T>65535</T>"));
    QCOMPARE(line_of(write_element(l1("T"), static_cast<unsigned char>(200))), l1("<T>200</T>"));
    QCOMPARE(line_of(write_element(l1("T"), 18446744073709551615ULL)),
        l1("<T>18446744073709551615</T>"));
    QCOMPARE(line_of(write_element(l1("T"), true)), l1("<T>true</T>"));
    QCOMPARE(line_of(write_element(l1("T"), false)), l1("<T>false</T>"));
    QCOMPARE(line_of(write_element(l1("T"), VideoRate::v59_94)), l1("<T>59_94</T>"));
    QCOMPARE(line_of(write_speed(l1("T"), 65536)), l1("<T>1X</T>"));
    QCOMPARE(line_of(write_speed(l1("T"), -32768)), l1("<T>-0.5X</T>"));
    QCOMPARE(line_of(write_speed(l1("T"), 1)), l1("<T>0.000015258789063X</T>"));
}

void TestRecordXml::writes_sets_in_their_order()
{
    ReportSet set;
    set.add_to_set(ReportType::temperature);
    set.add_to_set(ReportType::clip_change);
    QCOMPARE(line_of(write_element(l1("ReportSet"), set)),
        l1("<ReportSet><ReportType>temperature</ReportType>"
           "<ReportType>clip_change</ReportType></ReportSet>"));
}

void TestRecordXml::writes_an_empty_set_as_an_empty_element()
{
    QCOMPARE(line_of(write_element(l1("ReportSet"), ReportSet())), l1("<ReportSet />"));
    QCOMPARE(
        line_of(write_element(l1("ClipAttrChange"), ClipAttrChange())), l1("<ClipAttrChange />"));
}

void TestRecordXml::writes_nothing_for_a_value_out_of_range()
{
    QCOMPARE(Channel_to_string(static_cast<Channel>(40)), AString());
    QVERIFY(!valid_Channel(40) && !valid_Channel(-1) && valid_Channel(39));
    QCOMPARE(line_of(write_element(l1("Channel"), static_cast<Channel>(40))), l1("<Channel />"));
}

void TestRecordXml::writes_lists()
{
    QCOMPARE(line_of(write_element(l1("KeyList"), std::list<AString>{l1("b"), l1("a")})),
        l1("<KeyList><Key>b</Key><Key>a</Key></KeyList>"));
    QCOMPARE(line_of(write_element(l1("MetadataList"), std::list<Metadata>{{l1("k"), l1("v")}})),
        l1("<MetadataList><Metadata><Key>k</Key><Value>v</Value></Metadata></MetadataList>"));
    QCOMPARE(
        line_of(write_element(l1("MetadataList"), std::list<Metadata>())), l1("<MetadataList />"));
}

void TestRecordXml::writes_set_optional_fields_only()
{
    ListElement element;
    element.content_id.set_clipid(l1("c"));
    element.set_speed(32768);
    element.set_duration(0);
    QCOMPARE(line_of(write_element(l1("ListElement"), element)),
        l1("<ListElement><ContentID><ClipID>c</ClipID></ContentID><Speed>0.5X</Speed>"
           "<Duration>0</Duration></ListElement>"));
}

void TestRecordXml::writes_flags_only_when_raised()
{
    MeltFlags flags;
    flags.melt_client_id = 4;
    flags.melt_flag_inhibit_list_numbering = true;
    QCOMPARE(line_of(write_element(l1("MeltFlags"), flags)),
        l1("<MeltFlags><MeltClientID>4</MeltClientID><MeltFlagInhibitListNumbering />"
           "</MeltFlags>"));
}

void TestRecordXml::reads_a_timecode_without_options()
{
    Timecode timecode;
    timecode.set_position(3);
    QVERIFY(read_element(tree_of("<r><InputTimecode><Valid>false</Valid></InputTimecode></r>"),
        l1("InputTimecode"), &timecode, nullptr));
    QVERIFY(timecode == Timecode());
    QVERIFY(!timecode.has_std && !timecode.has_position && !timecode.has_dfflag
        && !timecode.has_ssm_speed);
}

void TestRecordXml::reads_a_flag_by_its_presence()
{
    MeltFlags flags;
    QVERIFY(read_element(
        tree_of("<MeltFlags><MeltClientID>1</MeltClientID><MeltFlagInhibitUserInteraction>"
                "false</MeltFlagInhibitUserInteraction><MeltFlagInhibitListNumbering/>"
                "<MeltFlagInhibitListNumbering/></MeltFlags>"),
        l1("MeltFlags"), &flags, nullptr));
    QVERIFY(flags.melt_flag_inhibit_user_interaction && flags.melt_flag_inhibit_list_numbering);
    QVERIFY(!flags.melt_flag_inhibit_port_numbering);
}

void TestRecordXml::ignores_unknown_children()
{
    DiskSpaceChange change;
    QVERIFY(
        read_element(tree_of("<DiskSpaceChange><New/><TotalDiskSpace>9</TotalDiskSpace><New>1</New>"
                             "<AvailableDiskSpace>4</AvailableDiskSpace></DiskSpaceChange>"),
            l1("DiskSpaceChange"), &change, nullptr));
    QCOMPARE(change.total_disk_space, 9ULL);
    ChannelSet set;
    QVERIFY(read_element(tree_of("<ChannelSet><New>1</New><Channel>B</Channel></ChannelSet>"),
        l1("ChannelSet"), &set, nullptr));
    QVERIFY(set == ChannelSet(Channel::B));
    std::list<AString> keys;
    QVERIFY(read_element(
        tree_of("<KeyList><Key>a</Key><New/><Key/></KeyList>"), l1("KeyList"), &keys, nullptr));
    QCOMPARE(keys, (std::list<AString>{l1("a"), AString()}));
}

void TestRecordXml::finds_fields_in_any_order()
{
    ChannelInformation information;
    QVERIFY(read_element(
        tree_of("<ChannelInformation><Angle>3</Angle><NaturalSpeed>2X</NaturalSpeed>"
                "<ClipID>a</ClipID><LoopIn>7</LoopIn><Loop>auto</Loop><ClipLength>9</ClipLength>"
                "</ChannelInformation>"),
        l1("ChannelInformation"), &information, nullptr));
    QCOMPARE(information.clip_id, l1("a"));
    QCOMPARE(information.cliplength, 9U);
    QVERIFY(information.has_loop && information.loop == Loop::auto_);
    QCOMPARE(information.loopin, 7U);
    QCOMPARE(int(information.angle), 3);
    QCOMPARE(information.natural_speed, 131072);
    QVERIFY(!information.has_loopout && !information.has_angle_count && !information.has_direction);
}

void TestRecordXml::counts_a_vector_before_reading()
{
    QByteArray cameras;
    for (int i = 0; i < 18; ++i)
        cameras += "<Camera>bad</Camera>";
    TrackCountVector vector;
    AString error;
    XMLTree const tree = tree_of("<TrackCountVector>" + cameras + "</TrackCountVector>");
    QVERIFY(!read_element(tree, l1("TrackCountVector"), &vector, &error));
    QCOMPARE(error, l1("Tag TrackCountVector contains %u subelements. The maximum is 17."));

    cameras = QByteArray("<Camera><TrackCount>1</TrackCount></Camera>").repeated(17);
    XMLTree const full = tree_of("<TrackCountVector>" + cameras + "<Other/></TrackCountVector>");
    QVERIFY(read_element(full, l1("TrackCountVector"), &vector, &error));
    QCOMPARE(vector.size(), 17U);
}

void TestRecordXml::ends_a_vector_at_a_bad_item()
{
    TrackCountVector vector;
    AString error;
    QVERIFY(!read_element(tree_of("<TrackCountVector><Camera><TrackCount>1</TrackCount></Camera>"
                                  "<Camera><TrackCount>x</TrackCount></Camera></TrackCountVector>"),
        l1("TrackCountVector"), &vector, &error));
    QCOMPARE(error, l1("Tag TrackCount contains invalid value 'x'"));
    QVERIFY(vector.empty());
}

void TestRecordXml::fails_on_a_field_that_comes_twice()
{
    Timecode timecode;
    AString error;
    QVERIFY(!read_element(tree_of("<Timecode><Valid>true</Valid><SSMSpeed>1</SSMSpeed>"
                                  "<SSMSpeed>1</SSMSpeed></Timecode>"),
        l1("Timecode"), &timecode, &error));
    QCOMPARE(error, l1("More than one tag 'SSMSpeed' found within 'Timecode'"));
}

void TestRecordXml::fails_on_a_bad_optional_field()
{
    ContentID content;
    ListPlaybackIndex index;
    AString error;
    QVERIFY(read_element(tree_of("<ListPlaybackIndex/>"), l1("ListPlaybackIndex"), &index, &error));
    QVERIFY(!index.has_list_index);
    QVERIFY(!read_element(tree_of("<ListPlaybackIndex><ListIndex/></ListPlaybackIndex>"),
        l1("ListPlaybackIndex"), &index, &error));
    QCOMPARE(error, l1("Tag ListIndex contains invalid value ''"));
}

void TestRecordXml::compares_optional_fields_by_presence_first()
{
    Timecode absent;
    Timecode stale;
    stale.position = 5; // no flag, so no value
    Timecode zero;
    zero.set_position(0);
    Timecode one;
    one.set_position(1);
    QVERIFY(absent == stale && !(absent < stale) && !(stale < absent));
    QVERIFY(!(absent == zero) && absent < zero && !(zero < absent));
    QVERIFY(zero < one && !(one < zero) && !(zero == one));
    one.valid = true;
    QVERIFY(zero < one);
    zero.set_dfflag(DropFrameFlag::df);
    QVERIFY(zero < one); // the first field decides
}

void TestRecordXml::compares_required_fields_in_their_order()
{
    auto const high = AlertingLevel::error;
    auto const low = AlertingLevel::na;
    // Each is above the one before it in one field, and below it in all that follow.
    Alert const rising[] = {
        {AlertingPriority::harmful, low, l1("a"), l1("a"), l1("a")},
        {AlertingPriority::harmful, low, l1("a"), l1("a"), l1("z")},
        {AlertingPriority::harmful, low, l1("a"), l1("z"), l1("y")},
        {AlertingPriority::harmful, low, l1("z"), l1("y"), l1("x")},
        {AlertingPriority::harmful, high, l1("y"), l1("x"), l1("w")},
        {AlertingPriority::malfunction, low, l1("x"), l1("w"), l1("v")},
    };
    for (std::size_t i = 0; i < std::size(rising); ++i) {
        for (std::size_t k = 0; k < std::size(rising); ++k) {
            QCOMPARE(rising[i] < rising[k], i < k);
            QCOMPARE(rising[i] == rising[k], i == k);
        }
    }
}

void TestRecordXml::raises_the_flag_with_the_setter()
{
    ClipAttrChange change;
    change.set_set_metadata({{l1("k"), l1("v")}});
    change.set_remove_metadata({l1("old")});
    change.set_track_attr(TrackAttrVector());
    QVERIFY(change.has_set_metadata && change.has_remove_metadata && change.has_track_attr);
    QCOMPARE(line_of(write_element(l1("ClipAttrChange"), change)),
        l1("<ClipAttrChange><MetadataList><Metadata><Key>k</Key><Value>v</Value></Metadata>"
           "</MetadataList><KeyList><Key>old</Key></KeyList><TrackAttrVector />"
           "</ClipAttrChange>"));
}

QTEST_GUILESS_MAIN(TestRecordXml)
#include "tst_record_xml.moc"
