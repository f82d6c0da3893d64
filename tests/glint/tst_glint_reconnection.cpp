// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/alert_model.h"
#include "ATarnLib/glint/cf_channel_config.h"
#include "ATarnLib/glint/glint_health.h"
#include "ATarnLib/glint/glint_output_monitor.h"
#include "ATarnLib/glint/io_latency_model.h"
#include "ATarnLib/glint/ltc_model.h"
#include "ATarnLib/glint/us_model.h"
#include "tests/glint/channel_mirror.h"
#include "tests/glint/hub_bench.h"
#include "tests/glint/monitor_signals.h"
#include "tests/glint/world_shaker.h"
#include "tests/support/assert_log.h"
#include "tests/support/event_loop.h"
#include "tests/support/patience.h"
#include "tests/support/thoroughness.h"

#include <QLoggingCategory>
#include <QTest>

#include <algorithm>
#include <limits>

#include <malloc.h>

namespace {

using VCTP3::Channel;
using VCTP3::ChannelReportType;

// A sanitizer takes its time, and an error shows in a few.
constexpr int restarts = sanitized ? 60 : 1000;
constexpr int settled_after = sanitized ? 20 : 100;

/// The timer that connects, which a test may let run or do the work of.
ATimer *connect_timer(Glint const &hub)
{
    for (ATimer *timer : hub.findChildren<ATimer *>())
        if (timer->isActive() && timer->interval() == 200 && !timer->isSingleShot())
            return timer;
    qFatal("The hub has no timer of 200 ms");
}

/// Runs the event loop until \a state is true, without a pause between its passes.
bool run_until(std::function<bool()> const &state)
{
    QDeadlineTimer const limit(patience_ms);
    while (!state() && !limit.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    return state();
}

QString registration(char const *of, QString const &rest)
{
    return QStringLiteral("%1 %2").arg(QString::fromLatin1(of), rest);
}

QStringList global_registrations(std::initializer_list<char const *> reports)
{
    QStringList result;
    for (char const *report : reports)
        result.append(registration("report_register", QString::fromLatin1(report)));
    return result;
}

QStringList list_registrations(std::initializer_list<char const *> letters)
{
    QStringList result;
    for (char const *letter : letters)
        for (char const *report : {"listplay", "chaseplay"})
            result.append(registration("channel_report_register",
                QString::fromLatin1(letter) + QLatin1Char(' ') + QString::fromLatin1(report)));
    return result;
}

QStringList channel_registrations()
{
    QStringList result;
    for (int channel = 0; channel < 40; ++channel)
        for (int report = 0; report < 12; ++report)
            result.append(registration("channel_report_register",
                QString(VCTP3::Channel_to_string(Channel(channel))) + QLatin1Char(' ')
                    + QString(VCTP3::ChannelReportType_to_string(ChannelReportType(report)))));
    return result;
}

QStringList registrations(WireLog const &log)
{
    return log.commands().filter(QStringLiteral("report_register"));
}

/// Bytes that are allocated, by all threads.
std::size_t bytes_in_use()
{
    struct mallinfo2 const info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// What a server has that is no channel's.
struct SettingsShown
{
    QStringList configuration; // of the quads and the first panel
    QStringList dictionary; // tally, and what this client has set
    QString ltc;
    unsigned int latency = 0;

    friend bool operator==(SettingsShown const &, SettingsShown const &) = default;

    QString text() const
    {
        return QStringLiteral("%1 | %2 | %3 | %4")
            .arg(configuration.join(QLatin1Char(' ')), dictionary.join(QLatin1Char(' ')), ltc)
            .arg(latency);
    }
};

QStringList configuration_names()
{
    QStringList result(QStringLiteral("ControlPanel_ID0"));
    for (int quad = 0; quad < 8; ++quad)
        result.append(QStringLiteral("ChannelConfigurationSet%1").arg(quad));
    return result;
}

QStringList dictionary_keys()
{
    QStringList result(QStringLiteral("mine"));
    for (unsigned int number = 0; number < WorldShaker::tally_count; ++number)
        result.append(QString(WorldShaker::tally_key(number)));
    return result;
}

/// How a server comes back.
enum class Return
{
    listener,
    machine,
    new_machine,
};

void come_back(VeskSim *server, Return how)
{
    if (how == Return::listener)
        server->refuse_connections(false);
    else
        server->restart(how == Return::machine ? VeskState::keep : VeskState::lose);
}

/// A hub of which all is shown, and a server that is up to something.
struct RestartBench : HubBench
{
    explicit RestartBench(unsigned int seed)
        : HubBench(demo_event(), Logged::no)
        , shaker(seed)
        , ltc(hub.get())
        , latency(hub.get())
        , alerts(hub->get_alert_model())
    {
        connect_timer(*hub)->stop();
        for (unsigned int i = 0; i < Glint::channel_count; ++i) {
            channels.push_back(std::make_unique<ChannelMirror>(hub->get_channel_monitor(i)));
            connect_output(i);
        }
        for (unsigned int i = 0; i < own_count; ++i)
            own_channels.push_back(std::make_unique<OwnMirror>(hub.get(), static_cast<Channel>(i)));
        for (QString const &name : configuration_names())
            hub->get_cf_model()->get_item(name);
        for (QString const &key : dictionary_keys())
            hub->get_us_model()->get_item(key);
        hub->get_us_model()->get_item(QStringLiteral("mine"))->set(QStringLiteral("kept"));
    }

    bool connect_now()
    {
        hub->set_server(server.address());
        return run_until([this] { return hub->is_connected(); }) && come_to_rest();
    }
    /// The server goes, comes back in one way or another, and is doing other things by the time
    /// that the hub finds it.
    bool restart()
    {
        server.stop();
        if (!run_until([this] { return !hub->is_connected(); }))
            return false;
        come_back(&server, static_cast<Return>(shaker.below(3)));
        if (shaker.below(4) == 0 && !be_cut_off())
            return false;
        server.with_world([this](VeskWorld &world) { shaker.shake(world); });
        hub->stay_connected();
        ++restarted;
        return run_until([this] { return hub->is_connected(); }) && come_to_rest();
    }
    /// How often the connection has come, the first time left out.
    quint64 returns() const { return restarted + cut_off; }
    /// What the hub shows otherwise than the server has it; empty when they are equal.
    QString differences()
    {
        std::vector<ChannelShown> held;
        SettingsShown settings;
        server.with_world([&](VeskWorld &world) {
            for (unsigned int i = 0; i < Glint::channel_count; ++i)
                held.push_back(ChannelShown::of(world, static_cast<Channel>(i)));
            settings = settings_of(world);
        });
        QString result;
        for (unsigned int i = 0; i < Glint::channel_count; ++i) {
            result += difference(i, "channel", channels[i]->shown(), held[i]);
            result += output_difference(i, held);
        }
        for (unsigned int i = 0; i < own_count; ++i)
            if (!(own_channels[i]->shown() == held[i].normal.with_highest()))
                result += QStringLiteral("own channel %1; ").arg(i);
        if (!(settings_shown() == settings))
            result += settings_shown().text() + QStringLiteral("; ") + settings.text();
        for (auto const &[name, alert] : shaker.alerts())
            if (alerts->get(QString(name))->get() != AOption<VCTP3::Alert>(alert))
                result += QStringLiteral("alert ") + QString(name);
        return result;
    }

private:
    static constexpr unsigned int own_count = 12;

    static VeskSimOptions demo_event()
    {
        VeskSimOptions options;
        options.demo = true;
        return options;
    }
    void connect_output(unsigned int number)
    {
        GlintOutputMonitor *monitor = hub->get_output_monitor(number);
        QObject::connect(monitor, &GlintOutputMonitor::report_clipid, &listener,
            [this, number](QString const &clip) { output_clips[number] = clip; });
        QObject::connect(monitor, &GlintOutputMonitor::report_clip_position, &listener,
            [this, number](unsigned int position) { output_positions[number] = position; });
    }
    /// The next connection ends while the server is still telling what it has.
    bool be_cut_off()
    {
        ++cut_off;
        server.close_after(shaker.below(60000));
        hub->stay_connected();
        if (!run_until([this] {
                return hub->get_health()->reconnections() == returns() && !hub->is_connected();
            }))
            return false;
        server.clear_faults();
        return true;
    }
    /// Everything that follows from the connection has happened.
    bool come_to_rest()
    {
        if (!sync() || !run_until([this] { return hub->get_cf_model()->is_fully_scanned(); })
            || !settle() || !run_until([this] { return nothing_waits(); }))
            return false;
        return QMetaObject::invokeMethod(
            alerts, [] {}, Qt::BlockingQueuedConnection);
    }
    bool nothing_waits() const
    {
        return hub->get_health()->messages_to_decode() == 0
            && hub->get_health()->results_to_deliver() == 0;
    }
    static QString difference(
        unsigned int number, char const *what, ChannelShown const &shown, ChannelShown const &held)
    {
        if (shown == held)
            return {};
        return QStringLiteral("%1 %2: %3")
            .arg(QString::fromLatin1(what))
            .arg(number)
            .arg(shown.against(held));
    }
    QString output_difference(unsigned int number, std::vector<ChannelShown> const &held) const
    {
        auto const feed = hub->get_channel_config()->GetOutputSource(number);
        LayerShown const shown = feed ? held[feed->channel].normal : LayerShown();
        if (output_clips[number] == shown.clip && output_positions[number] == shown.position)
            return {};
        return QStringLiteral("output %1; ").arg(number);
    }
    static SettingsShown settings_of(VeskWorld const &world)
    {
        SettingsShown result;
        for (QString const &name : configuration_names())
            result.configuration.append(QString(world.configuration.find(AString(name))->saved));
        for (QString const &key : dictionary_keys())
            result.dictionary.append(
                QString(world.dictionary.value(AString(key)).value_or(AString())));
        result.ltc = ChannelShown::text(Corvane::ATimecode(world.clock.time_of_day(), 1));
        result.latency = world.facts.io_latency();
        return result;
    }
    SettingsShown settings_shown() const
    {
        SettingsShown result;
        for (QString const &name : configuration_names())
            result.configuration.append(hub->get_cf_model()->get_item(name)->get());
        for (QString const &key : dictionary_keys())
            result.dictionary.append(hub->get_us_model()->get_item(key)->get());
        result.ltc = ChannelShown::text(ltc.get());
        result.latency = latency.get();
        return result;
    }

    WorldShaker shaker;
    quint64 restarted = 0;
    quint64 cut_off = 0;
    LTCModel ltc;
    IOLatencyModel latency;
    AlertModel *const alerts;
    QObject listener;
    std::vector<std::unique_ptr<ChannelMirror>> channels;
    std::vector<std::unique_ptr<OwnMirror>> own_channels;
    std::array<QString, Glint::channel_count> output_clips;
    std::array<unsigned int, Glint::channel_count> output_positions{};
};

} // namespace

/// A hub whose server comes and goes.
class TestGlintReconnection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void a_returning_listener_is_found_within_one_period_of_the_timer();
    void every_registration_goes_out_once_and_in_order_data();
    void every_registration_goes_out_once_and_in_order();
    void after_a_thousand_restarts_all_is_as_the_server_has_it();
};

/// The latency is asked for on each connection, with a line of output each.
void TestGlintReconnection::initTestCase()
{
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
}

void TestGlintReconnection::a_returning_listener_is_found_within_one_period_of_the_timer()
{
    HubBench bench;
    ATimer *timer = connect_timer(*bench.hub);
    timer->stop();
    QVERIFY(bench.connect());
    bench.server.stop();
    QVERIFY(run_until([&] { return !bench.hub->is_connected(); }));
    GlintHealth const *health = bench.hub->get_health();
    // However long nobody listens, each period tries once.
    quint64 const before = health->connect_attempts();
    for (unsigned int period = 1; period <= 50; ++period) {
        EventLoop::fire(timer);
        QCOMPARE(health->connect_attempts(), before + period);
        QVERIFY(run_until([&] { return health->state() == QAbstractSocket::UnconnectedState; }));
    }
    bench.server.restart(VeskState::keep);
    EventLoop::fire(timer);
    QVERIFY(run_until([&] { return bench.hub->is_connected(); }));
    QCOMPARE(health->connect_attempts(), before + 51);
    QCOMPARE(timer->interval(), 200);
}

void TestGlintReconnection::every_registration_goes_out_once_and_in_order_data()
{
    QTest::addColumn<int>("how");
    QTest::newRow("the listener alone has gone") << int(Return::listener);
    QTest::newRow("the machine has restarted") << int(Return::machine);
    QTest::newRow("it has lost what it knew") << int(Return::new_machine);
}

void TestGlintReconnection::every_registration_goes_out_once_and_in_order()
{
    QFETCH(int, how);
    HubBench bench;
    QObject listener;
    for (unsigned int channel = 40; channel-- > 0;)
        for (auto signal = MonitorSignals::of_channel().rbegin();
             signal != MonitorSignals::of_channel().rend(); ++signal)
            signal->connect(bench.hub->get_channel_monitor(channel), &listener, [] {});
    bench.hub->get_alert_model();
    bench.hub->require_export_notification();
    bench.hub->require_melt_notification();
    bench.hub->request_listplay_notification(Channel::AN);
    bench.hub->request_chaseplay_notification(Channel::B);
    LTCModel const ltc(bench.hub.get());
    // Models may come before the hub's own; the one of the input was made after it.
    QStringList const expected = global_registrations({"config_change", "melt", "export", "alerts"})
        + list_registrations({"B", "AN"}) + channel_registrations()
        + global_registrations({"ltc_input"});
    QCOMPARE(expected.size(), 4 + 4 + 480 + 1);

    QVERIFY(bench.connect());
    QVERIFY(bench.settle());
    QCOMPARE(registrations(bench.log), expected);
    for (int round = 0; round < 2; ++round) {
        bench.log.take();
        bench.server.stop();
        QVERIFY(run_until([&] { return !bench.hub->is_connected(); }));
        come_back(&bench.server, static_cast<Return>(how));
        QVERIFY(run_until([&] { return bench.hub->is_connected(); }));
        QVERIFY(bench.settle());
        QCOMPARE(registrations(bench.log), expected);
    }
}

/// TARN_TEST_SEED draws others. The memory in use may waver by what the messages of one connection
/// take, but not grow with their number: what some rounds have used at most, others may at least.
void TestGlintReconnection::after_a_thousand_restarts_all_is_as_the_server_has_it()
{
    constexpr std::size_t most_growth = 256 * 1024;
    constexpr int looked_at = 10;
    unsigned int const seed = qEnvironmentVariable("TARN_TEST_SEED", QStringLiteral("1")).toUInt();
    qInfo("seed %u, %d restarts", seed, restarts);
    AssertLog asserts;
    RestartBench bench(seed);
    QVERIFY(bench.connect_now());
    std::size_t settled = 0;
    std::size_t at_end = std::numeric_limits<std::size_t>::max();
    for (int round = 1; round <= restarts; ++round) {
        QVERIFY(bench.restart());
        QCOMPARE(bench.differences(), QString());
        if (round > settled_after - looked_at && round <= settled_after)
            settled = std::max(settled, bytes_in_use());
        if (round > restarts - looked_at)
            at_end = std::min(at_end, bytes_in_use());
    }
    qInfo("bytes in use after %d restarts: %zu, after %d: %zu", settled_after, settled, restarts,
        at_end);
    QVERIFY(at_end < settled + most_growth);
    QCOMPARE(bench.hub->get_health()->reconnections(), bench.returns());
    QVERIFY(bench.returns() > restarts);
    QCOMPARE(asserts.take(), QStringList());
}

QTEST_GUILESS_MAIN(TestGlintReconnection)
#include "tst_glint_reconnection.moc"
