// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_handler.h"
#include "sim/vesk/vesk_request.h"
#include "sim/vesk/vesk_world.h"

/// The user dictionary.
class VeskDictionaryCommands : public virtual VeskHandler
{
public:
    explicit VeskDictionaryCommands(VeskWorld *world);

    void on_userdict_set(VeskRequest &request, UserdictSetArgs const &args) override;
    void on_userdict_own(VeskRequest &request, UserdictOwnArgs const &args) override;
    void on_userdict_erase(VeskRequest &request, UserdictEraseArgs const &args) override;
    void on_userdict_watch(VeskRequest &request, UserdictWatchArgs const &args) override;
    void on_userdict_unwatch(VeskRequest &request, UserdictUnwatchArgs const &args) override;

private:
    VeskWorld *model;
};
