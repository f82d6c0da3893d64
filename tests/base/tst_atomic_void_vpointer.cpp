// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/atomic_void_vpointer.h"

#include <QTest>
#include <thread>
#include <vector>

class TestAtomicVoidVPointer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void begins_null_at_version_zero();
    void assignment_advances_the_version();
    void set_and_clear_take_both_words_as_given();
    void casv_needs_both_words();
    void cas_needs_the_pointer_alone();
    void peek_reads_what_casv_expects();
    void owner_sets_and_advances();
    void comparison_needs_both_words();
    void words_of_different_writers_never_mix();

private:
    int a = 0;
    int b = 0;
};

void TestAtomicVoidVPointer::begins_null_at_version_zero()
{
    AtomicVoidVPointer const pointer;
    QVERIFY(pointer.ptr() == nullptr);
    QCOMPARE(pointer.version(), std::uint64_t(0));
    QVERIFY(pointer.getX() == AtomicVoidVPointer::X());
}

void TestAtomicVoidVPointer::assignment_advances_the_version()
{
    AtomicVoidVPointer pointer;
    pointer = &a;
    QVERIFY(pointer.ptr() == &a);
    QCOMPARE(pointer.version(), std::uint64_t(1));
    pointer = &a;
    QCOMPARE(pointer.version(), std::uint64_t(2));
}

void TestAtomicVoidVPointer::set_and_clear_take_both_words_as_given()
{
    AtomicVoidVPointer pointer;
    pointer = &a;
    pointer.setX({&b, 70});
    QVERIFY(pointer.ptr() == &b);
    QCOMPARE(pointer.version(), std::uint64_t(70));
    pointer.clearX();
    QVERIFY(pointer.ptr() == nullptr);
    QCOMPARE(pointer.version(), std::uint64_t(0));
}

void TestAtomicVoidVPointer::casv_needs_both_words()
{
    AtomicVoidVPointer pointer;
    pointer.setX({&a, 5});
    QVERIFY(!pointer.casv({&a, 4}, &b));
    QVERIFY(!pointer.casv({&b, 5}, &b));
    QVERIFY(pointer == (AtomicVoidVPointer::X{&a, 5}));
    QVERIFY(pointer.casv({&a, 5}, &b));
    QVERIFY(pointer == (AtomicVoidVPointer::X{&b, 6}));
}

void TestAtomicVoidVPointer::cas_needs_the_pointer_alone()
{
    AtomicVoidVPointer pointer;
    pointer.setX({&a, 5});
    QVERIFY(!pointer.cas(&b, &a));
    QVERIFY(pointer == (AtomicVoidVPointer::X{&a, 5}));
    QVERIFY(pointer.cas(&a, &b));
    QVERIFY(pointer == (AtomicVoidVPointer::X{&b, 6}));
}

void TestAtomicVoidVPointer::peek_reads_what_casv_expects()
{
    AtomicVoidVPointer pointer;
    pointer = &a;
    QVERIFY(pointer.peek() == pointer.getX());
    QVERIFY(pointer.casv(pointer.peek(), &b));
}

void TestAtomicVoidVPointer::owner_sets_and_advances()
{
    AtomicVoidVPointer pointer;
    pointer = &a;
    AtomicVoidVPointer::X const before = pointer.getX();
    pointer.set_by_owner(nullptr);
    QVERIFY(pointer == (AtomicVoidVPointer::X{nullptr, 2}));
    QVERIFY(!pointer.casv(before, &b));
}

void TestAtomicVoidVPointer::comparison_needs_both_words()
{
    AtomicVoidVPointer first;
    AtomicVoidVPointer second;
    QVERIFY(first == second);
    first.setX({&a, 1});
    second.setX({&a, 2});
    QVERIFY(first != second);
    second.setX({&b, 1});
    QVERIFY(first != second);
    second.setX({&a, 1});
    QVERIFY(first == second);
}

void TestAtomicVoidVPointer::words_of_different_writers_never_mix()
{
    // Each thread moves on by one int and one version, so the two words always agree.
    static int places[40001];
    AtomicVoidVPointer pointer;
    pointer.setX({places, 0});
    std::vector<std::thread> writers;
    std::atomic<int> mixed{0};
    for (int i = 0; i < 4; ++i) {
        writers.emplace_back([&] {
            for (int moves = 0; moves < 10000;) {
                AtomicVoidVPointer::X const now = pointer.getX();
                auto const *at = static_cast<int *>(now.ptr);
                mixed += at != places + now.version;
                moves += pointer.casv(now, static_cast<int *>(now.ptr) + 1);
            }
        });
    }
    for (std::thread &writer : writers)
        writer.join();
    QCOMPARE(mixed.load(), 0);
    QVERIFY(pointer == (AtomicVoidVPointer::X{places + 40000, 40000}));
}

QTEST_GUILESS_MAIN(TestAtomicVoidVPointer)
#include "tst_atomic_void_vpointer.moc"
