// SPDX-License-Identifier: Apache-2.0
// Timecode texts and bytes. A second reader, written as plainly as possible, must agree, and what
// is printed must read back as the same count where a frame is two fields.
#include "ATarnLib/timecode/atimecode.h"
#include "fuzz/expect.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size);

namespace {

using namespace Corvane;

struct Pieces
{
    std::vector<std::string> pieces;
    char separator = 'x';
};

Pieces split(std::string const &text)
{
    Pieces result;
    std::string const separators = ",.:;";
    std::string seen;
    for (std::size_t at = 0; at <= text.size();) {
        std::size_t const end = std::min(text.find_first_of(separators, at), text.size());
        if (end > at)
            result.pieces.push_back(text.substr(at, end - at));
        if (end < text.size())
            seen += text[end];
        at = end + 1;
    }
    if (!seen.empty() && seen.find_first_not_of(seen[0]) == std::string::npos)
        result.separator = seen[0];
    return result;
}

unsigned int value(std::string const &piece)
{
    std::string digits;
    for (char c : piece) {
        if (c >= '0' && c <= '9' && !(digits.empty() && c == '0'))
            digits += c;
    }
    if (digits.size() > 10)
        return 0;
    std::uint64_t const n = digits.empty() ? 0 : std::stoull(digits);
    return n > 0xffffffffu ? 0 : static_cast<unsigned int>(n);
}

ATimecode plain(std::string const &text, VideoFrequency frequency, DropframeFlag flag)
{
    Pieces const split_text = split(text);
    unsigned int parts[4] = {}; // frames first
    for (std::size_t i = 0; i < 4 && i < split_text.pieces.size(); ++i)
        parts[i] = value(split_text.pieces[split_text.pieces.size() - 1 - i]);
    char const s = split_text.separator;
    if (hasDropframe(frequency) && !isValid(flag))
        flag = s == '.' || s == ':' ? DropframeFlag::ndf : DropframeFlag::df;
    if (!hasDropframe(frequency))
        flag = DropframeFlag::ndf;
    if (flag == DropframeFlag::df && parts[2] % 10 != 0 && parts[1] == 0 && parts[0] < 2)
        parts[0] = 2;
    unsigned int const n = timecode_fields_per_second(frequency, flag) * parts[1]
        + (s == ':' || s == ';' ? 1 : 0) + 2 * parts[0]
        + timecode_fields_per_minute(frequency, flag) * (parts[2] % 10)
        + timecode_fields_per_10minutes(frequency, flag) * (parts[2] / 10)
        + timecode_fields_per_hour(frequency, flag) * parts[3];
    return ATimecode(frequency, flag, n, 1);
}

void check_text(std::string const &text, VideoFrequency frequency, DropframeFlag flag)
{
    AString const s = AString::from_latin1(text.data(), text.size());
    ATimecode const t = fromString(s, frequency, flag);
    ATimecode const expected = plain(text, frequency, flag);
    FUZZ_EXPECT(t.is_defined());
    FUZZ_EXPECT(t == expected && t.get_df() == expected.get_df());
    // The same from the toolkit's text, and from a slice that lies in several runs.
    FUZZ_EXPECT(fromString(QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())),
                    frequency, flag)
        == t);
    AString const padded = AString::rep(AString::l1("9"), 250) + s + AString::l1("9");
    FUZZ_EXPECT(fromString(padded.mid(250, s.length()), frequency, flag) == t);

    ATimecode const day = t.get24();
    FUZZ_EXPECT(day.get_nfields() == t.get_nfields() % t.get_fields_per_day());
    if (timecode_fields_per_frame(frequency) == 2)
        FUZZ_EXPECT(fromString(day.toString(4), frequency, DropframeFlag::invalid) == day);
}

void check_bytes(std::uint8_t const *data, VideoFrequency frequency)
{
    ATimecode const sony
        = ATimecode::from_sony(frequency, std::span<std::uint8_t const, 4>(data, 4));
    ATimecode const tc64
        = ATimecode::from_tc64(frequency, std::span<std::uint8_t const, 8>(data, 8));
    FUZZ_EXPECT(sony.is_defined());
    FUZZ_EXPECT(sony.get24().get_days() == 0);
    FUZZ_EXPECT(tc64.is_undefined() || tc64.get24().get_days() == 0);
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    if (size < 1)
        return 0;
    auto const frequency = static_cast<VideoFrequency>(data[0] % 10 + 1);
    auto const flag = static_cast<DropframeFlag>(data[0] / 10 % 3);
    check_text(std::string(reinterpret_cast<char const *>(data + 1), size - 1), frequency, flag);
    if (size >= 9)
        check_bytes(data + 1, frequency);
    return 0;
}
