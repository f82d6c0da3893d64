// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/byte_order.h"

#include <QTest>
#include <array>
#include <cstring>

namespace {

/// The bytes of a value as they lie in memory.
template <typename T> QByteArray memory(T value)
{
    QByteArray bytes(sizeof value, 0);
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes;
}

template <typename T> T lying(char const *bytes)
{
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

} // namespace

class TestByteOrder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void to_big_endian_puts_the_highest_byte_first()
    {
        QCOMPARE(memory(toBE::s8(0x12)), QByteArray("\x12"));
        QCOMPARE(memory(toBE::s16(0x1234)), QByteArray("\x12\x34"));
        QCOMPARE(memory(toBE::s32(0x12345678)), QByteArray("\x12\x34\x56\x78"));
        QCOMPARE(
            memory(toBE::s64(0x123456789abcdef0)), QByteArray("\x12\x34\x56\x78\x9a\xbc\xde\xf0"));
    }

    void to_big_endian_takes_parts_of_the_host()
    {
        QCOMPARE(toBE::s16(0x12, 0x34), toBE::s16(0x1234));
        QCOMPARE(toBE::s32(0x12, 0x34, 0x56, 0x78), toBE::s32(0x12345678));
        QCOMPARE(toBE::s32(0x1234, 0x5678), toBE::s32(0x12345678));
        std::uint64_t const expected = toBE::s64(0x123456789abcdef0);
        QCOMPARE(toBE::s64(0x12, 0x34, 0x56, 0x78, 0x9a, 0xbc, 0xde, 0xf0), expected);
        QCOMPARE(toBE::s64(0x1234, 0x5678, 0x9abc, 0xdef0), expected);
        QCOMPARE(toBE::s64(0x12345678, 0x9abcdef0), expected);
    }

    void from_big_endian_gives_the_host_value()
    {
        char const bytes[] = "\x12\x34\x56\x78\x9a\xbc\xde\xf0";
        QCOMPARE(fromBE::s8(lying<std::uint8_t>(bytes)), 0x12);
        QCOMPARE(fromBE::s16(lying<std::uint16_t>(bytes)), 0x1234);
        QCOMPARE(fromBE::s32(lying<std::uint32_t>(bytes)), 0x12345678u);
        QCOMPARE(fromBE::s64(lying<std::uint64_t>(bytes)), 0x123456789abcdef0u);
    }

    void from_big_endian_takes_parts_as_they_lie()
    {
        char const bytes[] = "\x12\x34\x56\x78\x9a\xbc\xde\xf0";
        auto const half = [&bytes](int i) { return lying<std::uint16_t>(bytes + i); };
        auto const word = [&bytes](int i) { return lying<std::uint32_t>(bytes + i); };
        QCOMPARE(fromBE::s16(0x12, 0x34), 0x1234);
        QCOMPARE(fromBE::s32(0x12, 0x34, 0x56, 0x78), 0x12345678u);
        QCOMPARE(fromBE::s32(half(0), half(2)), 0x12345678u);
        std::uint64_t const expected = 0x123456789abcdef0;
        QCOMPARE(fromBE::s64(0x12, 0x34, 0x56, 0x78, 0x9a, 0xbc, 0xde, 0xf0), expected);
        QCOMPARE(fromBE::s64(half(0), half(2), half(4), half(6)), expected);
        QCOMPARE(fromBE::s64(word(0), word(4)), expected);
    }

    void there_and_back_is_the_same()
    {
        static_assert(fromBE::s16(toBE::s16(0x1234)) == 0x1234);
        static_assert(fromBE::s32(toBE::s32(0x12345678)) == 0x12345678);
        static_assert(fromBE::s64(toBE::s64(0x123456789abcdef0)) == 0x123456789abcdef0);
    }
};

QTEST_GUILESS_MAIN(TestByteOrder)
#include "tst_byte_order.moc"
