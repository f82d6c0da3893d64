// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_dictionary.h"

#include "sim/vesk/reports.h"

#include <vector>

VeskDictionary::VeskDictionary(VeskReporter *reporter)
    : told(reporter)
{
}

void VeskDictionary::tell(AString const &key, AString const &value)
{
    auto found = watchers.find(key);
    if (found == watchers.end())
        return;
    XMLTree const report = VeskReports::userdict_change(key, value);
    for (quint64 connection : found->second)
        told->report_to(connection, report);
}

void VeskDictionary::set(AString const &key, AString const &value)
{
    values[key.deep_copy(32)] = value.deep_copy(32);
    tell(key, value);
}

void VeskDictionary::own(AString const &key, AString const &value, quint64 connection)
{
    owners[key] = connection;
    set(key, value);
}

bool VeskDictionary::erase(AString const &key)
{
    if (values.erase(key) == 0)
        return false;
    owners.erase(key);
    tell(key, AString());
    return true;
}

void VeskDictionary::watch(AString const &key, quint64 connection)
{
    watchers[key].insert(connection);
    auto found = values.find(key);
    if (found != values.end())
        told->report_to(connection, VeskReports::userdict_change(key, found->second));
}

void VeskDictionary::unwatch(AString const &key, quint64 connection)
{
    auto found = watchers.find(key);
    if (found == watchers.end())
        return;
    found->second.erase(connection);
    if (found->second.empty())
        watchers.erase(found);
}

AOption<AString> VeskDictionary::value(AString const &key) const
{
    auto found = values.find(key);
    return found == values.end() ? AOption<AString>() : AOption<AString>(found->second);
}

void VeskDictionary::connection_ended(quint64 connection)
{
    for (auto at = watchers.begin(); at != watchers.end();) {
        at->second.erase(connection);
        at = at->second.empty() ? watchers.erase(at) : std::next(at);
    }
    std::vector<AString> orphans;
    for (auto const &[key, owner] : owners)
        if (owner == connection)
            orphans.push_back(key);
    for (AString const &key : orphans)
        erase(key);
}
