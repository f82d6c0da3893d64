// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_boundary_p.h"

#include <algorithm>
#include <cstring>

namespace {

/// Backspace counts, vertical tab and form feed do not.
bool is_blank(char c)
{
    return c == 8 || c == 9 || c == 10 || c == 13 || c == 32;
}

/// Whether a closing tag may begin here, by the first three bytes. \a third: what stands there
/// in a tag without blanks.
/// "/" and the blanks lie below all that a name begins with. Written without branches, so that the
/// compiler makes vector code of the loop around it.
unsigned int may_close(unsigned char const *p, unsigned char third)
{
    unsigned int const less = p[0] == '<';
    unsigned int const slash_or_blank = p[1] <= '/';
    unsigned int const begins = p[2] == third;
    unsigned int const other_blank = p[2] <= '/';
    return less & slash_or_blank & (begins | other_blank);
}

/// The first "<" from \a from on that a closing tag may begin with, or \a count.
std::size_t find_mark(char const *bytes, std::size_t from, std::size_t count, char third)
{
    constexpr std::size_t block = 64;
    auto const *const p = reinterpret_cast<unsigned char const *>(bytes);
    auto const expected = static_cast<unsigned char>(third);
    for (; count - from >= block + 2; from += block) {
        unsigned int found = 0;
        for (std::size_t i = 0; i < block; ++i)
            found |= may_close(p + from + i, expected);
        if (found)
            break;
    }
    for (;;) {
        auto const *const mark
            = static_cast<char const *>(std::memchr(bytes + from, '<', count - from));
        if (!mark)
            return count;
        from = static_cast<std::size_t>(mark - bytes);
        if (count - from < 3 || may_close(p + from, expected))
            return from;
        ++from;
    }
}

} // namespace

XMLTagMatch::XMLTagMatch(std::string const &of, bool closing_form)
    : name(of)
    , plain((closing_form ? "/" : "") + of + ">")
    , closing(closing_form)
{
}

std::size_t XMLTagMatch::start(char const *p, std::size_t n)
{
    if (n >= plain.size() && std::memcmp(p, plain.data(), plain.size()) == 0) {
        state = Matched;
        return plain.size();
    }
    step = closing ? BeforeSlash : BeforeName;
    done = 0;
    state = Undecided;
    return feed(p, n);
}

std::size_t XMLTagMatch::feed(char const *p, std::size_t n)
{
    std::size_t used = 0;
    while (used < n && state == Undecided) {
        state = take(p[used]);
        if (state != Failed)
            ++used;
    }
    return used;
}

XMLTagMatch::State XMLTagMatch::take(char c)
{
    if (step != InName && is_blank(c))
        return Undecided;
    switch (step) {
    case BeforeSlash:
        step = BeforeName;
        return c == '/' ? Undecided : Failed;
    case BeforeName:
        step = name.empty() ? BehindName : InName;
        return take(c);
    case InName:
        if (c != name[done])
            return Failed;
        if (++done == name.size())
            step = BehindName;
        return Undecided;
    case BehindName:
        return c == '>' ? Matched : Failed;
    }
    return Failed;
}

void XMLBoundary::add_tag(char const *name)
{
    configured.push_back({XMLTagMatch(name, false), XMLTagMatch(name, true)});
    restart();
}

std::vector<std::string> XMLBoundary::tags() const
{
    std::vector<std::string> names;
    for (Tag const &tag : configured)
        names.push_back(tag.open.name);
    return names;
}

void XMLBoundary::restart()
{
    found = nullptr;
    scan = {};
    opening = 0;
    behind = 0;
}

bool XMLBoundary::find(char const *p, std::size_t count)
{
    return (found || find_opening(p, count)) && find_closing(p, count);
}

bool XMLBoundary::next_mark(char const *p, std::size_t count)
{
    if (scan.on_mark)
        return true;
    std::size_t mark = count;
    if (found) {
        mark = find_mark(p, scan.next, count, found->close.plain[1]);
    } else if (auto const *less = std::memchr(p + scan.next, '<', count - scan.next)) {
        mark = static_cast<std::size_t>(static_cast<char const *>(less) - p);
    }
    std::size_t const next = std::min(mark + 1, count);
    examined_bytes += next - scan.next;
    scan = {mark != count, mark, next};
    return scan.on_mark;
}

std::size_t XMLBoundary::feed(XMLTagMatch &match, bool fresh, char const *p, std::size_t count)
{
    std::size_t const left = count - scan.next;
    std::size_t const used
        = fresh ? match.start(p + scan.next, left) : match.feed(p + scan.next, left);
    examined_bytes += used;
    return scan.next + used;
}

bool XMLBoundary::find_opening(char const *p, std::size_t count)
{
    for (;;) {
        bool const fresh = !scan.on_mark;
        if (!next_mark(p, count))
            return false;
        std::size_t reach = scan.next;
        bool undecided = false;
        for (Tag &tag : configured) {
            if (fresh || tag.open.state == XMLTagMatch::Undecided)
                reach = std::max(reach, feed(tag.open, fresh, p, count));
            if (tag.open.state == XMLTagMatch::Matched) {
                found = &tag;
                break;
            }
            undecided = undecided || tag.open.state == XMLTagMatch::Undecided;
        }
        // No byte that a match has taken is a "<", so the search goes on behind them.
        opening = scan.mark;
        scan = {undecided && !found, scan.mark, reach};
        if (found || undecided)
            return found != nullptr;
    }
}

bool XMLBoundary::find_closing(char const *p, std::size_t count)
{
    for (;;) {
        bool const fresh = !scan.on_mark;
        if (!next_mark(p, count))
            return false;
        behind = feed(found->close, fresh, p, count);
        bool const undecided = found->close.state == XMLTagMatch::Undecided;
        scan = {undecided, scan.mark, behind};
        if (undecided || found->close.state == XMLTagMatch::Matched)
            return !undecided;
    }
}
