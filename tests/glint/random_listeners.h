// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/glint/cf_channel_config.h"
#include "tests/glint/hub_bench.h"

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

protected:
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
