// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/enums.h"
#include "tools/tarnctl/verb.h"

#include <vector>

namespace TarnCtl {

/// A verb on a hub. It makes models and connects to signals when the connection is up, and goes on
/// when all that the server has to say to that is here.
class HubVerb : public Verb
{
    Q_OBJECT

public:
    bool prepare(CommandLine const &line, QString *error) override;
    bool wants_hub() const override { return true; }

protected:
    /// Whether `begin` waits until the hub has read the configuration of the server.
    virtual bool needs_configuration() const { return true; }
    /// Makes models, connects to signals.
    virtual void begin() = 0;
    /// Whether what follows the last reply is here too; asked until it is.
    virtual bool is_told();
    /// What was asked for by that is here.
    virtual void told() = 0;

    Glint &hub() { return session().hub(); }
    /// Those that the configuration makes; if it makes none, all that have a letter.
    std::vector<VCTP3::Channel> server_channels();

    void connected() override;
    void got_reply(JsonValue const &) override { }
    void done() override;

private:
    void start();

    bool begun = false;
    bool complete = false;
};

} // namespace TarnCtl
