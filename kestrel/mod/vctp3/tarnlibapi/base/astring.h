// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/achar.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/afunction.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_storage.h"

#include <atomic>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <string>
#include <utility>

class AStringFormat;
class AStringList;
class QString;

/// A cursor into a string: the chunk, the index within it, and the index within the store. It is
/// good for the string that made it and all slices of that store, as long as one of them lives.
struct AStringSegmentPosition
{
    AStringChunk const *chunk = nullptr;
    std::uint32_t index = 0;
    std::uint64_t absolute = 0;
};

/// An immutable text of code points: a slice of a shared store. Copies and substrings share the
/// store and allocate nothing; whatever builds text makes a new store. A null string and a string
/// of no characters are the same.
///
/// Text is contiguous in runs of at most 256 code points; long strings are read by `linear_access`
/// or an iterator. `+=` copies both sides: collect long text in an `AStringList` and join it.
///
/// There is no construction from a narrow literal: say `AString::l1("text")`.
/// Thread: copies may be used in any thread; one object may be read by many, but not while it is
/// assigned.
class TARN_EXPORT AString
{
public:
    using Storage = AStringInternalStorageStruct;
    /// As a length: all that there is.
    static constexpr unsigned long long all = ~0ull;
    static constexpr AChar blank{U' '};

    enum CaseSensitivity
    {
        CaseSensitive = 0,
        CaseInsensitive = 1, ///< "A" to "Z" count as "a" to "z", nothing else folds
    };

    class iterator;

    // --- construct ---
    AString() noexcept = default;
    AString(AString const &other) noexcept
        : storage(other.storage)
        , start_(other.start_)
        , length_(other.length_)
    {
    }
    AString(AString &&other) noexcept
        : storage(std::move(other.storage))
        , start_(std::exchange(other.start_, 0))
        , length_(std::exchange(other.length_, 0))
        , hash_(other.hash_.exchange_plain())
    {
    }
    AString &operator=(AString const &other) noexcept
    {
        if (this != &other) {
            storage = other.storage;
            start_ = other.start_;
            length_ = other.length_;
            hash_.clear();
        }
        return *this;
    }
    AString &operator=(AString &&other) noexcept
    {
        storage.swap(other.storage);
        std::swap(start_, other.start_);
        std::swap(length_, other.length_);
        hash_.swap(other.hash_);
        return *this;
    }
    ~AString() = default;

    /// The part of \a s from \a start on, at most \a length code points.
    AString(AString const &s, unsigned long long start, unsigned long long length);
    /// The whole of a store.
    explicit AString(ARef<Storage> store);
    /// A part of a store, clamped to it.
    AString(ARef<Storage> store, unsigned long long start, unsigned long long length);
    AString(AChar c);
    /// UTF-16, as `from_utf16`. A null pointer gives the empty string.
    explicit AString(AWChar const *text);
    AString(AWChar const *text, unsigned long long n);
    AString(AWString const &text);
    /// UTF-8, as `from_utf8`.
    AString(std::string const &text);
    AString(QString const &text);
    /// The items joined, with \a separator between them.
    AString(AStringList const &items);
    AString(AStringList const &items, AString const &separator);
    /// The text that has been filled so far.
    AString(AStringFormat const &format);
    explicit AString(char const *) = delete;

    /// A text that lives as long as the process: its references cost no counting. For names that
    /// are made once; the store is never freed.
    static AString immortal(AString const &text);

    // --- decode: a null pointer gives the empty string; with a count, NULs are text but for UTF-8
    //     and UTF-16, which stop at the first invalid unit and keep what came before ---
    static AString l1(char const *text) { return from_latin1(text); }
    static AString from_latin1(char const *text);
    static AString from_latin1(char const *text, unsigned long long n);
    /// Stops at NUL, or after \a max bytes.
    static AString from_latin1z(char const *text, unsigned long long max);
    static AString from_utf8(char const *text);
    static AString from_utf8(char const *text, unsigned long long n);
    static AString from_utf8z(char const *text, unsigned long long max);
    static AString from_utf16(char16_t const *text);
    static AString from_utf16(char16_t const *text, unsigned long long n);
    static AString from_utf32(char32_t const *text);
    static AString from_utf32(char32_t const *text, unsigned long long n);
    static AString from_wchars(AWChar const *text) { return from_utf16(text); }
    static AString from_wchars(AWChar const *text, unsigned long long n)
    {
        return from_utf16(text, n);
    }
    static AString from_string(std::string const &text);
    static AString from_wstring(AWString const &text);
    static AString from_achar(AChar c) { return AString(c); }
    static AString from_achar(AChar const *text);
    static AString from_achar(AChar const *text, unsigned long long n);

    // --- encode into a buffer of `size` units. True when all of the text went in; else as much as
    //     fits, whole code points only. `count` gets the units of text. With `fill` the rest of
    //     the buffer is filled. Code points that the form cannot hold are left out. ---
    bool to_latin1(char *buffer, unsigned long long size, char replacement = '?',
        unsigned long long *count = nullptr, bool fill = false, char fill_char = 0) const;
    bool to_utf8(char *buffer, unsigned long long size, unsigned long long *count = nullptr,
        bool fill = false, char fill_char = 0) const;
    bool to_utf16(char16_t *buffer, unsigned long long size, unsigned long long *count = nullptr,
        bool fill = false) const;
    bool to_utf32(char32_t *buffer, unsigned long long size, unsigned long long *count = nullptr,
        bool fill = false) const;
    bool to_wchars(AWChar *buffer, unsigned long long size, unsigned long long *count = nullptr,
        bool fill = false) const
    {
        return to_utf16(buffer, size, count, fill);
    }
    /// The same into `size - 1` units, with a terminator behind what was written, filling
    /// included. A size of 0 writes nothing and is false.
    bool to_latin1_z(char *buffer, unsigned long long size, char replacement = '?',
        unsigned long long *count = nullptr, bool fill = false, char fill_char = 0) const;
    bool to_utf8_z(char *buffer, unsigned long long size, unsigned long long *count = nullptr,
        bool fill = false, char fill_char = 0) const;
    bool to_utf16_z(char16_t *buffer, unsigned long long size, unsigned long long *count = nullptr,
        bool fill = false) const;
    bool to_utf32_z(char32_t *buffer, unsigned long long size, unsigned long long *count = nullptr,
        bool fill = false) const;
    bool to_wchars_z(AWChar *buffer, unsigned long long size, unsigned long long *count = nullptr,
        bool fill = false) const
    {
        return to_utf16_z(buffer, size, count, fill);
    }
    /// UTF-8.
    std::string to_string() const;
    /// UTF-16.
    AWString to_wstring() const;
    operator QString() const;
    operator std::string() const { return to_string(); }

    // --- inspect ---
    unsigned long long length() const noexcept { return length_; }
    bool empty() const noexcept { return !storage; }
    bool is_empty() const noexcept { return !storage; }
    /// True also for the empty string.
    bool all_space() const;
    AChar firstchar(AChar otherwise = AChar()) const { return getchar(0, otherwise); }
    AChar lastchar(AChar otherwise = AChar()) const { return getchar(length_ - 1, otherwise); }
    /// The code point at \a i, or \a otherwise outside the string.
    AChar getchar(unsigned long long i, AChar otherwise = AChar()) const;
    unsigned long long count_spaces_front() const;
    /// A sum over the code points, so the same for "ab" and "ba"; never 0. Kept once computed.
    std::uint64_t hash() const
    {
        std::uint64_t const known = hash_.get();
        return known != 0 ? known : compute_hash();
    }

    // --- search: positions count from 0, -1 is "not found". A `from` below 0 is 0. ---
    long long find(AChar c, long long from = 0) const;
    /// An empty \a s is found at 0.
    long long find(AString const &s, long long from = 0) const;
    /// The last one at all, or at \a from or before it.
    long long rfind(AChar c) const;
    long long rfind(AChar c, long long from) const;
    bool contains(AChar c) const { return find(c) >= 0; }
    bool contains(AString const &s) const { return find(s) >= 0; }
    /// Both are true for an empty \a s.
    bool has_prefix(AString const &s, CaseSensitivity c = CaseSensitive) const;
    bool has_suffix(AString const &s, CaseSensitivity c = CaseSensitive) const;

    // --- compare: -1, 0 or 1 by the first code points that differ; a string that ends first is
    //     the lesser ---
    int compare(AString const &other, CaseSensitivity c = CaseSensitive) const;
    static int compare(AString const &a, AString const &b, CaseSensitivity c = CaseSensitive);
    /// Compares at most \a count code points from two positions on. Always 0 when both are one
    /// and the same slice.
    static int compare(AString const &a, unsigned long long a_position, AString const &b,
        unsigned long long b_position, unsigned long long count, CaseSensitivity c = CaseSensitive);
    bool equal(AString const &other) const
    {
        return length_ == other.length_ && (same_slice(other) || equal_text(other));
    }
    bool equal(AString const &other, CaseSensitivity c) const
    {
        return length_ == other.length_ && compare(other, c) == 0;
    }
    /// Byte values against code points, with no decoding. Null counts as "".
    bool equal_z(char const *text) const;

    // --- slice: nothing here allocates ---
    AString left(unsigned long long n) const { return slice(0, n); }
    AString front(unsigned long long n) const { return slice(0, n); }
    AString right(unsigned long long n) const
    {
        return n < length_ ? slice(length_ - n, n) : *this;
    }
    AString end(unsigned long long n) const { return right(n); }
    AString mid(unsigned long long position, unsigned long long n = all) const
    {
        return slice(position, n);
    }
    AString remove_front(unsigned long long n) const { return slice(n, all); }
    AString remove_left(unsigned long long n) const { return slice(n, all); }
    AString remove_end(unsigned long long n) const
    {
        return n < length_ ? slice(0, length_ - n) : AString();
    }
    AString remove_right(unsigned long long n) const { return remove_end(n); }
    /// \a was_there, if given, tells whether it was; the string is unchanged if not.
    AString remove_prefix(
        AString const &s, bool *was_there = nullptr, CaseSensitivity c = CaseSensitive) const;
    AString remove_suffix(
        AString const &s, bool *was_there = nullptr, CaseSensitivity c = CaseSensitive) const;
    /// The longest prefix of digits.
    AString leading_digits() const;

    // --- trim, by `AChar::is_space` ---
    AString despace() const { return despace_front().despace_end(); }
    AString despace_front() const;
    AString despace_end() const;

    // --- build: a new store each ---
    /// An empty side gives the other, shared.
    static AString cat(AString const &a, AString const &b);
    AString &operator+=(AString const &s) { return *this = cat(*this, s); }
    /// Longer than 2^28 code points: an assertion, and the empty string.
    static AString rep(AString const &s, unsigned long long n);
    AString &operator*=(unsigned long long n) { return *this = rep(*this, n); }
    /// To at least |width| code points: filled on the left for a positive width, on the right for
    /// a negative one. Unchanged when it is that long already; a width beyond 2^28 is an
    /// assertion, and changes nothing either.
    AString pad(long long width, AChar fill = blank) const;
    /// The text before \a position, then \a s, then the text after `position + n`.
    AString replace(unsigned long long position, unsigned long long n, AString const &s) const;
    static AString from_join(AStringList const &items, AString const &separator);
    /// A string that keeps no more than \a threshold code points alive beside its own. Use 32 for
    /// what is kept long, so that a short field does not pin the message it was cut from.
    AString deep_copy(unsigned long long threshold = 0) const;

    // --- split: include astring_list.h. The null string gives an empty list. ---
    /// What a finder is asked, and its answer.
    struct SplitSearch
    {
        AString const &text;
        unsigned long long position; ///< where to begin
        unsigned long long start; ///< answer: where the next separator begins, from position on
        unsigned long long length; ///< answer: its length
    };
    /// Returns whether there is another separator.
    using SplitFinder = AFunction1R<bool, SplitSearch &>;
    /// An empty separator is never found.
    AStringList split(AString const &separator, bool keep_empty) const;
    /// Any run of \a characters is one separator.
    AStringList split_any(AString const &characters, bool keep_empty) const;
    /// A null finder gives the string itself as the only item.
    AStringList split(SplitFinder const &finder, bool keep_separators, bool keep_empty) const;

    // --- read a number; the out pointer may be null, and is untouched on failure. Space around it
    //     is allowed. "0x" is allowed in front, but digits then still weigh ten: "0x10" is 10. ---
    bool to_int8_t(std::int8_t *out) const;
    bool to_int16_t(std::int16_t *out) const;
    bool to_int32_t(std::int32_t *out) const;
    bool to_int64_t(std::int64_t *out) const;
    bool to_uint8_t(std::uint8_t *out) const;
    bool to_uint16_t(std::uint16_t *out) const;
    bool to_uint32_t(std::uint32_t *out) const;
    bool to_uint64_t(std::uint64_t *out) const;
    bool to_short(short *out) const;
    bool to_unsigned_short(unsigned short *out) const;
    bool to_int(int *out) const;
    bool to_unsigned(unsigned int *out) const;
    bool to_long_long(long long *out) const;
    bool to_unsigned_long_long(unsigned long long *out) const;
    bool to_signed_short(short *out) const { return to_short(out); }
    bool to_signed_int(int *out) const { return to_int(out); }
    bool to_unsigned_int(unsigned int *out) const { return to_unsigned(out); }
    bool to_signed_long_long(long long *out) const { return to_long_long(out); }

    // --- print a number, padded as by `pad`; a minus sign stands before any fill ---
    static AString from_int64_t(std::int64_t value, long long width = 0, AChar fill = blank);
    static AString from_uint64_t(std::uint64_t value, long long width = 0, AChar fill = blank);
    static AString from_int8_t(std::int8_t value, long long width = 0, AChar fill = blank)
    {
        return from_int64_t(value, width, fill);
    }
    static AString from_short(short value, long long width = 0, AChar fill = blank)
    {
        return from_int64_t(value, width, fill);
    }
    static AString from_int(int value, long long width = 0, AChar fill = blank)
    {
        return from_int64_t(value, width, fill);
    }
    static AString from_long_long(long long value, long long width = 0, AChar fill = blank)
    {
        return from_int64_t(value, width, fill);
    }
    static AString from_uint8_t(std::uint8_t value, long long width = 0, AChar fill = blank)
    {
        return from_uint64_t(value, width, fill);
    }
    static AString from_uint16_t(std::uint16_t value, long long width = 0, AChar fill = blank)
    {
        return from_uint64_t(value, width, fill);
    }
    static AString from_uint32_t(std::uint32_t value, long long width = 0, AChar fill = blank)
    {
        return from_uint64_t(value, width, fill);
    }
    static AString from_unsigned_long_long(
        unsigned long long value, long long width = 0, AChar fill = blank)
    {
        return from_uint64_t(value, width, fill);
    }

    // --- special forms ---
    /// Reads a speed of 16 fractional bits (65536 is 1.0): "1.5X", or the raw number. The fraction
    /// is cut, not rounded. False, and nothing stored, for anything else.
    bool to_speed(int *out) const;
    /// Prints a speed as "1.5X" with up to \a precision digits (at most 20) behind the point.
    static AString from_speed(int speed, unsigned int precision);
    /// Four numbers of at most 255 with points between; the first becomes the lowest byte.
    std::uint32_t to_ipaddr(std::uint32_t otherwise) const;
    static AString from_ipaddr(std::uint32_t address);
    /// By the rules of the C library, cut to 2047 bytes and read as Latin-1.
    static AString sprintf(char const *format, ...) __attribute__((format(printf, 1, 2)));
    static AString vsprintf(char const *format, std::va_list arguments)
        __attribute__((format(printf, 1, 0)));

    // --- walk ---
    /// Cursors on the first and the last code point; both are outside an empty string.
    AStringSegmentPosition get_first_position() const;
    AStringSegmentPosition get_last_position() const;
    /// Reads the code point under the cursor and moves behind it. False, and nothing done, when
    /// the cursor is outside the string. \a out may be null.
    bool get_next_position(AStringSegmentPosition *position, AChar *out) const;
    /// Moves \a n code points on; false when that leaves the string, the cursor then at its end.
    bool get_next_position(AStringSegmentPosition *position, unsigned long long n) const;
    /// Reads the code point under the cursor and moves before it. False as above. Moving before
    /// the first code point leaves the cursor outside.
    bool get_prev_position(AStringSegmentPosition *position, AChar *out) const;
    /// Puts the cursor on the code point at \a i and reads it. False as above.
    bool get_position(AStringSegmentPosition *position, AChar *out, unsigned long long i) const;
    /// The contiguous code points from the cursor on: how many there are (1 to 256, 0 outside the
    /// string), and in \a run where. The cursor stays.
    unsigned long long linear_access(
        AStringSegmentPosition const &position, AChar const **run) const;
    iterator begin() const;
    iterator end() const;
    /// Hands each contiguous run to \a sink.
    void send_achars(AFunction2<AChar const *, unsigned long long> const &sink) const;
    /// Hands the text to \a sink in pieces of at most 128 bytes and whole code points. Code points
    /// that cannot be encoded are left out.
    void send_utf8(AFunction2<char const *, unsigned long long> const &sink) const;

    // --- format: include astring_format.h. Fills the lowest placeholder "%1" to "%99". ---
    AStringFormat arg(AString const &text) const;
    AStringFormat arg(int value, long long width = 0, AChar fill = blank) const;
    AStringFormat arg(unsigned int value, long long width = 0, AChar fill = blank) const;
    AStringFormat arg(long value, long long width = 0, AChar fill = blank) const;
    AStringFormat arg(unsigned long value, long long width = 0, AChar fill = blank) const;
    AStringFormat arg(long long value, long long width = 0, AChar fill = blank) const;
    AStringFormat arg(unsigned long long value, long long width = 0, AChar fill = blank) const;
    AStringFormat arg(void const *pointer) const;
    AStringFormat arg(char const *) const = delete;

    /// Shared store, or null when empty; and where this slice begins in it.
    ARef<Storage> const &store() const noexcept { return storage; }
    unsigned long long store_start() const noexcept { return start_; }

    friend AString operator+(AString const &a, AString const &b) { return cat(a, b); }
    friend AString operator*(AString const &s, unsigned long long n) { return rep(s, n); }
    friend bool operator==(AString const &a, AString const &b) { return a.equal(b); }
    friend bool operator<(AString const &a, AString const &b) { return a.compare(b) < 0; }

private:
    friend class AStringBuilder;

    /// The cached hash. Racing readers compute the same value, and the first one stores it.
    class HashCell
    {
    public:
        HashCell() noexcept = default;
        HashCell(std::uint64_t v) noexcept
            : value(v)
        {
        }
        std::uint64_t get() const noexcept { return value.load(std::memory_order_relaxed); }
        void publish(std::uint64_t v) noexcept
        {
            std::uint64_t unknown = 0;
            value.compare_exchange_strong(unknown, v, std::memory_order_relaxed);
        }
        void clear() noexcept { value.store(0, std::memory_order_relaxed); }
        // The next two serve moves, where nobody else may look at the object.
        std::uint64_t exchange_plain() noexcept
        {
            std::uint64_t const before = get();
            clear();
            return before;
        }
        void swap(HashCell &other) noexcept
        {
            std::uint64_t const mine = get();
            value.store(other.get(), std::memory_order_relaxed);
            other.value.store(mine, std::memory_order_relaxed);
        }

    private:
        std::atomic<std::uint64_t> value{0};
    };

    void set_storage(ARef<Storage> store, unsigned long long start, unsigned long long length);
    AString slice(unsigned long long start, unsigned long long n) const
    {
        AString part;
        if (start < length_ && n != 0) {
            part.storage = storage;
            part.start_ = start_ + start;
            part.length_ = n < length_ - start ? n : length_ - start;
        }
        return part;
    }
    bool same_slice(AString const &other) const
    {
        return storage.get() == other.storage.get() && start_ == other.start_;
    }
    bool equal_text(AString const &other) const;
    std::uint64_t compute_hash() const;
    bool holds(AStringSegmentPosition const &position) const
    {
        return position.absolute - start_ < length_;
    }
    AStringSegmentPosition cursor_at(unsigned long long i) const;
    /// Brings a cursor that `holds` onto its code point: it may stand behind a full chunk.
    void settle(AStringSegmentPosition *position) const;

    ARef<Storage> storage;
    std::uint64_t start_ = 0;
    std::uint64_t length_ = 0;
    mutable HashCell hash_;
};

/// Walks a string forward. The string must outlive it.
class AString::iterator
{
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = AChar;
    using difference_type = std::ptrdiff_t;
    using pointer = AChar const *;
    using reference = AChar const &;

    iterator() = default;

    AChar const &operator*() const { return *current; }
    AChar const *operator->() const { return current; }
    iterator &operator++()
    {
        ++position.absolute;
        ++position.index;
        if (++current == run_end)
            enter_run();
        return *this;
    }
    iterator operator++(int)
    {
        iterator before = *this;
        ++*this;
        return before;
    }
    friend bool operator==(iterator const &a, iterator const &b)
    {
        return a.position.absolute == b.position.absolute;
    }

private:
    friend class AString;
    iterator(AString const *of, AStringSegmentPosition const &at)
        : string(of)
        , position(at)
    {
        enter_run();
    }
    TARN_EXPORT void enter_run();

    AString const *string = nullptr;
    AStringSegmentPosition position;
    AChar const *current = nullptr;
    AChar const *run_end = nullptr;
};

/// \cond
template <> struct std::hash<AString>
{
    std::size_t operator()(AString const &s) const noexcept { return s.hash(); }
};
/// \endcond
