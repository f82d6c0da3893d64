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

} // namespace

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
    auto const *const mark
        = static_cast<char const *>(std::memchr(p + scan.next, '<', count - scan.next));
    std::size_t const next = mark ? static_cast<std::size_t>(mark - p) + 1 : count;
    examined_bytes += next - scan.next;
    scan = {mark != nullptr, next - 1, next};
    return scan.on_mark;
}

std::size_t XMLBoundary::feed(XMLTagMatch &match, char const *p, std::size_t count)
{
    std::size_t const used = match.feed(p + scan.next, count - scan.next);
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
            if (fresh)
                tag.open.restart();
            if (tag.open.state == XMLTagMatch::Undecided)
                reach = std::max(reach, feed(tag.open, p, count));
            if (!found && tag.open.state == XMLTagMatch::Matched)
                found = &tag;
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
        if (fresh)
            found->close.restart();
        behind = feed(found->close, p, count);
        bool const undecided = found->close.state == XMLTagMatch::Undecided;
        scan = {undecided, scan.mark, behind};
        if (undecided || found->close.state == XMLTagMatch::Matched)
            return !undecided;
    }
}
