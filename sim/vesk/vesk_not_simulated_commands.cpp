// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_not_simulated_commands.h"

#define X(command, Args)                                                                           \
    void VeskNotSimulatedCommands::on_##command(VeskRequest &request, Args const &)                \
    {                                                                                              \
        request.error(AString::l1("not simulated"));                                               \
    }
VESK_NOT_SIMULATED(X)
#undef X
