// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <utility>

/// A value that may be absent: a presence flag and a slot, which stays default while absent.
/// Reading an absent value is allowed and gives the default.
/// Thread: a value; one object belongs to one thread at a time, copies to any.
template <typename T> class AOption
{
public:
    AOption() = default;
    AOption(T const &present)
        : is_present(true)
        , slot(present)
    {
    }
    AOption(T &&present)
        : is_present(true)
        , slot(std::move(present))
    {
    }

    bool has_value() const { return is_present; }
    explicit operator bool() const { return is_present; }

    T const &value() const { return slot; }
    /// The value if present, else \a fallback.
    T value_or(T const &fallback) const { return is_present ? slot : fallback; }
    T const &operator*() const { return slot; }
    T const *operator->() const { return &slot; }

    /// Makes it absent, the slot default again.
    void clear() { *this = AOption(); }

    friend bool operator==(AOption const &a, AOption const &b)
    {
        return a.is_present == b.is_present && (!a.is_present || a.slot == b.slot);
    }
    /// Absent sorts before every value.
    friend bool operator<(AOption const &a, AOption const &b)
    {
        if (a.is_present != b.is_present)
            return b.is_present;
        return a.is_present && a.slot < b.slot;
    }

private:
    bool is_present = false;
    T slot{};
};
