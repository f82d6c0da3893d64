// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <cstddef>
#include <functional>
#include <utility>

/// A counting pointer to an `AReferenced` or an `AReusableRefObject`.
/// Thread: one `AReference` belongs to one thread at a time; copies may live in any thread.
template <typename T> class AReference
{
public:
    AReference() noexcept = default;
    AReference(std::nullptr_t) noexcept { }
    /// Takes a reference. An object that refuses it, as its count is full, is an assertion and
    /// gives null.
    AReference(T *object)
        : t(object)
    {
        if (t && !A_ASSERT_TEXT(t->add_reference(), "t->increase_reference()"))
            t = nullptr;
    }
    AReference(AReference const &other)
        : AReference(other.t)
    {
    }
    AReference(AReference &&other) noexcept
        : t(std::exchange(other.t, nullptr))
    {
    }
    ~AReference()
    {
        if (t)
            t->release_reference();
    }
    /// The old reference is released last, so that the new object may depend on the old one.
    AReference &operator=(AReference const &other)
    {
        AReference(other).swap(*this);
        return *this;
    }
    AReference &operator=(AReference &&other) noexcept
    {
        AReference(std::move(other)).swap(*this);
        return *this;
    }

    /// A reference to \a ref as the `T` that it is. Any other object is an assertion and gives
    /// null.
    template <typename Base> static AReference from_base(Base *ref)
    {
        T *t = dynamic_cast<T *>(ref);
        return A_ASSERT(t == ref) ? AReference(t) : AReference();
    }

    void swap(AReference &other) noexcept { std::swap(t, other.t); }
    void clear() { AReference().swap(*this); }

    T *get() const noexcept { return t; }
    T *operator->() const noexcept { return t; }
    T &operator*() const noexcept { return *t; }
    explicit operator bool() const noexcept { return t != nullptr; }
    bool operator==(AReference const &other) const noexcept { return t == other.t; }
    bool operator==(T const *object) const noexcept { return t == object; }
    bool operator<(AReference const &other) const noexcept { return std::less<T *>()(t, other.t); }

private:
    T *t = nullptr;
};
