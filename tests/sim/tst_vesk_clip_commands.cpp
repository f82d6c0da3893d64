// SPDX-License-Identifier: Apache-2.0
#include "tests/sim/model_bench.h"

#include <QTest>

using VCTP3::Channel;

namespace {

QString const ok = QStringLiteral("ok");

QString created(char const *id)
{
    return QStringLiteral("clip_change <clip_created><ClipID>%1</ClipID></clip_created>")
        .arg(QLatin1String(id));
}

QString changed(char const *id)
{
    return QStringLiteral("clip_change <clip_changed><ClipID>%1</ClipID></clip_changed>")
        .arg(QLatin1String(id));
}

QString deleted(char const *id)
{
    return QStringLiteral("clip_change <clip_deleted><ClipID>%1</ClipID></clip_deleted>")
        .arg(QLatin1String(id));
}

} // namespace

class TestVeskClipCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void tells_whether_a_clip_exists();
    void creates_a_clip_of_black();
    void refuses_to_create_data();
    void refuses_to_create();
    void describes_a_clip();
    void creates_a_child_that_takes_no_space();
    void refuses_a_child_data();
    void refuses_a_child();
    void deletes_a_clip();
    void refuses_to_delete();
    void renames_a_clip();
    void renames_a_clip_that_is_loaded();
    void refuses_to_rename();
    void lists_clips_of_a_directory();

    void modifies_each_attribute_data();
    void modifies_each_attribute();
    void trims_a_clip();
    void sets_and_removes_metadata();
    void modifies_all_or_nothing_data();
    void modifies_all_or_nothing();
    void counts_timecodes_from_their_source();

    void creates_directories();
    void refuses_a_directory_data();
    void refuses_a_directory();
    void moves_clips_with_their_directory();
    void refuses_to_rename_a_directory();

    void tells_the_use_of_the_disk();
    void reports_free_space_once_a_second();
    void tells_the_current_timecode();
    void tells_how_a_growing_clip_is_made_up();

private:
    VeskClip &old();

    std::unique_ptr<ModelBench> bench;
};

void TestVeskClipCommands::init()
{
    bench = std::make_unique<ModelBench>();
    bench->ask("create_directory", "<DirectoryName>Bank 1</DirectoryName>");
    bench->clip("old", 100);
    bench->told();
}

void TestVeskClipCommands::cleanup()
{
    bench.reset();
}

VeskClip &TestVeskClipCommands::old()
{
    return *bench->world.clips.find(AString::l1("old"));
}

void TestVeskClipCommands::tells_whether_a_clip_exists()
{
    QCOMPARE(bench->ask("clip_exists", "<ClipID>old</ClipID>"),
        QStringLiteral("<clipexists><ClipID>old</ClipID><Exists>true</Exists></clipexists>"));
    QCOMPARE(bench->ask("clip_exists", "<ClipID>OLD</ClipID>"),
        QStringLiteral("<clipexists><ClipID>OLD</ClipID><Exists>false</Exists></clipexists>"));
}

void TestVeskClipCommands::creates_a_clip_of_black()
{
    QCOMPARE(bench->ask("create_clip",
                 "<ClipID>Bank 1/new</ClipID><TrackSet><TrackType>video</TrackType></TrackSet>"
                 "<ClipLength>40</ClipLength>"),
        ok);
    QCOMPARE(bench->told(), QStringList(created("Bank 1/new")));
    VeskClip const *clip = bench->world.clips.find(AString::l1("Bank 1/new"));
    QCOMPARE(clip->length(), 40U);
    QCOMPARE(QString(clip->info.title), QStringLiteral("new"));
    QCOMPARE(bench->ask("create_clip", "<ClipID>empty</ClipID><TrackSet />"), ok);
    QCOMPARE(bench->world.clips.find(AString::l1("empty"))->length(), 0U);
}

void TestVeskClipCommands::refuses_to_create_data()
{
    QTest::addColumn<QByteArray>("parameters");
    QTest::addColumn<QString>("error");
    QString const no_name = QStringLiteral("general: \"%1\" is no name for a clip");
    QTest::newRow("there") << QByteArray("<ClipID>old</ClipID>")
                           << QStringLiteral("general: There is a clip \"old\" already");
    QTest::newRow("empty") << QByteArray("<ClipID></ClipID>") << no_name.arg(QString());
    QTest::newRow("slash") << QByteArray("<ClipID>/</ClipID>") << no_name.arg(QLatin1String("/"));
    QTest::newRow("no name") << QByteArray("<ClipID>Bank 1/</ClipID>")
                             << no_name.arg(QLatin1String("Bank 1/"));
    QTest::newRow("empty part") << QByteArray("<ClipID>Bank 1//a</ClipID>")
                                << no_name.arg(QLatin1String("Bank 1//a"));
    QTest::newRow("no directory") << QByteArray("<ClipID>Bank 2/a</ClipID>")
                                  << QStringLiteral("general: There is no directory \"Bank 2\"");
    QTest::newRow("too long") << QByteArray("<ClipID>a</ClipID><ClipLength>4294967295</ClipLength>")
                              << QStringLiteral(
                                     "general: The disk has no room for 4294967295 fields");
}

void TestVeskClipCommands::refuses_to_create()
{
    QFETCH(QByteArray, parameters);
    QByteArray const on_channel = parameters + "<TrackSet /><Channel>A</Channel>";
    QTEST(bench->ask("create_clip", (parameters + "<TrackSet />").constData()), "error");
    if (!parameters.contains("ClipLength"))
        QTEST(bench->ask("create_clip", on_channel.constData()), "error");
    QCOMPARE(bench->told(), QStringList());
    QCOMPARE(bench->world.clips.all().size(), std::size_t(1));
    QCOMPARE(bench->state(), QStringLiteral("idle 0 0X"));
}

void TestVeskClipCommands::describes_a_clip()
{
    bench->ask("create_clip",
        "<ClipID>new</ClipID><TrackSet><TrackType>audio</TrackType><TrackType>video</TrackType>"
        "</TrackSet><ClipLength>40</ClipLength>");
    QString const info = bench->ask("get_clip_info", "<ClipID>new</ClipID>");
    for (char const *part : {"<clipinfo><ClipInfo><ClipID>new</ClipID>"
                             "<VideoStandard>1080_50i</VideoStandard>"
                             "<TrackInfoVector><TrackInfo><TrackType>audio</TrackType></TrackInfo>"
                             "<TrackInfo><TrackType>video</TrackType></TrackInfo>"
                             "</TrackInfoVector><Title>new</Title>",
             "<Loop>off</Loop><LoopOut>0</LoopOut><LoopIn>0</LoopIn><ClipLength>40</ClipLength>"
             "<TimecodeSource>rectc</TimecodeSource>",
             "<ReadOnly>false</ReadOnly>", "<ISOCount>1</ISOCount>", "<TrimStart>0</TrimStart>",
             "<ClipLengthUntrimmed>40</ClipLengthUntrimmed>",
             "<ClipUUID>00000000-0000-4000-8000-000000000002</ClipUUID>"})
        QVERIFY2(info.contains(QLatin1String(part)), part);
    QCOMPARE(bench->ask("get_clip_info", "<ClipID>none</ClipID>"),
        QStringLiteral("clipnotfound: There is no clip \"none\""));
}

void TestVeskClipCommands::creates_a_child_that_takes_no_space()
{
    old().info.set_iso_count(3);
    quint64 const space = bench->world.clips.available_disk_space();
    QCOMPARE(bench->ask("create_child_clip",
                 "<ClipID>child</ClipID><ParentClipID>old</ParentClipID><Angle>3</Angle>"),
        ok);
    QCOMPARE(bench->told(), QStringList(created("child")));
    VCTP3::ClipInfo const &info = bench->world.clips.find(AString::l1("child"))->info;
    QCOMPARE(info.clip_length, 100U);
    QCOMPARE(info.parent_id, old().info.aid);
    QVERIFY(!(info.aid == old().info.aid));
    QCOMPARE(int(info.parent_angle), 3);
    QCOMPARE(info.iso_count, 1U);
    QCOMPARE(bench->world.clips.available_disk_space(), space);
    QCOMPARE(bench->ask("delete_clip", "<ClipID>child</ClipID>"), ok);
    QCOMPARE(bench->world.clips.available_disk_space(), space);
    bench->ask("create_child_clip", "<ClipID>whole</ClipID><ParentClipID>old</ParentClipID>");
    QCOMPARE(bench->world.clips.find(AString::l1("whole"))->info.iso_count, 3U);
}

void TestVeskClipCommands::refuses_a_child_data()
{
    QTest::addColumn<QByteArray>("parameters");
    QTest::addColumn<QString>("error");
    QTest::newRow("no parent") << QByteArray(
        "<ClipID>child</ClipID><ParentClipID>none</ParentClipID>")
                               << QStringLiteral("clipnotfound: There is no clip \"none\"");
    QTest::newRow("there") << QByteArray("<ClipID>old</ClipID><ParentClipID>old</ParentClipID>")
                           << QStringLiteral("general: There is a clip \"old\" already");
    QTest::newRow("angle") << QByteArray("<ClipID>c</ClipID><ParentClipID>old</ParentClipID>"
                                         "<Angle>2</Angle>")
                           << QStringLiteral("general: \"old\" has no angle 2");
    QTest::newRow("angle 0") << QByteArray("<ClipID>c</ClipID><ParentClipID>old</ParentClipID>"
                                           "<Angle>0</Angle>")
                             << QStringLiteral("general: \"old\" has no angle 0");
}

void TestVeskClipCommands::refuses_a_child()
{
    QFETCH(QByteArray, parameters);
    QTEST(bench->ask("create_child_clip", parameters.constData()), "error");
    QCOMPARE(bench->told(), QStringList());
}

void TestVeskClipCommands::deletes_a_clip()
{
    QCOMPARE(bench->ask("delete_clip", "<ClipID>old</ClipID>"), ok);
    QCOMPARE(bench->told(), QStringList(deleted("old")));
    QVERIFY(!bench->world.clips.find(AString::l1("old")));
    QCOMPARE(bench->world.clips.available_disk_space(), bench->world.clips.total_disk_space());
}

void TestVeskClipCommands::refuses_to_delete()
{
    QCOMPARE(bench->ask("delete_clip", "<ClipID>none</ClipID>"),
        QStringLiteral("clipnotfound: There is no clip \"none\""));
    bench->ask("cue_clip", "<Channel>A</Channel><ClipID>old</ClipID><Layer>bed</Layer>");
    QCOMPARE(bench->ask("delete_clip", "<ClipID>old</ClipID>"),
        QStringLiteral("general: \"old\" is loaded on a channel"));
    bench->ask("unload", "<Channel>A</Channel><Layer>bed</Layer>");
    old().info.read_only = true;
    QCOMPARE(bench->ask("delete_clip", "<ClipID>old</ClipID>"),
        QStringLiteral("general: \"old\" is read-only"));
    QCOMPARE(bench->told(), QStringList());
}

void TestVeskClipCommands::renames_a_clip()
{
    QCOMPARE(bench->ask("rename_clip", "<FromID>old</FromID><ToID>Bank 1/better</ToID>"), ok);
    QCOMPARE(bench->told(), QStringList({deleted("old"), created("Bank 1/better")}));
    QVERIFY(!bench->world.clips.find(AString::l1("old")));
    QCOMPARE(bench->world.clips.find(AString::l1("Bank 1/better"))->length(), 100U);
}

void TestVeskClipCommands::renames_a_clip_that_is_loaded()
{
    bench->ask("cue_clip", "<Channel>A</Channel><ClipID>old</ClipID>");
    bench->advance(2);
    bench->ask("play", "<Channel>A</Channel>");
    bench->advance(5);
    bench->channel(Channel::A).take_changes();
    bench->ask("rename_clip", "<FromID>old</FromID><ToID>better</ToID>");
    QCOMPARE(QString(bench->layer().clip()->id()), QStringLiteral("better"));
    QVERIFY(bench->channel(Channel::A).take_changes()
        & 1U << static_cast<unsigned int>(VCTP3::ChannelReportType::clipid));
    bench->advance(5);
    QCOMPARE(bench->state(), QStringLiteral("play 10 1X"));
}

void TestVeskClipCommands::refuses_to_rename()
{
    bench->clip("other", 1);
    bench->told();
    QCOMPARE(bench->ask("rename_clip", "<FromID>none</FromID><ToID>a</ToID>"),
        QStringLiteral("clipnotfound: There is no clip \"none\""));
    QCOMPARE(bench->ask("rename_clip", "<FromID>old</FromID><ToID>other</ToID>"),
        QStringLiteral("general: There is a clip \"other\" already"));
    QCOMPARE(bench->ask("rename_clip", "<FromID>old</FromID><ToID>Bank 9/a</ToID>"),
        QStringLiteral("general: There is no directory \"Bank 9\""));
    QCOMPARE(bench->told(), QStringList());
}

void TestVeskClipCommands::lists_clips_of_a_directory()
{
    bench->ask("create_directory", "<DirectoryName>Bank 1/Day 1</DirectoryName>");
    bench->clip("Bank 1/b", 1);
    bench->clip("Bank 1/a", 1);
    bench->clip("Bank 1/Day 1/c", 1);
    QCOMPARE(bench->ask("download_clipids"), ok);
    QCOMPARE(bench->replies.size(), 4);
    QCOMPARE(bench->ask("download_clipids", "<DirectoryName>Bank 1</DirectoryName>"), ok);
    QCOMPARE(bench->replies,
        QStringList({QStringLiteral("<clipid><ClipID>Bank 1/a</ClipID></clipid>"),
            QStringLiteral("<clipid><ClipID>Bank 1/b</ClipID></clipid>")}));
    QCOMPARE(bench->ask("download_clipids", "<DirectoryName>Bank</DirectoryName>"),
        QStringLiteral("general: There is no directory \"Bank\""));
    QCOMPARE(bench->replies.size(), 0);
}

void TestVeskClipCommands::modifies_each_attribute_data()
{
    QTest::addColumn<QByteArray>("change");
    for (char const *change : {"<ID8>12345678</ID8>", "<Title>Goal</Title>",
             "<Creator>me</Creator>", "<Project>cup</Project>", "<Playback>field</Playback>",
             "<Interp>on</Interp>", "<Loop>loopto</Loop>", "<LoopOut>30</LoopOut>",
             "<LoopIn>20</LoopIn>", "<TimecodeSource>striped</TimecodeSource>",
             "<StripeTimecode><Valid>true</Valid><FieldNumber>9</FieldNumber></StripeTimecode>",
             "<TrimStart>3</TrimStart>", "<TrimEnd>4</TrimEnd>",
             "<Frame0Timecode><FieldNumber>8</FieldNumber></Frame0Timecode>"})
        QTest::newRow(change) << QByteArray(change);
}

void TestVeskClipCommands::modifies_each_attribute()
{
    QFETCH(QByteArray, change);
    QByteArray const whole = "<ClipID>old</ClipID><ClipAttrChange>" + change + "</ClipAttrChange>";
    QVERIFY(!bench->ask("get_clip_info", "<ClipID>old</ClipID>").contains(QLatin1String(change)));
    QCOMPARE(bench->ask("modify_clip_attributes", whole.constData()), ok);
    QCOMPARE(bench->told(), QStringList(changed("old")));
    QVERIFY(bench->ask("get_clip_info", "<ClipID>old</ClipID>").contains(QLatin1String(change)));
}

void TestVeskClipCommands::trims_a_clip()
{
    bench->ask("modify_clip_attributes",
        "<ClipID>old</ClipID><ClipAttrChange><TrimStart>30</TrimStart><TrimEnd>50</TrimEnd>"
        "<TrackAttrVector><TrackAttr><TrackType>video</TrackType><TrimStart>2</TrimStart>"
        "</TrackAttr></TrackAttrVector></ClipAttrChange>");
    QCOMPARE(old().length(), 20U);
    QCOMPARE(old().recorded(), 100U);
    QCOMPARE((*old().info.track_info_vector.begin()).trim_start, 2U);
    bench->ask("cue_clip", "<Channel>A</Channel><ClipID>old</ClipID>");
    bench->advance(2);
    bench->ask("play", "<Channel>A</Channel>");
    bench->advance(30);
    QCOMPARE(bench->state(), QStringLiteral("stop 19 0X"));
}

void TestVeskClipCommands::sets_and_removes_metadata()
{
    auto const modify = [this](char const *change) {
        QByteArray const whole
            = QByteArray("<ClipID>old</ClipID><ClipAttrChange>") + change + "</ClipAttrChange>";
        return bench->ask("modify_clip_attributes", whole.constData());
    };
    QCOMPARE(modify("<MetadataList><Metadata><Key>a</Key><Value>1</Value></Metadata>"
                    "<Metadata><Key>b</Key><Value>2</Value></Metadata></MetadataList>"),
        ok);
    QCOMPARE(modify("<MetadataList><Metadata><Key>a</Key><Value>3</Value></Metadata>"
                    "</MetadataList><KeyList><Key>b</Key><Key>c</Key></KeyList>"),
        ok);
    QVERIFY(bench->ask("get_clip_info", "<ClipID>old</ClipID>")
                .contains(QLatin1String("<MetadataList><Metadata><Key>a</Key><Value>3</Value>"
                                        "</Metadata></MetadataList>")));
}

void TestVeskClipCommands::modifies_all_or_nothing_data()
{
    QTest::addColumn<QByteArray>("change");
    QTest::addColumn<QString>("error");
    QTest::newRow("trims") << QByteArray("<TrimStart>60</TrimStart><TrimEnd>40</TrimEnd>")
                           << QStringLiteral("general: Trims of 60 and 40 leave nothing of the "
                                             "100 fields of \"old\"");
    QTest::newRow("trims too large")
        << QByteArray("<TrimStart>4294967295</TrimStart><TrimEnd>2</TrimEnd>")
        << QStringLiteral("general: Trims of 4294967295 and 2 leave nothing of the 100 fields of "
                          "\"old\"");
    QTest::newRow("other track") << QByteArray(
        "<TrackAttrVector><TrackAttr><TrackType>key</TrackType></TrackAttr>"
        "</TrackAttrVector>") << QStringLiteral("general: \"old\" has no track \"key\"");
    QTest::newRow("no track") << QByteArray("<TrackAttrVector><TrackAttr /></TrackAttrVector>")
                              << QStringLiteral("general: A track to change has no TrackType");
}

void TestVeskClipCommands::modifies_all_or_nothing()
{
    QFETCH(QByteArray, change);
    QByteArray const whole
        = "<ClipID>old</ClipID><ClipAttrChange><Title>T</Title>" + change + "</ClipAttrChange>";
    QTEST(bench->ask("modify_clip_attributes", whole.constData()), "error");
    QCOMPARE(QString(old().info.title), QStringLiteral("old"));
    QCOMPARE(bench->told(), QStringList());

    old().info.set_read_only_meta(true);
    QCOMPARE(bench->ask("modify_clip_attributes", "<ClipID>old</ClipID><ClipAttrChange />"),
        QStringLiteral("general: \"old\" is read-only"));
    QCOMPARE(bench->ask("modify_clip_attributes", "<ClipID>none</ClipID><ClipAttrChange />"),
        QStringLiteral("clipnotfound: There is no clip \"none\""));
}

void TestVeskClipCommands::counts_timecodes_from_their_source()
{
    VeskClip &clip = old();
    clip.info.stripe_timecode.set_position(4319990);
    clip.info.set_trim_start(5);
    QCOMPARE(clip.timecode(2, 4320000).position, 4319997);
    QCOMPARE(clip.timecode(5, 4320000).position, 0);
    clip.info.timecode_source = VCTP3::TimecodeSource::zerobased;
    QCOMPARE(clip.timecode(2, 4320000).position, 2);
    QVERIFY(clip.timecode(2, 4320000).std == VCTP3::VideoStandard::v1080_50i);
}

void TestVeskClipCommands::creates_directories()
{
    QCOMPARE(bench->ask("create_directory", "<DirectoryName>Bank 1/Day</DirectoryName>"), ok);
    QCOMPARE(bench->told(),
        QStringList(QStringLiteral("directory_change <directory_created><DirectoryName>Bank 1/Day"
                                   "</DirectoryName></directory_created>")));
    QString const day = QStringLiteral(
        "<directory_name><DirectoryName>Bank 1/Day</DirectoryName></directory_name>");
    QString const bank
        = QStringLiteral("<directory_name><DirectoryName>Bank 1</DirectoryName></directory_name>");
    QCOMPARE(bench->ask("download_directory_names"), ok);
    QCOMPARE(bench->replies, QStringList({bank, day}));
    QCOMPARE(bench->ask("download_directory_names", "<DirectoryName>Bank 1</DirectoryName>"), ok);
    QCOMPARE(bench->replies, QStringList(day));
    QCOMPARE(bench->ask("download_directory_names", "<DirectoryName>Day</DirectoryName>"),
        QStringLiteral("general: There is no directory \"Day\""));
}

void TestVeskClipCommands::refuses_a_directory_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("error");
    QTest::newRow("empty") << QByteArray()
                           << QStringLiteral("general: \"\" is no name for a directory");
    QTest::newRow("slash") << QByteArray("a/")
                           << QStringLiteral("general: \"a/\" is no name for a directory");
    QTest::newRow("there") << QByteArray("Bank 1")
                           << QStringLiteral("general: There is a directory \"Bank 1\" already");
    QTest::newRow("in none") << QByteArray("Bank 2/Day")
                             << QStringLiteral("general: There is no directory \"Bank 2\"");
}

void TestVeskClipCommands::refuses_a_directory()
{
    QFETCH(QByteArray, name);
    QByteArray const whole = "<DirectoryName>" + name + "</DirectoryName>";
    QTEST(bench->ask("create_directory", whole.constData()), "error");
    QCOMPARE(bench->told(), QStringList());
}

void TestVeskClipCommands::moves_clips_with_their_directory()
{
    bench->ask("create_directory", "<DirectoryName>Bank 1/Day</DirectoryName>");
    bench->ask("create_directory", "<DirectoryName>Bank 10</DirectoryName>");
    bench->clip("Bank 1/a", 1);
    bench->clip("Bank 1/Day/b", 1);
    bench->clip("Bank 10/c", 1);
    bench->ask("cue_clip", "<Channel>A</Channel><ClipID>Bank 1/Day/b</ClipID>");
    bench->channel(Channel::A).take_changes();
    bench->told();
    QCOMPARE(bench->ask("rename_dir", "<FromDir>Bank 1</FromDir><ToDir>Finals</ToDir>"), ok);
    QStringList const told = bench->told();
    QVERIFY(told.contains(deleted("Bank 1/Day/b")));
    QVERIFY(told.contains(created("Finals/Day/b")));
    QVERIFY(told.contains(
        QStringLiteral("directory_change <directory_deleted><DirectoryName>Bank 1</DirectoryName>"
                       "</directory_deleted>")));
    QCOMPARE(told.size(), 8);
    QCOMPARE(QString(bench->layer().clip()->id()), QStringLiteral("Finals/Day/b"));
    QVERIFY(bench->channel(Channel::A).take_changes()
        & 1U << static_cast<unsigned int>(VCTP3::ChannelReportType::clipid));
    bench->ask("download_clipids");
    QCOMPARE(bench->replies,
        QStringList({QStringLiteral("<clipid><ClipID>Bank 10/c</ClipID></clipid>"),
            QStringLiteral("<clipid><ClipID>Finals/Day/b</ClipID></clipid>"),
            QStringLiteral("<clipid><ClipID>Finals/a</ClipID></clipid>"),
            QStringLiteral("<clipid><ClipID>old</ClipID></clipid>")}));
    bench->ask("download_directory_names");
    QCOMPARE(bench->replies.size(), 3);
}

void TestVeskClipCommands::refuses_to_rename_a_directory()
{
    bench->ask("create_directory", "<DirectoryName>Bank 2</DirectoryName>");
    bench->told();
    QCOMPARE(bench->ask("rename_dir", "<FromDir>none</FromDir><ToDir>a</ToDir>"),
        QStringLiteral("general: There is no directory \"none\""));
    QCOMPARE(bench->ask("rename_dir", "<FromDir>Bank 1</FromDir><ToDir>Bank 2</ToDir>"),
        QStringLiteral("general: There is a directory \"Bank 2\" already"));
    QCOMPARE(bench->ask("rename_dir", "<FromDir>Bank 1</FromDir><ToDir>Bank 1/a</ToDir>"),
        QStringLiteral("general: Directory \"Bank 1\" cannot move into itself"));
    QCOMPARE(bench->ask("rename_dir", "<FromDir>Bank 1</FromDir><ToDir>a/b</ToDir>"),
        QStringLiteral("general: There is no directory \"a\""));
    QCOMPARE(bench->told(), QStringList());
}

void TestVeskClipCommands::tells_the_use_of_the_disk()
{
    bench->world.clips.set_total_disk_space(1000 * bench->world.clips.field_size());
    QCOMPARE(bench->ask("get_disk_usage"),
        QStringLiteral("<disk_usage><TotalDiskSpace>262144000</TotalDiskSpace>"
                       "<AvailableDiskSpace>235929600</AvailableDiskSpace>"
                       "<FieldSize>262144</FieldSize></disk_usage>"));
    bench->world.clips.set_total_disk_space(1);
    QCOMPARE(bench->world.clips.available_disk_space(), quint64(0));
}

void TestVeskClipCommands::reports_free_space_once_a_second()
{
    bench->advance(60);
    bench->told();
    bench->ask("create_clip", "<ClipID>new</ClipID><TrackSet /><Channel>A</Channel>");
    bench->ask("play", "<Channel>A</Channel>");
    bench->advance(150);
    QStringList const told
        = bench->told().filter(QStringLiteral("disk_space <disk_space_changed><DiskSpaceChange>"));
    QCOMPARE(told.size(), 3);
    bench->ask("stop", "<Channel>A</Channel>");
    bench->advance(100);
    QVERIFY(bench->told().filter(QStringLiteral("disk_space")).size() <= 1);
    bench->advance(100);
    QCOMPARE(bench->told(), QStringList());
}

void TestVeskClipCommands::tells_the_current_timecode()
{
    old().info.stripe_timecode.set_position(1000);
    bench->ask(
        "cue_clip", "<Channel>B</Channel><ClipID>old</ClipID><GotoPosition>7</GotoPosition>");
    QCOMPARE(bench->ask("get_current_timecode", "<Channel>B</Channel>"),
        QStringLiteral("<channel_current_timecode><Channel>B</Channel><DisplayTimecode>"
                       "<Valid>true</Valid><VideoStandard>1080_50i</VideoStandard>"
                       "<FieldNumber>1007</FieldNumber><DropFrameFlag>ndf</DropFrameFlag>"
                       "</DisplayTimecode><ClipLength>100</ClipLength>"
                       "<ClipPosition>7</ClipPosition></channel_current_timecode>"));
    QCOMPARE(bench->ask("get_current_timecode", "<Channel>C</Channel>"),
        QStringLiteral("<channel_current_timecode><Channel>C</Channel><DisplayTimecode>"
                       "<Valid>false</Valid></DisplayTimecode><ClipLength>0</ClipLength>"
                       "<ClipPosition>0</ClipPosition></channel_current_timecode>"));
}

void TestVeskClipCommands::tells_how_a_growing_clip_is_made_up()
{
    bench->ask("create_clip",
        "<ClipID>new</ClipID><TrackSet /><ClipLength>500</ClipLength><Channel>A</Channel>");
    bench->ask("play", "<Channel>A</Channel>");
    bench->advance(12);
    QString const key = QStringLiteral("<Key>%1</Key>");
    QString keys;
    for (char const *token : {"(", "grow", "12", "(", "limited", "500", "(", "file",
             "V:/Clips/00000000-0000-4000-8000-000000000002.mxf", ")", ")", ")"})
        keys += key.arg(QLatin1String(token));
    QCOMPARE(bench->ask("get_volatile_file_info", "<ClipID>new</ClipID>"), ok);
    QCOMPARE(bench->replies,
        QStringList(QStringLiteral("<volatile_file_info><KeyList>") + keys
            + QStringLiteral("</KeyList></volatile_file_info>")));
    QCOMPARE(bench->ask("get_volatile_file_info", "<ClipID>old</ClipID>"), ok);
    QVERIFY(bench->replies.value(0).startsWith(QStringLiteral(
        "<volatile_file_info><KeyList><Key>(</Key><Key>clip</Key><Key>100</Key><Key>(</Key>"
        "<Key>file</Key>")));
    QCOMPARE(bench->ask("get_volatile_file_info", "<ClipID>none</ClipID>"),
        QStringLiteral("clipnotfound: There is no clip \"none\""));
}

QTEST_GUILESS_MAIN(TestVeskClipCommands)
#include "tst_vesk_clip_commands.moc"
