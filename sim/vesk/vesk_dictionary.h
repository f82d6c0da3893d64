// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "sim/vesk/vesk_reporter.h"

#include <map>
#include <set>

/// Keys and values that clients leave for one another, watched key by key.
/// Thread: the server's.
class VeskDictionary
{
public:
    explicit VeskDictionary(VeskReporter *reporter);

    /// Tells every watcher of the key, the writer too, also when the value is the old one.
    void set(AString const &key, AString const &value);
    /// As `set`; the key goes when \a connection ends. The last to own a key owns it, and a `set`
    /// by another changes the value and not the owner.
    void own(AString const &key, AString const &value, quint64 connection);
    /// Tells the watchers an empty value. False if there is no such key.
    bool erase(AString const &key);
    /// Tells the present value at once if the key exists.
    void watch(AString const &key, quint64 connection);
    void unwatch(AString const &key, quint64 connection);
    /// None for an unknown key.
    AOption<AString> value(AString const &key) const;
    /// Ends the watches of \a connection and erases the keys that it owned.
    void connection_ended(quint64 connection);

private:
    void tell(AString const &key, AString const &value);

    VeskReporter *told;
    std::map<AString, AString> values;
    std::map<AString, quint64> owners;
    std::map<AString, std::set<quint64>> watchers;
};
