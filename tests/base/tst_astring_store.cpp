// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_builder_p.h"
#include "tests/support/astring_make.h"
#include "tests/support/astring_print.h"
#include "tests/support/two_threads.h"

#include <QTest>
#include <type_traits>
#include <vector>

namespace {

using Storage = AString::Storage;

std::uint32_t count_of(AString const &s)
{
    return s.store()->count.load();
}

} // namespace

class TestAStringStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void empty_strings_have_no_store()
    {
        AString const full = "abc"_a;
        for (AString const &s : {AString(), AString::l1(""), full.left(0), full.mid(3),
                 full.mid(1, 0), AString(full, 3, 1), AString(full, 0, 0)}) {
            QVERIFY(!s.store());
            QVERIFY(s.empty() && s.is_empty());
            QCOMPARE(s.length(), 0u);
        }
    }

    void copies_and_slices_share_the_store()
    {
        AString const s = "a message with fields"_a;
        QCOMPARE(count_of(s), 1u);
        {
            AString const copy = s, slice = s.mid(2, 7), trimmed = s.right(7).despace();
            QCOMPARE(copy.store().get(), s.store().get());
            QCOMPARE(slice.store().get(), s.store().get());
            QCOMPARE(trimmed.store().get(), s.store().get());
            QCOMPARE(count_of(s), 4u);
        }
        QCOMPARE(count_of(s), 1u);
    }

    void moves_take_no_reference()
    {
        AString a = "text"_a;
        Storage *store = a.store().get();
        AString b = std::move(a);
        QCOMPARE(b.store().get(), store);
        QCOMPARE(count_of(b), 1u);
        AString c;
        c = std::move(b);
        QCOMPARE(c, "text"_a);
        QCOMPARE(count_of(c), 1u);
        static_assert(std::is_nothrow_move_constructible_v<AString>);
        static_assert(std::is_nothrow_move_assignable_v<AString>);
    }

    void assignment_to_itself_changes_nothing()
    {
        AString a = "text"_a;
        AString &same = a;
        a = same;
        QCOMPARE(a, "text"_a);
        QCOMPARE(count_of(a), 1u);
    }

    void the_last_reference_frees_short_long_and_chained_stores()
    {
        for (std::size_t n : {1u, 255u, 256u, 257u, 512u, 513u, 5000u}) {
            std::u32string const text = counted_text(n);
            AString last;
            {
                AString const even = even_string(text), chained = chained_string(text);
                last = chained.right(1);
                QVERIFY(even == chained);
            }
            QCOMPARE(u32(last), text.substr(n - 1));
        }
    }

    void an_unsealed_store_has_no_characters()
    {
        AStringBuilder builder(4);
        builder.append("abcd"_a);
        ARef<Storage> const store = builder.take_storage();
        store->sealed = 0;
        QVERIFY(AString(store).empty());
        QVERIFY(AString(store, 1, 2).empty());
        store->sealed = 1;
        QCOMPARE(AString(store), "abcd"_a);
    }

    void a_reference_is_not_taken_once_the_count_is_zero()
    {
        Storage store;
        store.count = 0;
        QVERIFY(!store.take_reference());
        QCOMPARE(store.count.load(), 0u);
        store.count = 1;
        QVERIFY(store.take_references(5));
        QCOMPARE(store.count.load(), 6u);
    }

    void slices_of_a_store_are_clamped_data()
    {
        QTest::addColumn<unsigned long long>("start");
        QTest::addColumn<unsigned long long>("length");
        QTest::addColumn<QByteArray>("text");
        auto const all = AString::all;
        QTest::newRow("whole") << 0ull << all << QByteArray("abcdef");
        QTest::newRow("part") << 2ull << 3ull << QByteArray("cde");
        QTest::newRow("to the end") << 2ull << all << QByteArray("cdef");
        QTest::newRow("exactly to the end") << 2ull << 4ull << QByteArray("cdef");
        QTest::newRow("over the end") << 2ull << 5ull << QByteArray("cdef");
        QTest::newRow("sum overflows") << 2ull << all - 1 << QByteArray("cdef");
        QTest::newRow("at the end") << 6ull << all << QByteArray();
        QTest::newRow("behind the end") << 99ull << 1ull << QByteArray();
        QTest::newRow("none") << 2ull << 0ull << QByteArray();
    }
    void slices_of_a_store_are_clamped()
    {
        QFETCH(unsigned long long, start);
        QFETCH(unsigned long long, length);
        QFETCH(QByteArray, text);
        AString const whole = "abcdef"_a;
        AString const part(whole.store(), start, length);
        QCOMPARE(part.to_string(), text.toStdString());
        QCOMPARE(part.empty(), text.isEmpty());
        QVERIFY(AString(ARef<Storage>(), start, length).empty());
    }

    void first_chunk_is_sized_to_its_text()
    {
        AString const s = "short"_a;
        QCOMPARE(s.store()->first->room, 5);
        QCOMPARE(s.store()->first, s.store()->last);
        QCOMPARE(s.store()->size, 5u);
    }

    void foreseen_text_is_laid_out_evenly()
    {
        AString const s = even_string(counted_text(1000));
        QVERIFY(s.store()->even);
        QCOMPARE(s.store()->first->used, 256u);
        QCOMPARE(s.store()->last->used, 1000u - 3 * 256);
        QVERIFY(!chained_string(counted_text(1000)).store()->even);
    }

    void positions_are_found_in_every_layout_data()
    {
        QTest::addColumn<unsigned long long>("first");
        QTest::newRow("one block") << 2000ull;
        QTest::newRow("grown from 1") << 1ull;
        QTest::newRow("grown from 256") << 256ull;
        QTest::newRow("grown from 300") << 300ull;
        QTest::newRow("not foreseen") << 0ull;
        QTest::newRow("too much foreseen") << 100000ull;
    }
    void positions_are_found_in_every_layout()
    {
        QFETCH(unsigned long long, first);
        std::u32string const text = counted_text(2000);
        AString const s = chained_string(text, first);
        QCOMPARE(s.length(), text.size());
        for (std::size_t i = 0; i < text.size(); ++i)
            QCOMPARE(s.getchar(i).ord(), text[i]);
        QCOMPARE(u32(s), text);
        QCOMPARE(u32(s.mid(255, 600)), text.substr(255, 600));
    }

    void builder_appends_every_kind_across_chunks()
    {
        AStringBuilder builder;
        QCOMPARE(builder.size(), 0u);
        std::string const latin(300, '\xe4');
        std::string const utf8 = "\xe2\x82\xac";
        std::u32string expected;
        for (int i = 0; i < 4; ++i) {
            builder.append("abc"_a);
            builder.append(U'\U0001f3ac');
            builder.append(AChar(U'z'));
            builder.append_latin1(latin.data(), latin.size());
            QCOMPARE(builder.append_utf8(utf8.data(), utf8.size()), 3u);
            builder.append_repeated(AChar(U'-'), 260);
            expected += U"abc\U0001f3acz" + std::u32string(300, U'\xe4') + U"\u20ac"
                + std::u32string(260, U'-');
            QCOMPARE(builder.size(), expected.size());
        }
        QCOMPARE(u32(builder.take()), expected);
        QVERIFY(builder.take().empty());
    }

    void builder_gives_room_to_write_directly()
    {
        AStringBuilder builder(3);
        unsigned long long room = 0;
        AChar *to = builder.room(&room);
        QCOMPARE(room, 3u);
        to[0] = AChar(U'a');
        to[1] = AChar(U'b');
        builder.commit(2);
        QCOMPARE(builder.size(), 2u);
        to = builder.room(&room);
        QCOMPARE(room, 1u);
        to[0] = AChar(U'c');
        builder.commit(1);
        to = builder.room(&room);
        QCOMPARE(room, 256u);
        to[0] = AChar(U'd');
        builder.commit(1);
        QCOMPARE(builder.take(), "abcd"_a);
    }

    void builder_begins_anew_with_room_left()
    {
        AStringBuilder builder(10);
        builder.append("first"_a);
        AString const first = builder.take();
        QCOMPARE(builder.size(), 0u);
        builder.append(U's');
        builder.append("econd"_a);
        AString const second = builder.take();
        QCOMPARE(first, "first"_a);
        QCOMPARE(second, "second"_a);
        QVERIFY(first.store().get() != second.store().get());
    }

    void builder_makes_one_store_to_cut_from()
    {
        AStringBuilder builder;
        builder.reserve(9);
        builder.append("nameValue"_a);
        ARef<Storage> const store = builder.take_storage();
        AString const name(store, 0, 4), value(store, 4, 5);
        QCOMPARE(name, "name"_a);
        QCOMPARE(value, "Value"_a);
        QCOMPARE(store->count.load(), 3u);
        QVERIFY(!AStringBuilder().take_storage());
    }

    void references_can_be_taken_many_at_once()
    {
        AString const s = "ab"_a;
        QVERIFY(s.store()->take_references(2));
        {
            AString const a(ARef<Storage>::adopt(s.store().get()), 0, 1);
            AString const b(ARef<Storage>::adopt(s.store().get()), 1, 1);
            QCOMPARE(a + b, s);
            QCOMPARE(count_of(s), 3u);
        }
        QCOMPARE(count_of(s), 1u);
    }

    void immortal_strings_are_not_counted()
    {
        AString const s = AString::immortal("name"_a);
        std::uint32_t const count = count_of(s);
        {
            AString const copy = s, slice = s.left(2);
            QCOMPARE(count_of(s), count);
            QCOMPARE(slice, "na"_a);
        }
        QCOMPARE(count_of(s), count);
        QCOMPARE(s, "name"_a);
        QVERIFY(AString::immortal(AString()).empty());
    }

    void immortal_strings_serve_two_threads()
    {
        AString const s = AString::immortal("name"_a);
        in_two_threads([&s](int) {
            for (int i = 0; i < 1000; ++i) {
                AString copy = s;
                AString const slice = copy.mid(1);
                copy = slice;
                QCOMPARE(copy.length(), 3u);
            }
        });
    }

    void copies_in_two_threads_keep_the_count()
    {
        AString const s = even_string(counted_text(400));
        in_two_threads([&s](int) {
            std::vector<AString> copies;
            for (int i = 0; i < 2000; ++i) {
                copies.push_back(s.mid(static_cast<unsigned>(i) % 400));
                if (copies.size() > 50)
                    copies.clear();
            }
        });
        QCOMPARE(count_of(s), 1u);
    }

    void the_last_copy_may_go_in_any_thread()
    {
        for (int i = 0; i < 200; ++i) {
            AString mine = even_string(counted_text(300));
            AString theirs = mine;
            in_two_threads([&](int which) { (which ? mine : theirs) = AString(); });
        }
    }

    void racing_readers_agree_on_the_hash()
    {
        for (int i = 0; i < 200; ++i) {
            AString const s = "a key of the store"_a;
            std::uint64_t seen[2] = {};
            in_two_threads([&](int which) { seen[which] = s.hash(); });
            QCOMPARE(seen[0], seen[1]);
        }
    }
};

QTEST_GUILESS_MAIN(TestAStringStore)
#include "tst_astring_store.moc"
