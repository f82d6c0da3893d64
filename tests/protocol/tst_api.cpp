// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/pending_table_p.h"
#include "tests/protocol/protocol_texts.h"
#include "tests/support/assert_log.h"

#include <QTest>
#include <algorithm>
#include <atomic>
#include <mutex>
#include <numeric>
#include <random>
#include <thread>
#include <vector>

using namespace VCTP3;

/// An API whose far end is the test.
class LoopAPI : public API
{
public:
    void answer(AString const &xid, char const *reply)
    {
        parse(tree_of(QByteArray(
            "<reply><xid>" + QByteArray::fromStdString(xid) + "</xid>" + reply + "</reply>")));
    }
    void ok(AString const &xid) { answer(xid, "<ok/>"); }
    void clip(AString const &xid, char const *id)
    {
        answer(xid, "<clipid><ClipID>" + QByteArray(id) + "</ClipID></clipid>");
    }
    void error(AString const &xid)
    {
        answer(xid,
            "<error><ErrorMessage>bad</ErrorMessage><ErrorCode>clipnotfound</ErrorCode></error>");
    }

    /// The id of the last command that was written.
    AString last_xid() const
    {
        std::lock_guard const lock(mutex);
        return tree_of(written).get_subnode(l1("xid")).get_content();
    }

    /// As a transport that is down: every write fails all.
    std::atomic<bool> down{false};

protected:
    void send(void const *data, unsigned long long size) override
    {
        if (down) {
            fail_all_pending_commands();
            return;
        }
        std::lock_guard const lock(mutex);
        QByteArray const bytes(static_cast<char const *>(data), static_cast<int>(size));
        written = bytes.startsWith("<cmd>") ? bytes : written + bytes;
    }

private:
    mutable std::mutex mutex;
    QByteArray written;
};

/// Notes what a command is answered.
struct Answers
{
    QStringList calls;

    AFunction ok() { return AFunction::bind<&Answers::note_ok>(this); }
    AFunction1<AString> text() { return AFunction1<AString>::bind<&Answers::note_text>(this); }
    AFunction2<AString, ErrorCode> error()
    {
        return AFunction2<AString, ErrorCode>::bind<&Answers::note_error>(this);
    }
    QStringList take()
    {
        QStringList result;
        result.swap(calls);
        return result;
    }

    void note_ok() { calls.append(QStringLiteral("ok")); }
    void note_text(AString const &text) { calls.append(QString(text)); }
    void note_error(AString const &text, ErrorCode code)
    {
        calls.append(QString(text) + QLatin1Char('|') + QString(ErrorCode_to_string(code)));
    }
};

static QString const failed = QStringLiteral("Failing all outstanding commands|general");

class TestAPI : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void begins_with_the_id_1(); // in the process, so in front of all others
    void answers_once();
    void needs_no_callbacks();
    void takes_null_callbacks_for_none();
    void numbers_all_commands_of_the_process();
    void draws_again_where_a_number_is_taken();
    void tells_ids_apart_by_every_character();
    void streams_until_ok();
    void ends_a_stream_with_an_error();
    void ends_with_a_data_reply_where_there_is_no_ok();
    void hands_over_all_values();
    void finds_an_id_wherever_it_stands_in_the_message();
    void ignores_unknown_and_odd_ids();
    void ignores_a_reply_of_another_kind_but_ends_with_it();
    void stays_open_after_a_bad_reply();
    void forgets();
    void keeps_the_record_while_its_callback_runs();
    void ends_once_when_its_callback_fails_all();
    void what_comes_from_within_the_last_callback_is_too_late();
    void a_partial_answer_may_end_its_own_command();
    void a_callback_may_forget_its_own_command();
    void commands_may_follow_from_callbacks();

    void fails_all_in_the_order_of_the_ids_data();
    void fails_all_in_the_order_of_the_ids();
    void keeps_the_record_while_its_error_callback_runs();
    void a_reply_from_within_an_error_callback_comes_too_late();
    void fails_nothing_when_empty();
    void fails_what_its_callbacks_send();
    void stops_when_callbacks_never_end();
    void fails_a_command_that_meets_a_dead_transport();
    void does_not_fail_recursively();

    void answers_10000_commands_in_any_order();
    void serves_8_threads();
    void fails_each_command_of_8_threads_once();
};

void TestAPI::begins_with_the_id_1()
{
    LoopAPI api;
    Answers answers;
    QCOMPARE(api.cmd_sync(answers.ok(), answers.error()), l1("1"));
}

void TestAPI::answers_once()
{
    LoopAPI api;
    Answers answers;
    AString const xid = api.cmd_sync(answers.ok(), answers.error());
    QCOMPARE(api.last_xid(), xid);
    QCOMPARE(api.outstanding_commands(), 1U);
    api.ok(xid);
    QCOMPARE(answers.take(), QStringList{QStringLiteral("ok")});
    QCOMPARE(api.outstanding_commands(), 0U);
    api.ok(xid);
    api.error(xid);
    QVERIFY(answers.take().isEmpty());
}

void TestAPI::needs_no_callbacks()
{
    LoopAPI api;
    api.cmd_sync();
    QCOMPARE(api.outstanding_commands(), 0U);
    AString const xid = api.last_xid();
    QVERIFY(xid.has_prefix(l1("none")));
    QVERIFY(xid.remove_front(4).to_unsigned(nullptr));
    api.ok(xid);
    QVERIFY(api.parsed_ok());
}

void TestAPI::takes_null_callbacks_for_none()
{
    LoopAPI api;
    Answers answers;
    AString const none = api.cmd_sync(AFunction(), AFunction2<AString, ErrorCode>());
    QVERIFY(none.has_prefix(l1("none")));
    QCOMPARE(none, api.last_xid());
    QCOMPARE(api.outstanding_commands(), 0U);
    AString const half = api.cmd_sync(nullptr, answers.error());
    QCOMPARE(api.outstanding_commands(), 1U);
    api.ok(half);
    QCOMPARE(api.outstanding_commands(), 0U);
    QVERIFY(answers.take().isEmpty());
}

void TestAPI::numbers_all_commands_of_the_process()
{
    LoopAPI one;
    LoopAPI other;
    Answers answers;
    PendingTable::set_last_number(0);
    QCOMPARE(one.cmd_sync(answers.ok(), answers.error()), l1("1"));
    QCOMPARE(other.cmd_sync(answers.ok(), answers.error()), l1("2"));
    other.cmd_sync();
    QCOMPARE(other.last_xid(), l1("none3"));
    QCOMPARE(one.cmd_sync(answers.ok(), answers.error()), l1("4"));
}

void TestAPI::draws_again_where_a_number_is_taken()
{
    LoopAPI api;
    Answers answers;
    PendingTable::set_last_number(~0U - 1);
    QCOMPARE(api.cmd_sync(answers.ok(), answers.error()), l1("4294967295"));
    QCOMPARE(api.cmd_sync(answers.ok(), answers.error()), l1("0"));
    PendingTable::set_last_number(~0U - 1);
    QCOMPARE(api.cmd_sync(answers.ok(), answers.error()), l1("1"));
    QCOMPARE(api.outstanding_commands(), 3U);
}

void TestAPI::tells_ids_apart_by_every_character()
{
    LoopAPI api;
    std::vector<std::uint32_t> numbers{1111111111U};
    for (std::uint32_t place = 1; numbers.size() <= 10; place *= 10)
        numbers.push_back(numbers.front() + place);
    std::vector<Answers> answers(numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        PendingTable::set_last_number(numbers[i] - 1);
        QCOMPARE(
            api.cmd_sync(answers[i].ok(), answers[i].error()), AString::from_uint32_t(numbers[i]));
    }
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        api.ok(AString::from_uint32_t(numbers[i]));
        for (std::size_t other = 0; other < numbers.size(); ++other)
            QCOMPARE(answers[other].take().size(), other == i ? 1 : 0);
    }
}

void TestAPI::streams_until_ok()
{
    LoopAPI api;
    Answers answers;
    AString const xid = api.cmd_download_clipids(answers.ok(), answers.text(), answers.error());
    api.clip(xid, "a");
    api.clip(xid, "b");
    api.clip(xid, "c");
    QCOMPARE(api.outstanding_commands(), 1U);
    api.ok(xid);
    QCOMPARE(answers.take().join(QLatin1Char(' ')), QStringLiteral("a b c ok"));
    QCOMPARE(api.outstanding_commands(), 0U);

    AString const empty
        = api.cmd_download_clipids(l1("dir"), answers.ok(), answers.text(), answers.error());
    api.ok(empty);
    QCOMPARE(answers.take(), QStringList{QStringLiteral("ok")});
}

void TestAPI::ends_a_stream_with_an_error()
{
    LoopAPI api;
    Answers answers;
    AString const xid = api.cmd_download_clipids(answers.ok(), answers.text(), answers.error());
    api.clip(xid, "a");
    api.clip(xid, "b");
    api.error(xid);
    api.ok(xid);
    QCOMPARE(answers.take().join(QLatin1Char(' ')), QStringLiteral("a b bad|clipnotfound"));
    QCOMPARE(api.outstanding_commands(), 0U);
}

void TestAPI::ends_with_a_data_reply_where_there_is_no_ok()
{
    LoopAPI api;
    Answers answers;
    struct Exists
    {
        QString line;
        void note(AString const &id, bool exists)
        {
            line = QString(id) + (exists ? QLatin1String(" yes") : QLatin1String(" no"));
        }
    } exists;
    auto const got = AFunction2<AString, bool>::bind<&Exists::note>(&exists);
    AString const xid = api.cmd_clip_exists(l1("c"), got, answers.error());
    api.answer(xid, "<clipexists><ClipID>c</ClipID><Exists>false</Exists></clipexists>");
    QCOMPARE(exists.line, QStringLiteral("c no"));
    QCOMPARE(api.outstanding_commands(), 0U);

    AString const error = api.cmd_clip_exists(l1("c"), got, answers.error());
    api.error(error);
    QCOMPARE(answers.take(), QStringList{QStringLiteral("bad|clipnotfound")});
}

void TestAPI::hands_over_all_values()
{
    struct Usage
    {
        unsigned long long total = 0;
        unsigned long long available = 0;
        unsigned int field = 0;
        void note(unsigned long long t, unsigned long long a, unsigned int f)
        {
            total = t;
            available = a;
            field = f;
        }
    } usage;
    LoopAPI api;
    AString const xid = api.cmd_get_disk_usage(
        AFunction3<unsigned long long, unsigned long long, unsigned int>::bind<&Usage::note>(
            &usage),
        AFunction2<AString, ErrorCode>());
    api.answer(xid,
        "<disk_usage><FieldSize>3</FieldSize><AvailableDiskSpace>2</AvailableDiskSpace>"
        "<TotalDiskSpace>1</TotalDiskSpace></disk_usage>");
    QCOMPARE(usage.total, 1ULL);
    QCOMPARE(usage.available, 2ULL);
    QCOMPARE(usage.field, 3U);
}

void TestAPI::finds_an_id_wherever_it_stands_in_the_message()
{
    PendingTable::set_last_number(1000000);
    LoopAPI api;
    Answers answers;
    // Texts are in runs of 256 characters, so some of these ids lie across two of them.
    for (int before = 0; before < 300; ++before) {
        QByteArray const xid
            = QByteArray::fromStdString(api.cmd_sync(answers.ok(), answers.error()));
        api.parse(tree_of(QByteArray("<reply><unknown>" + QByteArray(before, 'x')
            + "</unknown><xid>" + xid + "</xid><ok/></reply>")));
        QCOMPARE(answers.take(), QStringList{QStringLiteral("ok")});
    }
}

void TestAPI::ignores_unknown_and_odd_ids()
{
    LoopAPI api;
    Answers answers;
    AString const xid = api.cmd_sync(answers.ok(), answers.error());
    AString const odd[] = {AString(), l1("0") + xid, xid + l1(" "), l1("none1"), xid + l1("0"),
        AString::rep(l1("9"), 17), AString::rep(l1("9"), 16), AString::rep(l1("9"), 300),
        l1("\xe9")};
    for (AString const &id : odd)
        api.ok(id);
    // A stream cannot carry a zero, a tree can.
    AString const with_zero = xid + AString(AChar());
    XMLTree reply(l1("reply"), XMLTree(l1("xid"), with_zero));
    reply.add_subnode(XMLTree(l1("ok")));
    api.parse(reply);
    QVERIFY(api.parsed_ok());
    QVERIFY(!api.forget_transaction(with_zero));
    QCOMPARE(api.outstanding_commands(), 1U);
    QVERIFY(answers.take().isEmpty());
    QVERIFY(api.forget_transaction(xid));
}

void TestAPI::ignores_a_reply_of_another_kind_but_ends_with_it()
{
    LoopAPI api;
    Answers answers;
    AString const xid = api.cmd_sync(answers.ok(), answers.error());
    api.clip(xid, "a");
    QCOMPARE(api.outstanding_commands(), 1U);
    api.answer(xid, "<computername><ComputerName>n</ComputerName></computername>");
    QCOMPARE(api.outstanding_commands(), 0U);
    QVERIFY(answers.take().isEmpty());
}

void TestAPI::stays_open_after_a_bad_reply()
{
    LoopAPI api;
    Answers answers;
    AString const xid = api.cmd_get_computer_name(answers.text(), answers.error());
    api.answer(xid, "<computername/>");
    QCOMPARE(api.parse_error_xid(), xid);
    QCOMPARE(api.outstanding_commands(), 1U);
    api.answer(xid, "<computername><ComputerName>n</ComputerName></computername>");
    QCOMPARE(answers.take(), QStringList{QStringLiteral("n")});
}

void TestAPI::forgets()
{
    LoopAPI api;
    Answers answers;
    AString const xid = api.cmd_sync(answers.ok(), answers.error());
    QVERIFY(api.forget_transaction(xid));
    QVERIFY(!api.forget_transaction(xid));
    api.ok(xid);
    api.fail_all_pending_commands();
    QVERIFY(answers.take().isEmpty());
}

/// Does something with an API in a callback.
struct Actor
{
    LoopAPI *api;
    AString xid;
    unsigned int outstanding = 99;
    int oks = 0;
    int errors = 0;
    unsigned int more = 0;

    void count_ok()
    {
        ++oks;
        outstanding = api->outstanding_commands();
    }
    void fail_all()
    {
        ++oks;
        api->fail_all_pending_commands();
        outstanding = api->outstanding_commands();
    }
    void send_another()
    {
        ++oks;
        if (more-- > 0)
            xid = api->cmd_sync(
                AFunction::bind<&Actor::send_another>(this), AFunction2<AString, ErrorCode>());
    }
    void count_error(AString const &, ErrorCode) { ++errors; }
    void send_after_error(AString const &, ErrorCode)
    {
        ++errors;
        if (more-- > 0)
            xid = api->cmd_sync(AFunction(), error());
    }
    AFunction2<AString, ErrorCode> error()
    {
        return AFunction2<AString, ErrorCode>::bind<&Actor::send_after_error>(this);
    }
};

void TestAPI::keeps_the_record_while_its_callback_runs()
{
    LoopAPI api;
    Actor actor{&api, {}};
    AString const xid = api.cmd_sync(AFunction::bind<&Actor::count_ok>(&actor), nullptr);
    api.ok(xid);
    QCOMPARE(actor.outstanding, 1U);
    QCOMPARE(api.outstanding_commands(), 0U);
}

void TestAPI::ends_once_when_its_callback_fails_all()
{
    LoopAPI api;
    Actor actor{&api, {}};
    Answers other;
    api.cmd_sync(other.ok(), other.error());
    AString const xid = api.cmd_sync(AFunction::bind<&Actor::fail_all>(&actor),
        AFunction2<AString, ErrorCode>::bind<&Actor::count_error>(&actor));
    api.ok(xid);
    QCOMPARE(actor.oks, 1);
    QCOMPARE(actor.errors, 0);
    QCOMPARE(actor.outstanding, 0U);
    QCOMPARE(other.take(), QStringList{failed});
}

/// Handles answers to one command, and does something at the first of them.
struct Inner
{
    LoopAPI *api;
    void (*at_first)(Inner &inner);
    AString xid;
    QStringList calls;
    QList<bool> forgotten;
    QList<unsigned int> outstanding;

    void send()
    {
        xid = api->cmd_download_clipids(AFunction::bind<&Inner::ok>(this),
            AFunction1<AString>::bind<&Inner::clip>(this),
            AFunction2<AString, ErrorCode>::bind<&Inner::error>(this));
    }
    void ok() { note(QStringLiteral("ok")); }
    void clip(AString const &id) { note(QString(id)); }
    void error(AString const &, ErrorCode) { note(QStringLiteral("error")); }
    void note(QString const &call)
    {
        calls.append(call);
        if (calls.size() == 1)
            at_first(*this);
        outstanding.append(api->outstanding_commands());
    }
};

void TestAPI::what_comes_from_within_the_last_callback_is_too_late()
{
    auto const answer_again = [](Inner &inner) {
        inner.api->ok(inner.xid);
        inner.api->clip(inner.xid, "late");
        inner.api->error(inner.xid);
        inner.api->answer(inner.xid, "<io_latency><ClipPosition>1</ClipPosition></io_latency>");
    };
    LoopAPI api;
    Inner by_ok{&api, answer_again, {}, {}, {}, {}};
    by_ok.send();
    api.ok(by_ok.xid);
    QCOMPARE(by_ok.calls, QStringList{QStringLiteral("ok")});
    QCOMPARE(by_ok.outstanding, QList<unsigned int>{1});
    Inner by_error{&api, answer_again, {}, {}, {}, {}};
    by_error.send();
    api.error(by_error.xid);
    QCOMPARE(by_error.calls, QStringList{QStringLiteral("error")});
    QCOMPARE(api.outstanding_commands(), 0U);
}

void TestAPI::a_partial_answer_may_end_its_own_command()
{
    LoopAPI api;
    Inner inner{&api, [](Inner &in) { in.api->ok(in.xid); }, {}, {}, {}, {}};
    inner.send();
    api.clip(inner.xid, "a");
    QCOMPARE(inner.calls, (QStringList{QStringLiteral("a"), QStringLiteral("ok")}));
    QCOMPARE(inner.outstanding, (QList<unsigned int>{1, 0}));
    api.clip(inner.xid, "b");
    api.ok(inner.xid);
    QCOMPARE(inner.calls.size(), 2);

    Inner failing{&api, [](Inner &in) { in.api->fail_all_pending_commands(); }, {}, {}, {}, {}};
    failing.send();
    api.clip(failing.xid, "a");
    QCOMPARE(failing.calls, (QStringList{QStringLiteral("a"), QStringLiteral("error")}));
    api.ok(failing.xid);
    QCOMPARE(failing.calls.size(), 2);
}

void TestAPI::a_callback_may_forget_its_own_command()
{
    auto const forget
        = [](Inner &inner) { inner.forgotten.append(inner.api->forget_transaction(inner.xid)); };
    LoopAPI api;
    Inner last{&api, forget, {}, {}, {}, {}};
    last.send();
    api.ok(last.xid);
    QCOMPARE(last.forgotten, QList<bool>{true});
    QCOMPARE(last.outstanding, QList<unsigned int>{0});
    QVERIFY(!api.forget_transaction(last.xid));

    Inner partial{&api, forget, {}, {}, {}, {}};
    partial.send();
    api.clip(partial.xid, "a");
    api.clip(partial.xid, "b");
    api.ok(partial.xid);
    api.fail_all_pending_commands();
    QCOMPARE(partial.calls, QStringList{QStringLiteral("a")});
    QCOMPARE(partial.outstanding, QList<unsigned int>{0});
}

void TestAPI::commands_may_follow_from_callbacks()
{
    LoopAPI api;
    Actor actor{&api, {}};
    actor.more = 100;
    actor.send_another();
    while (api.outstanding_commands() > 0)
        api.ok(AString(actor.xid));
    QCOMPARE(actor.oks, 101);
}

void TestAPI::fails_all_in_the_order_of_the_ids_data()
{
    // Texts have an order of their own.
    using Numbers = QList<unsigned int>;
    QTest::addColumn<Numbers>("sent");
    QTest::addColumn<Numbers>("failed");
    QTest::newRow("one and two digits") << Numbers{8, 9, 10, 11, 12} << Numbers{10, 11, 12, 8, 9};
    QTest::newRow("around 8 digits") << Numbers{9999999, 10000000, 99999999, 100000000, 123456789}
                                     << Numbers{10000000, 100000000, 123456789, 9999999, 99999999};
    QTest::newRow("up to 10 digits") << Numbers{9, 99, 999999999, 1000000000, 1000000001, ~0U}
                                     << Numbers{1000000000, 1000000001, ~0U, 9, 99, 999999999};
    QTest::newRow("around the wrap")
        << Numbers{~0U - 1, ~0U, 0, 1, 2} << Numbers{0, 1, 2, ~0U - 1, ~0U};
}

void TestAPI::fails_all_in_the_order_of_the_ids()
{
    struct Note
    {
        unsigned int number;
        QList<unsigned int> *order;
        void fail(AString const &, ErrorCode) { order->append(number); }
    };
    QFETCH(QList<unsigned int>, sent);
    LoopAPI api;
    QList<unsigned int> order;
    std::vector<Note> notes;
    for (unsigned int number : sent)
        notes.push_back({number, &order});
    for (Note &note : notes) {
        PendingTable::set_last_number(note.number - 1);
        api.cmd_sync(AFunction(), AFunction2<AString, ErrorCode>::bind<&Note::fail>(&note));
    }
    api.fail_all_pending_commands();
    QTEST(order, "failed");
    QCOMPARE(api.outstanding_commands(), 0U);
}

void TestAPI::keeps_the_record_while_its_error_callback_runs()
{
    struct Looker
    {
        LoopAPI *api;
        AString xid;
        QList<unsigned int> outstanding;
        QList<bool> forgotten;
        void look(AString const &, ErrorCode)
        {
            outstanding.append(api->outstanding_commands());
            forgotten.append(api->forget_transaction(xid));
            outstanding.append(api->outstanding_commands());
        }
    };
    LoopAPI api;
    Looker looker{&api, {}, {}, {}};
    auto const look = AFunction2<AString, ErrorCode>::bind<&Looker::look>(&looker);
    looker.xid = api.cmd_sync(AFunction(), look);
    api.fail_all_pending_commands();
    QCOMPARE(looker.outstanding, (QList<unsigned int>{1, 0}));
    QCOMPARE(looker.forgotten, QList<bool>{true});
    QCOMPARE(api.outstanding_commands(), 0U);
}

void TestAPI::a_reply_from_within_an_error_callback_comes_too_late()
{
    struct Replier
    {
        LoopAPI *api;
        AString xid;
        int oks = 0;
        int errors = 0;
        void ok() { ++oks; }
        void failed(AString const &, ErrorCode)
        {
            ++errors;
            api->ok(xid);
        }
    };
    LoopAPI api;
    Replier replier{&api, {}};
    replier.xid = api.cmd_sync(AFunction::bind<&Replier::ok>(&replier),
        AFunction2<AString, ErrorCode>::bind<&Replier::failed>(&replier));
    api.fail_all_pending_commands();
    QCOMPARE(replier.oks, 0);
    QCOMPARE(replier.errors, 1);
}

void TestAPI::fails_nothing_when_empty()
{
    LoopAPI api;
    api.fail_all_pending_commands();
    Answers answers;
    api.cmd_sync(answers.ok(), AFunction2<AString, ErrorCode>());
    api.fail_all_pending_commands(); // without an error callback
    QVERIFY(answers.take().isEmpty());
    QCOMPARE(api.outstanding_commands(), 0U);
}

void TestAPI::fails_what_its_callbacks_send()
{
    LoopAPI api;
    Actor actor{&api, {}};
    actor.more = 3;
    api.cmd_sync(AFunction(), actor.error());
    api.fail_all_pending_commands();
    QCOMPARE(actor.errors, 4);
    QCOMPARE(api.outstanding_commands(), 0U);
}

void TestAPI::stops_when_callbacks_never_end()
{
    LoopAPI api;
    AssertLog asserts;
    Actor actor{&api, {}};
    actor.more = ~0U;
    api.down = true;
    api.cmd_sync(AFunction(), actor.error());
    QCOMPARE(asserts.take(),
        QStringList{QStringLiteral("fail_all_pending_commands: error callbacks keep sending")});
    QCOMPARE(actor.errors, int(PendingTable::most_made_while_failing) + 1);
    QCOMPARE(api.outstanding_commands(), 1U);
    actor.more = 0;
    api.fail_all_pending_commands();
    QCOMPARE(api.outstanding_commands(), 0U);
}

void TestAPI::fails_a_command_that_meets_a_dead_transport()
{
    LoopAPI api;
    Answers answers;
    api.cmd_sync(answers.ok(), answers.error());
    api.down = true;
    api.cmd_sync(answers.ok(), answers.error());
    QCOMPARE(answers.take(), (QStringList{failed, failed}));
    api.down = false;
    api.ok(api.cmd_sync(answers.ok(), answers.error()));
    QCOMPARE(answers.take(), QStringList{QStringLiteral("ok")});
}

void TestAPI::does_not_fail_recursively()
{
    struct Nested
    {
        LoopAPI *api;
        int depth = 0;
        int deepest = 0;
        void failed(AString const &, ErrorCode)
        {
            deepest = std::max(deepest, ++depth);
            api->fail_all_pending_commands();
            --depth;
        }
    };
    LoopAPI api;
    Nested nested{&api};
    for (int i = 0; i < 3; ++i)
        api.cmd_sync(AFunction(), AFunction2<AString, ErrorCode>::bind<&Nested::failed>(&nested));
    api.fail_all_pending_commands();
    QCOMPARE(nested.deepest, 1);
    QCOMPARE(api.outstanding_commands(), 0U);
}

/// Knows how often a command was answered.
struct Counter
{
    std::atomic<int> oks{0};
    std::atomic<int> errors{0};
    void ok() { ++oks; }
    void error(AString const &text, ErrorCode code)
    {
        if (text == l1("Failing all outstanding commands") && code == ErrorCode::general)
            ++errors;
    }
    AString send(API *api)
    {
        return api->cmd_sync(AFunction::bind<&Counter::ok>(this),
            AFunction2<AString, ErrorCode>::bind<&Counter::error>(this));
    }
};

void TestAPI::answers_10000_commands_in_any_order()
{
    LoopAPI api;
    std::vector<Counter> counters(10000);
    std::vector<AString> xids;
    for (Counter &counter : counters)
        xids.push_back(counter.send(&api));
    QCOMPARE(api.outstanding_commands(), 10000U);
    std::vector<std::size_t> order(counters.size());
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), std::mt19937(4));
    for (std::size_t at : order) {
        QCOMPARE(counters[at].oks.load(), 0);
        api.ok(xids[at]);
        QCOMPARE(counters[at].oks.load(), 1);
    }
    QCOMPARE(api.outstanding_commands(), 0U);
    QVERIFY(std::all_of(counters.begin(), counters.end(),
        [](Counter const &c) { return c.oks == 1 && c.errors == 0; }));
}

void TestAPI::serves_8_threads()
{
    LoopAPI api;
    std::vector<Counter> counters(8);
    std::vector<std::thread> threads;
    std::mutex mutex;
    std::vector<AString> sent;
    for (Counter &counter : counters) {
        threads.emplace_back([&] {
            for (int i = 0; i < 200; ++i) {
                AString const xid = counter.send(&api);
                std::lock_guard const lock(mutex);
                sent.push_back(xid);
            }
        });
    }
    auto const next = [&sent, &mutex](std::size_t at) {
        std::lock_guard const lock(mutex);
        return at < sent.size() ? sent[at] : AString();
    };
    for (std::size_t answered = 0; answered < 1600;) {
        AString const xid = next(answered);
        if (xid.empty()) {
            std::this_thread::yield();
            continue;
        }
        api.ok(xid);
        ++answered;
    }
    for (std::thread &thread : threads)
        thread.join();
    for (Counter const &counter : counters)
        QCOMPARE(counter.oks.load(), 200);
    QCOMPARE(api.outstanding_commands(), 0U);
}

void TestAPI::fails_each_command_of_8_threads_once()
{
    LoopAPI api;
    api.down = true;
    std::vector<Counter> counters(8);
    std::vector<std::thread> threads;
    for (Counter &counter : counters) {
        threads.emplace_back([&] {
            for (int i = 0; i < 500; ++i)
                counter.send(&api);
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    for (Counter const &counter : counters) {
        QCOMPARE(counter.errors.load(), 500);
        QCOMPARE(counter.oks.load(), 0);
    }
    QCOMPARE(api.outstanding_commands(), 0U);
}

QTEST_GUILESS_MAIN(TestAPI)
#include "tst_api.moc"
