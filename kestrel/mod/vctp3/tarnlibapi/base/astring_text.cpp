// SPDX-License-Identifier: Apache-2.0
// What builds new text and what takes text apart.
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_builder_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_list.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_p.h"

namespace {

/// Longer texts, of more than 1 GiB, are a fault of the caller, not a wish for memory.
constexpr unsigned long long max_length = 1ull << 28;

bool find_text(AString const *separator, AString::SplitSearch &search)
{
    long long const at = search.text.find(*separator, static_cast<long long>(search.position));
    if (at < 0)
        return false;
    search.start = static_cast<unsigned long long>(at);
    search.length = separator->length();
    return true;
}

bool find_any(AString const *characters, AString::SplitSearch &search)
{
    bool inside = false;
    for (AStringRuns run(search.text, search.position); run.next();) {
        for (unsigned long long i = 0; i < run.size; ++i) {
            bool const hit = characters->contains(run.text[i]);
            if (hit && !inside)
                search.start = run.position + i;
            else if (!hit && inside)
                return true;
            inside = hit;
            search.length += hit;
        }
    }
    return inside;
}

} // namespace

AString AString::cat(AString const &a, AString const &b)
{
    if (a.empty())
        return b;
    if (b.empty())
        return a;
    AStringBuilder both(a.length_ + b.length_);
    both.append(a);
    both.append(b);
    return both.take();
}

AString AString::rep(AString const &s, unsigned long long n)
{
    if (n == 0 || s.empty() || !A_ASSERT(n <= max_length / s.length()))
        return {};
    AStringBuilder result(n * s.length());
    for (; n > 0; --n)
        result.append(s);
    return result.take();
}

AString AString::pad(long long width, AChar fill) const
{
    unsigned long long const bits = static_cast<unsigned long long>(width);
    unsigned long long const target = width < 0 ? 0 - bits : bits;
    if (length_ >= target || !A_ASSERT(target <= max_length))
        return *this;
    AStringBuilder result(target);
    if (width > 0)
        result.append_repeated(fill, target - length_);
    result.append(*this);
    if (width < 0)
        result.append_repeated(fill, target - length_);
    return result.take();
}

AString AString::replace(unsigned long long position, unsigned long long n, AString const &s) const
{
    AString const before = left(position);
    AString const after = mid(position).remove_front(n);
    AStringBuilder result(before.length() + s.length() + after.length());
    result.append(before);
    result.append(s);
    result.append(after);
    return result.take();
}

AString AString::from_join(AStringList const &items, AString const &separator)
{
    if (items.empty())
        return {};
    unsigned long long total = separator.length() * (items.size() - 1);
    for (AString const &item : items)
        total += item.length();
    AStringBuilder result(total);
    bool first = true;
    for (AString const &item : items) {
        if (!std::exchange(first, false))
            result.append(separator);
        result.append(item);
    }
    return result.take();
}

AString AString::deep_copy(unsigned long long threshold) const
{
    if (empty() || storage->size - length_ <= threshold)
        return *this;
    AStringBuilder result(length_);
    result.append(*this);
    return result.take();
}

AStringList AString::split(AString const &separator, bool keep_empty) const
{
    if (separator.empty())
        return empty() ? AStringList() : AStringList(*this);
    return split(SplitFinder::bind<&find_text>(&separator), false, keep_empty);
}

AStringList AString::split_any(AString const &characters, bool keep_empty) const
{
    return split(SplitFinder::bind<&find_any>(&characters), false, keep_empty);
}

AStringList AString::split(SplitFinder const &finder, bool keep_separators, bool keep_empty) const
{
    AStringList pieces;
    if (empty())
        return pieces;
    if (finder.is_null()) {
        pieces.push_back(*this);
        return pieces;
    }
    unsigned long long position = 0;
    for (;;) {
        SplitSearch search{*this, position, 0, 0};
        // A separator behind the position would be found for ever.
        if (!finder(search) || !A_ASSERT(search.start >= position))
            break;
        if (search.start > position || keep_empty)
            pieces.push_back(mid(position, search.start - position));
        if (search.length != 0 && keep_separators)
            pieces.push_back(mid(search.start, search.length));
        position = search.start + (search.length != 0 ? search.length : 1);
    }
    if (position < length_ || keep_empty)
        pieces.push_back(mid(position));
    return pieces;
}
