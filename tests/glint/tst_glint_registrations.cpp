// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/cf_channel_config.h"
#include "tests/glint/hub_bench.h"
#include "tests/glint/monitor_signals.h"

#include <QTest>
#include <random>
#include <set>
#include <tuple>

namespace {

/// Those who listen, and what must be registered for them.
class Listeners
{
public:
    Listeners(HubBench *of, unsigned int seed)
        : bench(of)
        , random(seed)
    {
    }

    void step()
    {
        switch (below(12)) {
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
        case 8:
            leave();
            break;
        case 9:
            settle();
            bench->ten_seconds_pass();
            forget_the_gone();
            break;
        case 10:
            change_board();
            break;
        default:
            if (below(4) == 0)
                reached = bench->reconnect();
        }
        settle();
    }
    /// Whether all waits of the last step have come to their end.
    bool is_sound() const { return reached; }
    /// What the last steps must have left registered: what is listened to, and what has been since
    /// the last pass.
    QSet<QString> const &must_be_registered() const { return expected; }

private:
    /// A report of a channel, or of whatever channel feeds an output.
    struct Wish
    {
        bool output;
        unsigned int number;
        QString report;

        friend bool operator<(Wish const &a, Wish const &b)
        {
            return std::tie(a.output, a.number, a.report) < std::tie(b.output, b.number, b.report);
        }
    };
    struct Listener
    {
        QMetaObject::Connection connection;
        Wish wish;
    };

    unsigned int below(unsigned int limit) { return unsigned(random() % limit); }

    void listen_to_channel()
    {
        auto const &signal = MonitorSignals::of_channel()[below(18)];
        unsigned int const number = below(5);
        add({signal.connect(bench->hub->get_channel_monitor(number), &receiver, [] {}),
            {false, number, QString::fromLatin1(signal.report)}});
    }
    void listen_to_output()
    {
        auto const &signal = MonitorSignals::of_output()[below(10)];
        unsigned int const number = below(5);
        add({signal.connect(bench->hub->get_output_monitor(number), &receiver, [] {}),
            {true, number, QString::fromLatin1(signal.report)}});
    }
    void add(Listener const &listener)
    {
        listeners.push_back(listener);
        wishes.insert(listener.wish);
    }
    void leave()
    {
        if (listeners.empty())
            return;
        auto const at = listeners.begin() + below(unsigned(listeners.size()));
        QObject::disconnect(at->connection);
        listeners.erase(at);
    }
    void change_board()
    {
        static char const *const boards[] = {"VVVV", "ISO4", "VKVV", "absent", "VVVK", "SSM4"};
        reached = bench->set_board(boards[below(6)]);
    }
    /// The event loop and the wire have come to rest.
    void settle()
    {
        reached = reached && bench->settle();
        for (Wish const &wish : wishes) {
            AOption<unsigned int> channel = wish.number;
            if (wish.output) {
                auto const feed = bench->hub->get_channel_config()->GetOutputSource(wish.number);
                channel = feed ? AOption<unsigned int>(feed->channel) : AOption<unsigned int>();
            }
            if (channel)
                expected.insert(
                    QString(VCTP3::Channel_to_string(static_cast<VCTP3::Channel>(*channel)))
                    + QLatin1Char(' ') + wish.report);
        }
    }
    /// A pass sees who has left.
    void forget_the_gone()
    {
        wishes.clear();
        expected.clear();
        for (Listener const &listener : listeners)
            wishes.insert(listener.wish);
    }

    HubBench *const bench;
    std::mt19937 random;
    QObject receiver;
    std::vector<Listener> listeners;
    std::set<Wish> wishes; // of those who listen, or did since the last pass
    QSet<QString> expected;
    bool reached = true;
};

QSet<QString> channel_reports(WireLog const &log)
{
    return log.registered() - QSet<QString>{QStringLiteral("config_change")};
}

} // namespace

/// What is registered on the wire is what is listened to, whatever happens.
class TestGlintRegistrations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void what_is_registered_is_what_is_listened_to_data();
    void what_is_registered_is_what_is_listened_to();
};

void TestGlintRegistrations::what_is_registered_is_what_is_listened_to_data()
{
    QTest::addColumn<unsigned int>("seed");
    for (unsigned int seed = 1; seed <= 8; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestGlintRegistrations::what_is_registered_is_what_is_listened_to()
{
    QFETCH(unsigned int, seed);
    HubBench bench;
    QVERIFY(bench.connect());
    QVERIFY(bench.set_board("VVVV"));
    Listeners listeners(&bench, seed);
    for (int step = 0; step < 120; ++step) {
        listeners.step();
        QVERIFY(listeners.is_sound());
        QTRY_COMPARE(channel_reports(bench.log), listeners.must_be_registered());
    }
    QVERIFY(!bench.log.commands(QStringLiteral("channel_report_unregister")).isEmpty());
}

QTEST_GUILESS_MAIN(TestGlintRegistrations)
#include "tst_glint_registrations.moc"
