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

/// A registered name. Entries are never freed or changed. What readers compare fills one line of
/// the processor's cache.
struct alignas(64) XMLNameEntry
{
    XMLNameEntry(std::string_view name, std::uint32_t number);

    /// Bytes that `stands_at` may look at.
    static constexpr std::size_t reach = 16 + 255; // the longest name

    /// Whether the name with ">" behind it stands at \a p.
    bool stands_at(char const *p) const
    {
        std::uint64_t there[2];
        std::memcpy(there, p, 16);
        if ((((there[0] ^ begin[0]) & mask[0]) | ((there[1] ^ begin[1]) & mask[1])) != 0)
            return false;
        return length < 16
            || (p[length] == '>' && std::memcmp(p + 16, bytes.data() + 16, length - 16) == 0);
    }

    std::uint64_t begin[2]{}; // the first 16 bytes of the name and ">"
    std::uint64_t mask[2]{}; // which bits of them count
    std::uint32_t length = 0;
    std::uint16_t hint = 0; // counts entries from 1 and wraps
    std::string bytes;
    XMLNameKey key;
    AString text;
};

/// The registered names of the process.
namespace XMLVocabulary {

constexpr std::size_t longest_name = 255;

/// Whether the parsers take \a name for a tag.
bool is_name(std::string_view name);
/// The entry of \a name, or null. Takes no lock.
XMLNameEntry const *find(std::string_view name);
/// The same, made if there is none yet.
XMLNameEntry const *add(std::string_view name);
/// An entry that is never found.
XMLNameEntry const *add_hidden(std::string_view name);

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
