// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/tarnctl/exposition.h"
#include "tools/tarnctl/hub_verb.h"

namespace TarnCtl {

/// A verb that tells once what a hub's models hold, for scripts or for a collector of metrics.
class SnapshotVerb : public HubVerb
{
    Q_OBJECT

protected:
    virtual void print_json() = 0;
    virtual void write(Exposition *metrics) = 0;

    void told() override;
};

} // namespace TarnCtl
