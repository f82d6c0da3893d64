// SPDX-License-Identifier: Apache-2.0
// Any bytes read as UTF-8: what is read must be what a reader of single code points reads, and
// every way of writing it must agree with the others.
#include "fuzz/expect.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/abyte_array.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size);

namespace {

std::u32string read_one_by_one(char const *p, unsigned long long n)
{
    std::u32string text;
    AChar c;
    unsigned long long taken = 0;
    for (; AChar::consume_utf8(p, n, &c, &taken); p += taken, n -= taken) {
        FUZZ_EXPECT(taken >= 1 && taken <= 4 && taken <= n);
        FUZZ_EXPECT(c.ord() <= AChar::max_code_point);
        text += c.ord();
    }
    return text;
}

struct Sink
{
    std::string text;
    void take(char const *p, unsigned long long n)
    {
        FUZZ_EXPECT(n >= 1 && n <= 128);
        text.append(p, n);
    }
};

void check_writing(AString const &s)
{
    std::string const text = s.to_string();
    Sink sink;
    s.send_utf8(AFunction2<char const *, unsigned long long>::bind<&Sink::take>(&sink));
    FUZZ_EXPECT(sink.text == text);
    FUZZ_EXPECT(AByteArray::toUtf8(s).size() == text.size());

    std::string half(text.size() / 2, '-');
    unsigned long long count = 0;
    bool const whole = s.to_utf8(half.data(), half.size(), &count);
    FUZZ_EXPECT(whole == text.empty());
    FUZZ_EXPECT(count <= half.size() && text.compare(0, count, half, 0, count) == 0);

    // A 0 comes only from an overlong form, and ends the text when it is read again.
    if (!s.contains(AChar()))
        FUZZ_EXPECT(AString::from_string(text) == s);
    else
        FUZZ_EXPECT(s.has_prefix(AString::from_string(text)));
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    char const *bytes = reinterpret_cast<char const *>(data);
    AString const s = AString::from_utf8(bytes, size);
    std::u32string const expected = read_one_by_one(bytes, size);
    FUZZ_EXPECT(s.length() == expected.size());
    FUZZ_EXPECT(s == AString::from_utf32(expected.data(), expected.size()));
    std::size_t i = 0;
    for (AChar c : s)
        FUZZ_EXPECT(c.ord() == expected[i++]);
    FUZZ_EXPECT(i == expected.size());

    check_writing(s);
    check_writing(s.mid(s.length() / 3, s.length() / 2));
    FUZZ_EXPECT(s.despace() == s.despace_end().despace_front());
    AString const again = AString::from_wstring(s.to_wstring());
    FUZZ_EXPECT(again.length() <= s.length());
    return 0;
}
