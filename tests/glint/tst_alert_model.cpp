// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/alert_model.h"
#include "sim/vesk/vesk_world.h"
#include "tests/glint/hub_bench.h"
#include "tests/support/assert_log.h"
#include "tests/support/astring_make.h"
#include "tests/support/count_here.h"
#include "tests/support/patience.h"

#include <QSignalSpy>
#include <QTest>

#include <atomic>
#include <thread>

using VCTP3::Alert;
using VCTP3::AlertingLevel;

/// What a server has to say about its health.
class TestAlertModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void the_hub_has_one_model_whoever_asks_first();
    void the_hub_registers_for_alerts_once_somebody_has_asked();
    void a_model_that_another_thread_asks_for_is_registered();
    void an_item_has_no_alert_at_first();
    void one_name_gives_one_item();
    void an_empty_name_gives_none();
    void shows_what_the_server_tells();
    void equal_alerts_give_one_change();
    void an_alert_without_a_name_is_dropped();
    void an_alert_of_another_name_is_an_assertion();
    void an_alert_on_another_thread_is_an_assertion();
    void reports_are_taken_on_a_thread_of_its_own();
    void a_new_name_is_told_once();
    void several_threads_get_the_same_items();
    void alerts_stay_without_a_connection();
    void a_burst_is_taken_in_order();
    void goes_while_reports_come();
    void goes_on_another_thread_while_reports_come();
    void follows_the_servers_temperature();
    void a_missing_model_or_hub_is_an_assertion();
};

namespace {

Alert alert(AString const &name, AlertingLevel level)
{
    Alert result;
    result.alert_name = name;
    result.alerting_level = level;
    result.alert_name_description = "Description"_a;
    return result;
}

/// A connected hub that is registered for alerts, and a model of them.
struct Bench : HubBench
{
    AlertModel *model = nullptr;

    bool begin()
    {
        if (!connect())
            return false;
        model = hub->get_alert_model();
        return sync();
    }
    void raise(Alert const &what)
    {
        server.with_world([&](VeskWorld &world) { world.alerts.set(what); });
    }
    /// Returns when the model's thread has taken what has come so far.
    bool settle()
    {
        if (!sync())
            return false;
        QMetaObject::invokeMethod(
            model, [] {}, Qt::BlockingQueuedConnection);
        return true;
    }
    AOption<Alert> held(char const *name) { return model->get(QString::fromLatin1(name))->get(); }
};

} // namespace

void TestAlertModel::the_hub_has_one_model_whoever_asks_first()
{
    for (int round = 0; round < 30; ++round) {
        Glint hub(false);
        std::atomic<int> ready{0};
        AlertModel *seen[2] = {};
        auto const ask = [&](int who) {
            for (++ready; ready < 2;) { }
            seen[who] = hub.get_alert_model();
        };
        std::thread other([&] { ask(0); });
        ask(1);
        other.join();
        QVERIFY(seen[0] != nullptr);
        QCOMPARE(seen[0], seen[1]);
        QCOMPARE(hub.get_alert_model(), seen[0]);
    }
}

void TestAlertModel::the_hub_registers_for_alerts_once_somebody_has_asked()
{
    HubBench b;
    QString const wish = QStringLiteral("report_register alerts");
    QVERIFY(b.connect());
    QCOMPARE(b.log.commands(wish).size(), 0);
    AlertModel *model = b.hub->get_alert_model();
    QCOMPARE(b.hub->get_alert_model(), model);
    QVERIFY(b.sync());
    QCOMPARE(b.log.commands(wish).size(), 1);
    QVERIFY(b.reconnect());
    QCOMPARE(b.log.commands(wish).size(), 2);
}

void TestAlertModel::a_model_that_another_thread_asks_for_is_registered()
{
    HubBench b;
    QVERIFY(b.connect());
    std::thread([&] { b.hub->get_alert_model(); }).join();
    QTRY_COMPARE(b.log.commands(QStringLiteral("report_register alerts")).size(), 1);
}

void TestAlertModel::an_item_has_no_alert_at_first()
{
    Bench b;
    QVERIFY(b.begin());
    AlertItemModel *item = b.model->get(QStringLiteral("fan"));
    QCOMPARE(item->get_name(), QStringLiteral("fan"));
    QVERIFY(!item->get().has_value());
}

void TestAlertModel::one_name_gives_one_item()
{
    Bench b;
    QVERIFY(b.begin());
    AlertItemModel *item = b.model->get(QStringLiteral("fan"));
    QCOMPARE(b.model->get(QStringLiteral("fan")), item);
    QVERIFY(b.model->get(QStringLiteral("Fan")) != item);
}

void TestAlertModel::an_empty_name_gives_none()
{
    Bench b;
    QVERIFY(b.begin());
    QVERIFY(b.model->get(QString()) == nullptr);
    QVERIFY(b.model->names().isEmpty());
}

void TestAlertModel::shows_what_the_server_tells()
{
    Bench b;
    QVERIFY(b.begin());
    AlertItemModel *item = b.model->get(QStringLiteral("fan"));
    CountHere changed(item, &AlertItemModel::changed);
    std::atomic<int> of_another_name{0};
    connect(
        item, &AlertItemModel::changed, item,
        [&](QString const &name) { of_another_name += name == QStringLiteral("fan") ? 0 : 1; },
        Qt::DirectConnection);
    b.raise(alert("fan"_a, AlertingLevel::error));
    QTRY_COMPARE(changed.count(), 1);
    QVERIFY(item->get() == alert("fan"_a, AlertingLevel::error));
    b.raise(alert("fan"_a, AlertingLevel::ok));
    QTRY_COMPARE(changed.count(), 2);
    QCOMPARE(of_another_name.load(), 0);
    QVERIFY(item->get() == alert("fan"_a, AlertingLevel::ok));
}

void TestAlertModel::equal_alerts_give_one_change()
{
    Bench b;
    QVERIFY(b.begin());
    CountHere changed(b.model->get(QStringLiteral("fan")), &AlertItemModel::changed);
    QSignalSpy reports(b.hub.get(), &Glint::report_alert);
    Q_EMIT b.hub->report_alert(alert("fan"_a, AlertingLevel::warning));
    Q_EMIT b.hub->report_alert(alert("fan"_a, AlertingLevel::warning));
    QVERIFY(b.settle());
    QCOMPARE(reports.count(), 2);
    QTRY_COMPARE(changed.count(), 1);
    QVERIFY(b.settle());
    QCOMPARE(changed.count(), 1);
}

void TestAlertModel::an_alert_without_a_name_is_dropped()
{
    Bench b;
    QVERIFY(b.begin());
    AssertLog asserts;
    Q_EMIT b.hub->report_alert(alert(AString(), AlertingLevel::error));
    QVERIFY(b.settle());
    QVERIFY(b.model->names().isEmpty());
    QCOMPARE(asserts.take(), QStringList());
}

void TestAlertModel::an_alert_of_another_name_is_an_assertion()
{
    Bench b;
    QVERIFY(b.begin());
    AlertItemModel *item = b.model->get(QStringLiteral("fan"));
    AssertLog asserts;
    static std::atomic<AlertItemModel *> told{nullptr};
    told = item;
    QMetaObject::invokeMethod(
        item, [] { told.load()->report_alert(alert("power"_a, AlertingLevel::error)); },
        Qt::BlockingQueuedConnection);
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("alert.name == name")});
    QVERIFY(!item->get().has_value());
}

void TestAlertModel::an_alert_on_another_thread_is_an_assertion()
{
    Bench b;
    QVERIFY(b.begin());
    AlertItemModel *item = b.model->get(QStringLiteral("fan"));
    AssertLog asserts;
    item->report_alert(alert("fan"_a, AlertingLevel::error));
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("QThread::currentThread() == thread()")});
    QVERIFY(!item->get().has_value());
}

void TestAlertModel::reports_are_taken_on_a_thread_of_its_own()
{
    Bench b;
    QVERIFY(b.begin());
    QVERIFY(b.model->thread() != thread());
    AlertItemModel *item = b.model->get(QStringLiteral("fan"));
    QCOMPARE(item->thread(), b.model->thread());
    std::atomic<QThread *> told_on{nullptr};
    connect(
        item, &AlertItemModel::changed, item, [&] { told_on = QThread::currentThread(); },
        Qt::DirectConnection);
    b.raise(alert("fan"_a, AlertingLevel::error));
    QVERIFY(b.settle());
    QCOMPARE(told_on.load(), b.model->thread());
}

void TestAlertModel::a_new_name_is_told_once()
{
    Bench b;
    QVERIFY(b.begin());
    CountHere added(b.model, &AlertModel::added);
    b.raise(alert("power"_a, AlertingLevel::error));
    b.raise(alert("fan"_a, AlertingLevel::error));
    b.raise(alert("fan"_a, AlertingLevel::warning));
    QVERIFY(b.settle());
    QTRY_COMPARE(added.count(), 2);
    b.model->get(QStringLiteral("fan"));
    QCOMPARE(added.count(), 2);
    QCOMPARE(b.model->names(), (QStringList{QStringLiteral("fan"), QStringLiteral("power")}));
}

void TestAlertModel::several_threads_get_the_same_items()
{
    Bench b;
    QVERIFY(b.begin());
    std::vector<AlertItemModel *> seen[2];
    std::thread other([&] {
        for (int i = 0; i < 200; ++i)
            seen[0].push_back(b.model->get(QString::number(i)));
    });
    for (int i = 0; i < 200; ++i)
        seen[1].push_back(b.model->get(QString::number(i)));
    other.join();
    QVERIFY(seen[0] == seen[1]);
}

void TestAlertModel::alerts_stay_without_a_connection()
{
    Bench b;
    QVERIFY(b.begin());
    b.raise(alert("fan"_a, AlertingLevel::error));
    QVERIFY(b.settle());
    b.server.stop();
    QTRY_VERIFY(!b.hub->is_connected());
    QVERIFY(b.held("fan") == alert("fan"_a, AlertingLevel::error));
}

void TestAlertModel::a_burst_is_taken_in_order()
{
    Bench b;
    QVERIFY(b.begin());
    AProtect<QStringList> const taken;
    connect(
        b.model, &AlertModel::added, b.model,
        [&](QString const &name) { AProtect<QStringList>::Lock(taken)->append(name); },
        Qt::DirectConnection);
    QStringList told;
    for (int i = 0; i < 500; ++i) {
        told.append(QString::number(i));
        Q_EMIT b.hub->report_alert(alert(AString(told.last()), AlertingLevel::warning));
        Q_EMIT b.hub->report_alert(alert(AString(told.last()), AlertingLevel::error));
    }
    QVERIFY(b.settle());
    QCOMPARE(*AProtect<QStringList>::Lock(taken), told);
    for (QString const &name : told)
        QCOMPARE(b.model->get(name)->get()->alerting_level, AlertingLevel::error);
}

void TestAlertModel::goes_while_reports_come()
{
    Bench b;
    QVERIFY(b.begin());
    for (int i = 0; i < 20; ++i) {
        AlertModel other(b.hub.get());
        for (int n = 0; n < 50; ++n)
            Q_EMIT b.hub->report_alert(alert(AString(QString::number(n)), AlertingLevel::error));
    }
    QVERIFY(b.settle());
}

void TestAlertModel::goes_on_another_thread_while_reports_come()
{
    Bench b;
    QVERIFY(b.begin());
    std::atomic<bool> done{false};
    std::thread other([&] {
        for (int i = 0; i < 100; ++i)
            AlertModel const model(b.hub.get());
        done = true;
    });
    for (int n = 0; n < 5 || !done; ++n)
        Q_EMIT b.hub->report_alert(alert(AString(QString::number(n % 5)), AlertingLevel::error));
    other.join();
    QVERIFY(b.settle());
    QCOMPARE(b.model->names().size(), 5);
}

void TestAlertModel::follows_the_servers_temperature()
{
    Bench b;
    QVERIFY(b.begin());
    b.server.advance(60 * 5 * 5);
    QVERIFY(b.settle());
    QVERIFY(b.held("temperature").has_value());
    QCOMPARE(b.held("temperature")->alerting_level, AlertingLevel::warning);
    b.server.advance(60 * 5 * 9);
    QVERIFY(b.settle());
    QCOMPARE(b.held("temperature")->alerting_level, AlertingLevel::ok);
}

void TestAlertModel::a_missing_model_or_hub_is_an_assertion()
{
    AssertLog asserts;
    AlertModel model(nullptr);
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("hub != nullptr")});
    QVERIFY(!model.get(QStringLiteral("fan"))->get().has_value());
}

QTEST_GUILESS_MAIN(TestAlertModel)
#include "tst_alert_model.moc"
