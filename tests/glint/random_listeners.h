// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/glint/cf_channel_config.h"
#include "tests/glint/hub_bench.h"
#include "tests/support/patience.h"

#include <iterator>
#include <random>
#include <tuple>
#include <vector>

/// A report of a channel, or of whatever channel feeds an output.
struct ReportWish
{
    bool of_output;
    unsigned int number;
    QString report;

    friend bool operator<(ReportWish const &a, ReportWish const &b)
    {
        return std::tie(a.of_output, a.number, a.report)
            < std::tie(b.of_output, b.number, b.report);
    }
};

/// Those who listen to channels and outputs of a bench, and come and go as chance has it.
class RandomListeners
{
public:
    RandomListeners(HubBench *of, unsigned int seed)
        : bench(of)
        , random(seed)
    {
    }
    virtual ~RandomListeners() = default;

    /// False if the bench has not come to rest.
    bool step()
    {
        bool reached = true;
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
            bench->ten_seconds_pass();
            forget_the_gone();
            break;
        case 10:
            reached = change_board();
            break;
        default:
            // One that leaves and one that comes, while the connection goes.
            leave();
            listen_to_channel();
            if (below(4) == 0)
                reached = bench->reconnect();
        }
        reached = bench->settle() && reached;
        has_settled();
        return reached;
    }
    /// What the steps so far must have left registered.
    virtual QSet<QString> must_be_registered() const = 0;

protected:
    virtual void listen_to_channel() = 0;
    virtual void listen_to_output() = 0;
    /// The event loop and the wire have come to rest.
    virtual void has_settled() { }
    /// The hub has looked who has left.
    virtual void forget_the_gone() { }

    struct Listener
    {
        QMetaObject::Connection connection;
        ReportWish wish;
    };

    unsigned int below(std::size_t limit) { return unsigned(random() % limit); }
    template <typename Table> auto const &any_of(Table const &table)
    {
        return table[below(std::size(table))];
    }
    /// One that listens goes, if there is one.
    void leave()
    {
        if (listeners.empty())
            return;
        auto const at = listeners.begin() + below(listeners.size());
        QObject::disconnect(at->connection);
        listeners.erase(at);
    }
    /// False if the hub does not get to know of it.
    bool change_board()
    {
        static constexpr char const *boards[] = {"VVVV", "ISO4", "VKVV", "absent", "VVVK", "SSM4"};
        return bench->set_board(any_of(boards));
    }
    /// Adds to \a all what has to be registered for it: nothing for an output without a channel.
    void add_registration(ReportWish const &wish, QSet<QString> *all) const
    {
        AOption<unsigned int> channel = wish.number;
        if (wish.of_output) {
            auto const feed = bench->hub->get_channel_config()->GetOutputSource(wish.number);
            channel = feed ? AOption<unsigned int>(feed->channel) : AOption<unsigned int>();
        }
        if (channel)
            all->insert(QString(VCTP3::Channel_to_string(static_cast<VCTP3::Channel>(*channel)))
                + QLatin1Char(' ') + wish.report);
    }

    HubBench *const bench;
    std::mt19937 random;
    QObject receiver;
    std::vector<Listener> listeners;
};

/// What is registered on the wire is what is listened to, whatever happens.
template <typename Listeners> void compare_registrations(unsigned int seed, int steps)
{
    HubBench bench;
    QVERIFY(bench.connect());
    QVERIFY(bench.set_board("VVVV"));
    Listeners listeners(&bench, seed);
    for (int step = 0; step < steps; ++step) {
        QVERIFY(listeners.step());
        QTRY_COMPARE(bench.log.channels_registered(), listeners.must_be_registered());
    }
    QVERIFY(!bench.log.commands(QStringLiteral("channel_report_unregister")).isEmpty());
}
