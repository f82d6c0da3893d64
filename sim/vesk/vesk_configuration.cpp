// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_configuration.h"

#include "sim/vesk/reports.h"

#include <algorithm>

bool VeskSetting::allows(AString const &value) const
{
    return allowed.empty() || std::find(allowed.begin(), allowed.end(), value) != allowed.end();
}

VCTP3::ConfigurationItem VeskSetting::to_item() const
{
    VCTP3::ConfigurationItem item;
    item.configuration_item_name = name;
    item.configuration_item_access = access;
    item.configuration_item_effective_value = effective;
    item.configuration_item_boot_value = boot;
    item.configuration_item_saved_value = saved;
    for (AString const &value : allowed)
        item.configuration_item_allowed_values.push_back(value);
    item.configuration_item_requires_reboot = requires_reboot;
    return item;
}

VeskConfiguration::VeskConfiguration(VeskReporter *reporter, VeskSettings const &settings)
    : told(reporter)
    , items(settings)
{
}

VeskConfiguration::Outcome VeskConfiguration::set(AString const &name, AString const &value)
{
    auto found = items.find(name);
    if (found == items.end())
        return Outcome::unknown_name;
    VeskSetting &item = found->second;
    if (!item.allows(value))
        return Outcome::bad_value;
    AString const holds = item.requires_reboot ? item.effective : value.deep_copy(32);
    if (item.saved == value && item.effective == holds)
        return Outcome::done;
    item.boot = item.saved = value.deep_copy(32);
    item.effective = holds;
    told->report(VCTP3::ReportType::config_change,
        VeskReports::config_changed(std::list<VCTP3::ConfigurationItem>{item.to_item()}));
    return Outcome::done;
}

VeskSetting const *VeskConfiguration::find(AString const &name) const
{
    auto found = items.find(name);
    return found == items.end() ? nullptr : &found->second;
}

AString VeskConfiguration::effective(AString const &name) const
{
    VeskSetting const *item = find(name);
    return item ? item->effective : AString();
}

void VeskConfiguration::restart()
{
    for (auto &[name, item] : items)
        item.effective = item.boot;
}
