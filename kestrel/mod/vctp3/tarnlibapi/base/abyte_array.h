// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aref.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <cstddef>
#include <cstdint>

/// A buffer of bytes. Copies share one block until one of them is changed. A NUL byte always
/// follows the data, uncounted. Blocks of 4096 bytes and more begin at a multiple of 4096.
/// Thread: copies may be used in different threads; one object by one thread at a time.
class TARN_EXPORT AByteArray
{
public:
    using Byte = unsigned char;
    static constexpr unsigned long long all = ~0ull;

    AByteArray() noexcept = default;
    explicit AByteArray(Byte a) { append(a); }
    AByteArray(Byte a, Byte b) { append(a, b); }
    AByteArray(Byte a, Byte b, Byte c) { append(a, b, c); }
    AByteArray(Byte a, Byte b, Byte c, Byte d) { append(a, b, c, d); }
    /// \a size bytes at \a source; a null pointer gives the empty array. (A template, so that a
    /// literal 0 is a byte and never a pointer.)
    template <typename T> AByteArray(T const *source, unsigned long long size)
    {
        append_bytes(source, size);
    }

    /// The bytes of a NUL-terminated text.
    static AByteArray fromLatin1(char const *text);
    static AByteArray toUtf8(AString const &text);

    // --- replace all ---
    void set(Byte a) { *this = AByteArray(a); }
    void set(Byte a, Byte b) { *this = AByteArray(a, b); }
    void set(Byte a, Byte b, Byte c) { *this = AByteArray(a, b, c); }
    void set(Byte a, Byte b, Byte c, Byte d) { *this = AByteArray(a, b, c, d); }
    template <typename T> void set(T const *source, unsigned long long size)
    {
        *this = AByteArray(source, size);
    }
    void set(AByteArray const &other) { *this = other; }
    void clear() { block.reset(); }

    // --- append; the source may lie in this array ---
    void append(Byte a) { append_bytes(&a, 1); }
    void append(Byte a, Byte b);
    void append(Byte a, Byte b, Byte c);
    void append(Byte a, Byte b, Byte c, Byte d);
    template <typename T> void append(T const *source, unsigned long long size)
    {
        append_bytes(source, size);
    }
    void append(AByteArray const &other) { append_bytes(other.const_data(), other.size()); }
    AByteArray &operator+=(AByteArray const &other)
    {
        append(other);
        return *this;
    }
    friend AByteArray operator+(AByteArray a, AByteArray const &b) { return a += b; }
    /// The most significant byte first.
    void append16(std::uint16_t value);
    void append32(std::uint32_t value);
    void append64(std::uint64_t value);

    // --- access ---
    unsigned long long size() const { return block ? block->size : 0; }
    bool empty() const { return size() == 0; }
    /// The bytes for changing, never null.
    Byte *data() { return ref().data; }
    Byte const *data() const { return const_data(); }
    Byte const *const_data() const { return block ? block->data : &nul; }
    /// Outside: an assertion, and 0 or a scratch byte of the thread.
    Byte &operator[](unsigned long long i);
    Byte operator[](unsigned long long i) const;
    /// Bytes that the block takes before it grows, the NUL included; 0 while there is none.
    unsigned long long reserved_size() const { return block ? block->reserved_size : 0; }
    void reserve(unsigned long long n);
    /// New bytes get \a fill.
    void resize(unsigned long long n, Byte fill = 0);
    /// Copy \a n bytes in at \a offset or out from it. Nothing at all happens, and false, unless
    /// \a offset is below the size and all \a n bytes are within it.
    bool copy_from(void const *source, unsigned long long n, unsigned long long offset = 0);
    bool copy_to(void *target, unsigned long long n, unsigned long long offset = 0) const;

    // --- slice and search; positions count from 0, -1 is "not found" ---
    AByteArray left(unsigned long long n) const { return mid(0, n); }
    AByteArray right(unsigned long long n) const { return n < size() ? mid(size() - n, n) : *this; }
    AByteArray mid(unsigned long long position, unsigned long long n = all) const;
    long long find(Byte byte, long long from = 0) const;
    /// The last one at all, or at \a from or before it.
    long long rfind(Byte byte) const { return rfind(byte, static_cast<long long>(size()) - 1); }
    long long rfind(Byte byte, long long from) const;
    bool has_prefix(AByteArray const &prefix) const;
    bool has_suffix(AByteArray const &suffix) const;
    /// Throughout.
    void replace(Byte old_byte, Byte new_byte);

    // --- compare: by bytes, then the shorter is the lesser ---
    int cmp(AByteArray const &other) const;
    friend bool operator==(AByteArray const &a, AByteArray const &b) { return a.cmp(b) == 0; }
    friend bool operator!=(AByteArray const &a, AByteArray const &b) { return a.cmp(b) != 0; }
    friend bool operator<(AByteArray const &a, AByteArray const &b) { return a.cmp(b) < 0; }
    friend bool operator>(AByteArray const &a, AByteArray const &b) { return a.cmp(b) > 0; }
    friend bool operator<=(AByteArray const &a, AByteArray const &b) { return a.cmp(b) <= 0; }
    friend bool operator>=(AByteArray const &a, AByteArray const &b) { return a.cmp(b) >= 0; }

    // --- text ---
    /// A line feed follows the last whole symbol of every 20 bytes; no "=" at the end.
    AString toBase64() const;
    /// Skips every character outside the alphabet.
    static AByteArray fromBase64(AString const &text);
    /// Capital digits, two for each byte. A line feed stands before a byte when the line already
    /// has `width - 1` characters, and so before every byte for a \a width of 1 or 0.
    AString toHex(unsigned int width) const;
    /// The same digits as bytes, without line feeds.
    AByteArray toHexAscii() const;
    /// Joins pairs of digits (0 to 9, A to Z in both cases, counted 0 to 35) to bytes, cut to 8
    /// bits. Skips every other byte; a last digit without a partner is dropped.
    static AByteArray fromHexAscii(AByteArray const &digits);
    /// The bytes read as UTF-8.
    AString fromUtf8() const;

private:
    struct DataStruct
    {
        explicit DataStruct(unsigned long long request);
        ~DataStruct();
        DataStruct(DataStruct const &) = delete;
        DataStruct &operator=(DataStruct const &) = delete;

        bool take_reference() { return count.take(); }
        void release_reference()
        {
            if (count.release())
                delete this;
        }
        void add(void const *source, unsigned long long n);

        ASharedCount count;
        unsigned long long reserved_size;
        unsigned long long size = 0;
        Byte *raw;
        Byte *data;
    };

    DataStruct &ref() { return room_for(0); }
    /// The private block with room for \a n bytes in all. What it replaces lives on in \a old.
    DataStruct &room_for(unsigned long long n, ARef<DataStruct> *old = nullptr);
    void append_bytes(void const *source, unsigned long long n);

    static Byte const nul;

    ARef<DataStruct> block;
};
