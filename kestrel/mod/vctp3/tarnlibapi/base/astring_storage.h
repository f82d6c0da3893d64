// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/achar.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aref.h"

#include <atomic>
#include <cstdint>

/// A run of up to 256 code points in the chain of a store. The text stands right behind this
/// header; the room beyond `used` is never read and never filled.
struct AStringChunk
{
    static constexpr std::uint32_t max_text = 256;
    /// Bytes from one full chunk to the next in a block of them.
    static constexpr std::size_t stride();

    AStringChunk *next = nullptr;
    std::uint32_t used = 0;
    std::uint16_t room = 0; // at most max_text
    bool single = false; // has an allocation of its own

    AChar *text() { return reinterpret_cast<AChar *>(this + 1); }
    AChar const *text() const { return reinterpret_cast<AChar const *>(this + 1); }
};

constexpr std::size_t AStringChunk::stride()
{
    return sizeof(AStringChunk) + max_text * sizeof(AChar);
}

/// The shared store of strings: a chain of chunks. One owner fills it while `sealed` is 0; after
/// that it never changes, and any thread may read it. A reader finds no text before.
///
/// The chunks that are foreseen when a store is made lie behind it in one allocation, each full
/// before the next begins. While there are no others the store is `even`, and any position in it
/// is found without a walk.
struct TARN_EXPORT AStringInternalStorageStruct
{
    /// A count with this bit belongs to a store of the whole process: it is never changed.
    static constexpr std::uint32_t immortal = 0x80000000u;

    std::atomic<std::uint32_t> count{1};
    unsigned char sealed = 0;
    unsigned char even = 1;
    AStringChunk *first = nullptr;
    AStringChunk *last = nullptr;
    std::uint64_t size = 0;

    /// Takes \a n references at once unless the count has fallen to 0; false then.
    bool take_references(std::uint32_t n) noexcept
    {
        std::uint32_t seen = count.load(std::memory_order_relaxed);
        while (seen != 0) {
            if (seen & immortal)
                return true;
            if (count.compare_exchange_weak(seen, seen + n, std::memory_order_relaxed))
                return true;
        }
        return false;
    }
    bool take_reference() noexcept { return take_references(1); }
    void release_reference() noexcept
    {
        if (count.load(std::memory_order_relaxed) & immortal)
            return;
        if (count.fetch_sub(1, std::memory_order_acq_rel) == 1)
            destroy(this);
    }

    /// The store's size for readers: 0 until it is sealed.
    std::uint64_t readable_size() const noexcept { return sealed ? size : 0; }

    /// The chunk that holds \a position, which must be below `size`, and the index within it.
    AStringChunk const *chunk_at(std::uint64_t position, std::uint32_t *index) const noexcept
    {
        if (position < first->used) {
            *index = static_cast<std::uint32_t>(position);
            return first;
        }
        return far_chunk_at(position, index);
    }

    /// Frees the chunks along the chain, then the store.
    static void destroy(AStringInternalStorageStruct *store) noexcept;

private:
    AStringChunk const *far_chunk_at(std::uint64_t position, std::uint32_t *index) const noexcept;
};
