// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/config/cf_model.h"
#include "ATarnLib/glint/glint.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/atimer.h"
#include "sim/vesk/vesk_sim.h"
#include "sim/vesk/vesk_world.h"
#include "tests/glint/wire_log.h"
#include "tests/support/event_loop.h"
#include "tests/support/loopback_address.h"
#include "tests/support/patience.h"

#include <QSignalSpy>
#include <QTest>
#include <memory>

/// A hub and a simulated server on an address of its own, not yet connected.
struct HubBench
{
    /// Whether what the server receives is listed, which takes it longer than to do it.
    enum class Logged
    {
        no,
        yes,
    };

    explicit HubBench(VeskSimOptions const &options = {}, Logged logged = Logged::yes)
        : server(LoopbackAddress::unique(), logged == Logged::yes ? log.options(options) : options)
        , hub(std::make_unique<Glint>(false))
    {
        ten_second_timer()->stop();
    }

    /// Connects, and waits until all that the hub sends on that has been done.
    bool connect()
    {
        hub->set_server(server.address());
        return QTest::qWaitFor([this] { return hub->is_connected(); }, patience_ms) && sync();
    }
    /// Waits until the server has done what was sent so far, and the hub has heard what it said
    /// to that.
    bool sync()
    {
        VCTP3::CallbackGroup_set1 group;
        QSignalSpy done(&group, &VCTP3::CallbackGroup_set1::sig_ok);
        hub->cmd_sync(group);
        return done.wait(patience_ms);
    }
    /// The same for what follows from that in later passes of the event loop: an output connects to
    /// its channel there, and the channel sends what that takes.
    bool settle() { return sync() && sync() && sync() && sync(); }
    /// Ends the connection, and waits for the next one as `connect` does. That may be up before
    /// anybody has seen that there was none.
    bool reconnect()
    {
        QSignalSpy const connected(hub.get(), &Glint::connected);
        server.drop_connections();
        return QTest::qWaitFor([&] { return !connected.isEmpty(); }, patience_ms) && sync();
    }

    /// What happens every ten seconds, now. It never happens by itself here.
    void ten_seconds_pass() { EventLoop::fire(ten_second_timer()); }
    /// Sets up the first quad of the board, and waits until the hub knows.
    bool set_board(char const *configuration)
    {
        AString const name = AString::l1("ChannelConfigurationSet0");
        AString const value = AString::l1(configuration);
        server.with_world([&](VeskWorld &world) { world.configuration.set(name, value); });
        CFItemModel const *item = hub->get_cf_model()->get_item(QString(name));
        return QTest::qWaitFor([&] { return item->get() == QString(value); }, patience_ms)
            && sync();
    }

    WireLog log;
    VeskSim server;
    std::unique_ptr<Glint> hub;

private:
    ATimer *ten_second_timer() const
    {
        for (ATimer *timer : hub->findChildren<ATimer *>())
            if (timer->interval() == 10000 && !timer->isSingleShot())
                return timer;
        qFatal("The hub has no timer of ten seconds");
    }
};
