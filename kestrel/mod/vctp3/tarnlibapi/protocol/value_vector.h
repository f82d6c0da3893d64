// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <vector>

namespace VCTP3 {

/// Up to `capacity` values in order. Only what is held takes room, since records with such a
/// vector travel through signals.
/// Thread: a value; one object belongs to one thread at a time, copies to any.
template <typename Element, unsigned int capacity> class ValueVector
{
public:
    using value_type = Element;
    using iterator = typename std::vector<Element>::iterator;
    using const_iterator = typename std::vector<Element>::const_iterator;

    static constexpr unsigned int max_size = capacity;

    /// Beyond the capacity: an assertion, and the vector stays as it is.
    void push_back(Element const &value)
    {
        if (A_ASSERT(size() < capacity))
            elements.push_back(value);
    }
    void clear_all() { elements.clear(); }

    unsigned int size() const { return static_cast<unsigned int>(elements.size()); }
    bool empty() const { return elements.empty(); }
    bool valid_index(int index) const { return index >= 0 && valid_index(unsigned(index)); }
    bool valid_index(unsigned int index) const { return index < size(); }
    /// An invalid index: an assertion, and a default value.
    Element operator[](unsigned int index) const
    {
        return A_ASSERT(valid_index(index)) ? elements[index] : Element();
    }
    iterator begin() { return elements.begin(); }
    iterator end() { return elements.end(); }
    const_iterator begin() const { return elements.begin(); }
    const_iterator end() const { return elements.end(); }

    friend bool operator==(ValueVector const &a, ValueVector const &b)
    {
        return a.elements == b.elements;
    }
    friend bool operator<(ValueVector const &a, ValueVector const &b)
    {
        return a.elements < b.elements;
    }

private:
    std::vector<Element> elements;
};

} // namespace VCTP3
