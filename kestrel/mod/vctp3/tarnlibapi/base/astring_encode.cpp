// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/astring_blocks_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_p.h"

#include <QString>
#include <algorithm>

namespace {

using AStringBlocks::narrow_ascii;

/// 16-bit units of the toolkit's string.
unsigned long long utf16_size(AString const &s)
{
    unsigned long long size = s.length();
    for (AStringRuns run(s); run.next();) {
        unsigned int pairs = 0;
        for (unsigned long long i = 0; i < run.size; ++i)
            pairs += run.text[i].ord() > 0xffff;
        size += pairs;
    }
    return size;
}

/// A buffer that is filled from the front.
template <typename Unit> struct Output
{
    Unit *at;
    unsigned long long room;
    unsigned long long written = 0;

    /// Ends an encoder: fills what is left if asked to, and tells the units of text.
    bool finish(bool whole, unsigned long long *count, bool fill, Unit fill_unit)
    {
        if (count)
            *count = written;
        if (fill) {
            std::fill_n(at, room, fill_unit);
            written += room;
        }
        return whole;
    }
    void advance(unsigned long long n)
    {
        at += n;
        room -= n;
        written += n;
    }
    /// One code point by \a encode. False when there is no room; what cannot be encoded is
    /// left out.
    template <typename Encode> bool put(AChar c, Encode encode, unsigned long long longest)
    {
        Unit units[4];
        unsigned long long n = 0;
        if (!(c.*encode)(units, longest, &n))
            return true;
        if (n > room)
            return false;
        std::copy_n(units, n, at);
        advance(n);
        return true;
    }
};

bool encode_latin1(AString const &s, Output<char> &out, char replacement)
{
    for (AStringRuns run(s); run.next();) {
        unsigned long long const n = std::min(run.size, out.room);
        for (unsigned long long i = 0; i < n; ++i) {
            out.at[i]
                = static_cast<char>(run.text[i].to_latin1(static_cast<unsigned char>(replacement)));
        }
        out.advance(n);
        if (n < run.size)
            return false;
    }
    return true;
}

bool encode_utf8(AStringRuns const &run, Output<char> &out)
{
    for (unsigned long long i = 0; i < run.size;) {
        unsigned long long const n
            = narrow_ascii(run.text + i, std::min(run.size - i, out.room), out.at);
        out.advance(n);
        i += n;
        if (i < run.size && !out.put(run.text[i++], &AChar::to_utf8, 4))
            return false;
    }
    return true;
}

bool encode_utf8(AString const &s, Output<char> &out)
{
    for (AStringRuns run(s); run.next();) {
        if (!encode_utf8(run, out))
            return false;
    }
    return true;
}

bool encode_utf16(AString const &s, Output<char16_t> &out)
{
    for (AStringRuns run(s); run.next();) {
        for (unsigned long long i = 0; i < run.size; ++i) {
            if (!out.put(run.text[i], &AChar::to_utf16, 2))
                return false;
        }
    }
    return true;
}

bool encode_utf32(AString const &s, Output<char32_t> &out)
{
    for (AStringRuns run(s); run.next();) {
        unsigned long long const n = std::min(run.size, out.room);
        for (unsigned long long i = 0; i < n; ++i)
            out.at[i] = run.text[i].ord();
        out.advance(n);
        if (n < run.size)
            return false;
    }
    return true;
}

/// Gives \a encode all but the last unit of the buffer and terminates what it wrote.
template <typename Unit, typename Encode>
bool with_terminator(Unit *buffer, unsigned long long size, unsigned long long *count, bool fill,
    Unit fill_unit, Encode encode)
{
    if (count)
        *count = 0;
    if (size == 0)
        return false;
    Output<Unit> out{buffer, size - 1};
    bool const whole = out.finish(encode(out), count, fill, fill_unit);
    buffer[out.written] = 0;
    return whole;
}

} // namespace

bool AString::to_latin1(char *buffer, unsigned long long size, char replacement,
    unsigned long long *count, bool fill, char fill_char) const
{
    Output<char> out{buffer, size};
    return out.finish(encode_latin1(*this, out, replacement), count, fill, fill_char);
}

bool AString::to_utf8(char *buffer, unsigned long long size, unsigned long long *count, bool fill,
    char fill_char) const
{
    Output<char> out{buffer, size};
    return out.finish(encode_utf8(*this, out), count, fill, fill_char);
}

bool AString::to_utf16(
    char16_t *buffer, unsigned long long size, unsigned long long *count, bool fill) const
{
    Output<char16_t> out{buffer, size};
    return out.finish(encode_utf16(*this, out), count, fill, u'\0');
}

bool AString::to_utf32(
    char32_t *buffer, unsigned long long size, unsigned long long *count, bool fill) const
{
    Output<char32_t> out{buffer, size};
    return out.finish(encode_utf32(*this, out), count, fill, U'\0');
}

bool AString::to_latin1_z(char *buffer, unsigned long long size, char replacement,
    unsigned long long *count, bool fill, char fill_char) const
{
    return with_terminator(buffer, size, count, fill, fill_char,
        [&](Output<char> &out) { return encode_latin1(*this, out, replacement); });
}

bool AString::to_utf8_z(char *buffer, unsigned long long size, unsigned long long *count, bool fill,
    char fill_char) const
{
    return with_terminator(buffer, size, count, fill, fill_char,
        [&](Output<char> &out) { return encode_utf8(*this, out); });
}

bool AString::to_utf16_z(
    char16_t *buffer, unsigned long long size, unsigned long long *count, bool fill) const
{
    return with_terminator(buffer, size, count, fill, u'\0',
        [&](Output<char16_t> &out) { return encode_utf16(*this, out); });
}

bool AString::to_utf32_z(
    char32_t *buffer, unsigned long long size, unsigned long long *count, bool fill) const
{
    return with_terminator(buffer, size, count, fill, U'\0',
        [&](Output<char32_t> &out) { return encode_utf32(*this, out); });
}

std::string AString::to_string() const
{
    // The same bytes as send_utf8 hands out, but run by run.
    char bytes[4 * AStringChunk::max_text];
    std::string text;
    for (AStringRuns run(*this); run.next();) {
        Output<char> out{bytes, sizeof bytes};
        encode_utf8(run, out);
        if (text.empty() && run.size < length_)
            text.reserve(length_);
        text.append(bytes, out.written);
    }
    return text;
}

AWString AString::to_wstring() const
{
    AWString text;
    text.reserve(length_);
    for (AChar c : *this) {
        char16_t units[2];
        unsigned long long n = 0;
        if (c.to_utf16(units, 2, &n))
            text.append(units, n);
    }
    return text;
}

AString::operator QString() const
{
    QString text(static_cast<qsizetype>(utf16_size(*this)), Qt::Uninitialized);
    QChar *to = text.data();
    for (AStringRuns run(*this); run.next();) {
        for (unsigned long long i = 0; i < run.size; ++i) {
            char32_t const code = run.text[i].ord();
            if (code > 0xffff)
                *to++ = QChar(QChar::highSurrogate(code));
            *to++ = code > 0xffff ? QChar(QChar::lowSurrogate(code))
                                  : QChar(static_cast<char16_t>(code));
        }
    }
    return text;
}

void AString::send_utf8(AFunction2<char const *, unsigned long long> const &sink) const
{
    constexpr unsigned long long block = 128;
    constexpr unsigned long long enough = 125; // the longest code point may not fit any more
    char staged[block];
    Output<char> out{staged, block};
    for (AStringRuns run(*this); run.next();) {
        for (unsigned long long i = 0; i < run.size;) {
            unsigned long long const n
                = narrow_ascii(run.text + i, std::min(run.size - i, out.room), out.at);
            out.advance(n);
            i += n;
            if (i < run.size && out.room > block - enough)
                out.put(run.text[i++], &AChar::to_utf8, 4);
            if (out.written >= enough) {
                sink(staged, out.written);
                out = {staged, block};
            }
        }
    }
    if (out.written != 0)
        sink(staged, out.written);
}
