// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt.h"
#include "tests/support/patience.h"
#include "tests/support/scripted_server.h"

#include <QTest>

/// Connects \a api to a server that has no connection, and waits until both know of it.
inline bool link_up(VCTP3::APIQt *api, ScriptedServer const &server)
{
    api->connect_to_server(server.address());
    return QTest::qWaitFor(
        [&] { return api->is_connected() && server.connections_open() == 1; }, patience_ms);
}
