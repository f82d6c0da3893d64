// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_configuration_commands.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/astring_format.h"
#include "sim/vesk/replies.h"

namespace {

AString unknown(AString const &name)
{
    return AString::l1("There is no configuration item \"%1\"").arg(name);
}

} // namespace

VeskConfigurationCommands::VeskConfigurationCommands(VeskWorld *world)
    : model(world)
{
}

void VeskConfigurationCommands::on_get_configuration(
    VeskRequest &request, GetConfigurationArgs const &)
{
    for (auto const &[name, setting] : model->configuration.settings())
        request.reply(VeskReplies::configuration_item(setting.to_item()));
    request.ok();
}

void VeskConfigurationCommands::on_get_one_configuration(
    VeskRequest &request, GetOneConfigurationArgs const &args)
{
    VeskSetting const *setting = model->configuration.find(args.configuration_item_name);
    if (setting)
        request.reply(VeskReplies::one_configuration_item(setting->to_item()));
    else
        request.error(unknown(args.configuration_item_name), VCTP3::ErrorCode::configname_invalid);
}

void VeskConfigurationCommands::on_set_configuration(
    VeskRequest &request, SetConfigurationArgs const &args)
{
    switch (model->configuration.set(args.configuration_item_name, args.configuration_item_value)) {
    case VeskConfiguration::Outcome::done:
        request.ok();
        return;
    case VeskConfiguration::Outcome::unknown_name:
        request.error(unknown(args.configuration_item_name), VCTP3::ErrorCode::configname_invalid);
        return;
    case VeskConfiguration::Outcome::bad_value:
        request.error(AString::l1("\"%1\" is not allowed for configuration item \"%2\"")
                          .arg(args.configuration_item_value)
                          .arg(args.configuration_item_name),
            VCTP3::ErrorCode::configvalue_invalid);
        return;
    }
}
