// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/areference.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/areferenced.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/areusable_ref_object.h"
#include "tests/support/assert_log.h"

#include <QTest>
#include <set>

namespace {

class Counted : public AReferenced
{
public:
    explicit Counted(bool *deleted_flag)
        : deleted(deleted_flag)
    {
    }
    ~Counted() override { *deleted = true; }

private:
    bool *deleted;
};

class Other : public AReferenced
{
};

/// Stands for an object whose count is full.
struct Refusing
{
    int released = 0;

    bool add_reference() { return false; }
    void release_reference() { ++released; }
};

} // namespace

class TestAReference : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void default_is_null();
    void last_reference_deletes_a_counted_object();
    void copies_and_moves_keep_the_count();
    void assignment_lets_the_old_object_go();
    void assignment_to_itself_keeps_the_object();
    void clear_releases();
    void a_refused_reference_is_an_assertion_and_null();
    void from_base_finds_the_derived_object();
    void from_base_of_another_class_is_an_assertion_and_null();
    void reusable_objects_are_counted_and_kept();
    void compares_by_object();
};

void TestAReference::default_is_null()
{
    AReference<Counted> const reference;
    QVERIFY(!reference);
    QVERIFY(reference.get() == nullptr);
    QVERIFY(AReference<Counted>(nullptr) == reference);
}

void TestAReference::last_reference_deletes_a_counted_object()
{
    bool deleted = false;
    {
        AReference<Counted> const reference(new Counted(&deleted));
        QCOMPARE(reference->reference_count(), 1u);
        QVERIFY(!deleted);
    }
    QVERIFY(deleted);
}

void TestAReference::copies_and_moves_keep_the_count()
{
    bool deleted = false;
    AReference<Counted> first(new Counted(&deleted));
    AReference<Counted> second(first);
    QCOMPARE(first->reference_count(), 2u);
    AReference<Counted> third(std::move(second));
    QCOMPARE(first->reference_count(), 2u);
    AReference<Counted> fourth;
    fourth = third;
    QCOMPARE(first->reference_count(), 3u);
    fourth = std::move(third);
    QCOMPARE(first->reference_count(), 2u);
    QVERIFY(!deleted);
}

void TestAReference::assignment_lets_the_old_object_go()
{
    bool old_deleted = false;
    bool new_deleted = false;
    AReference<Counted> reference(new Counted(&old_deleted));
    reference = new Counted(&new_deleted);
    QVERIFY(old_deleted);
    QVERIFY(!new_deleted);
}

void TestAReference::assignment_to_itself_keeps_the_object()
{
    bool deleted = false;
    AReference<Counted> reference(new Counted(&deleted));
    AReference<Counted> const &same = reference;
    reference = same;
    QVERIFY(!deleted);
    QCOMPARE(reference->reference_count(), 1u);
}

void TestAReference::clear_releases()
{
    bool deleted = false;
    AReference<Counted> reference(new Counted(&deleted));
    reference.clear();
    QVERIFY(deleted);
    QVERIFY(!reference);
}

void TestAReference::a_refused_reference_is_an_assertion_and_null()
{
    AssertLog log;
    Refusing object;
    {
        AReference<Refusing> const reference(&object);
        QCOMPARE(log.take(), QStringList{QStringLiteral("t->increase_reference()")});
        QVERIFY(!reference);
    }
    QCOMPARE(object.released, 0);
}

void TestAReference::from_base_finds_the_derived_object()
{
    AssertLog log;
    bool deleted = false;
    AReference<Counted> const held(new Counted(&deleted));
    AReferenced *base = held.get();
    auto const found = AReference<Counted>::from_base(base);
    QVERIFY(found == held);
    QCOMPARE(held->reference_count(), 2u);
    QVERIFY(!AReference<Counted>::from_base<AReferenced>(nullptr));
    QVERIFY(log.take().isEmpty());
}

void TestAReference::from_base_of_another_class_is_an_assertion_and_null()
{
    AssertLog log;
    AReference<Other> const held(new Other);
    AReferenced *base = held.get();
    QVERIFY(!AReference<Counted>::from_base(base));
    QCOMPARE(log.take(), QStringList{QStringLiteral("t == ref")});
    QCOMPARE(held->reference_count(), 1u);
}

void TestAReference::reusable_objects_are_counted_and_kept()
{
    AReusableRefObject object;
    {
        AReference<AReusableRefObject> const reference(&object);
        QVERIFY(!object.releasable());
    }
    QVERIFY(object.releasable());
    AReference<AReusableRefObject> const revived(&object);
    QVERIFY(!object.releasable());
}

void TestAReference::compares_by_object()
{
    bool deleted = false;
    AReference<Counted> const first(new Counted(&deleted));
    AReference<Counted> const second(new Counted(&deleted));
    QVERIFY(first == first.get());
    QVERIFY(first != second);
    QCOMPARE((std::set<AReference<Counted>>{first, second, first}.size()), std::size_t(2));
}

QTEST_GUILESS_MAIN(TestAReference)
#include "tst_areference.moc"
