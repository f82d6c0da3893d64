// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_clip_commands.h"
#include "sim/vesk/vesk_configuration_commands.h"
#include "sim/vesk/vesk_dictionary_commands.h"
#include "sim/vesk/vesk_information_commands.h"
#include "sim/vesk/vesk_metadata_commands.h"
#include "sim/vesk/vesk_not_simulated_commands.h"
#include "sim/vesk/vesk_registration_commands.h"
#include "sim/vesk/vesk_stored_commands.h"
#include "sim/vesk/vesk_transport_commands.h"

/// Answers the commands of one connection: all families, with what each keeps for a connection.
/// Thread: the server's.
class VeskSession final : public VeskTransportCommands,
                          public VeskClipCommands,
                          public VeskConfigurationCommands,
                          public VeskInformationCommands,
                          public VeskDictionaryCommands,
                          public VeskMetadataCommands,
                          public VeskStoredCommands,
                          public VeskRegistrationCommands,
                          public VeskNotSimulatedCommands
{
public:
    /// \a world must outlive the session.
    explicit VeskSession(VeskWorld *world);
};
