// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "demo/story/channel_view.h"
#include "demo/story/sim_process.h"

#include <QElapsedTimer>
#include <QStringList>
#include <QTextStream>
#include <QTimer>

#include <array>
#include <functional>

/// An application that controls a server, told step by step at a terminal: it connects, lists what
/// the server holds, plays on several channels, loses the server and comes back.
/// Every step says whether what it announces was seen.
class Story : public QObject
{
    Q_OBJECT

public:
    Story(QString const &simulator, QString const &address, QObject *parent = nullptr);

    /// Plays the whole story, about 20 s. True only if each step was seen to work.
    bool run();

private:
    /// How long it waits for each thing that the server does. Only what is never done takes so
    /// long, however busy the machine is.
    static constexpr int patience_ms = 30'000;
    static constexpr int watched_seconds = 6;
    static constexpr std::array channels{
        VCTP3::Channel::A, VCTP3::Channel::B, VCTP3::Channel::C, VCTP3::Channel::D};

    void follow_reports();
    void register_reports();

    bool start_server();
    bool connect_to_it();
    bool read_facts();
    bool list_contents();
    bool cue_and_play();
    bool watch_them_play();
    bool stop_together();
    bool measure_round_trips();
    bool lose_the_server();
    bool come_back();
    bool play_again();

    void step(QString const &title, bool (Story::*body)());
    void print(QString const &line);
    void table();
    /// Lets things happen until \a condition holds; false if it never does.
    bool until(std::function<bool()> const &condition);
    void pause(int milliseconds);
    ChannelView &view(VCTP3::Channel channel) { return views.at(std::size_t(channel)); }
    bool all_channels(VCTP3::ChannelStatus status);
    double since_listening_ms() const;

    QTextStream out;
    QString server_address;
    SimProcess simulator;
    VCTP3::APIQt server;
    QTimer retry;
    std::array<ChannelView, 40> views;
    QStringList clips;
    quint64 reports = 0;
    int steps = 0;
    int steps_seen = 0;
    QStringList failed; // at most one: what follows is left out

    QElapsedTimer listening_again;
    double trip_median_us = 0;
    double trip_worst_us = 0;
    double reports_per_second = 0;
    int failed_in_flight = 0;
    double back_ms = 0;
    double first_report_ms = 0;
};
