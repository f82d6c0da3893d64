// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_handler.h"
#include "sim/vesk/vesk_request.h"
#include "sim/vesk/vesk_world.h"

/// Settings of the server.
class VeskConfigurationCommands : public virtual VeskHandler
{
public:
    explicit VeskConfigurationCommands(VeskWorld *world);

    void on_get_configuration(VeskRequest &request, GetConfigurationArgs const &args) override;
    void on_get_one_configuration(
        VeskRequest &request, GetOneConfigurationArgs const &args) override;
    void on_set_configuration(VeskRequest &request, SetConfigurationArgs const &args) override;

private:
    VeskWorld *model;
};
