// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_model.h"
#include "ATarnLib/config/cf_model_get_one_helper.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/atimer.h"
#include "sim/vesk/vesk_world.h"
#include "tests/support/assert_log.h"
#include "tests/support/astring_make.h"
#include "tests/support/latin1_text.h"
#include "tests/support/linked_client.h"
#include "tests/support/patience.h"
#include "tests/support/scripted_server.h"
#include "tests/support/two_threads.h"

#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <array>
#include <thread>

using VCTP3::APIQt;

/// How a model gets its items and follows the server.
class TestCFModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void one_name_gives_one_item_and_one_fetch();
    void items_may_be_asked_for_before_there_is_a_connection();
    void a_connection_that_is_up_already_is_used_at_once();
    void the_connection_becomes_the_parent();
    void a_second_connection_is_an_assertion();
    void a_model_without_a_connection_is_an_assertion();
    void there_is_one_local_model();
    void the_local_model_goes_with_its_connection();
    void the_local_model_is_the_same_for_two_threads_at_once();
    void a_local_model_that_another_thread_makes_belongs_to_the_application();
    void the_seventh_item_is_fetched_when_the_first_reply_comes();
    void items_are_fetched_in_the_order_of_their_names();
    void no_items_are_fully_scanned_at_once();
    void is_fully_scanned_when_the_last_item_is_here();
    void an_item_asked_for_later_is_scanned_too();
    void is_not_fully_scanned_from_when_another_item_is_asked_for();
    void rests_when_everything_is_here();
    void an_unknown_name_is_answered_and_not_asked_again();
    void a_helper_that_fetches_nothing_is_an_assertion();
    void every_connection_registers_for_changes();
    void another_clients_change_arrives();
    void a_change_of_an_item_that_nobody_asked_for_is_passed_over();
    void a_change_that_names_no_item_reads_all_items_again();
    void a_change_that_names_no_item_waits_for_the_fetches_in_flight();
    void a_reconnection_fetches_every_item_again();
    void an_item_that_the_next_server_does_not_know_is_forgotten();
    void a_connection_that_goes_during_the_scan_leaves_no_fetch_behind();
    void a_fetch_that_fails_leaves_an_item_that_the_server_knows();
    void a_disconnection_ends_every_fetch();
    void a_model_may_go_with_fetches_in_flight();
    void many_restarts_leave_the_items_as_the_server_has_them();
    void an_item_may_be_asked_for_from_another_thread();
};

namespace {

QString panel(int number)
{
    return QStringLiteral("ControlPanel_ID%1").arg(number);
}

/// A client with a model of its own.
struct Modelled : LinkedClient<>
{
    CFModel *model = CFModel::create(false, &api);
    QSignalSpy scanned{model, &CFModel::fully_scanned};

    bool scan()
    {
        return wait_for([this] { return model->is_fully_scanned(); });
    }
    void set_on_server(AString const &name, AString const &value)
    {
        server.with_world([&](VeskWorld &world) { world.configuration.set(name, value); });
    }
};

/// The names of the items that were asked for.
QByteArrayList fetches(ScriptedServer const &server)
{
    QByteArrayList names;
    for (QByteArray const &command : server.commands()) {
        QByteArray const tag = "<ConfigurationItemName>";
        qsizetype const at = command.indexOf(tag);
        if (at >= 0)
            names += command.mid(at + tag.size(), command.indexOf("</", at) - at - tag.size());
    }
    return names;
}

QByteArray unknown_item(QByteArray const &command)
{
    return ScriptedServer::reply(command,
        "<error><ErrorMessage>no</ErrorMessage><ErrorCode>configname_invalid</ErrorCode></error>");
}

/// A model of seven items whose fetches nobody answers yet: six are out at a time.
struct SevenItems
{
    SevenItems()
    {
        for (int number = 0; number < 7; ++number)
            model->get_item(panel(number));
    }
    bool connect()
    {
        api.connect_to_server(server.address());
        return QTest::qWaitFor([this] { return fetches(server).size() == 6; }, patience_ms);
    }

    ScriptedServer server;
    APIQt api;
    CFModel *model = CFModel::create(false, &api);
};

} // namespace

void TestCFModel::one_name_gives_one_item_and_one_fetch()
{
    Modelled c;
    QVERIFY(c.connect());
    CFItemModel *item = c.model->get_item(text("VideoAspectRatio"));
    QCOMPARE(c.model->get_item(text("VideoAspectRatio")), item);
    QCOMPARE(item->get_name(), text("VideoAspectRatio"));
    QTRY_VERIFY(item->have_cf());
    QCOMPARE(item->get(), text("16x9"));
    QCOMPARE(item->allowed_values(), (QList<QString>{text("16x9"), text("4x3")}));
    QCOMPARE(c.model->get_item(text("VideoAspectRatio")), item);
    QVERIFY(c.scan());
    QVERIFY(c.sync());
    QCOMPARE(c.count("get_one_configuration"), 1U);
}

void TestCFModel::items_may_be_asked_for_before_there_is_a_connection()
{
    Modelled c;
    CFItemModel *item = c.model->get_item(text("VideoAspectRatio"));
    QCoreApplication::processEvents();
    QVERIFY(!item->have_cf());
    QVERIFY(!c.model->is_fully_scanned());
    QVERIFY(c.connect());
    QTRY_VERIFY(item->have_cf());
    QVERIFY(c.scan());
    QVERIFY(c.sync());
    QCOMPARE(c.count("get_one_configuration"), 1U);
}

void TestCFModel::a_connection_that_is_up_already_is_used_at_once()
{
    LinkedClient<> c;
    QVERIFY(c.connect());
    CFModel *model = CFModel::create(false, &c.api);
    QTRY_VERIFY(model->get_item(text("VideoAspectRatio"))->have_cf());
    QCOMPARE(c.count("report_register"), 1U);
}

void TestCFModel::the_connection_becomes_the_parent()
{
    APIQt api;
    QCOMPARE(CFModel::create(false, &api)->parent(), &api);
}

void TestCFModel::a_second_connection_is_an_assertion()
{
    APIQt first;
    APIQt second;
    CFModel *model = CFModel::create(false, &first);
    AssertLog asserts;
    model->config(&second);
    QCOMPARE(asserts.take(), QStringList{text("api == 0")});
    QCOMPARE(model->parent(), &first);
}

void TestCFModel::a_model_without_a_connection_is_an_assertion()
{
    AssertLog asserts;
    std::unique_ptr<CFModel> const model(CFModel::create(false, nullptr));
    QCOMPARE(asserts.take(), QStringList{text("connection != nullptr")});
    model->get_item(text("x"))->set(text("typed"));
    model->commit_changes();
    QCoreApplication::processEvents();
    QVERIFY(model->have_changes());
}

void TestCFModel::there_is_one_local_model()
{
    LinkedClient<> c;
    CFItemModel *item = CFModel::get_item_localhost(text("VideoAspectRatio"));
    CFModel *model = CFModel::create(true, &c.api);
    QCOMPARE(model, CFModel::localhost());
    QCOMPARE(model->get_item(text("VideoAspectRatio")), item);
    QVERIFY(c.connect());
    QTRY_VERIFY(item->have_cf());
    APIQt other;
    AssertLog asserts;
    QCOMPARE(CFModel::create(true, &other), model);
    QCOMPARE(asserts.take(), QStringList{text("api == 0")});
    QCOMPARE(model->parent(), &c.api);
    QVERIFY(CFModel::create(false, &other) != model);
}

void TestCFModel::the_local_model_goes_with_its_connection()
{
    QPointer<CFModel> first;
    {
        APIQt api;
        first = CFModel::create(true, &api);
    }
    QVERIFY(first.isNull());
    APIQt api;
    CFModel *second = CFModel::create(true, &api);
    QCOMPARE(second->parent(), &api);
    QCOMPARE(CFModel::localhost(), second);
}

void TestCFModel::the_local_model_is_the_same_for_two_threads_at_once()
{
    for (int round = 0; round < 200; ++round) {
        std::array<CFModel *, 2> made{};
        in_two_threads([&](int which) { made[std::size_t(which)] = CFModel::localhost(); });
        QCOMPARE(made[0], made[1]);
        QCOMPARE(made[0]->thread(), thread());
        delete made[0];
    }
}

void TestCFModel::a_local_model_that_another_thread_makes_belongs_to_the_application()
{
    CFModel *made = nullptr;
    CFItemModel *item = nullptr;
    std::thread([&] {
        made = CFModel::localhost();
        item = CFModel::get_item_localhost(text("VideoAspectRatio"));
    }).join();
    QCOMPARE(made->thread(), thread());
    QCOMPARE(item->thread(), thread());
    LinkedClient<> c;
    QVERIFY(c.connect());
    QCOMPARE(CFModel::create(true, &c.api), made);
    QTRY_VERIFY(item->have_cf());
}

void TestCFModel::the_seventh_item_is_fetched_when_the_first_reply_comes()
{
    SevenItems c;
    QVERIFY(c.connect());
    // What the model wants to send goes out before this.
    c.api.cmd_sync();
    QTRY_VERIFY(c.server.commands().last().contains("<sync"));
    QCOMPARE(fetches(c.server).size(), 6);
    c.server.say(unknown_item(c.server.commands()[1]));
    QTRY_COMPARE(fetches(c.server).size(), 7);
    QCOMPARE(fetches(c.server).last(), panel(6).toLatin1());
}

void TestCFModel::items_are_fetched_in_the_order_of_their_names()
{
    ScriptedServer server;
    server.answer_with(unknown_item);
    APIQt api;
    CFModel *model = CFModel::create(false, &api);
    for (int number = 9; number >= 0; --number)
        model->get_item(panel(number));
    api.connect_to_server(server.address());
    QTRY_VERIFY(model->is_fully_scanned());
    QByteArrayList names;
    for (int number = 0; number < 10; ++number)
        names += panel(number).toLatin1();
    QCOMPARE(fetches(server), names);
}

void TestCFModel::no_items_are_fully_scanned_at_once()
{
    Modelled c;
    QVERIFY(!c.model->is_fully_scanned());
    QVERIFY(c.connect());
    QTRY_COMPARE(c.scanned.count(), 1);
    QVERIFY(c.model->is_fully_scanned());
    QCOMPARE(c.count("get_one_configuration"), 0U);
}

void TestCFModel::is_fully_scanned_when_the_last_item_is_here()
{
    Modelled c;
    QList<CFItemModel *> items;
    for (int number = 0; number < 8; ++number)
        items += c.model->get_item(QStringLiteral("ChannelConfigurationSet%1").arg(number));
    int here = 0;
    connect(c.model, &CFModel::fully_scanned, this, [&] {
        for (CFItemModel const *item : items)
            here += item->have_cf() ? 1 : 0;
    });
    QVERIFY(c.connect());
    QTRY_COMPARE(c.scanned.count(), 1);
    QCOMPARE(here, 8);
}

void TestCFModel::an_item_asked_for_later_is_scanned_too()
{
    Modelled c;
    QVERIFY(c.connect());
    QTRY_COMPARE(c.scanned.count(), 1);
    CFItemModel *item = c.model->get_item(text("VideoAspectRatio"));
    QTRY_COMPARE(c.scanned.count(), 2);
    QVERIFY(item->have_cf());
}

void TestCFModel::is_not_fully_scanned_from_when_another_item_is_asked_for()
{
    Modelled c;
    QVERIFY(c.connect());
    QVERIFY(c.scan());
    CFItemModel *item = c.model->get_item(text("VideoAspectRatio"));
    QVERIFY(!c.model->is_fully_scanned());
    QVERIFY(c.scan());
    QVERIFY(item->have_cf());
    c.model->get_item(text("VideoAspectRatio"));
    QVERIFY(c.model->is_fully_scanned());
}

void TestCFModel::rests_when_everything_is_here()
{
    Modelled c;
    c.model->get_item(text("VideoAspectRatio"));
    auto const *timer = c.model->findChild<ATimer *>();
    QVERIFY(timer && timer->isActive());
    QVERIFY(c.connect());
    QVERIFY(c.scan());
    QTRY_VERIFY(!timer->isActive());
    c.model->update();
    QVERIFY(timer->isActive());
    QTRY_VERIFY(!timer->isActive());
    QVERIFY(c.model->is_fully_scanned());
}

void TestCFModel::an_unknown_name_is_answered_and_not_asked_again()
{
    Modelled c;
    CFItemModel *item = c.model->get_item(text("NoSuchItem"));
    QVERIFY(c.connect());
    QTRY_COMPARE(c.scanned.count(), 1);
    c.model->update();
    c.model->get_item(text("VideoAspectRatio"));
    QTRY_COMPARE(c.scanned.count(), 2);
    QVERIFY(!item->have_cf());
    QCOMPARE(item->get(), QString());
    QCOMPARE(c.count("get_one_configuration"), 2U);
}

void TestCFModel::a_helper_that_fetches_nothing_is_an_assertion()
{
    Modelled c;
    CFItemModel *item = c.model->get_item(text("VideoAspectRatio"));
    QList<CFModelGetOneHelper *> const helpers = c.model->findChildren<CFModelGetOneHelper *>();
    QCOMPARE(helpers.size(), 6);
    VCTP3::ConfigurationItem cf;
    cf.configuration_item_name = "VideoAspectRatio"_a;
    AssertLog asserts;
    Q_EMIT helpers[2]->sig_one_configuration_item(2, cf);
    Q_EMIT helpers[2]->sig_error(2, "no"_a, VCTP3::ErrorCode::general);
    QString const not_busy = text("!d->get_one_cb_freelist.contains(icb)");
    QCOMPARE(asserts.take(), (QStringList{not_busy, not_busy}));
    Q_EMIT helpers[0]->sig_error(6, "no"_a, VCTP3::ErrorCode::general);
    QCOMPARE(asserts.take(), QStringList{text("d->get_one_in_process.contains(icb)")});
    QVERIFY(!item->have_cf());
}

void TestCFModel::every_connection_registers_for_changes()
{
    Modelled c;
    for (quint64 connection = 1; connection <= 3; ++connection) {
        QVERIFY(c.connect());
        QVERIFY(c.sync());
        QCOMPARE(c.count("report_register"), connection);
        QVERIFY(c.lose());
    }
}

void TestCFModel::another_clients_change_arrives()
{
    Modelled c;
    CFItemModel *item = c.model->get_item(text("VideoAspectRatio"));
    QVERIFY(c.connect());
    QVERIFY(c.scan());
    QSignalSpy changed(item, qOverload<QString const &>(&CFItemModel::changed));
    QSignalSpy model_changed(c.model, &CFModel::changed);
    c.set_on_server("VideoAspectRatio"_a, "4x3"_a);
    QTRY_COMPARE(item->get(), text("4x3"));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(model_changed.count(), 1);
    QCOMPARE(c.count("get_one_configuration"), 1U);
}

void TestCFModel::a_change_of_an_item_that_nobody_asked_for_is_passed_over()
{
    Modelled c;
    QVERIFY(c.connect());
    QVERIFY(c.scan());
    QVERIFY(c.sync());
    QSignalSpy reports(&c.api, &APIQt::report_config_changed);
    QSignalSpy changed(c.model, &CFModel::changed);
    c.set_on_server("VideoAspectRatio"_a, "4x3"_a);
    QTRY_COMPARE(reports.count(), 1);
    QVERIFY(c.sync());
    QCOMPARE(changed.count(), 0);
    QCOMPARE(c.count("get_one_configuration"), 0U);
}

void TestCFModel::a_change_that_names_no_item_reads_all_items_again()
{
    Modelled c;
    CFItemModel *item = c.model->get_item(text("VideoAspectRatio"));
    c.model->get_item(text("ReferenceSource"));
    QVERIFY(c.connect());
    QTRY_COMPARE(c.scanned.count(), 1);
    c.server.say("<report><config_changed/></report>");
    QTRY_COMPARE(c.scanned.count(), 2);
    QCOMPARE(c.count("get_one_configuration"), 4U);
    QVERIFY(item->have_cf());
}

void TestCFModel::a_change_that_names_no_item_waits_for_the_fetches_in_flight()
{
    ScriptedServer server;
    APIQt api;
    CFModel *model = CFModel::create(false, &api);
    model->get_item(panel(0));
    model->get_item(panel(1));
    QSignalSpy reports(&api, &APIQt::report_config_changed);
    api.connect_to_server(server.address());
    QTRY_COMPARE(fetches(server).size(), 2);
    server.say("<report><config_changed/></report>");
    QTRY_COMPARE(reports.count(), 1);
    api.cmd_sync();
    QTRY_VERIFY(server.commands().last().contains("<sync"));
    QCOMPARE(fetches(server).size(), 2);
    QList<QByteArray> const commands = server.commands();
    for (QByteArray const &command : commands)
        if (command.contains("<get_one_configuration>"))
            server.say(unknown_item(command));
    QTRY_COMPARE(fetches(server).size(), 4);
    QVERIFY(!model->is_fully_scanned());
}

/// An edit stays, as with every other item that is not here.
void TestCFModel::an_item_that_the_next_server_does_not_know_is_forgotten()
{
    ScriptedServer without;
    without.answer_with(unknown_item);
    Modelled c;
    CFItemModel *item = c.model->get_item(text("VideoAspectRatio"));
    CFItemModel *typed = c.model->get_item(text("ControlPanel_ID0"));
    QVERIFY(c.connect());
    QVERIFY(c.scan());
    c.server.fail_command("set_configuration", "not today");
    typed->set(text("mine"));
    c.model->commit_changes();
    QVERIFY(c.lose());
    QVERIFY(item->have_cf());
    QSignalSpy changed(item, qOverload<QString const &>(&CFItemModel::changed));
    c.api.connect_to_server(without.address());
    QVERIFY(c.scan());
    QVERIFY(!item->have_cf());
    QCOMPARE(item->get(), QString());
    QVERIFY(item->allowed_values().isEmpty());
    QCOMPARE(changed, (QList<QVariantList>{{QString()}}));
    QVERIFY(!typed->have_cf());
    QCOMPARE(typed->get(), text("mine"));
    // What was sent to the server before is of no account.
    typed->set(QString());
    QVERIFY(!typed->have_changes());
}

void TestCFModel::a_reconnection_fetches_every_item_again()
{
    Modelled c;
    CFItemModel *item = c.model->get_item(text("VideoAspectRatio"));
    c.model->get_item(text("NoSuchItem"));
    QVERIFY(c.connect());
    QTRY_COMPARE(c.scanned.count(), 1);
    c.server.stop();
    QTRY_VERIFY(!c.api.is_connected());
    QVERIFY(!c.model->is_fully_scanned());
    QCOMPARE(item->get(), text("16x9"));
    c.set_on_server("VideoAspectRatio"_a, "4x3"_a);
    c.server.restart(VeskState::keep);
    QVERIFY(c.connect());
    QTRY_COMPARE(c.scanned.count(), 2);
    QCOMPARE(item->get(), text("4x3"));
    QCOMPARE(c.count("get_one_configuration"), 4U);
}

void TestCFModel::a_connection_that_goes_during_the_scan_leaves_no_fetch_behind()
{
    Modelled c;
    QList<CFItemModel *> items;
    for (int number = 0; number < 8; ++number)
        items += c.model->get_item(QStringLiteral("ChannelConfigurationSet%1").arg(number));
    c.server.stay_silent(true);
    QVERIFY(c.connect());
    QTRY_COMPARE(c.count("get_one_configuration"), 6U);
    QVERIFY(c.lose());
    c.server.stay_silent(false);
    AssertLog asserts;
    QVERIFY(c.connect());
    QTRY_COMPARE(c.scanned.count(), 1);
    for (CFItemModel const *item : items)
        QVERIFY(item->have_cf());
    QCOMPARE(c.count("get_one_configuration"), 14U);
    QCOMPARE(asserts.take(), QStringList());
}

void TestCFModel::a_fetch_that_fails_leaves_an_item_that_the_server_knows()
{
    Modelled c;
    CFItemModel *item = c.model->get_item(text("VideoAspectRatio"));
    QVERIFY(c.connect());
    QTRY_COMPARE(c.scanned.count(), 1);
    QSignalSpy changed(item, qOverload<>(&CFItemModel::changed));
    c.server.fail_command("get_one_configuration", "busy");
    c.server.say("<report><config_changed/></report>");
    QTRY_COMPARE(c.scanned.count(), 2);
    QVERIFY(item->have_cf());
    c.server.clear_faults();
    c.server.stay_silent(true);
    c.server.say("<report><config_changed/></report>");
    QTRY_COMPARE(c.count("get_one_configuration"), 3U);
    QVERIFY(c.lose());
    c.server.clear_faults();
    QVERIFY(c.connect());
    QTRY_COMPARE(c.scanned.count(), 3);
    QVERIFY(item->have_cf());
    QCOMPARE(changed.count(), 0);
}

void TestCFModel::a_disconnection_ends_every_fetch()
{
    SevenItems c;
    QVERIFY(c.connect());
    // Told by hand, since at its own end a connection fails what is out before it tells.
    Q_EMIT c.api.disconnected();
    Q_EMIT c.api.connected();
    QTRY_COMPARE(fetches(c.server).size(), 12);
}

void TestCFModel::a_model_may_go_with_fetches_in_flight()
{
    SevenItems c;
    QVERIFY(c.connect());
    QList<QByteArray> const commands = c.server.commands();
    AssertLog asserts;
    delete c.model;
    for (QByteArray const &command : commands)
        if (command.contains("<get_one_configuration>"))
            c.server.say(unknown_item(command));
    // The answers to the model that is here now come behind those.
    c.server.answer_with(unknown_item);
    CFModel *next = CFModel::create(false, &c.api);
    next->get_item(panel(0));
    QTRY_VERIFY(next->is_fully_scanned());
    QCOMPARE(fetches(c.server).size(), 7);
    QCOMPARE(asserts.take(), QStringList());
}

void TestCFModel::many_restarts_leave_the_items_as_the_server_has_them()
{
    Modelled c;
    CFItemModel *item = c.model->get_item(text("ControlPanel_ID0"));
    for (int number = 0; number < 8; ++number)
        c.model->get_item(QStringLiteral("ChannelConfigurationSet%1").arg(number));
    AssertLog asserts;
    for (int round = 0; round < 30; ++round) {
        QString const value = QString::number(round);
        c.set_on_server("ControlPanel_ID0"_a, value);
        QVERIFY(c.connect());
        // Every third connection goes before anything has been read.
        if (round % 3 != 0) {
            QVERIFY(c.scan());
            QCOMPARE(item->get(), value);
        }
        QVERIFY(c.lose());
    }
    QCOMPARE(asserts.take(), QStringList());
}

void TestCFModel::an_item_may_be_asked_for_from_another_thread()
{
    Modelled c;
    QVERIFY(c.connect());
    QTRY_COMPARE(c.scanned.count(), 1);
    QList<CFItemModel *> items(100);
    std::thread other([&] {
        for (int number = 0; number < 100; ++number)
            items[number] = c.model->get_item(panel(number));
    });
    for (int number = 0; number < 100; ++number)
        c.model->get_item(panel(number));
    other.join();
    for (int number = 0; number < 100; ++number) {
        QCOMPARE(c.model->get_item(panel(number)), items[number]);
        QCOMPARE(items[number]->thread(), thread());
    }
    QTRY_VERIFY(items[3]->have_cf());
    QVERIFY(c.scan());
    QCOMPARE(c.count("get_one_configuration"), 100U);
}

QTEST_GUILESS_MAIN(TestCFModel)
#include "tst_cf_model.moc"
