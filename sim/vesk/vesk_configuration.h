// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"
#include "sim/vesk/vesk_reporter.h"

#include <map>
#include <vector>

/// One setting of the server.
struct VeskSetting
{
    AString name;
    /// What will hold after the next start, what is saved, what holds now.
    AString boot;
    AString saved;
    AString effective;
    /// Empty: any text will do.
    std::vector<AString> allowed;
    VCTP3::ConfigurationItemAccess access = VCTP3::ConfigurationItemAccess::user;
    bool requires_reboot = false;

    bool allows(AString const &value) const;
    /// As clients are told of it.
    VCTP3::ConfigurationItem to_item() const;
};

/// By name.
using VeskSettings = std::map<AString, VeskSetting>;

/// The flat list of named settings. A saved value holds at once, but for settings that wait for
/// the next start.
/// Thread: the server's.
class VeskConfiguration
{
public:
    enum class Outcome
    {
        done,
        unknown_name,
        bad_value
    };

    VeskConfiguration(VeskReporter *reporter, VeskSettings const &settings);

    /// Saves a value and tells what changed; an equal value tells nothing.
    Outcome set(AString const &name, AString const &value);
    /// Null for an unknown name.
    VeskSetting const *find(AString const &name) const;
    /// The value that holds; empty for an unknown name.
    AString effective(AString const &name) const;
    /// In the order of the names.
    VeskSettings const &settings() const { return items; }
    /// What was to hold after the start holds.
    void restart();

private:
    VeskReporter *told;
    VeskSettings items;
};
