// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/tarnctl/json_value.h"

#include <QObject>

namespace TarnCtl {

/// Hears all replies to one command. The callback group of the command is its child, so replies
/// that come after its death are dropped.
/// Thread: that of the connection.
class Answer : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// A reply that others follow.
    void more(JsonValue const &reply) { Q_EMIT sig_reply(reply); }
    /// The last reply.
    void last(JsonValue const &reply)
    {
        Q_EMIT sig_reply(reply);
        Q_EMIT sig_done();
    }
    /// `error` as the last reply, be it the server's or made by the library for a lost connection.
    void failed(JsonValue const &reply) { Q_EMIT sig_failed(reply); }

Q_SIGNALS:
    /// Each reply but `error`.
    void sig_reply(TarnCtl::JsonValue const &reply);
    /// Behind the last reply, unless that was `error`.
    void sig_done();
    void sig_failed(TarnCtl::JsonValue const &reply);
};

} // namespace TarnCtl
