// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/cf_channel_config.h"
#include "ATarnLib/glint/channel_monitor.h"
#include "ATarnLib/glint/output_monitor.h"
#include "tests/glint/hub_bench.h"
#include "tests/glint/own_signals.h"

#include <QTest>
#include <random>

namespace {

/// Those who listen to an application's own objects, and what must be registered for them.
class Listeners
{
public:
    Listeners(HubBench *of, unsigned int seed)
        : bench(of)
        , random(seed)
    {
        std::array<ChannelMonitor *, 12> all{};
        for (unsigned int i = 0; i < all.size(); ++i) {
            all[i] = &channels[i];
            channels[i].config(bench->hub.get(), static_cast<VCTP3::Channel>(i));
        }
        for (unsigned int i = 0; i < outputs.size(); ++i)
            outputs[i] = std::make_unique<OutputMonitor>(
                i, bench->hub->get_channel_config(), all.data(), 12);
    }

    /// False if the bench has not come to rest.
    bool step()
    {
        bool reached = true;
        switch (below(10)) {
        case 0:
        case 1:
        case 2:
            listen_to_channel();
            break;
        case 3:
        case 4:
        case 5:
            listen_to_output();
            break;
        case 6:
        case 7:
            leave();
            break;
        case 8:
            reached = bench->set_board(boards[below(std::size(boards))]);
            break;
        default:
            // One that leaves and one that comes, while the connection goes.
            leave();
            listen_to_channel();
            if (below(3) == 0)
                reached = bench->reconnect();
        }
        return reached && bench->settle();
    }
    QSet<QString> must_be_registered() const
    {
        QSet<QString> result;
        for (Listener const &listener : listeners)
            if (AOption<unsigned int> const channel = channel_of(listener))
                result.insert(
                    QString(VCTP3::Channel_to_string(static_cast<VCTP3::Channel>(*channel)))
                    + QLatin1Char(' ') + QString::fromLatin1(listener.report));
        return result;
    }

private:
    static constexpr char const *boards[] = {"VVVV", "ISO4", "VKVV", "absent", "VVVK", "SSM4"};

    struct Listener
    {
        QMetaObject::Connection connection;
        bool to_output;
        unsigned int number;
        char const *report;
    };

    unsigned int below(std::size_t limit) { return unsigned(random() % limit); }

    void listen_to_channel()
    {
        auto const &table = OwnSignals<ChannelMonitor>::all();
        auto const &signal = table[below(table.size())];
        unsigned int const number = below(5);
        listeners.push_back(
            {signal.connect(&channels[number], &receiver), false, number, signal.report});
    }
    void listen_to_output()
    {
        auto const &table = OwnSignals<OutputMonitor>::all();
        auto const &signal = table[below(table.size())];
        unsigned int const number = below(outputs.size());
        listeners.push_back(
            {signal.connect(outputs[number].get(), &receiver), true, number, signal.report});
    }
    void leave()
    {
        if (listeners.empty())
            return;
        auto const at = listeners.begin() + below(listeners.size());
        QObject::disconnect(at->connection);
        listeners.erase(at);
    }
    /// None for an output without a channel.
    AOption<unsigned int> channel_of(Listener const &listener) const
    {
        if (!listener.to_output)
            return listener.number;
        auto const feed = bench->hub->get_channel_config()->GetOutputSource(listener.number);
        return feed ? AOption<unsigned int>(feed->channel) : AOption<unsigned int>();
    }

    HubBench *const bench;
    std::mt19937 random;
    QObject receiver;
    std::array<ChannelMonitor, 12> channels;
    std::array<std::unique_ptr<OutputMonitor>, 4> outputs;
    std::vector<Listener> listeners;
};

} // namespace

/// What is registered on the wire is what an application's own objects are listened to for.
class TestOwnRegistrations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void what_is_registered_is_what_is_listened_to_data();
    void what_is_registered_is_what_is_listened_to();
};

void TestOwnRegistrations::what_is_registered_is_what_is_listened_to_data()
{
    QTest::addColumn<unsigned int>("seed");
    for (unsigned int seed = 1; seed <= 4; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestOwnRegistrations::what_is_registered_is_what_is_listened_to()
{
    QFETCH(unsigned int, seed);
    HubBench bench;
    QVERIFY(bench.connect());
    QVERIFY(bench.set_board("VVVV"));
    Listeners listeners(&bench, seed);
    QSet<QString> const always{QStringLiteral("config_change")};
    for (int step = 0; step < 100; ++step) {
        QVERIFY(listeners.step());
        QTRY_COMPARE(bench.log.registered() - always, listeners.must_be_registered());
    }
    QVERIFY(!bench.log.commands(QStringLiteral("channel_report_unregister")).isEmpty());
}

QTEST_GUILESS_MAIN(TestOwnRegistrations)
#include "tst_own_registrations.moc"
