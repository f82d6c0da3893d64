// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <type_traits>

/// How a callable hands an argument of type `A` to its target: scalars and references as they
/// stand, objects as `A const &`, so that a string or record is not copied on the way.
template <typename A>
using AFunctionArgument
    = std::conditional_t<std::is_scalar_v<A> || std::is_reference_v<A>, A, A const &>;

/// A callable of fixed size: what to call, and up to two words that are handed to it in front of
/// the call's own arguments. It is copied bitwise, uses no heap and never owns what its pointers
/// point at.
///
/// | kind | target                               | made from                                |
/// |------|--------------------------------------|------------------------------------------|
/// | 0    | none                                 | nothing, or a null target                |
/// | 1    | `R f(Args...)`                       | function                                 |
/// | 2    | `R f(unsigned int, Args...)`         | function, value                          |
/// | 3    | `R f(void *, Args...)`               | function, pointer; or `bind` of a method |
/// | 4    | `R f(void *, void *, Args...)`       | function, two pointers                   |
///
/// A target takes each argument as `AFunctionArgument` says: `AFunction2<AString, int>` calls
/// `void f(AString const &, int)`. Lambdas without captures are targets too. Nothing else
/// converts to a callable, so that a number, a truth value or an enumeration never becomes one.
/// Thread: a value; one object belongs to one thread at a time, copies to any. Its target runs on
/// the thread that calls it.
template <typename R, typename... Args> class AFunctionRecord
{
public:
    using Function = R (*)(AFunctionArgument<Args>...);
    using ValueFunction = R (*)(unsigned int, AFunctionArgument<Args>...);
    using PointerFunction = R (*)(void *, AFunctionArgument<Args>...);
    using TwoPointerFunction = R (*)(void *, void *, AFunctionArgument<Args>...);

    /// Whether an `F` alone makes a callable of kind 1.
    template <typename F>
    using IsTarget = std::disjunction<std::is_same<F, Function>, std::is_same<F, std::nullptr_t>,
        std::conjunction<std::is_class<F>, std::is_convertible<F, Function>>>;

    AFunctionRecord() = default;

    /// Only for targets: an overload for `Function` would also take the literal 0.
    template <typename F, typename = std::enable_if_t<IsTarget<F>::value>> AFunctionRecord(F target)
    {
        set(1, static_cast<Function>(target));
    }
    AFunctionRecord(ValueFunction target, unsigned int argument)
    {
        if (set(2, target))
            value = argument;
    }
    AFunctionRecord(PointerFunction target, void *argument)
    {
        if (set(3, target))
            first = argument;
    }
    AFunctionRecord(TwoPointerFunction target, void *argument1, void *argument2)
    {
        if (set(4, target)) {
            first = argument1;
            second = argument2;
        }
    }

    /// Kind 3 on a method, or on a function whose first parameter is the object's pointer:
    /// `AFunction1<AString>::bind<&Receiver::got_name>(this)`. A null object gives kind 0.
    template <auto Target, typename Object> static AFunctionRecord bind(Object *object)
    {
        if (!object)
            return {};
        return {[](void *p, AFunctionArgument<Args>... args) -> R {
                    return static_cast<R>(std::invoke(Target, static_cast<Object *>(p), args...));
                },
            word(object)};
    }

    /// Kind 4 in the same way: the second pointer is the target's first argument.
    template <auto Target, typename Object, typename Argument>
    static AFunctionRecord bind(Object *object, Argument *argument)
    {
        if (!object)
            return {};
        return {[](void *p, void *q, AFunctionArgument<Args>... args) -> R {
                    return static_cast<R>(std::invoke(
                        Target, static_cast<Object *>(p), static_cast<Argument *>(q), args...));
                },
            word(object), word(argument)};
    }

    bool is_null() const { return kind == 0; }

    /// Calls the target. Kind 0 does nothing and returns a default `R`.
    R run(AFunctionArgument<Args>... args) const
    {
        switch (kind) {
        case 1:
            return reinterpret_cast<Function>(target_word)(args...);
        case 2:
            return reinterpret_cast<ValueFunction>(target_word)(value, args...);
        case 3:
            return reinterpret_cast<PointerFunction>(target_word)(first, args...);
        case 4:
            return reinterpret_cast<TwoPointerFunction>(target_word)(first, second, args...);
        default:
            return R();
        }
    }
    R operator()(AFunctionArgument<Args>... args) const { return run(args...); }

    /// Words that a kind does not use are always 0, so all of them can be compared.
    friend bool operator==(AFunctionRecord const &a, AFunctionRecord const &b)
    {
        return a.kind == b.kind && a.target_word == b.target_word && a.value == b.value
            && a.first == b.first && a.second == b.second;
    }
    /// By kind, then by the stored words in order.
    friend bool operator<(AFunctionRecord const &a, AFunctionRecord const &b)
    {
        if (a.kind != b.kind)
            return a.kind < b.kind;
        if (a.target_word != b.target_word)
            return std::less<void (*)()>()(a.target_word, b.target_word);
        if (a.value != b.value)
            return a.value < b.value;
        if (a.first != b.first)
            return std::less<void *>()(a.first, b.first);
        return std::less<void *>()(a.second, b.second);
    }

private:
    template <typename F> bool set(std::uint32_t as_kind, F target)
    {
        if (!target)
            return false;
        kind = as_kind;
        target_word = reinterpret_cast<void (*)()>(target);
        return true;
    }

    template <typename T> static void *word(T *pointer)
    {
        return const_cast<void *>(static_cast<void const *>(pointer));
    }

    std::uint32_t kind = 0;
    unsigned int value = 0;
    void (*target_word)() = nullptr;
    void *first = nullptr;
    void *second = nullptr;
};

/// Callables without a result, by the number of arguments of the call.
using AFunction = AFunctionRecord<void>;
template <typename A> using AFunction1 = AFunctionRecord<void, A>;
template <typename A, typename B> using AFunction2 = AFunctionRecord<void, A, B>;
template <typename A, typename B, typename C> using AFunction3 = AFunctionRecord<void, A, B, C>;
template <typename A, typename B, typename C, typename D>
using AFunction4 = AFunctionRecord<void, A, B, C, D>;
/// A callable of one argument with a result.
template <typename R, typename A> using AFunction1R = AFunctionRecord<R, A>;
