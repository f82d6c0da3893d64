// SPDX-License-Identifier: Apache-2.0
#include "demo/story/story.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QHostAddress>

#include <algorithm>
#include <vector>

using namespace VCTP3;

Story::Story(QString const &sim_program, QString const &address, QObject *parent)
    : QObject(parent)
    , out(stdout)
    , server_address(address)
    , simulator(sim_program, address)
{
    follow_reports();
    // A connection is not renewed by itself: the application decides when to try again.
    retry.setInterval(200);
    connect(&retry, &QTimer::timeout, &server, [this] {
        if (!server.is_connected())
            server.reconnect();
    });
}

bool Story::run()
{
    step(QStringLiteral("Start a simulated server"), &Story::start_server);
    step(QStringLiteral("Connect to it"), &Story::connect_to_it);
    step(QStringLiteral("Ask what it is"), &Story::read_facts);
    step(QStringLiteral("List what it holds"), &Story::list_contents);
    step(QStringLiteral("Cue and play on four channels"), &Story::cue_and_play);
    step(QStringLiteral("Follow their reports"), &Story::watch_them_play);
    step(QStringLiteral("Stop all four on one field"), &Story::stop_together);
    step(QStringLiteral("Measure round trips"), &Story::measure_round_trips);
    step(QStringLiteral("Lose the server with commands in flight"), &Story::lose_the_server);
    step(QStringLiteral("Come back when it returns"), &Story::come_back);
    step(QStringLiteral("Play again"), &Story::play_again);
    table();
    return failed.isEmpty();
}

void Story::follow_reports()
{
    connect(&server, &APIQt::report_channel_status, this,
        [this](Channel channel, ChannelStatus status, AOption<AString> const &clip) {
            view(channel).status = status;
            if (clip)
                view(channel).clip = QString(*clip);
        });
    connect(&server, &APIQt::report_channel_speed, this,
        [this](Channel channel, int speed) { view(channel).speed = speed; });
    connect(&server, &APIQt::report_channel_timecode, this,
        [this](Channel channel, unsigned position, Timecode const &, Timecode const &) {
            view(channel).position = position;
            ++view(channel).reports;
            ++reports;
        });
}

// Registrations belong to a connection, so each new one makes them again.
void Story::register_reports()
{
    ChannelSet set;
    for (Channel channel : channels)
        set.add_to_set(channel);
    ChannelReportSet types;
    types.add_to_set(ChannelReportType::status);
    types.add_to_set(ChannelReportType::speed);
    types.add_to_set(ChannelReportType::timecode);
    server.cmd_channel_reports_register(set, types);
}

bool Story::start_server()
{
    simulator.start();
    until([this] { return simulator.is_listening() || !simulator.is_running(); });
    print(simulator.is_listening()
            ? QStringLiteral("vesk-sim listens on %1, port 8913").arg(server_address)
            : QStringLiteral("it does not listen: ") + simulator.said());
    return simulator.is_listening();
}

bool Story::connect_to_it()
{
    server.connect_to_server(QHostAddress(server_address));
    return until([this] { return server.is_connected(); });
}

bool Story::read_facts()
{
    int answers = 0;
    CallbackGroup_set6 name;
    connect(&name, &CallbackGroup_set6::sig_computername, this, [&](AString const &text) {
        print(QStringLiteral("computer  %1").arg(QString(text)));
        ++answers;
    });
    CallbackGroup_set12 version;
    connect(&version, &CallbackGroup_set12::sig_version_info, this,
        [&](AString const &revision, AString const &path) {
            print(QStringLiteral("version   %1 %2").arg(QString(revision), QString(path)));
            ++answers;
        });
    CallbackGroup_set8 standard;
    connect(&standard, &CallbackGroup_set8::sig_video_standard, this,
        [&](VideoStandard video, VideoRate, VideoResolution) {
            print(QStringLiteral("standard  %1").arg(QString(VideoStandard_to_string(video))));
            ++answers;
        });
    server.cmd_get_computer_name(name);
    server.cmd_get_version_info(version);
    server.cmd_get_video_standard(standard);
    return until([&] { return answers == 3; });
}

bool Story::list_contents()
{
    int done = 0;
    int items = 0;
    QStringList directories;
    CallbackGroup_set3 directory_group;
    connect(&directory_group, &CallbackGroup_set3::sig_directory_name, this,
        [&](AString const &name) { directories.append(QString(name)); });
    connect(&directory_group, &CallbackGroup_set3::sig_ok, this, [&] { ++done; });
    CallbackGroup_set2 clip_group;
    connect(&clip_group, &CallbackGroup_set2::sig_clipid, this,
        [&](AString const &id) { clips.append(QString(id)); });
    connect(&clip_group, &CallbackGroup_set2::sig_ok, this, [&] { ++done; });
    CallbackGroup_set10 item_group;
    connect(&item_group, &CallbackGroup_set10::sig_configuration_item, this,
        [&](ConfigurationItem const &) { ++items; });
    connect(&item_group, &CallbackGroup_set10::sig_ok, this, [&] { ++done; });
    server.cmd_download_directory_names(directory_group);
    server.cmd_download_clipids(clip_group);
    server.cmd_get_configuration(item_group);
    bool const seen = until([&] { return done == 3; }) && clips.size() >= 4 && items > 0;
    print(QStringLiteral("%1 clips in %2 directories, %3 configuration items")
              .arg(clips.size())
              .arg(directories.size())
              .arg(items));
    print(QStringLiteral("first clips: %1").arg(clips.mid(0, 4).join(QStringLiteral(", "))));
    return seen;
}

bool Story::all_channels(ChannelStatus status)
{
    return std::all_of(channels.begin(), channels.end(),
        [&](Channel channel) { return view(channel).status == status; });
}

bool Story::cue_and_play()
{
    register_reports();
    int answered = 0;
    CallbackGroup_set1 group;
    connect(&group, &CallbackGroup_set1::sig_ok, this, [&] { ++answered; });
    connect(&group, &CallbackGroup_set1::sig_error, this,
        [this](AString const &text, ErrorCode) { print(QString(text)); });
    for (std::size_t i = 0; i < channels.size(); ++i)
        server.cmd_cue_clip(channels[i], AString(clips.value(int(i))), Loop::loop, 100U, group);
    if (!until([&] { return answered == 4 && all_channels(ChannelStatus::stop); }))
        return false;
    print(QStringLiteral("four clips are cued"));
    std::array const speeds{65536, 32768, -65536, 131072};
    for (std::size_t i = 0; i < channels.size(); ++i)
        server.cmd_play(channels[i], speeds[i], group);
    return until([&] { return answered == 8 && all_channels(ChannelStatus::play); });
}

bool Story::watch_them_play()
{
    quint64 const before = reports;
    ChannelView const first = view(channels[0]);
    QElapsedTimer watch;
    watch.start();
    for (int second = 1; second <= watched_seconds; ++second) {
        pause(int(second * 1000 - watch.elapsed()));
        QStringList lines;
        for (Channel channel : channels)
            lines.append(view(channel).line(channel));
        print(lines.join(QStringLiteral("\n     ")));
        print(QString());
    }
    // Where the machine stood still, the server makes up for the fields that it has missed.
    bool const all_came
        = until([&] { return reports - before >= watched_seconds * channels.size() * 45; });
    reports_per_second = double(reports - before) * 1000.0 / double(watch.elapsed());
    print(QStringLiteral("%1 timecode reports a second").arg(reports_per_second, 0, 'f', 0));
    // The first channel moves by one with each field, and tells of each; at the end of its clip it
    // begins anew.
    ChannelView const &now = view(channels[0]);
    quint64 const moved = std::max(now.position, first.position) - first.position;
    return all_came && now.reports - first.reports >= moved && all_channels(ChannelStatus::play);
}

bool Story::stop_together()
{
    ChannelSet set;
    for (Channel channel : channels)
        set.add_to_set(channel);
    server.cmd_gang_stop(set);
    return until([this] { return all_channels(ChannelStatus::stop); });
}

bool Story::measure_round_trips()
{
    std::vector<double> trips;
    CallbackGroup_set1 group;
    QElapsedTimer clock;
    connect(&group, &CallbackGroup_set1::sig_ok, this, [&] {
        trips.push_back(double(clock.nsecsElapsed()) / 1000.0);
        clock.start();
        if (trips.size() < 2000)
            server.cmd_sync(group);
    });
    clock.start();
    server.cmd_sync(group);
    if (!until([&] { return trips.size() == 2000; }))
        return false;
    std::sort(trips.begin(), trips.end());
    trip_median_us = trips[trips.size() / 2];
    trip_worst_us = trips[trips.size() * 99 / 100];
    print(QStringLiteral("2000 round trips, median %1 us").arg(trip_median_us, 0, 'f', 0));
    return true;
}

bool Story::lose_the_server()
{
    int answers = 0;
    QString text;
    CallbackGroup_set1 group;
    connect(&group, &CallbackGroup_set1::sig_ok, this, [&] { ++answers; });
    connect(&group, &CallbackGroup_set1::sig_error, this, [&](AString const &error, ErrorCode) {
        ++failed_in_flight;
        text = QString(error);
    });
    simulator.kill();
    for (int i = 0; i < 50; ++i)
        server.cmd_sync(group);
    bool const lost = until([this] { return !server.is_connected(); })
        && until([&] { return answers + failed_in_flight >= 50; });
    print(QStringLiteral("%1 of 50 commands in flight failed, each once: \"%2\"")
              .arg(failed_in_flight)
              .arg(text));
    return lost && answers == 0 && failed_in_flight == 50
        && text == QLatin1String("Failing all outstanding commands");
}

bool Story::come_back()
{
    views = {};
    // From what the server says itself, while this application goes on trying as it did before: it
    // hits the moment sooner or later, up to its interval.
    connect(&simulator, &SimProcess::listening, this, [this] { listening_again.start(); });
    connect(&server, &APIQt::connected, this, [this] {
        back_ms = since_listening_ms();
        register_reports();
    });
    retry.start();
    pause(1500);
    print(QStringLiteral("not connected: %1")
              .arg(server.is_connected() ? QStringLiteral("no") : QStringLiteral("yes")));
    bool const back = start_server() && until([this] { return server.is_connected(); })
        && until([this] { return all_channels(ChannelStatus::idle); });
    first_report_ms = since_listening_ms();
    print(QStringLiteral("connected %1 ms after it listened again, channels known after %2 ms")
              .arg(back_ms, 0, 'f', 1)
              .arg(first_report_ms, 0, 'f', 1));
    return back;
}

/// 0 for what comes before the server's word.
double Story::since_listening_ms() const
{
    return listening_again.isValid() ? double(listening_again.nsecsElapsed()) / 1e6 : 0;
}

bool Story::play_again()
{
    bool const playing = cue_and_play();
    pause(2000);
    for (Channel channel : channels)
        print(view(channel).line(channel));
    return playing && all_channels(ChannelStatus::play);
}

void Story::step(QString const &title, bool (Story::*body)())
{
    ++steps;
    out << Qt::endl << QStringLiteral("%1  %2").arg(steps, 2).arg(title) << Qt::endl;
    if (!failed.isEmpty()) {
        print(QStringLiteral("left out"));
        return;
    }
    bool const seen = (this->*body)();
    print(seen ? QStringLiteral("seen") : QStringLiteral("NOT SEEN"));
    if (seen)
        ++steps_seen;
    else
        failed.append(title);
}

void Story::print(QString const &line)
{
    out << QStringLiteral("     ") << line << Qt::endl;
}

void Story::table()
{
    auto const row = [this](char const *name, QString const &value) {
        out << QStringLiteral("  %1 %2").arg(QLatin1String(name), -44).arg(value) << Qt::endl;
    };
    out << Qt::endl << QStringLiteral("What was seen") << Qt::endl;
    row("steps", QStringLiteral("%1 of %2").arg(steps_seen).arg(steps));
    row("round trip, median", QStringLiteral("%1 us").arg(trip_median_us, 0, 'f', 0));
    row("round trip, 99 of 100 within", QStringLiteral("%1 us").arg(trip_worst_us, 0, 'f', 0));
    row("reports per second, four channels",
        QStringLiteral("%1").arg(reports_per_second, 0, 'f', 0));
    row("commands in flight that failed, each once", QString::number(failed_in_flight));
    row("time to come back once the server listens",
        QStringLiteral("%1 ms").arg(back_ms, 0, 'f', 1));
    row("time until all channels are known again",
        QStringLiteral("%1 ms").arg(first_report_ms, 0, 'f', 1));
    if (!failed.isEmpty())
        row("not seen", failed.join(QStringLiteral("; ")));
}

void Story::pause(int milliseconds)
{
    QDeadlineTimer const end(std::max(milliseconds, 0));
    until([&] { return end.hasExpired(); });
}

bool Story::until(std::function<bool()> const &condition)
{
    QDeadlineTimer const deadline(patience_ms);
    // The timer makes the loop look at the condition even when nothing else happens.
    QTimer tick;
    tick.start(20);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}
