// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/words_p.h"
#include "tests/protocol/checking_parser.h"
#include "tests/protocol/command_rows.h"
#include "tests/protocol/message_rows.h"
#include "tests/protocol/protocol_texts.h"
#include "tests/protocol/record_rows.h"

#include <QRegularExpression>
#include <QTest>

using namespace VCTP3;

/// Keeps what is written, and answers by hand.
class Written : public API
{
public:
    QByteArray take()
    {
        QByteArray result;
        result.swap(bytes);
        return result;
    }

protected:
    void send(void const *data, unsigned long long size) override
    {
        bytes += QByteArray(static_cast<char const *>(data), static_cast<int>(size));
    }

private:
    QByteArray bytes;
};

/// The rows stand in the order of the tables; each test reports the first row that is wrong.
class TestVocabulary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writes_every_form_data();
    void writes_every_form();
    void leads_every_reply_to_its_callback_data();
    void leads_every_reply_to_its_callback();
    void ends_a_command_by_the_kind_of_reply_data();
    void ends_a_command_by_the_kind_of_reply();
    void numbers_replies_from_0_and_reports_behind_them();
    void delivers_or_drops_every_message_data();
    void delivers_or_drops_every_message();
    void reads_and_writes_every_record_data();
    void reads_and_writes_every_record();
    void knows_every_name_of_every_enumeration();
};

static QByteArray message_bytes(QByteArray const &xid, char const *element)
{
    return "<cmd>\r\n<xid>" + xid + "</xid>\r\n" + QByteArray(element) + "\r\n</cmd>";
}

static void add_commands()
{
    QTest::addColumn<int>("at");
    for (std::size_t at = 0; at < command_rows().size(); ++at)
        QTest::newRow(command_rows()[at].name) << static_cast<int>(at);
}

void TestVocabulary::writes_every_form_data()
{
    add_commands();
}

void TestVocabulary::writes_every_form()
{
    QFETCH(int, at);
    CommandRow const &row = command_rows()[static_cast<std::size_t>(at)];
    Written api;
    XMLTree hooked;
    api.set_send_debug_hook(
        {[](void *tree, XMLTree const &message) { *static_cast<XMLTree *>(tree) = message; },
            &hooked});
    row.plain(api);
    QCOMPARE(api.take(), message_bytes("7", row.element));
    QCOMPARE(
        QByteArray::fromStdString(hooked.flatten().to_string()), message_bytes("7", row.element));

    row.without(api);
    QCOMPARE(api.outstanding_commands(), 0U);
    QByteArray const bytes = api.take();
    QRegularExpressionMatch const id = QRegularExpression(QStringLiteral("<xid>(none[0-9]+)</xid>"))
                                           .match(QString::fromUtf8(bytes));
    QVERIFY(id.hasMatch());
    QCOMPARE(bytes, message_bytes(id.captured(1).toLatin1(), row.element));
}

void TestVocabulary::leads_every_reply_to_its_callback_data()
{
    add_commands();
}

/// The wire text of a reply with its samples.
static QByteArray reply_text(QString const &name, AString const &xid)
{
    for (MessageRow const &row : message_rows()) {
        if (QString::fromUtf8(row.name)
            == QLatin1String("reply ") + name + QLatin1String(", whole"))
            return QByteArray(row.text).replace(
                "<xid>7</xid>", "<xid>" + QByteArray::fromStdString(xid) + "</xid>");
    }
    return {};
}

void TestVocabulary::leads_every_reply_to_its_callback()
{
    QFETCH(int, at);
    CommandRow const &row = command_rows()[static_cast<std::size_t>(at)];
    Written api;
    ReplyNotes notes;
    AString const xid = row.with_callbacks(api, notes);
    QCOMPARE(api.take(), message_bytes(QByteArray::fromStdString(xid), row.element));
    QCOMPARE(api.outstanding_commands(), 1U);
    QStringList const replies = QString::fromUtf8(row.replies).split(QLatin1Char(' '));
    for (QString const &reply : replies)
        api.parse(tree_of(reply_text(reply, xid)));
    QCOMPARE(notes.seen, replies);
    QCOMPARE(api.outstanding_commands(), 0U);

    notes.seen.clear();
    AString const failing = row.with_callbacks(api, notes);
    api.parse(tree_of(reply_text(QStringLiteral("error"), failing)));
    QCOMPARE(notes.seen, QStringList{QStringLiteral("error")});
    QCOMPARE(api.outstanding_commands(), 0U);
}

/// Typed by hand, as a wrong row of the table would agree with itself.
void TestVocabulary::ends_a_command_by_the_kind_of_reply_data()
{
    QTest::addColumn<bool>("last");
    for (char const *last : {"ok", "error", "clipexists", "one_configuration_item", "clipinfo",
             "computername", "reference_source", "video_standard", "disk_usage", "version_info",
             "compression_info", "steal_info", "channel_current_timecode", "io_latency",
             "playlist_status", "panel_event", "panel_mode_reply", "pgm_dbkey_reply"})
        QTest::newRow(last) << true;
    for (char const *more :
        {"clipid", "directory_name", "configuration_item", "melt_item", "melt_flags", "listid",
            "chaseid", "list_element", "chase_element", "metadata", "volatile_file_info"})
        QTest::newRow(more) << false;
}

void TestVocabulary::ends_a_command_by_the_kind_of_reply()
{
    QFETCH(bool, last);
    struct Oks
    {
        int count = 0;
        void ok() { ++count; }
    } oks;
    Written api;
    AString const xid = api.cmd_sync(AFunction::bind<&Oks::ok>(&oks), nullptr);
    QString const name = QString::fromUtf8(QTest::currentDataTag());
    QByteArray const text = reply_text(name, xid);
    QVERIFY(!text.isEmpty());
    api.parse(tree_of(text));
    QVERIFY(api.parsed_ok());
    QCOMPARE(api.outstanding_commands(), last ? 0U : 1U);
    api.parse(tree_of(reply_text(QStringLiteral("ok"), xid)));
    QCOMPARE(api.outstanding_commands(), 0U);
    QCOMPARE(oks.count, last && name != QLatin1String("ok") ? 0 : 1);
}

void TestVocabulary::numbers_replies_from_0_and_reports_behind_them()
{
    QCOMPARE(int(MessageId::reply_ok), 0);
    QCOMPARE(int(MessageId::reply_error), 1);
    QCOMPARE(int(MessageId::reply_clipinfo), 7);
    QCOMPARE(int(MessageId::reply_metadata), 21);
    QCOMPARE(int(MessageId::reply_pgm_dbkey_reply), 28);
    QCOMPARE(int(MessageId::report_clip_created), 29);
    QCOMPARE(int(MessageId::report_temperature), 42);
    QCOMPARE(int(MessageId::report_pgm_dbkey), 85);
    int replies = 0;
    int reports = 0;
    for (MessageRow const &row : message_rows()) {
        QByteArray const name(row.name);
        replies += name.startsWith("reply ") && name.endsWith(", whole");
        reports += name.startsWith("report ") && name.endsWith(", whole");
    }
    QCOMPARE(replies, 29);
    QCOMPARE(reports, 57);
}

void TestVocabulary::delivers_or_drops_every_message_data()
{
    QTest::addColumn<int>("at");
    for (std::size_t at = 0; at < message_rows().size(); ++at)
        QTest::newRow(message_rows()[at].name) << static_cast<int>(at);
}

void TestVocabulary::delivers_or_drops_every_message()
{
    QFETCH(int, at);
    MessageRow const &row = message_rows()[static_cast<std::size_t>(at)];
    XMLTree const parsed = tree_of(row.text);
    QVERIFY(!parsed.is_null());
    // A reader takes a short way through parsed messages.
    for (XMLTree const &message : {parsed, rebuilt(parsed)}) {
        CheckingParser parser;
        parser.options = row.options;
        parser.parse(message);
        QString const call = QString::fromUtf8(row.call);
        QCOMPARE(parser.seen, call.isEmpty() ? QStringList() : QStringList{call});
        QCOMPARE(parser.parse_error_text(), AString::from_utf8(row.error));
        QCOMPARE(parser.parsed_ok(), *row.error == 0);
        QCOMPARE(parser.parse_error_xid(),
            *row.error != 0 && message.has_tag(l1("reply")) ? l1("7") : AString());
    }
}

void TestVocabulary::reads_and_writes_every_record_data()
{
    QTest::addColumn<int>("at");
    for (std::size_t at = 0; at < record_rows().size(); ++at)
        QTest::newRow(record_rows()[at].name) << static_cast<int>(at);
}

void TestVocabulary::reads_and_writes_every_record()
{
    QFETCH(int, at);
    RecordRow const &row = record_rows()[static_cast<std::size_t>(at)];
    AString const tag = l1(row.tag);
    XMLTree const text = tree_of(row.text);
    QVERIFY(!text.is_null());
    for (XMLTree const &parent : {text, rebuilt(text), XMLTree(l1("parent"), text)}) {
        XMLTree again;
        bool is_sample = false;
        AString error;
        QCOMPARE(row.reread(parent, tag, &again, &is_sample, &error), *row.error == 0);
        QCOMPARE(error, AString::from_utf8(row.error));
        QCOMPARE(is_sample, row.is_sample);
        if (*row.error == 0)
            QCOMPARE(again.flatten(), AString::from_utf8(row.text));
    }
}

void TestVocabulary::knows_every_name_of_every_enumeration()
{
    for (EnumRow const &row : enum_rows()) {
        QCOMPARE(row.enumerator, row.value);
        QVERIFY2(row.check(row.value, row.count, row.name),
            qPrintable(
                QString::fromUtf8(row.type) + QLatin1Char(' ') + QString::fromUtf8(row.name)));
    }
}

QTEST_GUILESS_MAIN(TestVocabulary)
#include "tst_vocabulary.moc"
