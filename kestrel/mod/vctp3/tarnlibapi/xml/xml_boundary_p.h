// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <cstddef>
#include <string>
#include <vector>

/// Matches one tag in its opening or closing form against bytes that arrive bit by bit: "<",
/// blanks, for the closing form "/" and blanks, the name, blanks, ">". Blanks are the bytes 8, 9,
/// 10, 13 and 32.
class XMLTagMatch
{
public:
    enum State
    {
        Undecided,
        Matched,
        Failed
    };

    XMLTagMatch(std::string const &of, bool closing_form);
    /// Begins behind a "<" and takes bytes as far as needed to decide. Returns how many.
    std::size_t start(char const *p, std::size_t n);
    /// Goes on with the bytes that follow.
    std::size_t feed(char const *p, std::size_t n);

    State state = Failed;
    std::string const name;
    std::string const plain; // what stands behind "<" where there are no blanks

private:
    enum Step
    {
        BeforeSlash,
        BeforeName,
        InName,
        BehindName
    };
    State take(char c);

    bool const closing;
    Step step = BeforeName;
    std::size_t done = 0; // bytes of the name
};

/// Finds where messages begin and end in a stream of bytes. It remembers how far it has looked,
/// and at which point of a tag, so that bytes are not searched again when more arrive.
/// All positions count from the first byte held.
class TARN_AUTOTEST_EXPORT XMLBoundary
{
public:
    void add_tag(char const *name);
    std::vector<std::string> tags() const;

    /// Looks for a message in the \a count bytes at \a p, which are those of the last call and
    /// perhaps more behind them. True when a whole message is held, from `begin` to `end`.
    bool find(char const *p, std::size_t count);
    std::size_t begin() const { return opening; }
    std::size_t end() const { return behind; }

    /// Forgets all; the next search begins at the first byte held.
    void restart();

    /// How many bytes were looked at, in all.
    unsigned long long examined() const { return examined_bytes; }

private:
    struct Tag
    {
        XMLTagMatch open;
        XMLTagMatch close;
    };
    /// What is known of the "<" under consideration.
    struct Scan
    {
        bool on_mark = false;
        std::size_t mark = 0; // place of that "<"
        std::size_t next = 0; // the first byte that was not looked at
    };

    bool find_opening(char const *p, std::size_t count);
    bool find_closing(char const *p, std::size_t count);
    /// Goes to the next "<" unless it is on one.
    bool next_mark(char const *p, std::size_t count);
    /// Returns the place behind the bytes that \a match has taken, from the start or further on.
    std::size_t feed(XMLTagMatch &match, bool fresh, char const *p, std::size_t count);

    std::vector<Tag> configured;
    Tag *found = nullptr; // the tag at `opening`, once it is known
    Scan scan;
    std::size_t opening = 0;
    std::size_t behind = 0;
    unsigned long long examined_bytes = 0;
};
