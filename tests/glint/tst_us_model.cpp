// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/us_model.h"
#include "sim/vesk/vesk_world.h"
#include "tests/glint/hub_bench.h"
#include "tests/support/assert_log.h"
#include "tests/support/astring_make.h"
#include "tests/support/latin1_text.h"
#include "tests/support/patience.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <thread>

/// Keys of the user dictionary, both ways.
class TestUSModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void one_key_gives_one_item_and_one_watch();
    void an_item_shows_what_the_server_has();
    void an_item_made_before_the_connection_is_watched_with_it();
    void a_value_set_before_the_connection_is_sent_with_it();
    void a_value_set_while_connected_is_sent_at_once();
    void a_value_that_was_set_before_is_not_set_again();
    void the_servers_value_may_be_set_for_the_first_time();
    void a_set_is_told_whether_or_not_the_connection_is_up();
    void a_change_by_another_is_ignored_once_this_client_has_set_it();
    void a_change_by_another_is_taken_by_an_item_of_both_directions();
    void an_item_of_both_directions_hears_again_after_a_reconnection();
    void an_item_that_becomes_one_of_both_directions_is_watched();
    void an_owner_is_told_before_the_value();
    void the_same_owner_is_told_once();
    void a_new_owner_keeps_the_value();
    void an_item_of_both_directions_has_no_owner();
    void a_key_goes_with_its_owner_and_comes_back_with_it();
    void a_reconnection_sends_what_was_set_and_watches_the_rest();
    void a_key_that_nobody_asked_for_is_passed_over();
    void the_hub_becomes_the_parent();
    void a_second_hub_is_an_assertion();
    void an_item_without_a_model_keeps_its_value();
    void an_item_of_a_model_without_a_hub_keeps_its_value_until_there_is_one();
    void there_is_one_local_model();
    void an_item_may_be_asked_for_while_another_is_watched();
    void items_may_be_set_and_read_from_another_thread();
};

namespace {

/// A hub with a model of the user dictionary.
struct Bench : HubBench
{
    USModel *model = USModel::create(false, hub.get());

    /// Without those of the board, which are the hub's own.
    QStringList dictionary_commands() const
    {
        return log.commands(text("userdict_")).filter(QRegularExpression(text("^\\S+ (?!cf\\.)")));
    }
    AString held(char const *key) const
    {
        return server.dictionary_value(AString::l1(key)).value_or("(none)"_a);
    }
    void set_by_another(char const *key, char const *value)
    {
        server.with_world(
            [&](VeskWorld &world) { world.dictionary.set(AString::l1(key), AString::l1(value)); });
    }
};

} // namespace

void TestUSModel::one_key_gives_one_item_and_one_watch()
{
    Bench b;
    QVERIFY(b.connect());
    USItemModel *item = b.model->get_item(text("k"));
    QCOMPARE(b.model->get_item(text("k")), item);
    QCOMPARE(item->get_name(), text("k"));
    QCOMPARE(item->get(), QString());
    QVERIFY(b.sync());
    QCOMPARE(b.dictionary_commands(), QStringList{text("userdict_watch k")});
}

void TestUSModel::an_item_shows_what_the_server_has()
{
    Bench b;
    b.set_by_another("k", "v");
    QVERIFY(b.connect());
    USItemModel *item = b.model->get_item(text("k"));
    QSignalSpy changed(item, &USItemModel::changed);
    QTRY_COMPARE(item->get(), text("v"));
    QCOMPARE(changed.takeFirst(), QVariantList{text("v")});
    b.set_by_another("k", "w");
    QTRY_COMPARE(item->get(), text("w"));
    QCOMPARE(changed.count(), 1);
    b.set_by_another("k", "w");
    QVERIFY(b.sync());
    QCOMPARE(changed.count(), 1);
}

void TestUSModel::an_item_made_before_the_connection_is_watched_with_it()
{
    Bench b;
    b.set_by_another("k", "v");
    USItemModel *item = b.model->get_item(text("k"));
    QVERIFY(b.connect());
    QTRY_COMPARE(item->get(), text("v"));
    QCOMPARE(b.dictionary_commands(), QStringList{text("userdict_watch k")});
}

void TestUSModel::a_value_set_before_the_connection_is_sent_with_it()
{
    Bench b;
    b.model->get_item(text("k"))->set(text("v"));
    QCOMPARE(b.held("k"), "(none)"_a);
    QVERIFY(b.connect());
    QCOMPARE(b.held("k"), "v"_a);
    QCOMPARE(b.dictionary_commands(), QStringList{text("userdict_set k v")});
}

void TestUSModel::a_value_set_while_connected_is_sent_at_once()
{
    Bench b;
    QVERIFY(b.connect());
    b.model->get_item(text("k"))->set(text("v"));
    QVERIFY(b.sync());
    QCOMPARE(b.held("k"), "v"_a);
}

void TestUSModel::a_value_that_was_set_before_is_not_set_again()
{
    Bench b;
    QVERIFY(b.connect());
    USItemModel *item = b.model->get_item(text("k"));
    QSignalSpy changed(item, &USItemModel::changed);
    item->set(text("v"));
    item->set(text("v"));
    QCOMPARE(changed.count(), 1);
    item->set(text("w"));
    QCOMPARE(changed.count(), 2);
    QVERIFY(b.sync());
    QCOMPARE(b.dictionary_commands(),
        (QStringList{
            text("userdict_watch k"), text("userdict_set k v"), text("userdict_set k w")}));
}

void TestUSModel::the_servers_value_may_be_set_for_the_first_time()
{
    Bench b;
    b.set_by_another("k", "v");
    QVERIFY(b.connect());
    USItemModel *item = b.model->get_item(text("k"));
    QTRY_COMPARE(item->get(), text("v"));
    item->set(text("v"));
    b.set_by_another("k", "w");
    QVERIFY(b.sync());
    QCOMPARE(item->get(), text("v"));
    QCOMPARE(b.dictionary_commands().last(), text("userdict_set k v"));
}

void TestUSModel::a_set_is_told_whether_or_not_the_connection_is_up()
{
    Bench b;
    USItemModel *item = b.model->get_item(text("k"));
    QSignalSpy changed(item, &USItemModel::changed);
    item->set(text("v"));
    QCOMPARE(changed.takeFirst(), QVariantList{text("v")});
    QVERIFY(b.connect());
    QCOMPARE(changed.count(), 0);
    item->set(text("w"));
    QCOMPARE(changed.takeFirst(), QVariantList{text("w")});
}

void TestUSModel::a_change_by_another_is_ignored_once_this_client_has_set_it()
{
    Bench b;
    QVERIFY(b.connect());
    USItemModel *item = b.model->get_item(text("k"));
    item->set(text("v"));
    QVERIFY(b.sync());
    QSignalSpy reports(b.hub.get(), &Glint::report_userdict_change);
    QSignalSpy changed(item, &USItemModel::changed);
    b.set_by_another("k", "w");
    QTRY_COMPARE(reports.count(), 1);
    QCOMPARE(item->get(), text("v"));
    QCOMPARE(changed.count(), 0);
}

void TestUSModel::a_change_by_another_is_taken_by_an_item_of_both_directions()
{
    Bench b;
    QVERIFY(b.connect());
    USItemModel *item = b.model->get_item(text("k"));
    item->set(text("v"));
    item->set_read_write(true);
    QVERIFY(b.sync());
    b.set_by_another("k", "w");
    QTRY_COMPARE(item->get(), text("w"));
    item->set(text("v"));
    QVERIFY(b.sync());
    QCOMPARE(b.held("k"), "v"_a);
    item->set_read_write(false);
    b.set_by_another("k", "x");
    QVERIFY(b.sync());
    QCOMPARE(item->get(), text("v"));
}

void TestUSModel::an_item_of_both_directions_hears_again_after_a_reconnection()
{
    Bench b;
    QVERIFY(b.connect());
    USItemModel *item = b.model->get_item(text("k"));
    item->set_read_write(true);
    item->set(text("v"));
    QVERIFY(b.reconnect());
    b.set_by_another("k", "w");
    QTRY_COMPARE(item->get(), text("w"));
}

void TestUSModel::an_item_that_becomes_one_of_both_directions_is_watched()
{
    Bench b;
    USItemModel *item = b.model->get_item(text("k"));
    item->set(text("v"));
    QVERIFY(b.connect());
    item->set_read_write(true);
    item->set_read_write(true);
    QVERIFY(b.sync());
    QCOMPARE(
        b.dictionary_commands(), (QStringList{text("userdict_set k v"), text("userdict_watch k")}));
}

void TestUSModel::an_owner_is_told_before_the_value()
{
    Bench b;
    b.model->get_item(text("early"))->set(text("v"), text("me"));
    QVERIFY(b.connect());
    b.model->get_item(text("late"))->set(text("v"), text("me"));
    QVERIFY(b.sync());
    QCOMPARE(b.dictionary_commands(),
        (QStringList{text("userdict_own early me"), text("userdict_set early v"),
            text("userdict_watch late"), text("userdict_own late me"),
            text("userdict_set late v")}));
}

void TestUSModel::the_same_owner_is_told_once()
{
    Bench b;
    QVERIFY(b.connect());
    USItemModel *item = b.model->get_item(text("k"));
    item->set(text("v"), text("me"));
    item->set(text("w"), text("me"));
    item->set(text("w"), text("me"));
    // One without a text is one as well.
    b.model->get_item(text("l"))->set(text("v"), QString());
    QVERIFY(b.sync());
    QCOMPARE(b.log.commands(text("userdict_own")),
        (QStringList{text("userdict_own k me"), text("userdict_own l")}));
    QCOMPARE(b.held("k"), "w"_a);
}

void TestUSModel::a_new_owner_keeps_the_value()
{
    Bench b;
    QVERIFY(b.connect());
    USItemModel *item = b.model->get_item(text("k"));
    item->set(text("v"));
    QSignalSpy changed(item, &USItemModel::changed);
    item->set(text("v"), text("me"));
    QVERIFY(b.sync());
    QCOMPARE(b.log.commands(text("userdict_own")), QStringList{text("userdict_own k me")});
    QCOMPARE(b.held("k"), "v"_a);
    QCOMPARE(changed.count(), 0);
}

void TestUSModel::an_item_of_both_directions_has_no_owner()
{
    Bench b;
    QVERIFY(b.connect());
    USItemModel *item = b.model->get_item(text("k"));
    item->set_read_write(true);
    item->set(text("v"), text("me"));
    QVERIFY(b.sync());
    QCOMPARE(b.log.commands(text("userdict_own")), QStringList());
    QCOMPARE(b.held("k"), "v"_a);
}

void TestUSModel::a_key_goes_with_its_owner_and_comes_back_with_it()
{
    Bench b;
    QVERIFY(b.connect());
    b.model->get_item(text("k"))->set(text("v"), text("me"));
    QVERIFY(b.sync());
    b.server.stop();
    QTRY_VERIFY(!b.hub->is_connected());
    QTRY_COMPARE(b.held("k"), "(none)"_a);
    b.server.restart(VeskState::keep);
    QTRY_COMPARE(b.held("k"), "v"_a);
}

void TestUSModel::a_reconnection_sends_what_was_set_and_watches_the_rest()
{
    Bench b;
    QVERIFY(b.connect());
    USItemModel *read = b.model->get_item(text("read"));
    b.model->get_item(text("written"))->set(text("v"));
    b.server.stop();
    QTRY_VERIFY(!b.hub->is_connected());
    QSignalSpy sends(b.hub.get(), &Glint::indirect_send);
    b.model->get_item(text("written"))->set(text("w"));
    b.model->get_item(text("late"));
    QCOMPARE(sends.count(), 0);
    b.set_by_another("read", "r");
    b.log.take();
    b.server.restart(VeskState::keep);
    QTRY_COMPARE(read->get(), text("r"));
    QVERIFY(b.sync());
    QStringList sent = b.dictionary_commands();
    sent.sort();
    QCOMPARE(sent,
        (QStringList{text("userdict_set written w"), text("userdict_watch late"),
            text("userdict_watch read")}));
    QCOMPARE(b.held("written"), "w"_a);
}

void TestUSModel::a_key_that_nobody_asked_for_is_passed_over()
{
    Bench b;
    QVERIFY(b.connect());
    USItemModel *item = b.model->get_item(text("k"));
    b.hub->cmd_userdict_watch("other"_a);
    QSignalSpy reports(b.hub.get(), &Glint::report_userdict_change);
    b.set_by_another("other", "v");
    QTRY_COMPARE(reports.count(), 1);
    QCOMPARE(item->get(), QString());
}

void TestUSModel::the_hub_becomes_the_parent()
{
    Bench b;
    QCOMPARE(b.model->parent(), b.hub.get());
    QPointer<USItemModel> item = b.model->get_item(text("k"));
    b.hub.reset();
    QVERIFY(item.isNull());
}

void TestUSModel::a_second_hub_is_an_assertion()
{
    Bench b;
    Glint other(false);
    AssertLog asserts;
    b.model->config(&other);
    QCOMPARE(asserts.take(), QStringList{text("glint == 0")});
    QCOMPARE(b.model->parent(), b.hub.get());
    std::unique_ptr<USModel> const without(USModel::create(false, nullptr));
    QCOMPARE(asserts.take(), QStringList{text("hub != nullptr")});
}

void TestUSModel::an_item_without_a_model_keeps_its_value()
{
    USItemModel item(text("k"), nullptr);
    QSignalSpy changed(&item, &USItemModel::changed);
    AssertLog asserts;
    item.set(text("v"));
    QCOMPARE(asserts.take(), QStringList{text("parent != nullptr")});
    QCOMPARE(item.get(), text("v"));
    QCOMPARE(changed.count(), 1);
    item.set(text("w"), text("me"));
    QCOMPARE(asserts.take(), QStringList{text("parent != nullptr")});
    QCOMPARE(item.get(), text("w"));
    item.set_read_write(true);
    QCOMPARE(asserts.take(), QStringList());
}

void TestUSModel::an_item_of_a_model_without_a_hub_keeps_its_value_until_there_is_one()
{
    USItemModel *item = USModel::get_item_localhost(text("k"));
    AssertLog asserts;
    item->set(text("v"));
    QCOMPARE(asserts.take(), QStringList{text("glint != nullptr")});
    HubBench b;
    QCOMPARE(USModel::create(true, b.hub.get()), USModel::localhost());
    QVERIFY(b.connect());
    QCOMPARE(b.server.dictionary_value("k"_a).value(), "v"_a);
}

void TestUSModel::there_is_one_local_model()
{
    QPointer<USModel> model;
    {
        Glint hub(false);
        model = USModel::create(true, &hub);
        QCOMPARE(model.data(), USModel::localhost());
        Glint other(false);
        AssertLog asserts;
        QCOMPARE(USModel::create(true, &other), model.data());
        QCOMPARE(asserts.take(), QStringList{text("glint == 0")});
        QVERIFY(USModel::create(false, &other) != model);
    }
    QVERIFY(model.isNull());
    QVERIFY(USModel::localhost()->parent() == nullptr);
}

void TestUSModel::an_item_may_be_asked_for_while_another_is_watched()
{
    Bench b;
    USItemModel *first = b.model->get_item(text("first"));
    int made = 0;
    auto const listener = connect(b.hub.get(), &Glint::indirect_send, this, [&] {
        while (made < 500)
            b.model->get_item(QString::number(made++));
    });
    QVERIFY(b.connect());
    QCOMPARE(made, 500);
    QObject::disconnect(listener);
    made = 1000;
    connect(b.hub.get(), &Glint::indirect_send, this, [&] {
        while (made < 3000)
            b.model->get_item(QString::number(made++));
    });
    USItemModel *second = b.model->get_item(text("second"));
    QCOMPARE(made, 3000);
    QCOMPARE(second->get_name(), text("second"));
    QCOMPARE(b.model->get_item(text("second")), second);
    QCOMPARE(b.model->get_item(text("first")), first);
}

void TestUSModel::items_may_be_set_and_read_from_another_thread()
{
    Bench b;
    QVERIFY(b.connect());
    USItemModel *item = b.model->get_item(text("k"));
    std::thread other([&] {
        for (int i = 0; i < 500; ++i)
            item->set(QString::number(i));
    });
    for (int i = 0; i < 500; ++i)
        item->get();
    other.join();
    QVERIFY(b.sync());
    QCOMPARE(b.held("k"), "499"_a);
}

QTEST_GUILESS_MAIN(TestUSModel)
#include "tst_us_model.moc"
