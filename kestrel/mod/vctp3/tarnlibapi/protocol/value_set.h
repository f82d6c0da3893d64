// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <algorithm>
#include <array>

namespace VCTP3 {

/// Values of one enumeration, in order of insertion and without duplicates: a fixed array and a
/// count. Values outside the enumeration can be held; `valid` tells of them.
/// Thread: a value; one object belongs to one thread at a time, copies to any.
template <typename Element, unsigned int capacity, bool (*valid_element)(int)> class ValueSet
{
public:
    using value_type = Element;
    using const_iterator = Element const *;

    static constexpr unsigned int max_size = capacity;

    ValueSet() = default;
    explicit ValueSet(Element only) { add_to_set(only); }
    /// A count above the capacity: an assertion, and the set stays empty.
    ValueSet(Element const *values, unsigned int number)
    {
        if (!A_ASSERT(number <= capacity))
            return;
        for (unsigned int i = 0; i < number; ++i)
            add_to_set(values[i]);
    }

    /// A value that is there already is not added again. Beyond the capacity: an assertion, and
    /// the set stays as it is.
    void add_to_set(Element value)
    {
        if (contains(value) || !A_ASSERT(count < capacity))
            return;
        elements[count++] = value;
    }
    /// The order of the others stays.
    void remove_from_set(Element value)
    {
        auto const last = elements.begin() + count;
        count = static_cast<unsigned int>(
            std::remove(elements.begin(), last, value) - elements.begin());
    }
    void clear_all() { count = 0; }

    bool contains(Element value) const { return std::find(begin(), end(), value) != end(); }
    unsigned int size() const { return count; }
    bool empty() const { return count == 0; }
    bool valid_index(int index) const { return index >= 0 && valid_index(unsigned(index)); }
    bool valid_index(unsigned int index) const { return index < count; }
    /// An invalid index: an assertion, and the first value of the enumeration.
    Element operator[](unsigned int index) const
    {
        return A_ASSERT(valid_index(index)) ? elements[index] : Element();
    }
    const_iterator begin() const { return elements.data(); }
    const_iterator end() const { return elements.data() + count; }

    /// Whether every element is a value of its enumeration.
    bool valid() const
    {
        return count <= capacity && std::all_of(begin(), end(), [](Element value) {
            return valid_element(static_cast<int>(value));
        });
    }

    /// By count and elements in order, so the order of insertion counts.
    friend bool operator==(ValueSet const &a, ValueSet const &b)
    {
        return std::equal(a.begin(), a.end(), b.begin(), b.end());
    }
    friend bool operator<(ValueSet const &a, ValueSet const &b)
    {
        return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end());
    }

private:
    std::array<Element, capacity> elements{};
    unsigned int count = 0;
};

} // namespace VCTP3
