// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

/// Length, head and tail of a name: of up to 16 bytes they are the whole of it.
struct XMLNameKey
{
    explicit XMLNameKey(std::string_view name);
    bool operator==(XMLNameKey const &other) const = default;
    std::uint64_t hash() const
    {
        return (head + length * 0x9e3779b97f4a7c15u) * 0xff51afd7ed558ccdu
            ^ (tail * 0xc4ceb9fe1a85ec53u);
    }

    std::uint64_t head = 0;
    std::uint64_t tail = 0;
    std::uint64_t length = 0;
};

/// A registered name. Entries are never freed or changed.
struct XMLNameEntry
{
    explicit XMLNameEntry(std::string_view name);

    XMLNameKey key;
    std::string bytes;
    AString text;
};

/// The registered names of the process.
namespace XMLVocabulary {

/// Whether the parsers take \a name for a tag.
bool is_name(std::string_view name);
/// The entry of \a name, or null. Takes no lock.
XMLNameEntry const *find(std::string_view name);
/// The same, made if there is none yet.
XMLNameEntry const *add(std::string_view name);

} // namespace XMLVocabulary

inline XMLNameKey::XMLNameKey(std::string_view name)
    : length(name.size())
{
    char const *const p = name.data();
    if (length >= 8) {
        std::memcpy(&head, p, 8);
        std::memcpy(&tail, p + length - 8, 8);
    } else if (length >= 4) {
        std::memcpy(&head, p, 4);
        std::memcpy(&tail, p + length - 4, 4);
    } else if (length > 0) {
        // The three bytes overlap in shorter names; with the length they are still unique.
        head = static_cast<unsigned char>(p[0])
            | static_cast<std::uint64_t>(static_cast<unsigned char>(p[length / 2])) << 8
            | static_cast<std::uint64_t>(static_cast<unsigned char>(p[length - 1])) << 16;
    }
}
