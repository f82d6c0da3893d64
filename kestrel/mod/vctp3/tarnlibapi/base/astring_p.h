// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

#include <algorithm>
#include <vector>

/// The text of a string that lies in one run, or null: an empty string has none either.
inline AChar const *flat_text(AString const &s)
{
    if (s.empty())
        return nullptr;
    std::uint32_t index = 0;
    AStringChunk const *chunk = s.store()->chunk_at(s.store_start(), &index);
    return s.length() <= chunk->used - index ? chunk->text() + index : nullptr;
}

/// The text of a string in one piece: where it lies, or a copy if it lies in several runs. The
/// string must outlive it.
class AStringPiece
{
public:
    explicit AStringPiece(AString const &s)
        : first(flat_text(s))
    {
        if (!first) {
            copy.assign(s.begin(), s.end());
            first = copy.data();
        }
        last = first + s.length();
    }
    AStringPiece(AStringPiece const &) = delete;
    AStringPiece &operator=(AStringPiece const &) = delete;

    AChar const *begin() const { return first; }
    AChar const *end() const { return last; }

private:
    std::vector<AChar> copy;
    AChar const *first;
    AChar const *last;
};

/// Goes through a part of a string run by run:
/// `for (AStringRuns run(s); run.next();) use(run.text, run.size);`
class AStringRuns
{
public:
    explicit AStringRuns(
        AString const &s, unsigned long long from = 0, unsigned long long n = AString::all)
        : position(from)
    {
        if (from >= s.length())
            return;
        left = std::min(n, s.length() - from);
        chunk = s.store()->chunk_at(s.store_start() + from, &index);
    }

    bool next()
    {
        if (left == 0)
            return false;
        if (index == chunk->used) {
            chunk = chunk->next;
            index = 0;
        }
        position += size;
        text = chunk->text() + index;
        size = std::min<unsigned long long>(chunk->used - index, left);
        index += static_cast<std::uint32_t>(size);
        left -= size;
        return true;
    }
    /// Ends the run \a n code points after its begin; the next one begins there.
    void cut(unsigned long long n)
    {
        left += size - n;
        index -= static_cast<std::uint32_t>(size - n);
        size = n;
    }

    AChar const *text = nullptr;
    unsigned long long size = 0;
    unsigned long long position = 0; // of the run, counted in the string

private:
    AStringChunk const *chunk = nullptr;
    std::uint32_t index = 0;
    unsigned long long left = 0;
};
