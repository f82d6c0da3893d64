// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/astring_p.h"

namespace {

/// Index of the first \a c in a run, or \a n.
unsigned long long find_in_run(AChar const *text, unsigned long long n, AChar c)
{
    unsigned long long i = 0;
    // Blocks without an early way out, which the compiler turns into vector code.
    for (; n - i >= 16; i += 16) {
        unsigned int hits = 0;
        for (unsigned int j = 0; j < 16; ++j)
            hits |= text[i + j] == c;
        if (hits)
            break;
    }
    while (i < n && text[i] != c)
        ++i;
    return i;
}

} // namespace

long long AString::find(AChar c, long long from) const
{
    for (AStringRuns run(*this, from > 0 ? static_cast<unsigned long long>(from) : 0);
         run.next();) {
        unsigned long long const i = find_in_run(run.text, run.size, c);
        if (i < run.size)
            return static_cast<long long>(run.position + i);
    }
    return -1;
}

long long AString::find(AString const &s, long long from) const
{
    if (s.empty())
        return 0;
    if (s.length() > length())
        return -1;
    long long const last = static_cast<long long>(length() - s.length());
    AChar const first = s.firstchar();
    for (long long at = find(first, from); at >= 0 && at <= last; at = find(first, at + 1)) {
        if (s.length() == 1
            || compare(*this, static_cast<unsigned long long>(at), s, 0, s.length()) == 0)
            return at;
    }
    return -1;
}

long long AString::rfind(AChar c) const
{
    return rfind(c, static_cast<long long>(length()) - 1);
}

long long AString::rfind(AChar c, long long from) const
{
    if (from < 0)
        return -1;
    // The chain goes one way, so the runs are taken in order and the last hit is kept.
    long long last = -1;
    for (AStringRuns run(*this, 0, static_cast<unsigned long long>(from) + 1); run.next();) {
        for (unsigned long long i = run.size; i > 0; --i) {
            if (run.text[i - 1] == c) {
                last = static_cast<long long>(run.position + i - 1);
                break;
            }
        }
    }
    return last;
}
