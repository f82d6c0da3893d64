// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt.h"
#include "sim/vesk/vesk_sim.h"
#include "tests/support/loopback_address.h"
#include "tests/support/patience.h"

#include <QSignalSpy>
#include <QTest>

/// A simulated server and a client of it, which is not connected at first.
template <typename Client = VCTP3::APIQt> class LinkedClient
{
public:
    template <typename... Args>
    explicit LinkedClient(Args &&...args)
        : api(std::forward<Args>(args)...)
    {
    }

    /// Returns when both sides know of the connection.
    bool connect()
    {
        quint64 const before = server.counters().connections;
        api.connect_to_server(server.address());
        return wait_for(
            [&] { return api.is_connected() && server.counters().connections > before; });
    }
    /// Lets the server end the connection, and waits until the client knows.
    bool lose()
    {
        server.drop_connections();
        return wait_for([this] { return !api.is_connected(); });
    }
    /// A round trip: what was sent before is done, and what came of it has arrived.
    bool sync()
    {
        VCTP3::CallbackGroup_set1 group;
        QSignalSpy done(&group, &VCTP3::CallbackGroup_set1::sig_ok);
        api.cmd_sync(group);
        return wait_for([&] { return !done.isEmpty(); });
    }
    /// Commands of that name that the server has seen.
    quint64 count(char const *command) const { return server.counters().count(command); }

    /// Runs the event loop until \a state is true; false if that takes more than `patience_ms`.
    static bool wait_for(std::function<bool()> const &state)
    {
        return QTest::qWaitFor(state, patience_ms);
    }

    VeskSim server{LoopbackAddress::unique()};
    Client api;
};
