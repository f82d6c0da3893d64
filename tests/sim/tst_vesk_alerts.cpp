// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_sim.h"
#include "sim/vesk/vesk_world.h"
#include "tests/support/loopback_address.h"
#include "tests/support/wire_peer.h"

#include <QTest>

/// What the server finds wrong with itself.
class TestVeskAlerts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tells_nothing_while_all_is_well();
    void tells_an_alert_to_those_registered();
    void tells_what_is_new_alone();
    void an_alert_that_was_never_raised_is_not_told_as_ok();
    void tells_all_that_were_raised_behind_the_ok();
    void warns_of_the_temperature();
    void warns_of_little_disk_space_data();
    void warns_of_little_disk_space();
};

namespace {

QByteArray const registration
    = "<report_register><ReportType>alerts</ReportType></report_register>";

QByteArray report(QByteArray const &level, QByteArray const &name)
{
    return "<alert><Alert><AlertingPriority>malfunction</AlertingPriority><AlertingLevel>" + level
        + "</AlertingLevel><AlertName>" + name
        + "</AlertName><AlertNameDescription>Description</AlertNameDescription>"
          "<AlertValueDescription>value</AlertValueDescription></Alert></alert>";
}

void raise(VeskSim *server, char const *name, VCTP3::AlertingLevel level)
{
    VCTP3::Alert alert;
    alert.alerting_priority = VCTP3::AlertingPriority::malfunction;
    alert.alerting_level = level;
    alert.alert_name = AString::l1(name);
    alert.alert_name_description = AString::l1("Description");
    alert.alert_value_description = AString::l1("value");
    server->with_world([&](VeskWorld &world) { world.alerts.set(alert); });
}

} // namespace

void TestVeskAlerts::tells_nothing_while_all_is_well()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(registration);
    server.advance(100);
    QCOMPARE(peer.sync_reports(), QByteArrayList());
}

void TestVeskAlerts::tells_an_alert_to_those_registered()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    WirePeer other(server.address());
    peer.call(registration);
    other.call("<sync/>");
    raise(&server, "fan", VCTP3::AlertingLevel::error);
    QCOMPARE(peer.sync_reports(), QByteArrayList{report("error", "fan")});
    QCOMPARE(other.sync_reports(), QByteArrayList());
}

void TestVeskAlerts::tells_what_is_new_alone()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(registration);
    raise(&server, "fan", VCTP3::AlertingLevel::error);
    raise(&server, "fan", VCTP3::AlertingLevel::error);
    raise(&server, "fan", VCTP3::AlertingLevel::ok);
    QCOMPARE(peer.sync_reports(), (QByteArrayList{report("error", "fan"), report("ok", "fan")}));
}

void TestVeskAlerts::an_alert_that_was_never_raised_is_not_told_as_ok()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(registration);
    raise(&server, "fan", VCTP3::AlertingLevel::ok);
    QCOMPARE(peer.sync_reports(), QByteArrayList());
}

void TestVeskAlerts::tells_all_that_were_raised_behind_the_ok()
{
    VeskSim server(LoopbackAddress::unique());
    raise(&server, "power", VCTP3::AlertingLevel::warning);
    raise(&server, "fan", VCTP3::AlertingLevel::error);
    raise(&server, "power", VCTP3::AlertingLevel::ok);
    WirePeer peer(server.address());
    peer.call(registration);
    QCOMPARE(peer.sync_reports(), (QByteArrayList{report("error", "fan"), report("ok", "power")}));
}

void TestVeskAlerts::warns_of_the_temperature()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(registration);
    server.advance(60 * 5 * 5 - 1);
    QCOMPARE(peer.sync_reports(), QByteArrayList());
    server.advance(1);
    QByteArrayList const reports = peer.sync_reports();
    QCOMPARE(reports.size(), 1);
    QVERIFY2(reports.at(0).contains("<AlertingLevel>warning</AlertingLevel>"
                                    "<AlertName>temperature</AlertName>"),
        reports.at(0));
    QVERIFY2(reports.at(0).contains("41.5 C"), reports.at(0));
    server.advance(60 * 5 * 9);
    QVERIFY(peer.sync_reports().last().contains("<AlertingLevel>ok</AlertingLevel>"));
}

void TestVeskAlerts::warns_of_little_disk_space_data()
{
    QTest::addColumn<int>("percent_free");
    QTest::addColumn<QByteArray>("level");
    QTest::newRow("a tenth") << 10 << QByteArray();
    QTest::newRow("less than a tenth") << 9 << QByteArray("warning");
    QTest::newRow("a fiftieth") << 2 << QByteArray("warning");
    QTest::newRow("less than a fiftieth") << 1 << QByteArray("error");
    QTest::newRow("none") << 0 << QByteArray("error");
}

void TestVeskAlerts::warns_of_little_disk_space()
{
    QFETCH(int, percent_free);
    QFETCH(QByteArray, level);
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(registration);
    server.with_world([&](VeskWorld &world) {
        world.alerts.watch_disk(quint64(100) << 30, quint64(percent_free) << 30);
    });
    QByteArrayList const reports = peer.sync_reports();
    QCOMPARE(reports.size(), level.isEmpty() ? 0 : 1);
    if (!reports.isEmpty())
        QVERIFY2(reports.at(0).contains("<AlertingLevel>" + level + "<"), reports.at(0));
}

QTEST_GUILESS_MAIN(TestVeskAlerts)
#include "tst_vesk_alerts.moc"
