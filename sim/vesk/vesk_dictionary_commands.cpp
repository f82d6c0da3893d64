// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_dictionary_commands.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/astring_format.h"

VeskDictionaryCommands::VeskDictionaryCommands(VeskWorld *world)
    : model(world)
{
}

void VeskDictionaryCommands::on_userdict_set(VeskRequest &request, UserdictSetArgs const &args)
{
    model->dictionary.set(args.key, args.value);
    request.ok();
}

void VeskDictionaryCommands::on_userdict_own(VeskRequest &request, UserdictOwnArgs const &args)
{
    model->dictionary.own(args.key, args.value, request.connection());
    request.ok();
}

void VeskDictionaryCommands::on_userdict_erase(VeskRequest &request, UserdictEraseArgs const &args)
{
    if (model->dictionary.erase(args.key))
        request.ok();
    else
        request.error(AString::l1("There is no key \"%1\"").arg(args.key));
}

void VeskDictionaryCommands::on_userdict_watch(VeskRequest &request, UserdictWatchArgs const &args)
{
    model->dictionary.watch(args.key, request.connection());
    request.ok();
}

void VeskDictionaryCommands::on_userdict_unwatch(
    VeskRequest &request, UserdictUnwatchArgs const &args)
{
    model->dictionary.unwatch(args.key, request.connection());
    request.ok();
}
