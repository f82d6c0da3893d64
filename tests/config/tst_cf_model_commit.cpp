// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_model.h"
#include "sim/vesk/vesk_world.h"
#include "tests/glint/hub_bench.h"
#include "tests/support/astring_make.h"
#include "tests/support/astring_print.h"
#include "tests/support/latin1_text.h"
#include "tests/support/linked_client.h"
#include "tests/support/patience.h"
#include "tests/support/two_threads.h"

#include <QSignalSpy>
#include <QTest>

/// Edits: what is committed, what is taken back, and when an edit is over.
class TestCFModelCommit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void a_commit_sends_one_command_for_each_changed_item();
    void a_commit_of_names_sends_those_alone();
    void a_commit_while_not_connected_keeps_the_edits();
    void an_edit_is_over_when_the_server_tells_of_it();
    void an_edit_of_an_item_that_waits_for_a_reboot_is_over_when_it_is_saved();
    void an_edit_that_the_server_refuses_stays();
    void a_revert_takes_back_the_named_items();
    void a_revert_of_all_takes_back_every_edit();
    void an_answer_about_changes_is_kept_until_an_item_changes();
    void a_change_is_told_when_the_answer_about_changes_is_new();
    void an_edit_that_ends_without_a_signal_is_seen();
    void a_value_that_goes_back_behind_a_refused_one_is_no_change_once_committed();
    void a_value_typed_back_is_no_change_where_another_was_committed_before();
    void commits_of_two_threads_send_what_was_typed_last();
    void a_hot_item_sends_every_change_at_once();
    void a_hot_item_sends_the_old_value_behind_a_new_one();
    void a_hot_change_sends_no_cold_item();
    void a_hot_item_that_another_thread_sets_is_sent();
    void a_hot_change_while_not_connected_waits_for_the_next_one();
};

namespace {

/// A client whose model has two items that hold at once and one that waits for a reboot.
struct Editor : LinkedClient<>
{
    CFModel *model = CFModel::create(false, &api);
    CFItemModel *aspect = model->get_item(text("VideoAspectRatio"));
    CFItemModel *panel = model->get_item(text("ControlPanel_ID0"));
    CFItemModel *board = model->get_item(text("ChannelConfigurationSet0"));

    bool scan()
    {
        return connect() && wait_for([this] { return model->is_fully_scanned(); });
    }
    AString saved(char const *name) const
    {
        return server.setting(AString::l1(name)).value().saved;
    }
};

} // namespace

void TestCFModelCommit::a_commit_sends_one_command_for_each_changed_item()
{
    Editor c;
    QVERIFY(c.scan());
    c.aspect->set(text("4x3"));
    c.panel->set(text("one"));
    QVERIFY(c.sync());
    QCOMPARE(c.count("set_configuration"), 0U);
    c.model->commit_changes();
    QVERIFY(c.sync());
    QCOMPARE(c.count("set_configuration"), 2U);
    QCOMPARE(c.saved("VideoAspectRatio"), "4x3"_a);
    QCOMPARE(c.saved("ControlPanel_ID0"), "one"_a);
    c.model->commit_changes();
    QVERIFY(c.sync());
    QCOMPARE(c.count("set_configuration"), 2U);
}

void TestCFModelCommit::a_commit_of_names_sends_those_alone()
{
    Editor c;
    QVERIFY(c.scan());
    c.aspect->set(text("4x3"));
    c.panel->set(text("one"));
    c.model->commit({text("VideoAspectRatio"), text("ChannelConfigurationSet0"), text("NoSuch"),
        text("VideoAspectRatio")});
    QVERIFY(c.sync());
    QCOMPARE(c.count("set_configuration"), 1U);
    QCOMPARE(c.saved("VideoAspectRatio"), "4x3"_a);
    QCOMPARE(c.saved("ControlPanel_ID0"), AString());
    QVERIFY(c.panel->have_changes());
}

void TestCFModelCommit::a_commit_while_not_connected_keeps_the_edits()
{
    Editor c;
    QVERIFY(c.scan());
    QVERIFY(c.lose());
    c.panel->set(text("one"));
    c.model->commit_changes();
    QVERIFY(c.model->have_changes());
    // Nothing was sent that the old value would have to follow.
    c.panel->set(QString());
    QVERIFY(!c.model->have_changes());
    c.panel->set(text("one"));
    QVERIFY(c.scan());
    QCOMPARE(c.panel->get(), text("one"));
    QCOMPARE(c.count("set_configuration"), 0U);
    c.model->commit_changes();
    QVERIFY(c.sync());
    QCOMPARE(c.saved("ControlPanel_ID0"), "one"_a);
    QVERIFY(!c.model->have_changes());
}

void TestCFModelCommit::an_edit_is_over_when_the_server_tells_of_it()
{
    Editor c;
    QVERIFY(c.scan());
    c.panel->set(text("one"));
    c.model->commit_changes();
    QVERIFY(c.model->have_changes());
    QVERIFY(!c.model->commit_done());
    QVERIFY(c.sync());
    QVERIFY(!c.model->have_changes());
    QVERIFY(c.model->commit_done());
    QVERIFY(!c.model->need_reboot());
    c.server.with_world(
        [](VeskWorld &world) { world.configuration.set("ControlPanel_ID0"_a, "two"_a); });
    QTRY_COMPARE(c.panel->get(), text("two"));
}

void TestCFModelCommit::an_edit_of_an_item_that_waits_for_a_reboot_is_over_when_it_is_saved()
{
    Editor c;
    QVERIFY(c.scan());
    QCOMPARE(c.board->get(), text("VVVV"));
    QVERIFY(!c.model->need_reboot());
    c.board->set(text("ISO4"));
    c.model->commit_changes();
    QVERIFY(c.sync());
    QCOMPARE(c.board->cf_get(), text("ISO4"));
    QVERIFY(!c.model->have_changes());
    QVERIFY(c.model->commit_done());
    QVERIFY(c.model->need_reboot());
    c.server.restart(VeskState::keep);
    QTRY_VERIFY(!c.api.is_connected());
    QVERIFY(c.scan());
    QCOMPARE(c.board->get(), text("ISO4"));
    QVERIFY(!c.model->need_reboot());
}

void TestCFModelCommit::an_edit_that_the_server_refuses_stays()
{
    Editor c;
    QVERIFY(c.scan());
    c.aspect->set(text("21x9"));
    c.model->commit_changes();
    QVERIFY(c.sync());
    QCOMPARE(c.aspect->get(), text("21x9"));
    QCOMPARE(c.aspect->cf_get(), text("16x9"));
    QVERIFY(c.model->have_changes());
    QVERIFY(!c.model->commit_done());
}

void TestCFModelCommit::a_revert_takes_back_the_named_items()
{
    Editor c;
    QVERIFY(c.scan());
    c.aspect->set(text("4x3"));
    c.panel->set(text("one"));
    c.model->revert({text("VideoAspectRatio"), text("NoSuch")});
    QCOMPARE(c.aspect->get(), text("16x9"));
    QCOMPARE(c.panel->get(), text("one"));
}

void TestCFModelCommit::a_revert_of_all_takes_back_every_edit()
{
    Editor c;
    QVERIFY(c.scan());
    c.aspect->set(text("4x3"));
    c.panel->set(text("one"));
    QVERIFY(c.model->have_changes());
    c.model->revert_all_items();
    QVERIFY(!c.model->have_changes());
    QVERIFY(c.model->commit_done());
    c.model->commit_changes();
    QVERIFY(c.sync());
    QCOMPARE(c.count("set_configuration"), 0U);
}

void TestCFModelCommit::an_answer_about_changes_is_kept_until_an_item_changes()
{
    Editor c;
    QVERIFY(c.scan());
    QVERIFY(!c.model->have_changes());
    {
        // An edit that the model does not hear of does not change its answer.
        QSignalBlocker const deaf(c.panel);
        c.panel->set(text("one"));
    }
    QVERIFY(c.panel->have_changes());
    QVERIFY(!c.model->have_changes());
    c.model->cache_clear();
    QVERIFY(c.model->have_changes());
    c.panel->revert_item();
    QVERIFY(!c.model->have_changes());
    c.aspect->set(text("4x3"));
    QVERIFY(c.model->have_changes());
}

void TestCFModelCommit::a_change_is_told_when_the_answer_about_changes_is_new()
{
    Editor c;
    QVERIFY(c.scan());
    QVERIFY(!c.model->have_changes());
    QList<bool> answers;
    connect(c.model, &CFModel::changed, this, [&] { answers += c.model->have_changes(); });
    c.panel->set(text("one"));
    c.panel->revert_item();
    QCOMPARE(answers, (QList<bool>{true, false}));
}

void TestCFModelCommit::an_edit_that_ends_without_a_signal_is_seen()
{
    Editor c;
    QVERIFY(c.scan());
    c.server.fail_command("set_configuration", "not today");
    c.panel->set(text("one"));
    c.model->commit_changes();
    c.panel->set(QString());
    QVERIFY(c.model->have_changes());
    QVERIFY(c.lose());
    QSignalSpy changed(c.panel, qOverload<>(&CFItemModel::changed));
    QSignalSpy model_changed(c.model, &CFModel::changed);
    QVERIFY(c.scan());
    QCOMPARE(changed.count(), 0);
    QCOMPARE(model_changed.count(), 1);
    QVERIFY(!c.model->have_changes());
}

void TestCFModelCommit::a_value_that_goes_back_behind_a_refused_one_is_no_change_once_committed()
{
    Editor c;
    QVERIFY(c.scan());
    c.aspect->set(text("21x9"));
    c.model->commit_changes();
    QVERIFY(c.sync());
    c.aspect->set(text("16x9"));
    QVERIFY(c.model->have_changes());
    QSignalSpy ended(c.aspect, &CFItemModel::edit_ended);
    QSignalSpy changed(c.model, &CFModel::changed);
    c.model->commit_changes();
    // The server has nothing to tell of it.
    QCOMPARE(ended.count(), 1);
    QCOMPARE(changed.count(), 1);
    QVERIFY(!c.model->have_changes());
    QVERIFY(c.model->commit_done());
}

void TestCFModelCommit::a_value_typed_back_is_no_change_where_another_was_committed_before()
{
    Editor c;
    QVERIFY(c.scan());
    c.panel->set(text("one"));
    c.model->commit_changes();
    QVERIFY(c.sync());
    c.server.with_world(
        [](VeskWorld &world) { world.configuration.set("ControlPanel_ID0"_a, "two"_a); });
    QTRY_COMPARE(c.panel->get(), text("two"));
    c.panel->set(text("three"));
    QVERIFY(c.model->have_changes());
    c.panel->set(text("two"));
    QVERIFY(!c.model->have_changes());
    QVERIFY(c.model->commit_done());
}

/// Over a connection that hands its commands over.
void TestCFModelCommit::commits_of_two_threads_send_what_was_typed_last()
{
    HubBench b;
    CFModel *model = b.hub->get_cf_model();
    CFItemModel *panel = model->get_item(text("ControlPanel_ID0"));
    QVERIFY(b.connect());
    QTRY_VERIFY(model->is_fully_scanned());
    for (int round = 0; round < 20; ++round) {
        in_two_threads([&](int which) {
            for (int i = 0; i < 20; ++i) {
                panel->set(QStringLiteral("%1.%2.%3").arg(round).arg(which).arg(i));
                model->commit_changes();
            }
        });
        QString const typed = panel->get();
        QVERIFY(b.sync());
        QCOMPARE(QString(b.server.setting("ControlPanel_ID0"_a).value().saved), typed);
    }
}

void TestCFModelCommit::a_hot_item_sends_every_change_at_once()
{
    Editor c;
    QVERIFY(c.scan());
    c.panel->setHot(true);
    c.panel->set(text("one"));
    c.panel->set(text("two"));
    QVERIFY(c.sync());
    QCOMPARE(c.saved("ControlPanel_ID0"), "two"_a);
    QVERIFY(!c.model->have_changes());
}

void TestCFModelCommit::a_hot_item_sends_the_old_value_behind_a_new_one()
{
    Editor c;
    QVERIFY(c.scan());
    c.aspect->setHot(true);
    c.aspect->set(text("4x3"));
    c.aspect->set(text("16x9"));
    QVERIFY(c.sync());
    QVERIFY(c.sync());
    QCOMPARE(c.saved("VideoAspectRatio"), "16x9"_a);
    QCOMPARE(c.aspect->get(), text("16x9"));
    QVERIFY(!c.model->have_changes());
}

void TestCFModelCommit::a_hot_change_sends_no_cold_item()
{
    Editor c;
    QVERIFY(c.scan());
    c.aspect->set(text("4x3"));
    c.panel->setHot(true);
    c.panel->set(text("one"));
    QVERIFY(c.sync());
    QCOMPARE(c.count("set_configuration"), 1U);
    QCOMPARE(c.saved("ControlPanel_ID0"), "one"_a);
    QVERIFY(c.aspect->have_changes());
}

void TestCFModelCommit::a_hot_item_that_another_thread_sets_is_sent()
{
    Editor c;
    QVERIFY(c.scan());
    c.panel->setHot(true);
    QVERIFY(!c.model->have_changes());
    bool seen = false;
    std::thread([&] {
        c.panel->set(text("one"));
        seen = c.model->have_changes();
    }).join();
    QVERIFY(seen);
    QTRY_COMPARE(c.saved("ControlPanel_ID0"), "one"_a);
}

/// As with any other edit: the next connection does not send it by itself.
void TestCFModelCommit::a_hot_change_while_not_connected_waits_for_the_next_one()
{
    Editor c;
    QVERIFY(c.scan());
    c.panel->setHot(true);
    QVERIFY(c.lose());
    c.panel->set(text("one"));
    QVERIFY(c.scan());
    QVERIFY(c.sync());
    QCOMPARE(c.count("set_configuration"), 0U);
    QCOMPARE(c.panel->get(), text("one"));
    QVERIFY(c.model->have_changes());
    c.panel->set(text("two"));
    QVERIFY(c.sync());
    QCOMPARE(c.saved("ControlPanel_ID0"), "two"_a);
}

QTEST_GUILESS_MAIN(TestCFModelCommit)
#include "tst_cf_model_commit.moc"
