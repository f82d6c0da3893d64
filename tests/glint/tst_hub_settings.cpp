// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_model.h"
#include "ATarnLib/glint/us_model.h"
#include "sim/vesk/vesk_world.h"
#include "tests/glint/hub_bench.h"
#include "tests/support/assert_log.h"
#include "tests/support/astring_make.h"
#include "tests/support/astring_print.h"
#include "tests/support/patience.h"

#include <QTest>

#include <random>
#include <thread>

/// Configuration and user settings over a hub, which connects by itself and hands commands over.
class TestHubSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void edits_of_another_thread_reach_the_server();
    void a_hot_item_that_another_thread_sets_ends_as_it_was_set_last();
    void every_connection_registers_once_and_reads_each_item_once();
    void items_equal_the_server_after_every_reconnection_data();
    void items_equal_the_server_after_every_reconnection();
};

namespace {

constexpr int item_count = 4;

QString panel(int number)
{
    return QStringLiteral("ControlPanel_ID%1").arg(number);
}

QString key(int number)
{
    return QStringLiteral("key%1").arg(number);
}

struct Bench : HubBench
{
    CFModel *cf = hub->get_cf_model();
    USModel *us = hub->get_us_model();

    bool scan()
    {
        return QTest::qWaitFor([this] { return cf->is_fully_scanned(); }, patience_ms);
    }
    QString saved(int number) { return server.setting(AString(panel(number))).value().saved; }
    void set_by_another(int number, QString const &value)
    {
        server.with_world([&](VeskWorld &world) {
            world.configuration.set(AString(panel(number)), AString(value));
            world.dictionary.set(AString(key(number)), AString(value));
        });
    }
    /// Ends the connection and begins the next one without waiting for the hub's timer.
    bool reconnect_now()
    {
        if (!QTest::qWaitFor(
                [this] { return server.counters().open_connections == 1; }, patience_ms))
            return false;
        server.drop_connections();
        if (!QTest::qWaitFor([this] { return !hub->is_connected(); }, patience_ms))
            return false;
        hub->stay_connected();
        return QTest::qWaitFor([this] { return hub->is_connected(); }, patience_ms);
    }
};

} // namespace

void TestHubSettings::edits_of_another_thread_reach_the_server()
{
    Bench b;
    for (int number = 0; number < item_count; ++number)
        b.cf->get_item(panel(number));
    QVERIFY(b.connect());
    QVERIFY(b.scan());
    std::thread([&] {
        for (int number = 0; number < item_count; ++number)
            b.cf->get_item(panel(number))->set(number);
        b.cf->commit_changes();
    }).join();
    QVERIFY(b.sync());
    for (int number = 0; number < item_count; ++number)
        QCOMPARE(b.saved(number), QString::number(number));
    QVERIFY(!b.cf->have_changes());
}

void TestHubSettings::a_hot_item_that_another_thread_sets_ends_as_it_was_set_last()
{
    Bench b;
    CFItemModel *item = b.cf->get_item(panel(0));
    item->setHot(true);
    QVERIFY(b.connect());
    QVERIFY(b.scan());
    std::thread typist([&] {
        for (int i = 0; i <= 300; ++i)
            item->set(i);
    });
    typist.join();
    QTRY_COMPARE(b.saved(0), QStringLiteral("300"));
    QTRY_VERIFY(!b.cf->have_changes());
    QCOMPARE(item->get(), QStringLiteral("300"));
}

void TestHubSettings::every_connection_registers_once_and_reads_each_item_once()
{
    Bench b;
    for (int number = 0; number < item_count; ++number)
        b.cf->get_item(panel(number));
    QVERIFY(b.connect());
    for (int round = 0; round < 5; ++round) {
        QVERIFY(b.scan());
        QCOMPARE(b.log.commands(QStringLiteral("report_register config_change")).size(), 1);
        for (int number = 0; number < item_count; ++number)
            QCOMPARE(
                b.log.commands(QStringLiteral("get_one_configuration ") + panel(number)).size(), 1);
        b.log.take();
        QVERIFY(b.reconnect_now());
    }
}

void TestHubSettings::items_equal_the_server_after_every_reconnection_data()
{
    QTest::addColumn<unsigned int>("seed");
    for (unsigned int seed = 1; seed <= 4; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestHubSettings::items_equal_the_server_after_every_reconnection()
{
    QFETCH(unsigned int, seed);
    std::mt19937 random(seed);
    Bench b;
    AssertLog asserts;
    for (int number = 0; number < item_count; ++number) {
        b.cf->get_item(panel(number));
        // The first half is this client's, the second the others'.
        if (number < item_count / 2)
            b.us->get_item(key(number))->set(QStringLiteral("mine"));
        else
            b.us->get_item(key(number));
    }
    QVERIFY(b.connect());
    for (int round = 0; round < 8; ++round) {
        for (int step = 0; step < 6; ++step) {
            int const number = int(random() % item_count);
            QString const value = QString::number(random());
            switch (random() % 4) {
            case 0:
                b.set_by_another(number, value);
                break;
            case 1:
                b.cf->get_item(panel(number))->set(value);
                b.cf->commit_changes();
                break;
            case 2:
                b.us->get_item(key(number % (item_count / 2)))->set(value);
                break;
            default:
                QVERIFY(b.reconnect_now());
            }
        }
        // What was on its way when a connection went is committed again.
        QVERIFY(b.sync());
        QVERIFY(b.scan());
        b.cf->commit_changes();
        QVERIFY(b.sync());
        QVERIFY(b.reconnect_now());
        QVERIFY(b.sync());
        QVERIFY(b.scan());
        QVERIFY(!b.cf->have_changes());
        for (int number = 0; number < item_count; ++number) {
            QCOMPARE(b.cf->get_item(panel(number))->get(), b.saved(number));
            AString const held = b.server.dictionary_value(AString(key(number))).value_or(""_a);
            QCOMPARE(AString(b.us->get_item(key(number))->get()), held);
        }
    }
    QCOMPARE(asserts.take(), QStringList());
}

QTEST_GUILESS_MAIN(TestHubSettings)
#include "tst_hub_settings.moc"
