// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/cf_channel_config.h"
#include "ATarnLib/glint/channel_monitor.h"
#include "ATarnLib/glint/output_monitor.h"
#include "tests/glint/hub_bench.h"
#include "tests/support/assert_log.h"
#include "tests/support/patience.h"

#include <QTest>

using VCTP3::Channel;

namespace {

/// A connected bench with twelve monitors of channels.
struct OutputBench : HubBench
{
    bool start()
    {
        for (unsigned int i = 0; i < 12; ++i) {
            monitors[i] = &channels[i];
            channels[i].config(hub.get(), static_cast<Channel>(i));
        }
        return connect() && set_board("VVVV");
    }

    std::array<ChannelMonitor, 12> channels;
    std::array<ChannelMonitor *, 12> monitors{};
};

} // namespace

/// An output as an object of the application.
class TestOutputMonitor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void another_count_than_twelve_is_an_assertion_data();
    void another_count_than_twelve_is_an_assertion();
    void has_the_signals_of_a_channel();
    void passes_on_what_is_listened_to();
    void two_listeners_hear_each_value_once();
    void each_listener_gets_the_present_value();
    void moves_with_the_configuration();
    void the_same_channel_again_changes_nothing();
    void a_channel_of_twelve_or_above_is_none();
    void the_last_listener_ends_the_report();
    void its_channels_may_go_first();
    void its_configuration_may_go_first();
    void without_a_configuration_or_channels_shows_nothing();
};

void TestOutputMonitor::another_count_than_twelve_is_an_assertion_data()
{
    QTest::addColumn<unsigned int>("count");
    QTest::addColumn<int>("assertions");
    QTest::newRow("0") << 0u << 1;
    QTest::newRow("11") << 11u << 1;
    QTest::newRow("12") << 12u << 0;
    QTest::newRow("13") << 13u << 1;
}

void TestOutputMonitor::another_count_than_twelve_is_an_assertion()
{
    QFETCH(unsigned int, count);
    QFETCH(int, assertions);
    Glint hub(false);
    std::array<ChannelMonitor *, 13> monitors{};
    AssertLog asserts;
    OutputMonitor monitor(3, hub.get_channel_config(), monitors.data(), count);
    QCOMPARE(asserts.take(), QStringList(assertions, QStringLiteral("count == countof(chmon)")));
    QCOMPARE(monitor.objectName(), QStringLiteral("OutputMonitor3"));
    connect(&monitor, &OutputMonitor::sig_status, this, [] {});
}

void TestOutputMonitor::has_the_signals_of_a_channel()
{
    QMetaObject const &channel = ChannelMonitor::staticMetaObject;
    QMetaObject const &output = OutputMonitor::staticMetaObject;
    int count = 0;
    for (int i = channel.methodOffset(); i < channel.methodCount(); ++i) {
        if (channel.method(i).methodType() != QMetaMethod::Signal)
            continue;
        ++count;
        QVERIFY(output.indexOfSignal(channel.method(i).methodSignature().constData()) >= 0);
    }
    QCOMPARE(count, 16);
}

void TestOutputMonitor::passes_on_what_is_listened_to()
{
    OutputBench bench;
    QVERIFY(bench.start());
    OutputMonitor monitor(2, bench.hub->get_channel_config(), bench.monitors.data(), 12);
    QVERIFY(bench.settle());
    QCOMPARE(bench.log.channel_reports(), QStringList());
    QList<int> speeds;
    connect(
        &monitor, &OutputMonitor::sig_speed, this, [&speeds](int speed) { speeds.append(speed); });
    QVERIFY(bench.settle());
    QCOMPARE(bench.log.channel_reports(), QStringList(WireLog::registration("C", "speed")));
    QTRY_COMPARE(speeds, QList<int>{0});
    Q_EMIT bench.hub->report_channel_speed(Channel::C, 5);
    Q_EMIT bench.hub->report_channel_speed(Channel::D, 6);
    QCOMPARE(speeds, QList<int>({0, 5}));
}

void TestOutputMonitor::two_listeners_hear_each_value_once()
{
    OutputBench bench;
    QVERIFY(bench.start());
    OutputMonitor monitor(2, bench.hub->get_channel_config(), bench.monitors.data(), 12);
    int first = 0;
    int second = 0;
    connect(&monitor, &OutputMonitor::sig_clipid, this, [&first] { ++first; });
    connect(&monitor, &OutputMonitor::sig_clipid, this, [&second] { ++second; });
    QVERIFY(bench.settle());
    first = second = 0;
    Q_EMIT bench.hub->report_channel_clipid(Channel::C, AString::l1("x"));
    QCOMPARE(first, 1);
    QCOMPARE(second, 1);
}

void TestOutputMonitor::each_listener_gets_the_present_value()
{
    OutputBench bench;
    QVERIFY(bench.start());
    OutputMonitor monitor(2, bench.hub->get_channel_config(), bench.monitors.data(), 12);
    QList<int> first;
    QList<int> second;
    auto const listen = [&](QList<int> *speeds) {
        connect(&monitor, &OutputMonitor::sig_speed, this,
            [speeds](int speed) { speeds->append(speed); });
    };
    listen(&first);
    QVERIFY(bench.settle());
    QCOMPARE(first, QList<int>{0});
    listen(&second);
    QVERIFY(bench.settle());
    QCOMPARE(second, QList<int>{0});
    // The server tells it anew, and nothing was unregistered for that.
    QCOMPARE(bench.log.channel_reports(), QStringList(2, WireLog::registration("C", "speed")));
}

void TestOutputMonitor::moves_with_the_configuration()
{
    OutputBench bench;
    QVERIFY(bench.start());
    OutputMonitor monitor(3, bench.hub->get_channel_config(), bench.monitors.data(), 12);
    QList<int> speeds;
    connect(
        &monitor, &OutputMonitor::sig_speed, this, [&speeds](int speed) { speeds.append(speed); });
    QVERIFY(bench.settle());
    QVERIFY(bench.log.registered().contains(QStringLiteral("D speed")));
    QVERIFY(bench.set_board("VVVK"));
    QTRY_VERIFY(bench.log.registered().contains(QStringLiteral("B speed")));
    QTRY_VERIFY(!bench.log.registered().contains(QStringLiteral("D speed")));
    QVERIFY(bench.sync()); // what the server says to the registration has come
    speeds.clear();
    Q_EMIT bench.hub->report_channel_speed(Channel::B, 5);
    Q_EMIT bench.hub->report_channel_speed(Channel::D, 6);
    QVERIFY(bench.settle());
    QCOMPARE(speeds.last(), 5);
    QVERIFY(!speeds.contains(6));
    QVERIFY(bench.set_board("absent"));
    QTRY_VERIFY(!bench.log.registered().contains(QStringLiteral("B speed")));
}

void TestOutputMonitor::the_same_channel_again_changes_nothing()
{
    OutputBench bench;
    QVERIFY(bench.start());
    OutputMonitor monitor(2, bench.hub->get_channel_config(), bench.monitors.data(), 12);
    connect(&monitor, &OutputMonitor::sig_speed, this, [] {});
    QVERIFY(bench.settle());
    bench.log.take();
    Q_EMIT bench.hub->get_channel_config()->changed();
    QVERIFY(bench.settle());
    QCOMPARE(bench.log.channel_reports(), QStringList());
}

void TestOutputMonitor::a_channel_of_twelve_or_above_is_none()
{
    OutputBench bench;
    QVERIFY(bench.start());
    bench.server.with_world([](VeskWorld &world) {
        world.configuration.set(AString::l1("ChannelConfigurationSet3"), AString::l1("VVVV"));
    });
    QTRY_VERIFY(bench.hub->get_channel_config()->GetOutputSource(12).has_value());
    QCOMPARE(bench.hub->get_channel_config()->GetOutputSource(12)->channel, 12u);
    OutputMonitor monitor(12, bench.hub->get_channel_config(), bench.monitors.data(), 12);
    connect(&monitor, &OutputMonitor::sig_speed, this, [] {});
    QVERIFY(bench.settle());
    QCOMPARE(bench.log.channel_reports(), QStringList());
}

void TestOutputMonitor::the_last_listener_ends_the_report()
{
    OutputBench bench;
    QVERIFY(bench.start());
    OutputMonitor monitor(2, bench.hub->get_channel_config(), bench.monitors.data(), 12);
    auto const first = connect(&monitor, &OutputMonitor::sig_speed, this, [] {});
    auto const second = connect(&monitor, &OutputMonitor::sig_speed, this, [] {});
    QVERIFY(bench.settle());
    disconnect(first);
    QVERIFY(bench.settle());
    QVERIFY(bench.log.registered().contains(QStringLiteral("C speed")));
    disconnect(second);
    QTRY_VERIFY(!bench.log.registered().contains(QStringLiteral("C speed")));
}

void TestOutputMonitor::its_channels_may_go_first()
{
    Glint hub(false);
    std::array<ChannelMonitor *, 12> monitors{};
    for (ChannelMonitor *&monitor : monitors)
        monitor = new ChannelMonitor;
    OutputMonitor output(0, hub.get_channel_config(), monitors.data(), 12);
    for (ChannelMonitor *monitor : monitors)
        delete monitor;
    connect(&output, &OutputMonitor::sig_speed, this, [] {});
    output.cf_changed();
    output.sig_detach("2sig_speed(int)");
}

void TestOutputMonitor::its_configuration_may_go_first()
{
    std::array<ChannelMonitor *, 12> const monitors{};
    auto hub = std::make_unique<Glint>(false);
    OutputMonitor output(0, hub->get_channel_config(), monitors.data(), 12);
    connect(&output, &OutputMonitor::sig_speed, this, [] {});
    hub.reset();
    output.cf_changed();
}

void TestOutputMonitor::without_a_configuration_or_channels_shows_nothing()
{
    Glint hub(false);
    std::array<ChannelMonitor *, 12> const monitors{};
    AssertLog asserts;
    OutputMonitor without_configuration(0, nullptr, monitors.data(), 12);
    QCOMPARE(asserts.take(), QStringList(QStringLiteral("channel_config != nullptr")));
    OutputMonitor without_channels(0, hub.get_channel_config(), nullptr, 12);
    QCOMPARE(asserts.take(), QStringList(QStringLiteral("monitors != nullptr")));
    for (OutputMonitor *output : {&without_configuration, &without_channels}) {
        connect(output, &OutputMonitor::sig_speed, this, [] {});
        output->cf_changed();
    }
}

QTEST_GUILESS_MAIN(TestOutputMonitor)
#include "tst_output_monitor.moc"
