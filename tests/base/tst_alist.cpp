// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/alist.h"
#include "tests/support/assert_log.h"
#include "tests/support/two_threads.h"

#include <QTest>
#include <algorithm>
#include <string>
#include <vector>

namespace {

template <typename List> std::vector<int> forward(List const &list)
{
    return std::vector<int>(list.begin(), list.end());
}

template <typename List> std::vector<int> backward(List const &list)
{
    return std::vector<int>(list.rbegin(), list.rend());
}

using Ints = std::vector<int>;

/// Counts how many of its kind live.
struct Counted
{
    Counted() { ++alive; }
    Counted(Counted const &) { ++alive; }
    ~Counted() { --alive; }
    Counted &operator=(Counted const &) = default;
    static inline int alive = 0;
};

} // namespace

class TestAList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // --- nonstd_list ---
    void links_hold_in_both_directions()
    {
        nonstd_list<int> list;
        QVERIFY(list.empty());
        list.push_back(2);
        list.push_front(1);
        list.push_back(3);
        QCOMPARE(forward(list), (Ints{1, 2, 3}));
        QCOMPARE(backward(list), (Ints{3, 2, 1}));
        QCOMPARE(list.size(), 3u);
        QCOMPARE(list.front(), 1);
        QCOMPARE(list.back(), 3);
    }

    void inserts_and_erases_at_any_place()
    {
        nonstd_list<int> list{1, 3};
        auto place = list.insert(std::next(list.begin()), 2);
        QCOMPARE(*place, 2);
        list.insert(list.begin(), 0);
        list.insert(list.end(), 4);
        QCOMPARE(forward(list), (Ints{0, 1, 2, 3, 4}));
        QCOMPARE(*list.erase(place), 3);
        QVERIFY(list.erase(std::prev(list.end())) == list.end());
        list.erase(list.begin());
        QCOMPARE(forward(list), (Ints{1, 3}));
        QCOMPARE(backward(list), (Ints{3, 1}));
        list.pop_front();
        list.pop_back();
        QVERIFY(list.empty() && list.begin() == list.end());
    }

    void copies_of_a_plain_list_are_their_own()
    {
        nonstd_list<int> a{1, 2};
        nonstd_list<int> b = a;
        b.push_back(3);
        QCOMPARE(forward(a), (Ints{1, 2}));
        a = b;
        nonstd_list<int> &same = a;
        a = same;
        QCOMPARE(forward(a), (Ints{1, 2, 3}));
        nonstd_list<int> const c = std::move(a);
        QCOMPARE(forward(c), (Ints{1, 2, 3}));
        b.append(b);
        QCOMPARE(forward(b), (Ints{1, 2, 3, 1, 2, 3}));
    }

    void reverses_in_place()
    {
        nonstd_list<int> list{1, 2, 3};
        list.reverse();
        QCOMPARE(forward(list), (Ints{3, 2, 1}));
        QCOMPARE(backward(list), (Ints{1, 2, 3}));
        list.push_back(0);
        QCOMPARE(list.back(), 0);
    }

    void every_value_is_destroyed_once()
    {
        {
            nonstd_list<Counted> a;
            for (int i = 0; i < 10; ++i)
                a.push_back(Counted());
            nonstd_list<Counted> b = a;
            b.pop_back();
            b.erase(b.begin());
            QCOMPARE(Counted::alive, 18);
        }
        QCOMPARE(Counted::alive, 0);
    }

    void a_very_long_list_goes_without_recursion()
    {
        nonstd_list<int> list;
        for (int i = 0; i < 1000000; ++i)
            list.push_back(i);
        list.clear();
        QVERIFY(list.empty());
    }

    // --- AList ---
    void null_is_empty()
    {
        AList<int> const list;
        QVERIFY(list.empty());
        QCOMPARE(list.size(), 0u);
        QVERIFY(list.begin() == list.end() && list.const_begin() == list.const_end());
        QVERIFY(AList<int>{} == list);
    }

    void copies_share_until_one_is_changed()
    {
        AList<int> a{1, 2, 3};
        AList<int> b = a;
        QVERIFY(a.same_list(b));
        QCOMPARE(b.const_at(0), 1);
        QCOMPARE(*b.const_begin(), 1);
        QVERIFY(a.same_list(b));
        b.at(0) = 7;
        QVERIFY(!a.same_list(b));
        QCOMPARE(forward(a), (Ints{1, 2, 3}));
        QCOMPARE(forward(b), (Ints{7, 2, 3}));
    }

    void every_change_leaves_the_copy_alone_data()
    {
        using Change = void (*)(AList<int> &);
        QTest::addColumn<Change>("change");
        auto const row = [](char const *name, Change change) { QTest::newRow(name) << change; };
        row("begin", [](AList<int> &l) { *l.begin() = 9; });
        row("end", [](AList<int> &l) { *--l.end() = 9; });
        row("rbegin", [](AList<int> &l) { *l.rbegin() = 9; });
        row("rend", [](AList<int> &l) { *--l.rend() = 9; });
        row("front", [](AList<int> &l) { l.front() = 9; });
        row("back", [](AList<int> &l) { l.back() = 9; });
        row("push", [](AList<int> &l) { l.push(9); });
        row("push_front", [](AList<int> &l) { l.push_front(9); });
        row("unshift", [](AList<int> &l) { l.unshift(9); });
        row("pop", [](AList<int> &l) { l.pop(); });
        row("shift", [](AList<int> &l) { l.shift(); });
        row("pop_back", [](AList<int> &l) { l.pop_back(); });
        row("pop_front", [](AList<int> &l) { l.pop_front(); });
        row("reverse", [](AList<int> &l) { l.reverse(); });
        row("append", [](AList<int> &l) { l.append(AList<int>{4}); });
        row("append itself", [](AList<int> &l) { l.append(l); });
        row("remove_item", [](AList<int> &l) { l.remove_item(2); });
        row("clear", [](AList<int> &l) { l.clear(); });
    }
    void every_change_leaves_the_copy_alone()
    {
        using Change = void (*)(AList<int> &);
        QFETCH(Change, change);
        AList<int> const before{1, 2, 3};
        AList<int> list = before;
        change(list);
        QVERIFY(forward(list) != forward(before));
        QCOMPARE(forward(before), (Ints{1, 2, 3}));
    }

    void at_walks_from_the_nearer_end()
    {
        AList<int> list;
        for (int i = 0; i < 100; ++i)
            list.push(i);
        for (std::uint32_t i = 0; i < 100; ++i) {
            QCOMPARE(list.at(i), static_cast<int>(i));
            QCOMPARE(list.const_at(i), static_cast<int>(i));
        }
        list.at(99) = -1;
        QCOMPARE(list.back(), -1);
    }

    void access_outside_is_an_assertion_and_harmless()
    {
        AssertLog log;
        AList<int> list{5};
        AList<int> const &reading = list;
        list.at(1) = 7;
        QCOMPARE(list.at(1), 0);
        QCOMPARE(reading.const_at(1), 0);
        list.clear();
        list.front() = 7;
        QCOMPARE(list.back(), 0);
        QCOMPARE(reading.front() + reading.back(), 0);
        QCOMPARE(list.pop() + list.shift(), 0);
        list.pop_back();
        list.pop_front();
        QVERIFY(list.empty());
        QCOMPARE(log.take().size(), 11);
    }

    void works_as_a_stack_and_a_queue()
    {
        AList<int> list;
        list.push(2);
        list.push(3);
        list.unshift(1);
        QCOMPARE(list.pop(), 3);
        QCOMPARE(list.shift(), 1);
        QCOMPARE(list.front(), 2);
        QCOMPARE(list.size(), 1u);
    }

    void a_value_of_the_list_can_be_pushed()
    {
        AList<std::string> list{"a"};
        AList<std::string> const copy = list;
        list.push(list.const_at(0));
        list.unshift(list.const_at(1));
        QCOMPARE(list.size(), 3u);
        QCOMPARE(list.back(), std::string("a"));
        QCOMPARE(list.front(), std::string("a"));
        QCOMPARE(copy.size(), 1u);
    }

    void append_shares_with_an_empty_list()
    {
        AList<int> const source{1, 2};
        AList<int> list;
        list.append(source);
        QVERIFY(list.same_list(source));
        list.append(AList<int>());
        QVERIFY(list.same_list(source));
        list.append(source);
        QCOMPARE(forward(list), (Ints{1, 2, 1, 2}));
    }

    void finds_and_removes()
    {
        AList<int> list{1, 2, 3, 2, 5};
        QVERIFY(list.contains_item(3) && !list.contains_item(4));
        auto const odd = [](int n) { return n % 2 != 0; };
        QCOMPARE(forward(list.find_matches(odd)), (Ints{1, 3, 5}));
        QCOMPARE(list.remove_item(2), 2u);
        QCOMPARE(list.remove_item(2), 0u);
        QCOMPARE(list.remove_item(list.const_at(0)), 1u);
        QCOMPARE(forward(list), (Ints{3, 5}));
        QCOMPARE(list.remove_matches(odd), 2u);
        QVERIFY(list.empty());
    }

    void empty_lists_are_one_however_they_became_empty()
    {
        AList<int> emptied{1};
        emptied.pop();
        AList<int> asked;
        QVERIFY(asked.begin() == asked.end());
        QVERIFY(emptied.same_list(asked) && emptied.same_list(AList<int>()));
        QVERIFY(emptied == AList<int>());
        QVERIFY(!emptied.same_list(AList<int>{1}) && !AList<int>{1}.same_list(AList<int>{1}));
    }

    void removing_nothing_keeps_the_sharing()
    {
        AList<int> const source{1, 2};
        AList<int> list = source;
        QCOMPARE(list.remove_item(3), 0u);
        QVERIFY(list.same_list(source));
    }

    void iterators_serve_algorithms()
    {
        AList<int> list{3, 1, 2};
        QCOMPARE(*std::max_element(list.const_begin(), list.const_end()), 3);
        std::reverse(list.begin(), list.end());
        QCOMPARE(forward(list), (Ints{2, 1, 3}));
        QCOMPARE(backward(list), (Ints{3, 1, 2}));
        AList<int>::iterator it = list.begin();
        QCOMPARE(*it++, 2);
        QCOMPARE(*it--, 1);
        AList<int>::const_iterator reading = it;
        QCOMPARE(*reading, 2);
    }

    void equality_compares_values()
    {
        QVERIFY((AList<int>{1, 2} == AList<int>{1, 2}));
        QVERIFY((AList<int>{1, 2} != AList<int>{1, 3}));
        QVERIFY((AList<int>{1, 2} != AList<int>{1}));
    }

    void copies_in_two_threads_are_independent()
    {
        for (int round = 0; round < 100; ++round) {
            AList<int> mine{1, 2, 3};
            AList<int> theirs = mine;
            in_two_threads([&](int which) {
                AList<int> &list = which ? mine : theirs;
                list.push(which);
                list.at(0) = which;
            });
            QCOMPARE(forward(mine), (Ints{1, 2, 3, 1}));
            QCOMPARE(forward(theirs), (Ints{0, 2, 3, 0}));
        }
    }
};

QTEST_GUILESS_MAIN(TestAList)
#include "tst_alist.moc"
