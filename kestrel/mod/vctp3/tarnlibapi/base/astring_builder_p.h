// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

/// The one road by which stores are made: fill, then seal. One builder makes one store.
/// Thread: one at a time.
class TARN_AUTOTEST_EXPORT AStringBuilder
{
public:
    /// \a expected code points get their room in one allocation with the store. A guess that is
    /// too low costs further chunks, one too high keeps memory that is not used.
    explicit AStringBuilder(unsigned long long expected = 0)
        : wanted(expected)
    {
    }
    ~AStringBuilder()
    {
        if (store)
            AString::Storage::destroy(store);
    }
    AStringBuilder(AStringBuilder const &) = delete;
    AStringBuilder &operator=(AStringBuilder const &) = delete;

    /// The same promise as the constructor's; without effect once there is text.
    void reserve(unsigned long long expected);

    void append(AString const &s);
    void append(AChar c)
    {
        if (chunk_left == 0)
            grow();
        put(c);
    }
    void append(char32_t c) { append(AChar(c)); }
    void append(AChar const *text, unsigned long long n);
    void append_repeated(AChar c, unsigned long long n);
    void append_latin1(char const *text, unsigned long long n);
    /// Stops at the first byte that cannot be read; returns how many were read.
    unsigned long long append_utf8(char const *text, unsigned long long n);
    /// Stops at the first unit that cannot be read.
    void append_utf16(char16_t const *text, unsigned long long n);

    /// Room to write text directly: where, and in \a n how many code points it takes (1 to 256).
    /// `commit` then tells how many were written.
    AChar *room(unsigned long long *n)
    {
        if (chunk_left == 0)
            grow();
        *n = chunk_left;
        return write;
    }
    void commit(unsigned long long n)
    {
        write += n;
        chunk_left -= static_cast<std::uint32_t>(n);
    }

    /// Code points so far.
    unsigned long long size() const;

    /// Seals the store and gives it away: as a string, or as a store to cut slices from (null
    /// when there is no text). The builder is then empty and makes a new one.
    AString take();
    ARef<AString::Storage> take_storage();

private:
    void put(AChar c)
    {
        *write++ = c;
        --chunk_left;
    }
    void make_store(unsigned long long room_for);
    void grow();
    void enter(AStringChunk *chunk);
    /// The count of the last chunk is brought up to date only here.
    void settle();
    /// The sealed store, or null when there is no text.
    AString::Storage *finish();

    AString::Storage *store = nullptr;
    AChar *write = nullptr;
    std::uint32_t chunk_left = 0; // room in the last chunk
    unsigned long long foreseen = 0; // room in the store's block behind the last chunk
    unsigned long long wanted = 0;
};
