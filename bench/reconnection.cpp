// SPDX-License-Identifier: Apache-2.0
// How long a hub is away when its server is back: from when the server listens again to the
// connection, and from there until the server has done all that the hub registers, which is every
// report of 40 channels, their lists and chases, and those of the whole server. The server comes
// back at any moment of the hub's timer.
//   reconnection [RETURNS]
#include "ATarnLib/glint/alert_model.h"
#include "ATarnLib/glint/glint.h"
#include "ATarnLib/glint/glint_channel_monitor.h"
#include "sim/vesk/vesk_sim.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <random>
#include <vector>

namespace {

constexpr unsigned int channel_registrations = 40 * 12 + 40 * 2;

template <typename State> void run_until(State state)
{
    while (!state())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

template <typename... Signals>
void listen(GlintChannelMonitor *monitor, QObject *receiver, Signals... signal)
{
    (QObject::connect(monitor, signal, receiver, [] {}), ...);
}

void listen_to_all(Glint *hub)
{
    using M = GlintChannelMonitor;
    for (unsigned int i = 0; i < Glint::channel_count; ++i) {
        listen(hub->get_channel_monitor(i), hub, &M::report_status, &M::report_clipid,
            &M::report_speed, &M::report_timecodes, &M::report_information, &M::report_peak,
            &M::report_aux_status, &M::report_aux_clipid, &M::report_aux_speed,
            &M::report_aux_position, &M::report_aux_information, &M::report_aux_peak);
        hub->request_listplay_notification(static_cast<VCTP3::Channel>(i));
    }
    hub->require_melt_notification();
    hub->require_export_notification();
    hub->get_alert_model();
}

/// One return of the server; times in milliseconds.
struct Return
{
    double connected = 0;
    double registered = 0;
};

class Away
{
public:
    Away()
        : hub(false)
    {
        listen_to_all(&hub);
        QObject::connect(&hub, &Glint::connected, &hub, [this] { note_connected(); });
        QObject::connect(&group, &VCTP3::CallbackGroup_set1::sig_ok, &hub, [this] { note_done(); });
        clock.start();
        hub.set_server(server.address());
        run_until([this] { return done; });
    }

    /// \a later: when the server comes back, in milliseconds from when it went.
    Return once(int later)
    {
        done = false;
        server.stop();
        run_until([this] { return !hub.is_connected(); });
        quint64 const before = server.counters().count("channel_report_register");
        QTimer::singleShot(later, Qt::PreciseTimer, &hub, [this] {
            server.restart(VeskState::keep);
            clock.start();
        });
        run_until([this] { return done; });
        if (server.counters().count("channel_report_register") - before != channel_registrations)
            qFatal("Not every report was registered once");
        return measured;
    }

private:
    double now_ms() const { return double(clock.nsecsElapsed()) / 1e6; }
    void note_connected()
    {
        measured.connected = now_ms();
        hub.cmd_sync(group); // behind all that the hub sends
    }
    void note_done()
    {
        measured.registered = now_ms() - measured.connected;
        done = true;
    }

    VeskSim server{QHostAddress(QStringLiteral("127.0.77.1"))};
    Glint hub;
    VCTP3::CallbackGroup_set1 group;
    QElapsedTimer clock;
    Return measured;
    bool done = false;
};

void print(char const *what, std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    std::printf(
        "%s: median %.1f ms, longest %.1f ms\n", what, times[times.size() / 2], times.back());
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication const application(argc, argv);
    int const returns = argc > 1 ? std::max(1, QByteArray(argv[1]).toInt()) : 50;
    std::mt19937 random(1);
    Away away;
    std::vector<double> connected;
    std::vector<double> registered;
    for (int i = 0; i < returns; ++i) {
        Return const measured = away.once(static_cast<int>(random() % 400));
        connected.push_back(measured.connected);
        registered.push_back(measured.registered);
    }
    print("from the server's return to the connection", connected);
    print("from the connection to the last registration", registered);
}
