// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_parser2.h"
#include "tests/protocol/protocol_texts.h"

#include <QByteArray>
#include <QTest>
#include <vector>

using namespace VCTP3;

/// Notes what arrives, one line for each call.
class NotingParser : public APIParser2
{
public:
    QStringList take()
    {
        QStringList result;
        result.swap(calls);
        return result;
    }
    void feed(QByteArray const &bytes)
    {
        input_bytes(static_cast<unsigned long long>(bytes.size()), bytes.constData());
    }

    bool reset_on_ok = false;

protected:
    void reply_ok(AString const &xid) override
    {
        note(QStringLiteral("ok"), xid);
        if (reset_on_ok)
            reset_input();
    }
    void reply_error(AString const &xid, AString const &text, ErrorCode code) override
    {
        note(QStringLiteral("error"), xid, text, ErrorCode_to_string(code));
    }
    void reply_clipexists(AString const &xid, AString const &id, bool exists) override
    {
        note(QStringLiteral("clipexists"), xid, id, AString::from_int(exists));
    }
    void reply_disk_usage(AString const &xid, unsigned long long total,
        unsigned long long available, unsigned int field) override
    {
        note(QStringLiteral("disk_usage"), xid, AString::from_uint64_t(total),
            AString::from_uint64_t(available) + l1(" ") + AString::from_uint32_t(field));
    }
    void report_clip_created(AString const &id) override
    {
        note(QStringLiteral("clip_created"), id);
    }
    void report_config_changed(AOption<std::list<ConfigurationItem>> const &items) override
    {
        note(QStringLiteral("config_changed"),
            items ? AString::from_int(int(items->size())) : l1("none"));
    }
    void report_channel_status(
        Channel channel, ChannelStatus status, AOption<AString> const &id) override
    {
        note(QStringLiteral("channel_status"), Channel_to_string(channel),
            ChannelStatus_to_string(status), id ? *id : l1("none"));
    }
    void report_channel_listplay_air_now(Channel channel, ListPlaybackIndex const &index) override
    {
        note(QStringLiteral("air_now"), Channel_to_string(channel),
            index.has_list_index ? l1("index") : l1("none"));
    }

private:
    template <typename... Texts> void note(QString line, Texts const &...texts)
    {
        ((line += QLatin1Char(' ') + QString(texts)), ...);
        calls.append(line);
    }

    QStringList calls;
};

class TestAPIParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void delivers_messages_data();
    void delivers_messages();
    void drops_bad_messages_data();
    void drops_bad_messages();
    void keeps_the_first_error_of_a_parse_only();
    void a_message_within_a_message_keeps_its_error_to_itself_data();
    void a_message_within_a_message_keeps_its_error_to_itself();
    void runs_the_receive_hook_before_all_else();
    void ignores_what_nobody_overrides();

    void reads_a_stream_however_it_is_cut();
    void delivers_two_messages_of_one_read();
    void takes_a_message_of_32768_bytes_and_no_more();
    void fails_at_malformed_text_until_reset();
    void drops_the_rest_when_reset_from_a_callback();
    void drops_what_did_not_fit_when_reset_from_a_callback();
    void goes_on_with_a_stream_that_a_callback_has_begun();
};

void TestAPIParser::delivers_messages_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("call");
    auto const row = [](char const *name, char const *text, char const *call) {
        QTest::newRow(name) << QByteArray(text) << QString::fromUtf8(call);
    };
    row("ok", "<reply><xid>7</xid><ok/></reply>", "ok 7");
    row("any layout", "<reply>\r\n <ok />\n\t<xid>7</xid> </reply>", "ok 7");
    row("xid is not trimmed", "<reply><xid> 7 </xid><ok/></reply>", "ok  7 ");
    row("error",
        "<reply><xid>8</xid><error><ErrorMessage>no &lt;x&gt;</ErrorMessage>"
        "<ErrorCode>clipnotfound</ErrorCode></error></reply>",
        "error 8 no <x> clipnotfound");
    row("fields in any order",
        "<reply><clipexists><Exists>false</Exists><ClipID>a b</ClipID></clipexists>"
        "<xid>1</xid></reply>",
        "clipexists 1 a b 0");
    row("64 bits",
        "<reply><xid>1</xid><disk_usage><TotalDiskSpace>18446744073709551615</TotalDiskSpace>"
        "<AvailableDiskSpace>5</AvailableDiskSpace><FieldSize>640</FieldSize></disk_usage>"
        "</reply>",
        "disk_usage 1 18446744073709551615 5 640");
    row("report", "<report><clip_created><ClipID>c</ClipID></clip_created></report>",
        "clip_created c");
    row("report with an id",
        "<report><xid>3</xid><clip_created><ClipID>c</ClipID>"
        "</clip_created></report>",
        "clip_created c");
    row("unknown children",
        "<report><news/><clip_created><ClipID>c</ClipID><New>1</New>"
        "</clip_created><other/></report>",
        "clip_created c");
    row("status without a clip",
        "<report><channel_status><Channel>B</Channel>"
        "<ChannelStatus>idle</ChannelStatus></channel_status></report>",
        "channel_status B idle none");
    row("status with a clip",
        "<report><channel_status><Channel>B</Channel><ChannelStatus>play</ChannelStatus>"
        "<ClipID>c</ClipID></channel_status></report>",
        "channel_status B play c");
    row("status with two clips",
        "<report><channel_status><Channel>B</Channel><ChannelStatus>play</ChannelStatus>"
        "<ClipID>c</ClipID><ClipID>d</ClipID></channel_status></report>",
        "channel_status B play none");
    row("config without items", "<report><config_changed/></report>", "config_changed none");
    row("config with no item",
        "<report><config_changed><ConfigurationChange/></config_changed></report>",
        "config_changed 0");
    row("config with a bad item",
        "<report><config_changed><ConfigurationChange><ConfigurationItem/>"
        "</ConfigurationChange></config_changed></report>",
        "config_changed none");
    row("config with an item",
        "<report><config_changed><ConfigurationChange><ConfigurationItem>"
        "<ConfigurationItemName>n</ConfigurationItemName>"
        "<ConfigurationItemAccess>eng</ConfigurationItemAccess>"
        "<ConfigurationItemEffectiveValue>e</ConfigurationItemEffectiveValue>"
        "<ConfigurationItemBootValue>b</ConfigurationItemBootValue>"
        "<ConfigurationItemSavedValue>s</ConfigurationItemSavedValue>"
        "<ConfigurationItemAllowedValues/></ConfigurationItem></ConfigurationChange>"
        "</config_changed></report>",
        "config_changed 1");
    row("an empty index",
        "<report><channel_listplay_air_now><Channel>A</Channel><ListPlaybackIndex/>"
        "</channel_listplay_air_now></report>",
        "air_now A none");
}

void TestAPIParser::delivers_messages()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, call);
    NotingParser parser;
    parser.parse(tree_of(text));
    QCOMPARE(parser.take(), QStringList{call});
    QVERIFY(parser.parsed_ok());
    QCOMPARE(parser.parse_error_text(), AString());
}

void TestAPIParser::drops_bad_messages_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");
    QTest::addColumn<QString>("xid");
    auto const row
        = [](char const *name, char const *text, char const *error, char const *xid = "") {
              QTest::newRow(name) << QByteArray(text) << QString::fromUtf8(error)
                                  << QString::fromUtf8(xid);
          };
    char const *no_root = "XML Message is not a <reply> or <report> message";
    row("nothing", "", no_root);
    row("a command", "<cmd><xid>1</xid><sync/></cmd>", no_root);
    row("Reply", "<Reply><xid>1</xid><ok/></Reply>", no_root);
    row("no xid", "<reply><ok/></reply>", "Tag 'xid' not found within 'reply'");
    row("two xid", "<reply><xid>1</xid><xid>1</xid><ok/></reply>",
        "More than one tag 'xid' found within 'reply'");
    row("no command", "<reply><xid>4</xid></reply>", "XML Message contains no commands", "4");
    row("unknown", "<reply><xid>4</xid><new/></reply>", "XML Message contains no commands", "4");
    row("unknown report", "<report><news/></report>", "XML Message contains no commands");
    row("two replies", "<reply><xid>4</xid><ok/><ok/></reply>",
        "XML Message contains multiple commands", "4");
    row("two reports",
        "<report><clip_created><ClipID>c</ClipID></clip_created>"
        "<clip_deleted><ClipID>c</ClipID></clip_deleted></report>",
        "XML Message contains multiple commands");
    row("a report in a reply",
        "<reply><xid>4</xid><clip_created><ClipID>c</ClipID></clip_created></reply>",
        "XML Message contains no commands", "4");
    row("a reply in a report", "<report><ok/></report>", "XML Message contains no commands");
    row("a missing field", "<reply><xid>4</xid><clipexists><ClipID>c</ClipID></clipexists></reply>",
        "Tag 'Exists' not found within 'clipexists'", "4");
    row("a bad boolean",
        "<reply><xid>4</xid><clipexists><ClipID>c</ClipID><Exists>yes</Exists></clipexists>"
        "</reply>",
        "Tag Exists contains invalid boolean value 'yes'", "4");
    row("a bad status",
        "<report><channel_status><Channel>A</Channel><ChannelStatus>up</ChannelStatus>"
        "</channel_status></report>",
        "Tag channel_status contains invalid value 'ChannelStatus'");
    row("the first of two bad fields",
        "<report><channel_status><Channel>?</Channel></channel_status></report>",
        "Tag channel_status contains invalid value 'Channel'");
}

void TestAPIParser::drops_bad_messages()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, error);
    QFETCH(QString, xid);
    NotingParser parser;
    parser.parse(tree_of(text));
    QCOMPARE(parser.take(), QStringList());
    QVERIFY(!parser.parsed_ok());
    QCOMPARE(parser.parse_error_text(), AString(error));
    QCOMPARE(parser.parse_error_xid(), AString(xid));

    parser.parse(tree_of("<reply><xid>9</xid><ok/></reply>"));
    QCOMPARE(parser.take(), QStringList{QStringLiteral("ok 9")});
    QVERIFY(parser.parsed_ok());
    QCOMPARE(parser.parse_error_xid(), AString());
}

void TestAPIParser::keeps_the_first_error_of_a_parse_only()
{
    class Storing : public APIParser
    {
    protected:
        void reply_ok(AString const &xid) override
        {
            store_error(xid, l1("first"));
            store_error(l1("x"), l1("second"));
        }
    };
    Storing parser;
    parser.parse(tree_of("<reply><xid>1</xid><ok/></reply>"));
    QVERIFY(!parser.parsed_ok());
    QCOMPARE(parser.parse_error_text(), l1("first"));
    QCOMPARE(parser.parse_error_xid(), l1("1"));
}

void TestAPIParser::a_message_within_a_message_keeps_its_error_to_itself_data()
{
    QTest::addColumn<QByteArray>("inner");
    QTest::addColumn<QString>("inner_error");
    QTest::addColumn<bool>("outer_bad");
    QByteArray const good = "<report><clip_created><ClipID>x</ClipID></clip_created></report>";
    QString const no_command = QStringLiteral("XML Message contains no commands");
    QTest::newRow("a bad one in a good one")
        << QByteArray("<report><what/></report>") << no_command << false;
    QTest::newRow("a good one in a bad one") << good << QString() << true;
    QTest::newRow("both bad") << QByteArray("<report><what/></report>") << no_command << true;
}

/// As when a callback runs an event loop of its own.
void TestAPIParser::a_message_within_a_message_keeps_its_error_to_itself()
{
    QFETCH(QByteArray, inner);
    QFETCH(QString, inner_error);
    QFETCH(bool, outer_bad);
    class Nesting : public APIParser
    {
    public:
        QByteArray inner;
        AString inner_error;
        bool bad = false;

    protected:
        void reply_ok(AString const &xid) override
        {
            if (bad)
                store_error(xid, l1("outer"));
            parse(tree_of(inner.constData()));
            inner_error = parse_error_text();
        }
    };
    Nesting parser;
    parser.inner = inner;
    parser.bad = outer_bad;
    parser.parse(tree_of("<reply><xid>1</xid><ok/></reply>"));
    QCOMPARE(parser.inner_error, AString(inner_error));
    QCOMPARE(parser.parsed_ok(), !outer_bad);
    QCOMPARE(parser.parse_error_text(), outer_bad ? l1("outer") : AString());
    QCOMPARE(parser.parse_error_xid(), outer_bad ? l1("1") : AString());
}

void TestAPIParser::runs_the_receive_hook_before_all_else()
{
    std::vector<XMLTree> seen;
    NotingParser parser;
    parser.set_receive_debug_hook({[](void *list, XMLTree const &message) {
                                       static_cast<std::vector<XMLTree> *>(list)->push_back(
                                           message);
                                   },
        &seen});
    parser.parse(tree_of("<what/>"));
    parser.parse(tree_of("<reply><xid>1</xid><ok/></reply>"));
    QCOMPARE(seen.size(), std::size_t(2));
    QVERIFY(seen[0].has_tag(l1("what")));
    parser.set_receive_debug_hook(AFunction1<XMLTree const &>());
    parser.parse(tree_of("<what/>"));
    QCOMPARE(seen.size(), std::size_t(2));
}

void TestAPIParser::ignores_what_nobody_overrides()
{
    APIParser parser;
    parser.parse(tree_of("<reply><xid>1</xid><ok/></reply>"));
    QVERIFY(parser.parsed_ok());
    parser.parse(tree_of("<report><channel_info><Channel>A</Channel><ChannelInformation>"
                         "<ClipID/></ChannelInformation></channel_info></report>"));
    QVERIFY(parser.parsed_ok());
}

void TestAPIParser::reads_a_stream_however_it_is_cut()
{
    QByteArray const stream = "noise<reply><xid>1</xid><ok/></reply>\r\n"
                              "<report>\r\n<clip_created><ClipID>\xC3\xA9</ClipID>"
                              "</clip_created></report><reply><xid>2</xid><ok/></reply>";
    QStringList const expected{
        QStringLiteral("ok 1"), QStringLiteral("clip_created \u00e9"), QStringLiteral("ok 2")};
    for (int cut = 0; cut <= stream.size(); ++cut) {
        NotingParser parser;
        parser.feed(stream.left(cut));
        parser.feed(stream.mid(cut));
        QCOMPARE(parser.take(), expected);
    }
    NotingParser parser;
    for (char byte : stream)
        parser.feed(QByteArray(1, byte));
    QCOMPARE(parser.take(), expected);
}

void TestAPIParser::delivers_two_messages_of_one_read()
{
    NotingParser parser;
    parser.feed("<reply><xid>1</xid><ok/></reply><reply><xid>2</xid><ok/></reply><reply>");
    QCOMPARE(parser.take(), (QStringList{QStringLiteral("ok 1"), QStringLiteral("ok 2")}));
    parser.feed("<xid>3</xid><ok/></reply>");
    QCOMPARE(parser.take(), QStringList{QStringLiteral("ok 3")});
}

static QByteArray message_of(int size)
{
    QByteArray const head = "<report><clip_created><ClipID>";
    QByteArray const tail = "</ClipID></clip_created></report>";
    return head + QByteArray(size - head.size() - tail.size(), 'c') + tail;
}

void TestAPIParser::takes_a_message_of_32768_bytes_and_no_more()
{
    for (int piece : {1, 1000, 2048, 40000}) {
        for (int size : {32767, 32768, 32769}) {
            QByteArray const message = message_of(size);
            NotingParser parser;
            for (int at = 0; at < size; at += piece)
                parser.feed(message.mid(at, piece));
            QCOMPARE(parser.input_failed(), size == 32769);
            QCOMPARE(parser.take().size(), size == 32769 ? 0 : 1);
        }
    }
}

void TestAPIParser::fails_at_malformed_text_until_reset()
{
    NotingParser parser;
    parser.feed("<reply><xid>1</xid><ok/></reply><reply>a<ok/></reply>"
                "<reply><xid>2</xid><ok/></reply>");
    QVERIFY(parser.input_failed());
    QCOMPARE(parser.take(), QStringList{QStringLiteral("ok 1")});
    parser.feed("<reply><xid>3</xid><ok/></reply>");
    QCOMPARE(parser.take(), QStringList());
    parser.reset_input();
    QVERIFY(!parser.input_failed());
    parser.feed("<reply><xid>4</xid><ok/></reply>");
    QCOMPARE(parser.take(), QStringList{QStringLiteral("ok 4")});
}

void TestAPIParser::drops_the_rest_when_reset_from_a_callback()
{
    NotingParser parser;
    parser.reset_on_ok = true;
    parser.feed("<reply><xid>1</xid><ok/></reply><reply><xid>2</xid><ok/></reply><reply>");
    QCOMPARE(parser.take(), QStringList{QStringLiteral("ok 1")});
    parser.reset_on_ok = false;
    parser.feed("<reply><xid>3</xid><ok/></reply>");
    QCOMPARE(parser.take(), QStringList{QStringLiteral("ok 3")});
}

void TestAPIParser::drops_what_did_not_fit_when_reset_from_a_callback()
{
    // More than the buffer holds, so that the reset comes while bytes still wait outside it.
    QByteArray stream = "<reply><xid>1</xid><ok/></reply>";
    while (stream.size() < 100000)
        stream += "<reply><xid>2</xid><ok/></reply>";
    NotingParser parser;
    parser.reset_on_ok = true;
    parser.feed(stream);
    QCOMPARE(parser.take(), QStringList{QStringLiteral("ok 1")});
    parser.feed("<reply><xid>3</xid><ok/></reply>");
    QCOMPARE(parser.take(), QStringList{QStringLiteral("ok 3")});
}

void TestAPIParser::goes_on_with_a_stream_that_a_callback_has_begun()
{
    class Restarting : public NotingParser
    {
    public:
        QByteArray next;

    protected:
        void reply_ok(AString const &xid) override
        {
            NotingParser::reply_ok(xid);
            if (next.isEmpty())
                return;
            reset_input();
            feed(std::exchange(next, QByteArray()));
        }
    };
    // What is left of the first stream lies in the buffer, or also outside it.
    for (int left : {1, 5000}) {
        Restarting parser;
        parser.next = "<reply><xid>2</xid><ok/></reply><reply><xid>3</xid>";
        parser.feed("<reply><xid>1</xid><ok/></reply>"
            + QByteArray("<reply><xid>9</xid><ok/></reply>").repeated(left));
        QCOMPARE(parser.take(), (QStringList{QStringLiteral("ok 1"), QStringLiteral("ok 2")}));
        parser.feed("<ok/></reply>");
        QCOMPARE(parser.take(), QStringList{QStringLiteral("ok 3")});
    }
}

QTEST_GUILESS_MAIN(TestAPIParser)
#include "tst_api_parser.moc"
