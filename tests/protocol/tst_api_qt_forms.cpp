// SPDX-License-Identifier: Apache-2.0
#include "tests/protocol/link_up.h"
#include "tests/protocol/message_rows.h"
#include "tests/protocol/qt_rows.h"
#include "tests/support/patience.h"
#include "tests/support/scripted_server.h"

#include <QMetaMethod>
#include <QTest>
#include <set>

using namespace VCTP3;

/// Keeps what is written. While it is broken every write fails all commands in flight.
class WrittenQt : public APIQt
{
public:
    /// What is written, with 7 for each transaction id.
    QByteArray take()
    {
        qsizetype const begin = bytes.indexOf("<xid>") + 5;
        bytes.replace(begin, bytes.indexOf("</xid>") - begin, "7");
        QByteArray result;
        result.swap(bytes);
        return result;
    }
    bool broken = false;

protected:
    void send(void const *data, unsigned long long size) override
    {
        bytes += QByteArray(static_cast<char const *>(data), static_cast<int>(size));
        if (broken)
            fail_all_pending_commands();
    }

private:
    QByteArray bytes;
};

/// Notes of each message whether it has been read ahead.
class AheadQt : public APIQt
{
public:
    QList<bool> ahead;

protected:
    bool parse_intercept(XMLTree const &message) override
    {
        ahead.append(is_read_ahead());
        return APIQt::parse_intercept(message);
    }
};

/// The names of the report signals that were emitted, in order.
class ReportNotes : public QObject
{
    Q_OBJECT

public:
    explicit ReportNotes(QObject *of)
    {
        QMetaObject const &signals_of = *of->metaObject();
        int const slot = metaObject()->indexOfSlot("note()");
        for (int i = 0; i < signals_of.methodCount(); ++i) {
            if (signals_of.method(i).name().startsWith("report_"))
                QMetaObject::connect(of, i, this, slot);
        }
    }
    QStringList seen;

private Q_SLOTS:
    void note()
    {
        seen.append(
            QString::fromLatin1(sender()->metaObject()->method(senderSignalIndex()).name()));
    }
};

class TestAPIQtForms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writes_every_form_data();
    void writes_every_form();
    void leads_every_reply_to_its_signal();
    void leads_every_report_to_its_signal_or_drops_it_data();
    void leads_every_report_to_its_signal_or_drops_it();
};

void TestAPIQtForms::writes_every_form_data()
{
    QTest::addColumn<int>("at");
    for (std::size_t at = 0; at < qt_rows().size(); ++at)
        QTest::newRow(qt_rows()[at].name) << static_cast<int>(at);
}

void TestAPIQtForms::writes_every_form()
{
    QFETCH(int, at);
    QtRow const &row = qt_rows()[static_cast<std::size_t>(at)];
    std::vector<QObject *> list;
    ReplyNotes notes;
    std::shared_ptr<Groups> const groups = make_groups(&list, &notes);
    QCOMPARE(QByteArray(list[row.group - 1]->metaObject()->className()),
        "VCTP3::CallbackGroup_set" + QByteArray::number(row.group));

    WrittenQt api;
    QByteArray const expected
        = "<cmd>\r\n<xid>7</xid>\r\n" + QByteArray(row.element) + "\r\n</cmd>";
    row.without(api);
    QCOMPARE(api.take(), expected);
    row.with_group(api, *groups);
    QCOMPARE(api.take(), expected);
    QCOMPARE(notes.seen.size(), 0);

    QStringList const failed{QStringLiteral("wrong error")}; // not the text of the samples
    api.fail_all_pending_commands();
    QCOMPARE(notes.seen, failed);
    notes.seen.clear();
    api.broken = true;
    row.with_group(api, *groups);
    QCOMPARE(notes.seen, failed);
}

/// The reply with its samples, to that command.
static QByteArray reply_text(QByteArray const &name, QByteArray const &command)
{
    for (MessageRow const &row : message_rows()) {
        if (QByteArray(row.name) == "reply " + name + ", whole")
            return QByteArray(row.text).replace(
                "<xid>7</xid>", "<xid>" + ScriptedServer::xid(command) + "</xid>");
    }
    return {};
}

void TestAPIQtForms::leads_every_reply_to_its_signal()
{
    ScriptedServer server;
    APIQt api;
    QVERIFY(link_up(&api, server));
    std::vector<QObject *> list;
    ReplyNotes notes;
    std::shared_ptr<Groups> const groups = make_groups(&list, &notes);

    std::set<unsigned int> done;
    for (QtRow const &row : qt_rows()) {
        if (!done.insert(row.group).second)
            continue; // one command for each group
        QByteArrayList const replies = QByteArray(row.replies).split(' ');
        server.answer_with([replies](QByteArray const &command) {
            QByteArray all;
            for (QByteArray const &reply : replies)
                all += reply_text(reply, command);
            return all;
        });
        row.with_group(api, *groups);
        QTRY_COMPARE(notes.seen.size(), replies.size());
        QCOMPARE(notes.seen.join(QLatin1Char(' ')), QString::fromUtf8(row.replies));
        notes.seen.clear();

        server.answer_with([](QByteArray const &command) { return reply_text("error", command); });
        row.with_group(api, *groups);
        QTRY_COMPARE(notes.seen, QStringList{QStringLiteral("error")});
        notes.seen.clear();
    }
    QCOMPARE(done.size(), list.size());
}

void TestAPIQtForms::leads_every_report_to_its_signal_or_drops_it_data()
{
    QTest::addColumn<bool>("with_hook");
    QTest::newRow("read on the parser's thread") << false;
    QTest::newRow("a hook sees it being read") << true;
}

/// Whether a worker of its own reads the report, by the name of its signal.
static bool comes_at_field_rate(QByteArray const &signal)
{
    return signal == "report_ltc_timecode" || signal.endsWith("_peak")
        || (signal.startsWith("report_channel_") && signal.endsWith("_timecode"));
}

void TestAPIQtForms::leads_every_report_to_its_signal_or_drops_it()
{
    QFETCH(bool, with_hook);
    ScriptedServer server;
    AheadQt api;
    ReportNotes notes(&api);
    unsigned int hooked = 0;
    if (with_hook)
        api.set_receive_debug_hook(
            {[](void *count, XMLTree const &) { ++*static_cast<unsigned int *>(count); }, &hooked});
    api.connect_to_server(server.address());
    QTRY_COMPARE(server.connections_open(), 1);

    unsigned int said = 0;
    unsigned int dropped = 0;
    QStringList expected;
    QList<bool> ahead;
    AString last_reason;
    for (MessageRow const &row : message_rows()) {
        if (!QByteArray(row.name).startsWith("report "))
            continue;
        server.say(row.text);
        ++said;
        ahead.append(*row.call != 0 && !comes_at_field_rate(row.call));
        if (*row.call != 0)
            expected.append(QString::fromUtf8(row.call));
        if (*row.error != 0) {
            ++dropped;
            last_reason = AString::from_utf8(row.error);
        }
    }
    QVERIFY(expected.size() >= 57 && dropped >= 57);
    QTRY_COMPARE(api.traffic().messages_received, said);
    QCOMPARE(notes.seen, expected);
    QCOMPARE(api.ahead, ahead);
    QCOMPARE(api.traffic().messages_dropped, dropped);
    QCOMPARE(api.traffic().last_drop_reason, last_reason);
    QCOMPARE(hooked, with_hook ? said : 0U);
}

QTEST_GUILESS_MAIN(TestAPIQtForms)
#include "tst_api_qt_forms.moc"
