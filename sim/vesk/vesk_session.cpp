// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_session.h"

VeskSession::VeskSession(VeskWorld *world)
    : VeskTransportCommands(world)
    , VeskClipCommands(world)
    , VeskConfigurationCommands(world)
    , VeskInformationCommands(world)
    , VeskDictionaryCommands(world)
    , VeskMetadataCommands(world)
    , VeskStoredCommands(world)
    , VeskRegistrationCommands(world)
{
}
