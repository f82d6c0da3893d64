// SPDX-License-Identifier: Apache-2.0
// Any text read as a number, a speed, an address or bytes: a second reader, written as plainly as
// possible, must agree, and what is printed must read back as the same value.
#include "fuzz/expect.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/abyte_array.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size);

namespace {

/// With its NUL, which is a space too.
std::string const spaces(" \t\n\r\v\f", 7);

std::string trim(std::string const &text)
{
    std::size_t const begin = text.find_first_not_of(spaces);
    if (begin == std::string::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(spaces) - begin + 1);
}

std::optional<std::uint64_t> plain_unsigned(std::string text)
{
    text = trim(text);
    std::string digits = "0123456789";
    if (text.compare(0, 2, "0x") == 0) {
        text.erase(0, 2);
        digits += "abcdefghijklmnopqrstuvwxyz";
    }
    if (text.empty())
        return std::nullopt;
    std::uint64_t value = 0;
    for (char c : text) {
        bool const capital = c >= 'A' && c <= 'Z';
        std::size_t const digit = digits.find(capital ? static_cast<char>(c - 'A' + 'a') : c);
        if (digit == std::string::npos)
            return std::nullopt;
        std::uint64_t const next = value * 10 + digit;
        if (next < value)
            return std::nullopt;
        value = next;
    }
    return value;
}

std::optional<std::int64_t> plain_signed(std::string text)
{
    text = trim(text);
    bool const minus = !text.empty() && text[0] == '-';
    if (!text.empty() && (text[0] == '-' || text[0] == '+'))
        text.erase(0, 1);
    auto const magnitude = plain_unsigned(text);
    if (!magnitude || *magnitude > (1ull << 63) - (minus ? 0 : 1))
        return std::nullopt;
    return static_cast<std::int64_t>(minus ? 0 - *magnitude : *magnitude);
}

void check_numbers(AString const &s, std::string const &text)
{
    std::uint64_t u = 0;
    bool const is_unsigned = s.to_uint64_t(&u);
    auto const expected_unsigned = plain_unsigned(text);
    FUZZ_EXPECT(is_unsigned == expected_unsigned.has_value());
    FUZZ_EXPECT(!is_unsigned || u == *expected_unsigned);

    std::int64_t i = 0;
    bool const is_signed = s.to_int64_t(&i);
    auto const expected_signed = plain_signed(text);
    FUZZ_EXPECT(is_signed == expected_signed.has_value());
    FUZZ_EXPECT(!is_signed || i == *expected_signed);

    std::int8_t narrow = 0;
    FUZZ_EXPECT(s.to_int8_t(&narrow) == (is_signed && i >= -128 && i <= 127));
    std::uint16_t narrow_unsigned = 0;
    FUZZ_EXPECT(s.to_uint16_t(&narrow_unsigned) == (is_unsigned && u <= 65535));

    std::int64_t again = 0;
    FUZZ_EXPECT(AString::from_int64_t(i).to_int64_t(&again) && again == i);
    std::uint64_t again_unsigned = 0;
    FUZZ_EXPECT(AString::from_uint64_t(u, 30).to_uint64_t(&again_unsigned) && again_unsigned == u);
}

void check_special(AString const &s)
{
    int speed = 0;
    int again = 0;
    if (s.to_speed(&speed))
        FUZZ_EXPECT(AString::from_speed(speed, 16).to_speed(&again) && again == speed);
    std::uint32_t const address = s.to_ipaddr(1);
    FUZZ_EXPECT(AString::from_ipaddr(address).to_ipaddr(~address) == address);
}

void check_bytes(AString const &s, std::uint8_t const *data, std::size_t size)
{
    AByteArray const bytes(data, size);
    FUZZ_EXPECT(AByteArray::fromBase64(bytes.toBase64()) == bytes);
    FUZZ_EXPECT(AByteArray::fromHexAscii(bytes.toHexAscii()) == bytes);
    FUZZ_EXPECT(AByteArray::fromBase64(s).size() <= size);
    FUZZ_EXPECT(AByteArray::fromHexAscii(bytes).size() <= size / 2);
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const *>(data), size);
    AString const s = AString::from_latin1(text.data(), text.size());
    check_numbers(s, text);
    check_special(s);
    // A slice that begins within a chunk and ends in another must read the same.
    AString const padded = AString::rep(AString::l1("9"), 250) + s + AString::l1("9");
    check_numbers(padded.mid(250, s.length()), text);
    check_bytes(s, data, size);
    return 0;
}
