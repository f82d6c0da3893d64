// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/acompare.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/limit_cvt.h"

#include <QTest>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

namespace {

template <typename T> using Limits = std::numeric_limits<T>;
/// Holds every value of every source and target.
__extension__ using Wide = __int128;

/// Whether \a convert gives \a Target's nearest value for the extremes of a source and for all
/// values next to the target's own.
template <typename Target, typename Source, typename Convert> bool saturates(Convert convert)
{
    std::vector<Wide> values{Limits<Source>::min(), Limits<Source>::max(), 0, 1, -1};
    for (int step : {-1, 0, 1}) {
        values.push_back(static_cast<Wide>(Limits<Target>::min()) + step);
        values.push_back(static_cast<Wide>(Limits<Target>::max()) + step);
    }
    for (Wide value : values) {
        if (value < Limits<Source>::min() || value > Limits<Source>::max())
            continue;
        Wide expected = value;
        if (value > Limits<Target>::max())
            expected = Limits<Target>::max();
        if (value < Limits<Target>::min())
            expected = Limits<Target>::min();
        if (convert(static_cast<Source>(value)) != static_cast<Target>(expected))
            return false;
    }
    return true;
}

/// The same for every kind of source; also that the result has the target's type.
template <typename Target, typename Convert> bool saturates_all(Convert convert)
{
    static_assert(std::is_same_v<decltype(convert(1)), Target>);
    return saturates<Target, int>(convert) && saturates<Target, unsigned int>(convert)
        && saturates<Target, long long>(convert) && saturates<Target, unsigned long long>(convert)
        && saturates<Target, long>(convert) && saturates<Target, unsigned long>(convert)
        && saturates<Target, short>(convert) && saturates<Target, unsigned char>(convert);
}

} // namespace

class TestLimitCvt : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void converts_to_the_nearest_value()
    {
        QVERIFY(saturates_all<std::int8_t>([](auto v) { return limit_cvt_int8(v); }));
        QVERIFY(saturates_all<signed char>([](auto v) { return limit_cvt_schar(v); }));
        QVERIFY(saturates_all<std::uint8_t>([](auto v) { return limit_cvt_uint8(v); }));
        QVERIFY(saturates_all<unsigned char>([](auto v) { return limit_cvt_uchar(v); }));
        QVERIFY(saturates_all<std::int16_t>([](auto v) { return limit_cvt_int16(v); }));
        QVERIFY(saturates_all<short>([](auto v) { return limit_cvt_short(v); }));
        QVERIFY(saturates_all<std::uint16_t>([](auto v) { return limit_cvt_uint16(v); }));
        QVERIFY(saturates_all<unsigned short>([](auto v) { return limit_cvt_ushort(v); }));
        QVERIFY(saturates_all<std::int32_t>([](auto v) { return limit_cvt_int32(v); }));
        QVERIFY(saturates_all<int>([](auto v) { return limit_cvt_int(v); }));
        QVERIFY(saturates_all<std::uint32_t>([](auto v) { return limit_cvt_uint32(v); }));
        QVERIFY(saturates_all<unsigned int>([](auto v) { return limit_cvt_unsigned(v); }));
    }

    void edge_values()
    {
        static_assert(limit_cvt_int8(128) == 127 && limit_cvt_int8(-129) == -128);
        static_assert(limit_cvt_uint8(-1) == 0 && limit_cvt_uint8(256u) == 255);
        static_assert(limit_cvt_int(0xffffffffu) == 0x7fffffff);
        static_assert(limit_cvt_unsigned(-1ll) == 0 && limit_cvt_unsigned(~0ull) == 0xffffffffu);
    }

    void compares_three_ways()
    {
        static_assert(ACompare(1, 2) == -1 && ACompare(2, 1) == 1 && ACompare(2, 2) == 0);
        static_assert(ACompare(false, true) == -1 && ACompare(true, false) == 1);
        static_assert(ACompare(true, true) == 0 && ACompare(-1ll, 1ll) == -1);
        QCOMPARE(ACompare(std::string("a"), std::string("b")), -1);
    }
};

QTEST_GUILESS_MAIN(TestLimitCvt)
#include "tst_limit_cvt.moc"
