// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"
#include "sim/vesk/vesk_reporter.h"

#include <functional>
#include <list>
#include <map>
#include <set>

/// Named databases of keys and values. A prefix is the beginning of a key as text, no more: the
/// full key is the prefix with the key behind it, and keys given out are without the prefix that
/// was asked for.
/// Thread: the server's.
class VeskMetadata
{
public:
    using Pairs = std::list<VCTP3::Metadata>;
    using Keys = std::list<AString>;

    explicit VeskMetadata(VeskReporter *reporter);

    /// Writes all pairs and tells every watcher, the writer too, also of values that stay as they
    /// were: to its writer the report is the proof that the write has landed.
    void set(AString const &database, AString const &prefix, Pairs const &pairs);
    /// Erases those of \a keys that exist, and tells of these alone.
    void erase(AString const &database, AString const &prefix, Keys const &keys);
    /// The keys that begin with \a prefix in key order, in blocks of a size that fits in a message.
    void read(AString const &database, AString const &prefix,
        std::function<void(Pairs const &)> const &block) const;
    /// By the full key; none if there is none.
    AOption<AString> value(AString const &database, AString const &key) const;
    /// A second watch of the same prefix changes nothing.
    void watch(AString const &database, AString const &prefix, quint64 connection);
    /// Ends all watches of \a connection in \a database.
    void unwatch(AString const &database, quint64 connection);
    void connection_ended(quint64 connection);

private:
    using Database = std::map<AString, AString>;
    using Watches = std::map<quint64, std::set<AString>>;

    VeskReporter *told;
    std::map<AString, Database> databases;
    std::map<AString, Watches> watches;
};
