// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/acompare.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_builder_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_list.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_p.h"

#include <QString>
#include <array>
#include <cstring>
#include <mutex>
#include <vector>

namespace {

/// FNV-1a over the four bytes of one code point, lowest first, each from the offset basis.
constexpr std::uint64_t fnv_of(char32_t code)
{
    std::uint64_t hash = 0xcbf29ce484222325ull;
    for (unsigned int shift = 0; shift < 32; shift += 8) {
        hash ^= code >> shift & 0xffu;
        hash *= 0x100000001b3ull;
    }
    return hash;
}

constexpr std::array<std::uint64_t, 256> make_hash_table()
{
    std::array<std::uint64_t, 256> table{};
    for (char32_t code = 0; code < 256; ++code)
        table[code] = fnv_of(code);
    return table;
}

constexpr std::array<std::uint64_t, 256> latin1_hashes = make_hash_table();

int order(AChar a, AChar b)
{
    return a < b ? -1 : a > b ? 1 : 0;
}

/// Order of the first difference in two runs, or 0.
int compare_runs(AChar const *a, AChar const *b, unsigned long long n)
{
    unsigned long long i = 0;
    for (; n - i >= 2; i += 2) {
        std::uint64_t two_a = 0;
        std::uint64_t two_b = 0;
        std::memcpy(&two_a, a + i, sizeof two_a);
        std::memcpy(&two_b, b + i, sizeof two_b);
        if (two_a != two_b)
            break;
    }
    for (; i < n; ++i) {
        if (a[i] != b[i])
            return order(a[i], b[i]);
    }
    return 0;
}

int compare_runs_folded(AChar const *a, AChar const *b, unsigned long long n)
{
    for (unsigned long long i = 0; i < n; ++i) {
        if (int const result = order(a[i].to_lower(), b[i].to_lower()))
            return result;
    }
    return 0;
}

} // namespace

AString::AString(AString const &s, unsigned long long start, unsigned long long length)
    : AString(s.slice(start, length))
{
}

AString::AString(ARef<Storage> store)
{
    set_storage(std::move(store), 0, all);
}

AString::AString(ARef<Storage> store, unsigned long long start, unsigned long long length)
{
    set_storage(std::move(store), start, length);
}

AString::AString(AChar c)
{
    AStringBuilder text(1);
    text.append(c);
    *this = text.take();
}

AString::AString(AWChar const *text)
    : AString(from_wchars(text))
{
}

AString::AString(AWChar const *text, unsigned long long n)
    : AString(from_wchars(text, n))
{
}

AString::AString(AWString const &text)
    : AString(from_wstring(text))
{
}

AString::AString(std::string const &text)
    : AString(from_string(text))
{
}

AString::AString(QString const &text)
    : AString(from_utf16(reinterpret_cast<char16_t const *>(text.utf16()),
        static_cast<unsigned long long>(text.size())))
{
}

AString::AString(AStringList const &items)
    : AString(from_join(items, AString()))
{
}

AString::AString(AStringList const &items, AString const &separator)
    : AString(from_join(items, separator))
{
}

AString AString::immortal(AString const &text)
{
    // Kept in sight for the leak checker: nothing ever frees these stores.
    static std::mutex guard;
    static std::vector<Storage *> &kept = *new std::vector<Storage *>;

    AStringBuilder copy(text.length());
    copy.append(text);
    AString result = copy.take();
    if (Storage *store = result.storage.get()) {
        store->count.store(Storage::immortal, std::memory_order_relaxed);
        std::lock_guard<std::mutex> const lock(guard);
        kept.push_back(store);
    }
    return result;
}

void AString::set_storage(ARef<Storage> store, unsigned long long start, unsigned long long length)
{
    hash_.clear();
    std::uint64_t const size = store ? store->readable_size() : 0;
    if (start >= size || length == 0) {
        storage.reset();
        start_ = length_ = 0;
        return;
    }
    storage = std::move(store);
    start_ = start;
    length_ = length < size - start ? length : size - start;
}

bool AString::all_space() const
{
    return count_spaces_front() == length_;
}

AChar AString::getchar(unsigned long long i, AChar otherwise) const
{
    if (i >= length_)
        return otherwise;
    std::uint32_t index = 0;
    AStringChunk const *chunk = storage->chunk_at(start_ + i, &index);
    return chunk->text()[index];
}

unsigned long long AString::count_spaces_front() const
{
    for (AStringRuns run(*this); run.next();) {
        for (unsigned long long i = 0; i < run.size; ++i) {
            if (!run.text[i].is_space())
                return run.position + i;
        }
    }
    return length_;
}

std::uint64_t AString::compute_hash() const
{
    std::uint64_t sum = 0;
    for (AStringRuns run(*this); run.next();) {
        for (unsigned long long i = 0; i < run.size; ++i) {
            char32_t const code = run.text[i].ord();
            sum += code < 256 ? latin1_hashes[code] : fnv_of(code);
        }
    }
    if (sum == 0)
        sum = 1;
    hash_.publish(sum);
    return sum;
}

int AString::compare(AString const &other, CaseSensitivity c) const
{
    AChar const *mine = c == CaseSensitive ? flat_text(*this) : nullptr;
    AChar const *theirs = mine ? flat_text(other) : nullptr;
    if (!theirs)
        return compare(*this, 0, other, 0, all, c);
    int const result = compare_runs(mine, theirs, std::min(length_, other.length_));
    return result != 0 ? result : ACompare(length_, other.length_);
}

int AString::compare(AString const &a, AString const &b, CaseSensitivity c)
{
    return a.compare(b, c);
}

int AString::compare(AString const &a, unsigned long long a_position, AString const &b,
    unsigned long long b_position, unsigned long long count, CaseSensitivity c)
{
    if (a.same_slice(b) && a.length_ == b.length_)
        return 0;
    if (count == 0)
        return 0;
    AStringRuns run_a(a, a_position, count);
    AStringRuns run_b(b, b_position, count);
    for (;;) {
        bool const more_a = run_a.next();
        bool const more_b = run_b.next();
        if (!more_a || !more_b)
            return static_cast<int>(more_a) - static_cast<int>(more_b);
        unsigned long long const n = std::min(run_a.size, run_b.size);
        int const result = c == CaseSensitive ? compare_runs(run_a.text, run_b.text, n)
                                              : compare_runs_folded(run_a.text, run_b.text, n);
        if (result != 0)
            return result;
        run_a.cut(n);
        run_b.cut(n);
    }
}

bool AString::equal_text(AString const &other) const
{
    AChar const *mine = flat_text(*this);
    AChar const *theirs = flat_text(other);
    if (mine && theirs)
        return std::memcmp(mine, theirs, length_ * sizeof(AChar)) == 0;
    AStringRuns run_a(*this);
    AStringRuns run_b(other);
    while (run_a.next() && run_b.next()) {
        unsigned long long const n = std::min(run_a.size, run_b.size);
        if (std::memcmp(run_a.text, run_b.text, n * sizeof(AChar)) != 0)
            return false;
        run_a.cut(n);
        run_b.cut(n);
    }
    return true;
}

bool AString::equal_z(char const *text) const
{
    if (!text)
        return empty();
    for (AStringRuns run(*this); run.next();) {
        for (unsigned long long i = 0; i < run.size; ++i, ++text) {
            if (*text == 0 || run.text[i] != AChar(static_cast<unsigned char>(*text)))
                return false;
        }
    }
    return *text == 0;
}

bool AString::has_prefix(AString const &s, CaseSensitivity c) const
{
    return compare(*this, 0, s, 0, s.length_, c) == 0;
}

bool AString::has_suffix(AString const &s, CaseSensitivity c) const
{
    return right(s.length_).compare(s, c) == 0;
}

AString AString::remove_prefix(AString const &s, bool *was_there, CaseSensitivity c) const
{
    bool const there = has_prefix(s, c);
    if (was_there)
        *was_there = there;
    return there ? remove_front(s.length_) : *this;
}

AString AString::remove_suffix(AString const &s, bool *was_there, CaseSensitivity c) const
{
    bool const there = has_suffix(s, c);
    if (was_there)
        *was_there = there;
    return there ? remove_end(s.length_) : *this;
}

AString AString::leading_digits() const
{
    for (AStringRuns run(*this); run.next();) {
        for (unsigned long long i = 0; i < run.size; ++i) {
            if (!run.text[i].is_digit())
                return left(run.position + i);
        }
    }
    return *this;
}

AString AString::despace_front() const
{
    unsigned long long const spaces = count_spaces_front();
    return spaces == 0 ? *this : remove_front(spaces);
}

AString AString::despace_end() const
{
    unsigned long long kept = length_;
    while (kept > 0 && getchar(kept - 1).is_space())
        --kept;
    return kept == length_ ? *this : left(kept);
}
