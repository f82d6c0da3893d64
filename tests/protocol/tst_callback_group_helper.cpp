// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/callback_group_helper.h"
#include "tests/support/assert_log.h"

#include <QSignalSpy>
#include <QTest>
#include <atomic>
#include <memory>
#include <random>
#include <thread>

using VCTP3::CallbackGroupHelper;

/// A group of the shape that streams: texts, then `ok`; or `error` in place of either.
class TextGroup : public QObject
{
    Q_OBJECT

public:
    TextGroup()
        : helper(new CallbackGroupHelper(this))
    {
        helper->bind_streaming<&TextGroup::send_text>(&text);
        helper->bind_final<&TextGroup::send_ok>(&ok);
        helper->bind_final<&TextGroup::send_error>(&error);
    }
    ~TextGroup() override { helper->detach(); }

    void addref() const { helper->addref(); }
    void send_text(QString const &value) { Q_EMIT sig_text(value); }
    void send_ok() { Q_EMIT sig_ok(); }
    void send_error(QString const &reason, int code) { Q_EMIT sig_error(reason, code); }

    AFunction1<QString> text;
    AFunction ok;
    AFunction2<QString, int> error;

Q_SIGNALS:
    void sig_text(QString const &value);
    void sig_ok();
    void sig_error(QString const &reason, int code);

private:
    CallbackGroupHelper *helper;
};

class TestCallbackGroupHelper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answers_become_signals();
    void two_commands_give_two_ok();
    void an_answer_after_the_groups_end_is_dropped();
    void a_slot_may_delete_its_group_data();
    void a_slot_may_delete_its_group();
    void a_slot_may_end_the_command_and_delete_the_group();
    void a_muted_thread_hears_nothing();
    void mutes_count_and_stay_in_their_thread();
    void a_group_in_another_thread_may_go_at_any_time();
    void a_null_group_asserts();
    void an_answer_too_many_takes_the_groups_reference_and_asserts();
};

void TestCallbackGroupHelper::answers_become_signals()
{
    TextGroup group;
    QSignalSpy texts(&group, &TextGroup::sig_text);
    QSignalSpy oks(&group, &TextGroup::sig_ok);
    QSignalSpy errors(&group, &TextGroup::sig_error);

    group.addref();
    group.text(QStringLiteral("a"));
    group.text(QStringLiteral("b"));
    group.ok();
    QCOMPARE(texts.count(), 2);
    QCOMPARE(texts[1][0].toString(), QStringLiteral("b"));
    QCOMPARE(oks.count(), 1);

    group.addref();
    group.error(QStringLiteral("full"), 3);
    QCOMPARE(errors.count(), 1);
    QCOMPARE(errors[0][0].toString(), QStringLiteral("full"));
    QCOMPARE(errors[0][1].toInt(), 3);
}

void TestCallbackGroupHelper::two_commands_give_two_ok()
{
    TextGroup group;
    QSignalSpy oks(&group, &TextGroup::sig_ok);
    group.addref();
    group.addref();
    group.ok();
    group.ok();
    QCOMPARE(oks.count(), 2);
}

void TestCallbackGroupHelper::an_answer_after_the_groups_end_is_dropped()
{
    AssertLog asserts;
    auto group = std::make_unique<TextGroup>();
    group->addref();
    group->addref();
    TextGroup const *const gone = group.get();
    AFunction1<QString> const text = gone->text;
    AFunction const ok = gone->ok;
    AFunction2<QString, int> const error = gone->error;
    group.reset();
    // Use of freed memory would show under the address sanitizer, a helper that stays as a leak.
    text(QStringLiteral("late"));
    ok();
    error(QStringLiteral("late"), 0);
    QCOMPARE(asserts.take(), QStringList());
}

void TestCallbackGroupHelper::a_slot_may_delete_its_group_data()
{
    QTest::addColumn<QString>("answer");
    QTest::newRow("text") << "text";
    QTest::newRow("ok") << "ok";
    QTest::newRow("error") << "error";
}

void TestCallbackGroupHelper::a_slot_may_delete_its_group()
{
    QFETCH(QString, answer);
    AssertLog asserts;
    auto *group = new TextGroup;
    int calls = 0;
    auto const remove = [&] {
        ++calls;
        delete group;
    };
    connect(group, &TextGroup::sig_text, this, remove);
    connect(group, &TextGroup::sig_ok, this, remove);
    connect(group, &TextGroup::sig_error, this, remove);
    AFunction const ok = group->ok;
    group->addref();
    if (answer == QLatin1String("text")) {
        AFunction1<QString> const text = group->text;
        text(QStringLiteral("a"));
        ok();
    } else if (answer == QLatin1String("ok")) {
        ok();
    } else {
        AFunction2<QString, int> const error = group->error;
        error(QStringLiteral("full"), 0);
    }
    QCOMPARE(calls, 1);
    QCOMPARE(asserts.take(), QStringList());
}

void TestCallbackGroupHelper::a_slot_may_end_the_command_and_delete_the_group()
{
    auto *group = new TextGroup;
    int errors = 0;
    connect(group, &TextGroup::sig_error, this, [&] { ++errors; });
    connect(group, &TextGroup::sig_text, this, [&] {
        AFunction2<QString, int> const error = group->error;
        error(QStringLiteral("closed"), 0);
        delete group;
    });
    group->addref();
    AFunction1<QString> const text = group->text;
    text(QStringLiteral("a"));
    QCOMPARE(errors, 1);
}

void TestCallbackGroupHelper::a_muted_thread_hears_nothing()
{
    TextGroup group;
    QSignalSpy oks(&group, &TextGroup::sig_ok);
    QSignalSpy texts(&group, &TextGroup::sig_text);
    group.addref();
    group.addref();
    {
        CallbackGroupHelper::Mute const mute;
        group.text(QStringLiteral("a"));
        group.ok();
    }
    QCOMPARE(texts.count(), 0);
    QCOMPARE(oks.count(), 0);
    group.ok();
    QCOMPARE(oks.count(), 1);
}

void TestCallbackGroupHelper::mutes_count_and_stay_in_their_thread()
{
    TextGroup group;
    QSignalSpy oks(&group, &TextGroup::sig_ok);
    for (int i = 0; i < 2; ++i)
        group.addref();
    CallbackGroupHelper::Mute const outer;
    {
        CallbackGroupHelper::Mute const inner;
    }
    group.ok();
    QCOMPARE(oks.count(), 0);
    std::thread other([&] { group.ok(); });
    other.join();
    QCOMPARE(oks.count(), 1);
}

void TestCallbackGroupHelper::a_group_in_another_thread_may_go_at_any_time()
{
    std::mt19937 random(20);
    for (int round = 0; round < 200; ++round) {
        auto group = std::make_unique<TextGroup>();
        std::atomic<int> heard{0};
        connect(
            group.get(), &TextGroup::sig_text, group.get(), [&heard] { ++heard; },
            Qt::DirectConnection);
        int const last = int(random() % 60);
        group->addref();
        std::atomic<int> sent{0};
        std::thread reader([&sent, text = group->text, ok = group->ok] {
            for (int i = 0; i < 60; ++i) {
                text(QStringLiteral("a"));
                ++sent;
            }
            ok();
        });
        while (sent < last)
            std::this_thread::yield();
        group.reset();
        int const at_end = heard;
        reader.join();
        // Nothing was emitted once the destructor was through.
        QCOMPARE(int(heard), at_end);
    }
}

void TestCallbackGroupHelper::a_null_group_asserts()
{
    AssertLog asserts;
    auto *helper = new CallbackGroupHelper(nullptr);
    QCOMPARE(asserts.take(), QStringList({QStringLiteral("qtcb != 0")}));
    AFunction ok;
    helper->bind_final<&TextGroup::send_ok>(&ok);
    // The answer takes the only reference with it.
    ok();
    QCOMPARE(asserts.take(), QStringList());
}

void TestCallbackGroupHelper::an_answer_too_many_takes_the_groups_reference_and_asserts()
{
    AssertLog log;
    QObject group;
    auto *helper = new CallbackGroupHelper(&group);
    AFunction ok;
    helper->bind_final<&TextGroup::send_ok>(&ok);
    CallbackGroupHelper::Mute const mute; // it is no such group
    helper->addref();
    ok();
    QCOMPARE(log.take(), QStringList());
    ok();
    QCOMPARE(log.take(), QStringList(QStringLiteral("qtcb == 0")));
}

QTEST_GUILESS_MAIN(TestCallbackGroupHelper)
#include "tst_callback_group_helper.moc"
