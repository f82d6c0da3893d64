// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/atimecode.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/timecode_text_p.h"

#include <cstdint>
#include <limits>

namespace Corvane {

namespace {

/// Takes a text apart in one pass.
class Reader
{
public:
    enum Part
    {
        hours,
        minutes,
        seconds,
        frames
    };

    template <typename Unit> void read(Unit const *text, unsigned long long n)
    {
        for (unsigned long long i = 0; i < n; ++i)
            read(code_point(text[i]));
    }
    void finish() { end_piece(); }

    unsigned int operator[](Part part) const { return values[part]; }
    /// The separator of the text; '\0' where there is none and where they differ.
    char32_t separator() const { return separators_differ ? U'\0' : found; }
    bool f2() const { return separator() == U':' || separator() == U';'; }
    DropframeFlag flag() const;

private:
    static char32_t code_point(AChar c) { return c.ord(); }
    static char32_t code_point(char16_t c) { return c; }

    void read(char32_t c)
    {
        if (c - U'0' < 10) {
            // Stays beyond 32 bits once it is there.
            if (value <= std::numeric_limits<std::uint32_t>::max())
                value = value * 10 + (c - U'0');
            in_piece = true;
        } else if (c == U':' || c == U';' || c == U'.' || c == U',') {
            end_piece();
            separators_differ |= found != U'\0' && found != c;
            found = c;
        } else {
            in_piece = true;
        }
    }
    void end_piece()
    {
        if (!in_piece)
            return;
        for (int i = 0; i < 3; ++i)
            values[i] = values[i + 1];
        bool const fits = value <= std::numeric_limits<std::uint32_t>::max();
        values[3] = fits ? static_cast<unsigned int>(value) : 0;
        value = 0;
        in_piece = false;
    }

    unsigned int values[4] = {};
    std::uint64_t value = 0; // of the digits in this piece
    bool in_piece = false;
    char32_t found = U'\0';
    bool separators_differ = false;
};

DropframeFlag Reader::flag() const
{
    switch (separator()) {
    case U',':
    case U';':
        return DropframeFlag::df;
    case U'.':
    case U':':
        return DropframeFlag::ndf;
    default:
        return DropframeFlag::invalid;
    }
}

ATimecode make(Reader const &text, VideoFrequency frequency, DropframeFlag flag)
{
    if (!hasDropframe(frequency))
        flag = DropframeFlag::ndf;
    if (!isValid(flag))
        flag = text.flag();
    if (!isValid(flag))
        flag = defaultDropframeFlag(frequency);
    unsigned int const minutes = text[Reader::minutes];
    unsigned int frames = text[Reader::frames];
    bool const leaves_out
        = flag == DropframeFlag::df && minutes % 10 != 0 && text[Reader::seconds] == 0;
    if (leaves_out && frames < 2)
        frames = 2;
    // A frame is two fields here even where it is one.
    unsigned int const whole_seconds = timecode_numfields(
        frequency, flag, 0, text[Reader::hours], minutes, text[Reader::seconds], 0, text.f2());
    return ATimecode(frequency, flag, whole_seconds + 2 * frames, 1);
}

} // namespace

ATimecode fromString(AString const &text, VideoFrequency frequency)
{
    return fromString(text, frequency, defaultDropframeFlag(frequency));
}

ATimecode fromString(AString const &text, VideoFrequency frequency, DropframeFlag flag)
{
    Reader reader;
    for (AStringRuns run(text); run.next();)
        reader.read(run.text, run.size);
    reader.finish();
    return make(reader, frequency, flag);
}

ATimecode fromString(QString const &text, VideoFrequency frequency, DropframeFlag flag)
{
    Reader reader;
    reader.read(reinterpret_cast<char16_t const *>(text.utf16()),
        static_cast<unsigned long long>(text.size()));
    reader.finish();
    return make(reader, frequency, flag);
}

ATimecode fromString(AString const &text, VideoStandard standard)
{
    return fromString(text, toVideoFrequency(standard));
}

ATimecode fromString(AString const &text, VideoStandard standard, DropframeFlag flag)
{
    return fromString(text, toVideoFrequency(standard), flag);
}

ATimecode::ATimecode(VideoFrequency frequency, AString const &text)
    : ATimecode(fromString(text, frequency))
{
}

ATimecode::ATimecode(VideoFrequency frequency, DropframeFlag flag, AString const &text)
{
    if (isValid(flag))
        *this = fromString(text, frequency, flag);
}

AString ATimecode::toString(unsigned int parts) const
{
    if (!defined)
        return AString::l1("(invalid)");
    Parts const &now = this->parts();
    bool const dropframe = dropframeByVideoFrequency(field_rate, dfflag) == DropframeFlag::df;
    TimecodeText const text{now.days, now.hours, now.minutes, now.seconds, now.frames};
    return text.print(parts, TimecodeText::separator(dropframe, get_f2()));
}

} // namespace Corvane
