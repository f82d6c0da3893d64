// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/io_latency_model.h"
#include "sim/vesk/vesk_world.h"
#include "tests/glint/hub_bench.h"
#include "tests/support/assert_log.h"
#include "tests/support/patience.h"

#include <QSignalSpy>
#include <QTest>

/// From input to output.
class TestIOLatencyModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void is_0_without_an_answer();
    void fetches_at_once_and_with_each_connection();
    void tells_a_change_of_the_value_alone();
    void keeps_the_last_answer_without_a_connection();
    void writes_what_it_does_to_the_debug_output();
    void a_missing_model_or_hub_is_an_assertion();
};

namespace {

void set_latency(VeskSim *server, unsigned int fields)
{
    server->with_world([&](VeskWorld &world) { world.facts.set_io_latency(fields); });
}

} // namespace

void TestIOLatencyModel::is_0_without_an_answer()
{
    HubBench b;
    IOLatencyModel latency(b.hub.get());
    QCOMPARE(latency.get(), 0U);
}

void TestIOLatencyModel::fetches_at_once_and_with_each_connection()
{
    HubBench b;
    QVERIFY(b.connect());
    IOLatencyModel latency(b.hub.get());
    QTRY_COMPARE(latency.get(), 6U);
    set_latency(&b.server, 8);
    QVERIFY(b.reconnect());
    QCOMPARE(latency.get(), 8U);
    QCOMPARE(b.log.commands(QStringLiteral("get_io_latency")).size(), 2);
}

void TestIOLatencyModel::tells_a_change_of_the_value_alone()
{
    HubBench b;
    IOLatencyModel latency(b.hub.get());
    QSignalSpy changed(&latency, &IOLatencyModel::changed);
    QVERIFY(b.connect());
    QCOMPARE(changed.count(), 1);
    latency.fetch_value();
    QVERIFY(b.sync());
    QCOMPARE(changed.count(), 1);
    set_latency(&b.server, 0);
    latency.fetch_value();
    QVERIFY(b.sync());
    QCOMPARE(changed.count(), 2);
    QCOMPARE(latency.get(), 0U);
}

void TestIOLatencyModel::keeps_the_last_answer_without_a_connection()
{
    HubBench b;
    IOLatencyModel latency(b.hub.get());
    QVERIFY(b.connect());
    QTRY_COMPARE(latency.get(), 6U);
    b.server.stop();
    QTRY_VERIFY(!b.hub->is_connected());
    latency.fetch_value();
    QCoreApplication::processEvents();
    QCOMPARE(latency.get(), 6U);
}

void TestIOLatencyModel::writes_what_it_does_to_the_debug_output()
{
    HubBench b;
    QVERIFY(b.connect());
    QTest::ignoreMessage(QtDebugMsg, "Fetching value...");
    QTest::ignoreMessage(QtDebugMsg, "IO latency: 6");
    IOLatencyModel latency(b.hub.get());
    QTRY_COMPARE(latency.get(), 6U);
}

void TestIOLatencyModel::a_missing_model_or_hub_is_an_assertion()
{
    AssertLog asserts;
    IOLatencyModel latency(nullptr);
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("hub != nullptr")});
    latency.fetch_value();
    QCOMPARE(latency.get(), 0U);
}

QTEST_GUILESS_MAIN(TestIOLatencyModel)
#include "tst_io_latency_model.moc"
