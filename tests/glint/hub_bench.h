// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/glint/glint.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/atimer.h"
#include "sim/vesk/vesk_sim.h"
#include "tests/glint/wire_log.h"
#include "tests/support/loopback_address.h"

#include <QCoreApplication>
#include <QTest>
#include <QTimerEvent>
#include <memory>

/// A hub and a simulated server on an address of its own, not yet connected.
struct HubBench
{
    explicit HubBench(VeskSimOptions const &options = {})
        : server(LoopbackAddress::unique(), log.options(options))
        , hub(std::make_unique<Glint>(false))
    {
    }

    /// Connects, and waits until all that the hub sends on that has been done.
    bool connect()
    {
        hub->set_server(server.address());
        return QTest::qWaitFor([this] { return hub->is_connected(); }, 20000) && sync();
    }
    /// Waits until the server has done what was sent so far, and the hub has heard what it said
    /// to that.
    bool sync()
    {
        VCTP3::CallbackGroup_set1 group;
        bool done = false;
        QObject::connect(
            &group, &VCTP3::CallbackGroup_set1::sig_ok, &group, [&done] { done = true; });
        hub->cmd_sync(group);
        return QTest::qWaitFor([&done] { return done; }, 20000);
    }
    /// Ends the connection, and waits for the next one as `connect` does.
    bool reconnect()
    {
        server.drop_connections();
        return QTest::qWaitFor([this] { return !hub->is_connected(); }, 20000)
            && QTest::qWaitFor([this] { return hub->is_connected(); }, 20000) && sync();
    }

    /// What happens every ten seconds, now.
    void ten_seconds_pass()
    {
        for (ATimer *timer : hub->findChildren<ATimer *>()) {
            if (timer->interval() != 10000 || timer->isSingleShot())
                continue;
            QTimerEvent event(timer->timerId());
            QCoreApplication::sendEvent(timer, &event);
        }
    }

    WireLog log;
    VeskSim server;
    std::unique_ptr<Glint> hub;
};
