// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/words_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_document_p.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace VCTP3 {

/// Finds what belongs to a tag: a hashed table, at most half full, that is filled once.
/// Thread: any.
template <typename Value> class TagTable
{
public:
    struct Row
    {
        Word tag;
        Value value;
    };

    template <std::size_t count> explicit TagTable(Row const (&rows)[count])
    {
        static_assert(count <= size / 2);
        for (Row const &row : rows) {
            std::size_t at = place(word(row.tag));
            while (slots[at].row)
                at = (at + 1) % size;
            slots[at] = {&row, word(row.tag)};
            at = place(&word(row.tag));
            while (words[at].row)
                at = (at + 1) % size;
            words[at] = {&row, &word(row.tag)};
        }
    }

    /// Null for a tag that is not in the table.
    Value const *find(AString const &tag) const
    {
        for (std::size_t at = place(tag); slots[at].row; at = (at + 1) % size) {
            if (slots[at].tag == tag)
                return &slots[at].row->value;
        }
        return nullptr;
    }

    /// The same for the one string of a word, as parsed elements have it.
    Value const *find(AString const *tag) const
    {
        for (std::size_t at = place(tag); words[at].row; at = (at + 1) % size) {
            if (words[at].tag == tag)
                return &words[at].row->value;
        }
        return nullptr;
    }

    /// By the tag of an element.
    Value const *find_of(XMLTree const &element) const
    {
        XMLNode const *node = XMLAccess::node(element);
        return node && node->named ? find(&node->name->text) : find(element.get_tag());
    }

private:
    static constexpr std::size_t size = 512;

    struct Slot
    {
        Row const *row = nullptr;
        AString tag;
    };
    struct WordSlot
    {
        Row const *row = nullptr;
        AString const *tag = nullptr;
    };

    static std::size_t place(AString const *tag)
    {
        auto const address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(tag));
        return (address * 0x9e3779b97f4a7c15u) >> 55;
    }
    std::size_t place(AString const &tag) const
    {
        std::uint32_t hash = 2166136261U;
        AStringSegmentPosition at = tag.get_first_position();
        AChar const *run = nullptr;
        // A tag of a message may lie across two runs of its text.
        while (unsigned long long const length = tag.linear_access(at, &run)) {
            for (unsigned long long i = 0; i < length; ++i)
                hash = (hash ^ run[i].ord()) * 16777619U;
            tag.get_next_position(&at, length);
        }
        return (hash ^ (hash >> 16)) % size;
    }

    std::array<Slot, size> slots;
    std::array<WordSlot, size> words;
};

} // namespace VCTP3
