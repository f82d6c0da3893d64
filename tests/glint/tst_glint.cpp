// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/cf_channel_config.h"
#include "ATarnLib/glint/glint.h"
#include "ATarnLib/glint/us_model.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/areusable_ref_object.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/atimer.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/computer_name.h"
#include "tests/glint/hub_bench.h"
#include "tests/support/assert_log.h"
#include "tests/support/own_network.h"
#include "tests/support/patience.h"
#include "tests/support/scripted_server.h"

#include <QSignalSpy>
#include <QTcpSocket>
#include <QTest>
#include <thread>

using VCTP3::Channel;

/// What a reference needs to know of a database.
class LightStoreDBObject : public AReusableRefObject
{
};

namespace {

Channel channel(int number)
{
    return static_cast<Channel>(number);
}

/// The commands of a connection but those of the models and the test.
QStringList registrations(WireLog const &log)
{
    QStringList result;
    for (QString const &text : log.commands())
        if (text.contains(QStringLiteral("report_"))
            && !text.endsWith(QStringLiteral("config_change")))
            result.append(text);
    return result;
}

} // namespace

/// The connection of a hub, and what it renews on each.
class TestGlint : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void connects_to_nothing_before_a_server_is_set();
    void connects_by_itself_data();
    void connects_by_itself();
    void the_name_given_to_the_constructor_is_the_server();
    void the_name_of_this_computer_makes_the_hub_local_data();
    void the_name_of_this_computer_makes_the_hub_local();
    void what_was_set_last_is_the_server();
    void an_address_takes_the_place_of_a_name_each_time();
    void a_connection_is_left_alone_by_the_timer();
    void a_second_server_of_the_same_name_or_address_changes_nothing_data();
    void a_second_server_of_the_same_name_or_address_changes_nothing();
    void a_name_given_while_connected_waits_for_the_connection_to_drop();
    void an_address_given_while_connected_waits_for_the_connection_to_drop();
    void an_address_given_while_connected_removes_outside_receivers_of_the_socket();
    void an_address_connects_at_once();
    void a_name_waits_for_the_timer();
    void localhost_is_the_loopback_address();
    void the_connection_comes_back_by_itself();
    void tries_every_200_ms_without_an_end();
    void sends_through_the_event_loop_in_order();
    void sends_from_any_thread();
    void sends_at_once_without_threading();
    void the_rest_of_a_message_never_begins_a_connection();
    void commands_without_a_connection_fail();
    void melt_and_export_are_registered_now_and_renewed_data();
    void melt_and_export_are_registered_now_and_renewed();
    void a_list_request_made_while_unconnected_survives();
    void list_requests_are_sent_without_asking_for_the_connection();
    void two_requests_and_one_unrequest_leave_the_report_registered();
    void every_request_registers();
    void lists_and_chases_share_one_counter_data();
    void lists_and_chases_share_one_counter();
    void an_unrequest_at_zero_changes_nothing();
    void a_channel_of_80_is_an_assertion();
    void a_channel_from_40_to_79_goes_out_without_text();
    void a_connection_unloads_and_registers_lists_and_chases_in_order();
    void alerts_are_registered_once_however_late_another_thread_asks();
    void a_second_local_hub_sees_the_models_of_the_first_while_that_lives();
    void stores_need_a_manager();
};

void TestGlint::alerts_are_registered_once_however_late_another_thread_asks()
{
    HubBench bench;
    // Between the connection and what the hub sends on it.
    connect(bench.hub.get(), &Glint::stateChanged, this, [&](QAbstractSocket::SocketState state) {
        if (state == QAbstractSocket::ConnectedState)
            std::thread([&] { bench.hub->get_alert_model(); }).join();
    });
    QVERIFY(bench.connect());
    QString const alerts = QStringLiteral("report_register alerts");
    QCOMPARE(bench.log.commands(alerts).size(), 1);
    QVERIFY(bench.reconnect());
    QCOMPARE(bench.log.commands(alerts).size(), 2);
}

void TestGlint::a_second_local_hub_sees_the_models_of_the_first_while_that_lives()
{
    auto first = std::make_unique<Glint>(true);
    AssertLog asserts;
    Glint second(true);
    QCOMPARE(
        asserts.take(), (QStringList{QStringLiteral("api == 0"), QStringLiteral("glint == 0")}));
    QCOMPARE(second.get_cf_model(), first->get_cf_model());
    QCOMPARE(second.get_us_model(), first->get_us_model());
    second.get_us_model()->userdict_change(
        AString::l1("cf.orchard.0.channel_count"), AString::l1("6"));
    QCOMPARE(second.get_channel_config()->channel_count(), 6U);
    first.reset();
    QVERIFY(second.get_cf_model() == nullptr);
    QVERIFY(second.get_us_model() == nullptr);
    QCOMPARE(second.get_channel_config()->cf_value_list(), QStringList(8, QString()));
    QCOMPARE(second.get_channel_config()->channel_count(), 0U);
    QVERIFY(!second.get_channel_config()->have_cf());
    QVERIFY(!second.get_channel_config()->have_cf(0));
    QVERIFY(!second.get_channel_config()->present(0U));
    second.get_channel_config()->debug_out();
}

void TestGlint::connects_to_nothing_before_a_server_is_set()
{
    Glint hub(false);
    QCOMPARE(hub.objectName(), QStringLiteral("Glint"));
    QSignalSpy states(&hub, &Glint::stateChanged);
    hub.stay_connected();
    QCOMPARE(states.count(), 0);
}

void TestGlint::connects_by_itself_data()
{
    QTest::addColumn<bool>("by_name");
    QTest::newRow("address") << false;
    QTest::newRow("name") << true;
}

void TestGlint::connects_by_itself()
{
    QFETCH(bool, by_name);
    HubBench bench;
    if (by_name)
        bench.hub->set_server(bench.server.address().toString());
    else
        bench.hub->set_server(bench.server.address());
    QTRY_VERIFY(bench.hub->is_connected());
}

void TestGlint::the_name_given_to_the_constructor_is_the_server()
{
    VeskSim server(LoopbackAddress::unique());
    Glint hub(server.address().toString());
    QTRY_VERIFY(hub.is_connected());
}

void TestGlint::the_name_of_this_computer_makes_the_hub_local_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("local");
    QTest::newRow("its own") << VCTP3::getcomputername_qs() << true;
    QTest::newRow("another") << VCTP3::getcomputername_qs() + QLatin1Char('x') << false;
    QTest::newRow("none") << QString() << false;
}

void TestGlint::the_name_of_this_computer_makes_the_hub_local()
{
    QFETCH(QString, name);
    QFETCH(bool, local);
    Glint const hub(name);
    QCOMPARE(hub.get_us_model() == USModel::localhost(), local);
    QCOMPARE(hub.get_cf_model() == CFModel::localhost(), local);
}

void TestGlint::what_was_set_last_is_the_server()
{
    HubBench bench;
    QString const name = bench.server.address().toString();
    // Each takes the place of the other, so the same name is no longer the one that is set.
    bench.hub->set_server(name);
    bench.hub->set_server(LoopbackAddress::unique()); // nobody listens there
    bench.hub->set_server(name);
    QTRY_VERIFY(bench.hub->is_connected());
}

void TestGlint::an_address_takes_the_place_of_a_name_each_time()
{
    HubBench bench;
    QString const nobody = LoopbackAddress::unique().toString();
    bench.hub->set_server(nobody);
    QVERIFY(bench.connect());
    bench.hub->set_server(nobody);
    bench.hub->set_server(bench.server.address());
    QVERIFY(bench.reconnect());
}

void TestGlint::a_connection_is_left_alone_by_the_timer()
{
    HubBench bench;
    QVERIFY(bench.connect());
    VCTP3::CallbackGroup_set1 group;
    QSignalSpy oks(&group, &VCTP3::CallbackGroup_set1::sig_ok);
    QSignalSpy errors(&group, &VCTP3::CallbackGroup_set1::sig_error);
    bench.hub->cmd_sync(group);
    bench.hub->stay_connected();
    QTRY_COMPARE(oks.count() + errors.count(), 1);
    QCOMPARE(errors.count(), 0);
}

void TestGlint::a_second_server_of_the_same_name_or_address_changes_nothing_data()
{
    connects_by_itself_data();
}

void TestGlint::a_second_server_of_the_same_name_or_address_changes_nothing()
{
    QFETCH(bool, by_name);
    HubBench bench;
    auto const set = [&] {
        if (by_name)
            bench.hub->set_server(bench.server.address().toString());
        else
            bench.hub->set_server(bench.server.address());
    };
    set();
    QTRY_VERIFY(bench.hub->is_connected());
    QSignalSpy states(bench.hub.get(), &Glint::stateChanged);
    QSignalSpy socket(bench.hub->findChild<QTcpSocket *>(), &QTcpSocket::readyRead);
    set();
    QVERIFY(bench.sync());
    QVERIFY(socket.count() > 0);
    QCOMPARE(states.count(), 0);
    QCOMPARE(bench.server.counters().connections, 1u);
}

void TestGlint::a_name_given_while_connected_waits_for_the_connection_to_drop()
{
    HubBench bench;
    VeskSim other(LoopbackAddress::unique());
    QVERIFY(bench.connect());
    bench.hub->set_server(other.address().toString());
    bench.hub->stay_connected();
    QVERIFY(bench.sync());
    QCOMPARE(bench.server.counters().open_connections, 1u);
    QCOMPARE(other.counters().connections, 0u);
    bench.server.drop_connections();
    QTRY_COMPARE(other.counters().open_connections, 1u);
}

void TestGlint::an_address_given_while_connected_waits_for_the_connection_to_drop()
{
    HubBench bench;
    VeskSim other(LoopbackAddress::unique());
    QVERIFY(bench.connect());
    QSignalSpy disconnects(bench.hub.get(), &Glint::disconnected);
    bench.hub->set_server(other.address());
    bench.hub->stay_connected();
    QVERIFY(bench.sync());
    QCOMPARE(other.counters().connections, 0u);
    bench.server.drop_connections();
    QTRY_COMPARE(other.counters().open_connections, 1u);
    QTRY_VERIFY(bench.hub->is_connected());
    QCOMPARE(disconnects.count(), 1);
    QVERIFY(bench.sync());
}

void TestGlint::an_address_given_while_connected_removes_outside_receivers_of_the_socket()
{
    HubBench bench;
    QVERIFY(bench.connect());
    QSignalSpy reads(bench.hub->findChild<QTcpSocket *>(), &QTcpSocket::readyRead);
    QVERIFY(bench.sync());
    QVERIFY(reads.count() > 0);
    bench.hub->set_server(LoopbackAddress::unique());
    reads.clear();
    QVERIFY(bench.sync());
    QCOMPARE(reads.count(), 0);
}

void TestGlint::an_address_connects_at_once()
{
    Glint hub(false);
    QSignalSpy states(&hub, &Glint::stateChanged);
    hub.set_server(LoopbackAddress::unique());
    QVERIFY(states.count() > 0);
}

void TestGlint::a_name_waits_for_the_timer()
{
    VeskSim server(LoopbackAddress::unique());
    Glint hub(false);
    QSignalSpy states(&hub, &Glint::stateChanged);
    hub.set_server(server.address().toString());
    QCOMPARE(states.count(), 0);
    QTRY_VERIFY(hub.is_connected());
}

void TestGlint::localhost_is_the_loopback_address()
{
    // Somebody else may listen on the machine's own 127.0.0.1.
    if (!OwnNetwork::is_inside()) {
        QCOMPARE(OwnNetwork::run("localhost_is_the_loopback_address"), QString());
        return;
    }
    ScriptedServer server(QHostAddress(QHostAddress::LocalHost));
    Glint hub(true);
    hub.set_server_localhost();
    QCOMPARE(hub.findChild<QTcpSocket *>()->peerName(), QStringLiteral("127.0.0.1"));
    QTRY_VERIFY(hub.is_localhost());
    // It connects at once also when the address is set already.
    QSignalSpy states(&hub, &Glint::stateChanged);
    hub.findChild<QTcpSocket *>()->abort();
    states.clear();
    hub.set_server_localhost();
    QVERIFY(states.count() > 0);
}

void TestGlint::the_connection_comes_back_by_itself()
{
    HubBench bench;
    QVERIFY(bench.connect());
    QSignalSpy connects(bench.hub.get(), &Glint::connected);
    for (int round = 1; round <= 3; ++round) {
        bench.server.drop_connections();
        QTRY_COMPARE(connects.count(), round);
    }
    bench.server.stop();
    QTRY_VERIFY(!bench.hub->is_connected());
    bench.server.restart(VeskState::lose);
    QTRY_COMPARE(connects.count(), 4);
    QVERIFY(bench.sync());
}

void TestGlint::tries_every_200_ms_without_an_end()
{
    Glint hub(false);
    ATimer *timer = nullptr;
    for (ATimer *child : hub.findChildren<ATimer *>())
        if (child->isActive() && child->interval() == 200)
            timer = child;
    QVERIFY(timer);
    QVERIFY(!timer->isSingleShot());

    QSignalSpy states(&hub, &Glint::stateChanged);
    hub.set_server(LoopbackAddress::unique()); // nobody listens there
    auto const refusals = [&states] {
        int count = 0;
        for (auto const &arguments : states)
            count += arguments[0].value<QAbstractSocket::SocketState>()
                == QAbstractSocket::UnconnectedState;
        return count;
    };
    QTRY_VERIFY(refusals() >= 4);
}

void TestGlint::sends_through_the_event_loop_in_order()
{
    HubBench bench;
    QVERIFY(bench.connect());
    bench.log.take();
    QSignalSpy sends(bench.hub.get(), &Glint::indirect_send);
    QStringList expected;
    for (int i = 0; i < 50; ++i) {
        QString const text = QStringLiteral("label%1").arg(i);
        bench.hub->cmd_debug_label(AString(text));
        expected.append(QStringLiteral("debug_label ") + text);
    }
    QCOMPARE(sends.count(), 50);
    QVERIFY(bench.hub->findChild<QTcpSocket *>()->bytesToWrite() == 0);
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.commands(QStringLiteral("debug_label")), expected);
}

void TestGlint::sends_from_any_thread()
{
    HubBench bench;
    QVERIFY(bench.connect());
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&bench, t] {
            for (int i = 0; i < 100; ++i) {
                // Some take two blocks, and none may stand inside another.
                QString const filler(i % 10 == 0 ? 2000 : 1, QLatin1Char('x'));
                bench.hub->cmd_debug_label(
                    AString(QStringLiteral("%1 %2 %3").arg(t).arg(i).arg(filler)));
            }
        });
    for (std::thread &thread : threads)
        thread.join();
    QVERIFY(bench.sync());
    QStringList const labels = bench.log.commands(QStringLiteral("debug_label"));
    QCOMPARE(labels.size(), 400);
    int next[4] = {};
    for (QString const &label : labels) {
        QStringList const words = label.split(QLatin1Char(' '));
        QCOMPARE(words[2].toInt(), next[words[1].toInt()]++);
    }
    QCOMPARE(bench.server.counters().bad_messages, 0u);
}

void TestGlint::sends_at_once_without_threading()
{
    HubBench bench;
    QVERIFY(bench.connect());
    QSignalSpy sends(bench.hub.get(), &Glint::indirect_send);
    bench.hub->enable_threading(false);
    bench.hub->cmd_debug_label(AString::l1("direct"));
    QCOMPARE(sends.count(), 0);
    QVERIFY(bench.hub->findChild<QTcpSocket *>()->bytesToWrite() > 0);
    bench.hub->enable_threading();
    QVERIFY(bench.sync());
    for (auto const &arguments : sends)
        QVERIFY(!arguments[0].toByteArray().contains("direct"));
    QCOMPARE(bench.log.commands(QStringLiteral("debug_label")),
        QStringList(QStringLiteral("debug_label direct")));
}

void TestGlint::the_rest_of_a_message_never_begins_a_connection()
{
    ScriptedServer server;
    // What the models ask for stays unanswered.
    server.answer_with([](QByteArray const &command) {
        return command.contains("<sync") ? ScriptedServer::ok_to(command) : QByteArray();
    });
    Glint hub(false);
    QSignalSpy sends(&hub, &Glint::indirect_send);
    hub.set_server(server.address());
    QTRY_VERIFY(hub.is_connected());
    // Both blocks wait in the event loop when the next stream begins.
    sends.clear();
    hub.cmd_debug_label(AString(QString(2000, QLatin1Char('x'))));
    QCOMPARE(sends.count(), 2);
    hub.disconnect_from_server();
    QTRY_VERIFY(server.connections_made() == 2 && hub.is_connected());
    VCTP3::CallbackGroup_set1 group;
    bool done = false;
    connect(&group, &VCTP3::CallbackGroup_set1::sig_ok, &group, [&done] { done = true; });
    hub.cmd_sync(group);
    QTRY_VERIFY(done);
    QVERIFY(server.received().startsWith("<cmd>"));
    QVERIFY(!server.received().contains("xxx"));
}

void TestGlint::commands_without_a_connection_fail()
{
    Glint hub(false);
    VCTP3::CallbackGroup_set1 group;
    QStringList errors;
    connect(&group, &VCTP3::CallbackGroup_set1::sig_error, &group,
        [&errors](AString const &text, VCTP3::ErrorCode) { errors.append(QString(text)); });
    hub.cmd_sync(group);
    QVERIFY(errors.isEmpty());
    QTRY_COMPARE(errors, QStringList(QStringLiteral("Failing all outstanding commands")));
}

void TestGlint::melt_and_export_are_registered_now_and_renewed_data()
{
    QTest::addColumn<bool>("melt");
    QTest::addColumn<bool>("export_too");
    QTest::addColumn<bool>("before");
    QTest::addColumn<QStringList>("expected");
    QStringList const melt(QStringLiteral("report_register melt"));
    QStringList const exports(QStringLiteral("report_register export"));
    QTest::newRow("none") << false << false << true << QStringList();
    QTest::newRow("melt before") << true << false << true << melt;
    QTest::newRow("melt while connected") << true << false << false << melt;
    QTest::newRow("export before") << false << true << true << exports;
    QTest::newRow("export while connected") << false << true << false << exports;
    QTest::newRow("both before") << true << true << true << melt + exports;
    QTest::newRow("both while connected") << true << true << false << melt + exports;
}

void TestGlint::melt_and_export_are_registered_now_and_renewed()
{
    QFETCH(bool, melt);
    QFETCH(bool, export_too);
    QFETCH(bool, before);
    QFETCH(QStringList, expected);
    HubBench bench;
    auto const require = [&] {
        if (melt)
            bench.hub->require_melt_notification();
        if (export_too)
            bench.hub->require_export_notification();
    };
    QSignalSpy sends(bench.hub.get(), &Glint::indirect_send);
    if (before)
        require();
    QCOMPARE(sends.count(), 0);
    QVERIFY(bench.connect());
    if (!before)
        require();
    QVERIFY(bench.sync());
    QCOMPARE(registrations(bench.log), expected);
    bench.log.take();
    QVERIFY(bench.reconnect());
    QCOMPARE(registrations(bench.log), expected);
}

void TestGlint::a_list_request_made_while_unconnected_survives()
{
    HubBench bench;
    bench.hub->request_listplay_notification(channel(5));
    QVERIFY(bench.connect());
    QVERIFY(bench.log.registered().contains(QStringLiteral("F listplay")));
}

void TestGlint::list_requests_are_sent_without_asking_for_the_connection()
{
    Glint hub(false);
    QSignalSpy sends(&hub, &Glint::indirect_send);
    hub.request_listplay_notification(channel(5));
    hub.request_chaseplay_notification(channel(5));
    hub.unrequest_listplay_notification(channel(5));
    QCOMPARE(sends.count(), 2);
    hub.unrequest_chaseplay_notification(channel(5));
    hub.request_listplay_notification(channel(5));
    hub.unrequest_listplay_notification(channel(5));
    QCOMPARE(sends.count(), 5);
}

void TestGlint::two_requests_and_one_unrequest_leave_the_report_registered()
{
    HubBench bench;
    QVERIFY(bench.connect());
    bench.hub->request_listplay_notification(channel(5));
    bench.hub->request_listplay_notification(channel(5));
    bench.hub->unrequest_listplay_notification(channel(5));
    QVERIFY(bench.sync());
    QVERIFY(bench.log.registered().contains(QStringLiteral("F listplay")));
    bench.hub->unrequest_listplay_notification(channel(5));
    QVERIFY(bench.sync());
    QVERIFY(!bench.log.registered().contains(QStringLiteral("F listplay")));
}

void TestGlint::every_request_registers()
{
    HubBench bench;
    QVERIFY(bench.connect());
    bench.log.take();
    bench.hub->request_listplay_notification(channel(0));
    bench.hub->request_listplay_notification(channel(0));
    bench.hub->request_chaseplay_notification(channel(0));
    bench.hub->request_chaseplay_notification(channel(0));
    QVERIFY(bench.sync());
    QString const begin = QStringLiteral("channel_report_register A ");
    QCOMPARE(registrations(bench.log),
        QStringList({begin + QStringLiteral("listplay"), begin + QStringLiteral("listplay"),
            begin + QStringLiteral("chaseplay"), begin + QStringLiteral("chaseplay")}));
}

void TestGlint::lists_and_chases_share_one_counter_data()
{
    QTest::addColumn<bool>("list_last");
    QTest::addColumn<QString>("left_last");
    QTest::addColumn<QString>("stays");
    QTest::newRow("the list user leaves last")
        << true << QStringLiteral("B listplay") << QStringLiteral("B chaseplay");
    QTest::newRow("the chase user leaves last")
        << false << QStringLiteral("B chaseplay") << QStringLiteral("B listplay");
}

void TestGlint::lists_and_chases_share_one_counter()
{
    QFETCH(bool, list_last);
    QFETCH(QString, left_last);
    QFETCH(QString, stays);
    HubBench bench;
    QVERIFY(bench.connect());
    bench.hub->request_listplay_notification(channel(1));
    bench.hub->request_chaseplay_notification(channel(1));
    if (list_last)
        bench.hub->unrequest_chaseplay_notification(channel(1));
    bench.hub->unrequest_listplay_notification(channel(1));
    if (!list_last)
        bench.hub->unrequest_chaseplay_notification(channel(1));
    QVERIFY(bench.sync());
    // The report of the user who left first stays.
    QCOMPARE(bench.log.commands(QStringLiteral("channel_report_unregister")),
        QStringList(QStringLiteral("channel_report_unregister ") + left_last));
    QVERIFY(bench.log.registered().contains(stays));
}

void TestGlint::an_unrequest_at_zero_changes_nothing()
{
    HubBench bench;
    QVERIFY(bench.connect());
    bench.log.take();
    AssertLog asserts;
    bench.hub->unrequest_listplay_notification(channel(2));
    bench.hub->unrequest_chaseplay_notification(channel(2));
    QVERIFY(bench.sync());
    QCOMPARE(registrations(bench.log), QStringList());
    QCOMPARE(asserts.take(), QStringList());
    bench.hub->request_listplay_notification(channel(2));
    bench.hub->unrequest_listplay_notification(channel(2));
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.commands(QStringLiteral("channel_report_unregister")).size(), 1);
}

void TestGlint::a_channel_of_80_is_an_assertion()
{
    HubBench bench;
    QVERIFY(bench.connect());
    bench.log.take();
    AssertLog asserts;
    for (int number : {80, 81, -1}) {
        bench.hub->request_listplay_notification(channel(number));
        bench.hub->request_chaseplay_notification(channel(number));
        bench.hub->unrequest_listplay_notification(channel(number));
        bench.hub->unrequest_chaseplay_notification(channel(number));
    }
    QCOMPARE(asserts.take(), QStringList(12, QStringLiteral("channel < countof(rq_listplay)")));
    QVERIFY(bench.sync());
    QCOMPARE(registrations(bench.log), QStringList());
}

void TestGlint::a_channel_from_40_to_79_goes_out_without_text()
{
    HubBench bench;
    QVERIFY(bench.connect());
    bench.log.take();
    AssertLog asserts;
    bench.hub->request_listplay_notification(channel(40));
    bench.hub->request_chaseplay_notification(channel(79));
    QVERIFY(bench.sync());
    QCOMPARE(registrations(bench.log),
        QStringList({QStringLiteral("channel_report_register listplay"),
            QStringLiteral("channel_report_register chaseplay")}));
    QCOMPARE(asserts.take(), QStringList());
}

void TestGlint::a_connection_unloads_and_registers_lists_and_chases_in_order()
{
    HubBench bench;
    QVERIFY(bench.connect());
    for (int number : {79, 7, 3, 3, 0})
        bench.hub->request_listplay_notification(channel(number));
    bench.hub->unrequest_listplay_notification(channel(3));
    bench.hub->request_chaseplay_notification(channel(1));
    bench.hub->unrequest_chaseplay_notification(channel(1));
    QVERIFY(bench.sync());
    bench.log.take();

    QStringList done;
    connect(bench.hub.get(), &Glint::report_channel_listplay_unloaded, this,
        [&](Channel which) { done.append(QStringLiteral("list %1 unloaded").arg(int(which))); });
    connect(bench.hub.get(), &Glint::report_channel_chaseplay_unloaded, this,
        [&](Channel which) { done.append(QStringLiteral("chase %1 unloaded").arg(int(which))); });
    connect(bench.hub.get(), &Glint::indirect_send, this, [&](QByteArray const &command) {
        for (QString const &report : {QStringLiteral("listplay"), QStringLiteral("chaseplay")})
            if (command.contains(report.toUtf8()))
                done.append(report);
    });
    QStringList by_the_hub;
    connect(bench.hub.get(), &Glint::connected, this, [&] { by_the_hub = done; });
    QVERIFY(bench.reconnect());
    QStringList expected;
    for (int number : {0, 3, 7, 79})
        expected += {QStringLiteral("list %1 unloaded").arg(number), QStringLiteral("listplay"),
            QStringLiteral("chase %1 unloaded").arg(number), QStringLiteral("chaseplay")};
    QCOMPARE(by_the_hub, expected);
    QString const begin = QStringLiteral("channel_report_register ");
    QCOMPARE(registrations(bench.log),
        QStringList({begin + QStringLiteral("A listplay"), begin + QStringLiteral("A chaseplay"),
            begin + QStringLiteral("D listplay"), begin + QStringLiteral("D chaseplay"),
            begin + QStringLiteral("H listplay"), begin + QStringLiteral("H chaseplay"),
            begin + QStringLiteral("listplay"), begin + QStringLiteral("chaseplay")}));
}

void TestGlint::stores_need_a_manager()
{
    Glint hub(false);
    AssertLog asserts;
    QVERIFY(!hub.lightstore(QStringLiteral("clips")));
    QCOMPARE(asserts.take(), QStringList(QStringLiteral("lightstore_manager != nullptr")));
}

QTEST_GUILESS_MAIN(TestGlint)
#include "tst_glint.moc"
