// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_list.h"
#include "tests/support/assert_log.h"
#include "tests/support/astring_make.h"
#include "tests/support/astring_print.h"

#include <QTest>

class TestAStringList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void made_of_one_string_or_several()
    {
        QCOMPARE(AStringList("a"_a).size(), 1u);
        QCOMPARE(AStringList(AString()).size(), 1u);
        QCOMPARE((AStringList{"a"_a, "b"_a}).size(), 2u);
        QVERIFY(AStringList().empty() && AStringList{}.empty());
    }

    void pushes_strings_and_lists_at_both_ends()
    {
        AStringList list;
        list.push_back("c"_a);
        list.push_front("b"_a);
        list.push_back(AStringList{"d"_a, "e"_a});
        list.push_front(AStringList{"x"_a, "a"_a});
        QCOMPARE(list.join(AString()), "xabcde"_a);
        list.push_back(list);
        list.push_front(list);
        QCOMPARE(list.size(), 24u);
    }

    void plus_joins_lists()
    {
        AStringList const a{"a"_a};
        QCOMPARE((a + "b"_a + AStringList{"c"_a, "d"_a}).join("."_a), "a.b.c.d"_a);
        QCOMPARE(a.size(), 1u);
        AStringList b;
        b += a;
        b += "b"_a;
        QCOMPARE(b.join("."_a), "a.b"_a);
    }

    void pops_one_string()
    {
        AStringList list{"a"_a, "b"_a, "c"_a};
        QCOMPARE(list.pop_back(), "c"_a);
        QCOMPARE(list.pop_front(), "a"_a);
        QCOMPARE(list.join(AString()), "b"_a);
        AssertLog log;
        list.clear();
        QVERIFY(list.pop_back().empty() && list.pop_front().empty());
        QCOMPARE(log.take().size(), 2);
    }

    void pops_several_in_their_order()
    {
        AStringList list{"a"_a, "b"_a, "c"_a, "d"_a, "e"_a};
        QCOMPARE(list.pop_back(2u), (AStringList{"d"_a, "e"_a}));
        QCOMPARE(list.pop_front(2u), (AStringList{"a"_a, "b"_a}));
        QCOMPARE(list.pop_front(0u), AStringList());
        QCOMPARE(list.pop_back(9u), AStringList("c"_a));
        QCOMPARE(list.pop_front(9u), AStringList());
    }

    void filters_by_a_contained_text()
    {
        AStringList const list{"clip one"_a, "two"_a, "clip three"_a};
        QCOMPARE(list.filter("clip"_a), (AStringList{"clip one"_a, "clip three"_a}));
        QCOMPARE(list.filter("four"_a), AStringList());
        QCOMPARE(list.filter(AString()), list);
    }

    void sends_item_after_item()
    {
        struct Seen
        {
            std::string bytes;
            std::u32string codes;
            void utf8(char const *p, unsigned long long n) { bytes.append(p, n); }
            void achars(AChar const *p, unsigned long long n)
            {
                for (; n > 0; --n)
                    codes += (p++)->ord();
            }
        } seen;
        AStringList const list{"a"_a, AString(), AString(AChar(U'\u20ac'))};
        list.send_utf8(AFunction2<char const *, unsigned long long>::bind<&Seen::utf8>(&seen));
        list.send_achars(AFunction2<AChar const *, unsigned long long>::bind<&Seen::achars>(&seen));
        QCOMPARE(seen.bytes, std::string("a\xe2\x82\xac"));
        QCOMPARE(seen.codes, std::u32string(U"a\u20ac"));
    }
};

QTEST_GUILESS_MAIN(TestAStringList)
#include "tst_astring_list.moc"
