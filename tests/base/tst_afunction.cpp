// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/afunction.h"

#include <QTest>
#include <string>
#include <vector>

namespace {

std::vector<std::string> calls;

void note()
{
    calls.push_back("note");
}
void note_value(unsigned int value)
{
    calls.push_back("value " + std::to_string(value));
}
void note_pointer(void *p)
{
    calls.push_back("pointer " + *static_cast<std::string *>(p));
}
void note_pointers(void *p, void *q)
{
    calls.push_back(*static_cast<std::string *>(p) + "+" + *static_cast<std::string *>(q));
}

void note_text(std::string const &text, int n)
{
    calls.push_back(text + std::to_string(n));
}
void note_value_text(unsigned int value, std::string const &text, int n)
{
    calls.push_back(std::to_string(value) + text + std::to_string(n));
}

struct Receiver
{
    void got(std::string const &text, int n) { seen = text + std::to_string(n); }
    void poke() { seen = "poked"; }
    int twice(int n) const { return 2 * n + bias; }
    void with(std::string *extra) { seen = *extra; }
    std::string seen;
    int bias = 0;
};

void free_target(Receiver *receiver)
{
    receiver->seen = "free";
}

enum Plain
{
    Zero,
    One
};
enum class Scoped
{
    Zero
};

template <typename F> constexpr bool from_literal_zero = requires
{
    F(0);
};

} // namespace

class TestAFunction : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { calls.clear(); }

    void no_target_does_nothing()
    {
        AFunction().run();
        AFunction()();
        AFunction2<std::string, int>()("x", 1);
        QVERIFY(AFunction().is_null());
        QCOMPARE((AFunction1R<int, int>()(5)), 0);
        QVERIFY(calls.empty());
    }

    void null_target_gives_kind_zero()
    {
        std::string text = "x";
        AFunction::Function none = nullptr;
        QVERIFY(AFunction(none) == AFunction());
        QVERIFY(AFunction(nullptr) == AFunction());
        QVERIFY(AFunction(AFunction::ValueFunction(nullptr), 7) == AFunction());
        QVERIFY(AFunction(AFunction::PointerFunction(nullptr), &text) == AFunction());
        QVERIFY(AFunction(AFunction::TwoPointerFunction(nullptr), &text, &text) == AFunction());
        QVERIFY(AFunction::bind<&Receiver::poke>(static_cast<Receiver *>(nullptr)).is_null());
    }

    void each_kind_calls_its_target()
    {
        std::string a = "a", b = "b";
        AFunction(&note).run();
        AFunction(&note_value, 7)();
        AFunction(&note_pointer, &a)();
        AFunction(&note_pointers, &a, &b).run();
        AFunction([] { calls.push_back("lambda"); })();
        QCOMPARE(
            calls, (std::vector<std::string>{"note", "value 7", "pointer a", "a+b", "lambda"}));
    }

    void own_arguments_follow_the_stored_words()
    {
        AFunction2<std::string, int>(&note_text).run("x", 1);
        AFunction2<std::string, int>(&note_value_text, 9)("x", 1);
        QCOMPARE(calls, (std::vector<std::string>{"x1", "9x1"}));
    }

    void reference_arguments_reach_the_caller()
    {
        AFunction1<int &> increment([](int &n) { ++n; });
        int n = 1;
        increment(n);
        QCOMPARE(n, 2);
    }

    void three_and_four_arguments_are_handed_on()
    {
        AFunction3<int, int, int>([](int a, int b, int c) {
            calls.push_back(std::to_string(a * 100 + b * 10 + c));
        })(1, 2, 3);
        AFunction4<int, int, int, int>([](int a, int b, int c, int d) {
            calls.push_back(std::to_string(a * 1000 + b * 100 + c * 10 + d));
        })(1, 2, 3, 4);
        QCOMPARE(calls, (std::vector<std::string>{"123", "1234"}));
    }

    void bind_calls_a_method()
    {
        Receiver receiver;
        AFunction2<std::string, int>::bind<&Receiver::got> (&receiver)("n", 3);
        QCOMPARE(receiver.seen, std::string("n3"));
        AFunction::bind<&free_target> (&receiver)();
        QCOMPARE(receiver.seen, std::string("free"));
        std::string extra = "extra";
        AFunction::bind<&Receiver::with>(&receiver, &extra)();
        QCOMPARE(receiver.seen, std::string("extra"));
        Receiver const biased{.seen = {}, .bias = 1};
        QCOMPARE((AFunction1R<int, int>::bind<&Receiver::twice>(&biased)(4)), 9);
    }

    void equality_is_by_kind_and_words()
    {
        std::string a, b;
        QVERIFY(AFunction(&note) == AFunction(&note));
        QVERIFY(AFunction(&note) != AFunction());
        QVERIFY(AFunction(&note_value, 1) != AFunction(&note_value, 2));
        QVERIFY(AFunction(&note_pointer, &a) == AFunction(&note_pointer, &a));
        QVERIFY(AFunction(&note_pointer, &a) != AFunction(&note_pointer, &b));
        QVERIFY(AFunction(&note_pointers, &a, &b) != AFunction(&note_pointers, &b, &a));
        Receiver r;
        QVERIFY(AFunction::bind<&Receiver::poke>(&r) == AFunction::bind<&Receiver::poke>(&r));
    }

    void order_is_by_kind_then_words()
    {
        char text[2] = {};
        AFunction const kinds[] = {AFunction(), AFunction(&note), AFunction(&note_value, 0),
            AFunction(&note_pointer, text), AFunction(&note_pointers, text, text)};
        for (std::size_t i = 0; i < std::size(kinds); ++i) {
            for (std::size_t j = 0; j < std::size(kinds); ++j)
                QCOMPARE(kinds[i] < kinds[j], i < j);
        }
        QVERIFY(AFunction(&note_value, 1) < AFunction(&note_value, 2));
        QVERIFY(!(AFunction(&note_value, 2) < AFunction(&note_value, 1)));
        QVERIFY(AFunction(&note_pointer, text) < AFunction(&note_pointer, text + 1));
        QVERIFY(AFunction(&note_pointers, text, text) < AFunction(&note_pointers, text, text + 1));
    }

    void order_is_by_the_words_as_they_are_stored()
    {
        // Two targets, the lesser one first; which that is only the order itself can tell.
        AFunction::ValueFunction low = &note_value;
        AFunction::ValueFunction high = [](unsigned int) {};
        if (AFunction(high, 0) < AFunction(low, 0))
            std::swap(low, high);
        QVERIFY(AFunction(low, 9) < AFunction(high, 1));
        QVERIFY(!(AFunction(high, 1) < AFunction(low, 9)));
        char text[2] = {};
        QVERIFY(
            AFunction(&note_pointers, text, text + 1) < AFunction(&note_pointers, text + 1, text));
        QVERIFY(!(
            AFunction(&note_pointers, text + 1, text) < AFunction(&note_pointers, text, text + 1)));
    }

    void is_a_small_bitwise_record()
    {
        static_assert(std::is_trivially_copyable_v<AFunction>);
        static_assert(std::is_trivially_destructible_v<AFunction4<int, int, int, int>>);
        static_assert(std::is_standard_layout_v<AFunction>);
        static_assert(sizeof(AFunction) == 2 * sizeof(unsigned) + 3 * sizeof(void *));
        static_assert(sizeof(AFunction2<std::string, int>) == sizeof(AFunction));
    }

    void nothing_but_a_callable_converts()
    {
        using F = AFunction1<int>;
        static_assert(!std::is_convertible_v<bool, F> && !std::is_constructible_v<F, bool>);
        static_assert(!std::is_convertible_v<int, F> && !std::is_constructible_v<F, int>);
        static_assert(!std::is_convertible_v<Plain, F> && !std::is_convertible_v<Scoped, F>);
        static_assert(!std::is_convertible_v<void *, F> && !std::is_convertible_v<AFunction, F>);
        static_assert(std::is_convertible_v<void (*)(int), F>);
        // A literal 0 is a null pointer constant, which no type trait shows.
        static_assert(!from_literal_zero<F> && !from_literal_zero<AFunction>);
    }
};

QTEST_GUILESS_MAIN(TestAFunction)
#include "tst_afunction.moc"
