// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/atomic.h"
#include "tests/support/assert_log.h"
#include "tests/support/two_threads.h"

#include <QTest>

namespace {

constexpr int rounds = 20000;

Atomic::uint128 wide(std::uint64_t high, std::uint64_t low)
{
    return static_cast<Atomic::uint128>(high) << 64 | low;
}

QString const misaligned32 = QStringLiteral("uintptr_t(p) % sizeof(uint32_t) == 0");
QString const misaligned64 = QStringLiteral("uintptr_t(p) % sizeof(uint64_t) == 0");

} // namespace

class TestAtomic : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void operations_of_32_bits()
    {
        std::uint32_t n = 5;
        QCOMPARE(Atomic::incr32(&n), 6u);
        QCOMPARE(Atomic::decr32(&n), 5u);
        QCOMPARE(Atomic::add32(&n, 10), 15u);
        QCOMPARE(Atomic::sub32(&n, 16), 0xffffffffu);
        QVERIFY(!Atomic::cas32(&n, 1, 2));
        QCOMPARE(n, 0xffffffffu);
        QVERIFY(Atomic::cas32(&n, 0xffffffffu, 2));
        QCOMPARE(Atomic::set32(&n, 9), 2u);
        QCOMPARE(n, 9u);
    }

    void operations_of_64_bits()
    {
        std::uint64_t n = 5;
        QCOMPARE(Atomic::incr64(&n), 6u);
        QCOMPARE(Atomic::decr64(&n), 5u);
        QCOMPARE(Atomic::add64(&n, 1ull << 40), (1ull << 40) + 5);
        QCOMPARE(Atomic::sub64(&n, (1ull << 40) + 6), ~0ull);
        QVERIFY(!Atomic::cas64(&n, 1, 2));
        QVERIFY(Atomic::cas64(&n, ~0ull, 2));
        QCOMPARE(Atomic::set64(&n, 9), 2u);
        QCOMPARE(Atomic::get64(&n), 9u);
    }

    void operations_of_128_bits()
    {
        alignas(16) Atomic::uint128 n = wide(1, 2);
        QVERIFY(Atomic::get128(&n) == wide(1, 2));
        QVERIFY(!Atomic::cas128(&n, wide(1, 3), wide(7, 7)));
        QVERIFY(!Atomic::cas128(&n, wide(2, 2), wide(7, 7)));
        QVERIFY(Atomic::cas128(&n, wide(1, 2), wide(3, 4)));
        QVERIFY(Atomic::set128(&n, wide(5, 6)) == wide(3, 4));
        QVERIFY(Atomic::get128(&n) == wide(5, 6));
        Atomic::set128(&n, 0);
        QVERIFY(Atomic::get128(&n) == 0);
    }

    void pointers_move_by_bytes()
    {
        char text[8];
        void *p = text;
        QCOMPARE(Atomic::addptr(&p, 5), static_cast<void *>(text + 5));
        QCOMPARE(Atomic::subptr(&p, 2), static_cast<void *>(text + 3));
        QCOMPARE(Atomic::addptr(&p, -3), static_cast<void *>(text));
        QCOMPARE(p, static_cast<void *>(text));
    }

    void a_misaligned_variable_is_an_assertion_and_stays()
    {
        AssertLog log;
        alignas(16) unsigned char memory[48] = {};
        auto *p32 = reinterpret_cast<std::uint32_t *>(memory + 1);
        auto *p64 = reinterpret_cast<std::uint64_t *>(memory + 4);
        QCOMPARE(Atomic::incr32(p32) + Atomic::decr32(p32) + Atomic::add32(p32, 1)
                + Atomic::sub32(p32, 1) + Atomic::set32(p32, 1),
            0u);
        QVERIFY(!Atomic::cas32(p32, 0, 1));
        QCOMPARE(log.take(), QStringList(6, misaligned32));
        QCOMPARE(Atomic::incr64(p64) + Atomic::decr64(p64) + Atomic::add64(p64, 1)
                + Atomic::sub64(p64, 1) + Atomic::set64(p64, 1) + Atomic::get64(p64),
            0u);
        QVERIFY(!Atomic::cas64(p64, 0, 1));
        QCOMPARE(log.take(), QStringList(7, misaligned64));
        auto *pointer = reinterpret_cast<void **>(memory + 4);
        QVERIFY(!Atomic::addptr(pointer, 1) && !Atomic::subptr(pointer, 1));
        QCOMPARE(log.take(), QStringList(2, misaligned64));
        auto *p128 = reinterpret_cast<Atomic::uint128 *>(memory + 8);
        QVERIFY(!Atomic::cas128(p128, 0, 1) && Atomic::get128(p128) == 0
            && Atomic::set128(p128, 1) == 0);
        QCOMPARE(log.take().size(), 3);
        for (unsigned char byte : memory)
            QCOMPARE(byte, 0);
    }

    void two_threads_lose_no_count()
    {
        std::uint32_t n32 = 0;
        std::uint64_t n64 = 0;
        alignas(16) Atomic::uint128 n128 = 0;
        in_two_threads([&](int) {
            for (int i = 0; i < rounds; ++i) {
                Atomic::incr32(&n32);
                Atomic::add64(&n64, 2);
                std::uint64_t seen = Atomic::get64(&n64);
                while (!Atomic::cas64(&n64, seen, seen + 1))
                    seen = Atomic::get64(&n64);
                Atomic::uint128 wide_seen = Atomic::get128(&n128);
                while (!Atomic::cas128(&n128, wide_seen, wide_seen + wide(1, 1)))
                    wide_seen = Atomic::get128(&n128);
            }
        });
        QCOMPARE(n32, 2u * rounds);
        QCOMPARE(n64, 6u * rounds);
        QVERIFY(Atomic::get128(&n128) == wide(2 * rounds, 2 * rounds));
    }

    void both_halves_of_128_bits_are_written_together()
    {
        alignas(16) Atomic::uint128 n = 0;
        in_two_threads([&](int which) {
            for (std::uint64_t i = 1; i < rounds; ++i) {
                if (which == 0) {
                    Atomic::set128(&n, wide(i, i));
                } else {
                    Atomic::uint128 const seen = Atomic::get128(&n);
                    QCOMPARE(
                        static_cast<std::uint64_t>(seen >> 64), static_cast<std::uint64_t>(seen));
                }
            }
        });
    }

    // --- AtomicUnsigned ---
    void operators_return_the_new_value()
    {
        AtomicUnsigned n(10);
        QCOMPARE(++n, 11u);
        QCOMPARE(--n, 10u);
        QCOMPARE(n++, 10u);
        QCOMPARE(n--, 11u);
        QCOMPARE(n *= 6, 60u);
        QCOMPARE(n /= 7, 8u);
        QCOMPARE(n |= 3, 11u);
        QCOMPARE(n &= 6, 2u);
        QCOMPARE(n ^= 7, 5u);
        QCOMPARE(n.and_not(4), 1u);
        n = 7;
        AtomicUnsigned const copy = n;
        QCOMPARE(copy.get(), 7u);
        n.clear();
        n = copy;
        QCOMPARE(n.get(), 7u);
        n.clear();
        QCOMPARE(static_cast<std::uint32_t>(n), 0u);
        QCOMPARE(--n, 0xffffffffu);
        QCOMPARE(++n, 0u);
        QVERIFY(n.cas(0, 5) && !n.cas(0, 6));
        QCOMPARE(n.get(), 5u);
    }

    void division_by_zero_is_an_assertion()
    {
        AssertLog log;
        AtomicUnsigned n(10);
        QCOMPARE(n /= 0, 10u);
        QCOMPARE(log.take().size(), 1);
    }

    void bits_are_set_and_cleared_alone()
    {
        AssertLog log;
        AtomicUnsigned n;
        n.set_bit(0);
        n.set_bit(31);
        QCOMPARE(n.get(), 0x80000001u);
        QVERIFY(n.get_bit(0) && n.get_bit(31) && !n.get_bit(1));
        n.clear_bit(0);
        n.clear_bit(5);
        QCOMPARE(n.get(), 0x80000000u);
        QVERIFY(log.take().isEmpty());
        n.set_bit(32);
        n.clear_bit(32);
        QVERIFY(!n.get_bit(32));
        QCOMPARE(n.get(), 0x80000000u);
        QCOMPARE(log.take().size(), 3);
    }

    void max_and_min_tell_whether_they_changed()
    {
        AtomicUnsigned n(5);
        QVERIFY(!n.Max(4) && !n.Max(5) && n.Max(6));
        QCOMPARE(n.get(), 6u);
        QVERIFY(!n.Min(7) && !n.Min(6) && n.Min(5));
        QCOMPARE(n.get(), 5u);
    }

    void increase_and_decrease_stop_at_the_limit()
    {
        AtomicUnsigned n(1);
        QVERIFY(n.increase(3) && n.increase(3) && !n.increase(3));
        QCOMPARE(n.get(), 3u);
        QVERIFY(!n.increase(2));
        QVERIFY(n.decrease(1) && n.decrease(1) && !n.decrease(1));
        QCOMPARE(n.get(), 1u);
        QVERIFY(!n.decrease(2));
        QVERIFY(n.decrease(0) && !n.decrease(0));
        n = 0xffffffffu;
        QVERIFY(!n.increase(0xffffffffu));
    }

    void amounts_are_taken_whole_or_not_at_all()
    {
        AtomicUnsigned n(10);
        QVERIFY(n.increase_by(5, 15) && !n.increase_by(1, 15));
        QVERIFY(!n.increase_by(6, 20) && n.increase_by(5, 20));
        QCOMPARE(n.get(), 20u);
        QVERIFY(n.decrease_by(15, 5) && !n.decrease_by(1, 5) && !n.decrease_by(6, 0));
        QCOMPARE(n.get(), 5u);
        QVERIFY(!n.increase_by(0, 100) && !n.decrease_by(0, 0));
        QVERIFY(!n.increase_by(0xffffffffu, 100) && n.increase_by(0xfffffffau, 0xffffffffu));
    }

    void two_threads_respect_the_limit()
    {
        AtomicUnsigned n;
        int added[2] = {};
        in_two_threads([&](int which) {
            for (int i = 0; i < rounds; ++i)
                added[which] += n.increase(rounds) ? 1 : 0;
        });
        QCOMPARE(n.get(), static_cast<std::uint32_t>(rounds));
        QCOMPARE(added[0] + added[1], rounds);
    }
};

QTEST_GUILESS_MAIN(TestAtomic)
#include "tst_atomic.moc"
