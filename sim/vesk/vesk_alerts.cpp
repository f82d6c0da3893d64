// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_alerts.h"

#include "sim/vesk/reports.h"

#include <utility>

namespace {

using Level = VCTP3::AlertingLevel;
using Priority = VCTP3::AlertingPriority;

constexpr unsigned int warm_tenths = 415;

VCTP3::Alert make_alert(
    char const *name, char const *description, Priority priority, Level level, AString const &value)
{
    VCTP3::Alert alert;
    alert.alerting_priority = priority;
    alert.alerting_level = level;
    alert.alert_name = AString::l1(name);
    alert.alert_name_description = AString::l1(description);
    alert.alert_value_description = value;
    return alert;
}

} // namespace

VeskAlerts::VeskAlerts(VeskReporter *reporter)
    : told(reporter)
{
}

void VeskAlerts::set(VCTP3::Alert const &alert)
{
    auto known = raised.find(alert.alert_name);
    if (known == raised.end() ? alert.alerting_level == Level::ok : known->second == alert)
        return;
    raised[alert.alert_name] = alert;
    told->report(VCTP3::ReportType::alerts, VeskReports::alert(alert));
}

std::vector<XMLTree> VeskAlerts::reports() const
{
    std::vector<XMLTree> result;
    for (auto const &[name, alert] : raised)
        result.push_back(VeskReports::alert(alert));
    return result;
}

void VeskAlerts::watch_temperature(unsigned int tenths)
{
    if (std::exchange(temperature, tenths) == tenths)
        return;
    set(make_alert("temperature", "Temperature", Priority::harmful,
        tenths < warm_tenths ? Level::ok : Level::warning,
        AString::sprintf("%u.%u C", tenths / 10, tenths % 10)));
}

void VeskAlerts::watch_disk(quint64 total, quint64 available)
{
    if (std::exchange(available_bytes, available) == available)
        return;
    Level const level = available < total / 50 ? Level::error
        : available < total / 10               ? Level::warning
                                               : Level::ok;
    set(make_alert("disk_space", "Free disk space", Priority::malfunction, level,
        AString::sprintf("%u GB", static_cast<unsigned int>(available / 1000000000))));
}
