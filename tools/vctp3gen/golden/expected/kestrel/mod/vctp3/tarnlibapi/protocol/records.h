// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from records.tbl and collections.tbl; do not edit.

#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/enums.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/value_set.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/value_vector.h"

#include <list>

namespace VCTP3 {

/// At most 2 values without duplicates, each an element Side.
class SideSet : public ValueSet<Side, 2, valid_Side>
{
public:
    using ValueSet::ValueSet;
};

/// What drives.
struct TARN_EXPORT Car
{
    AString name;
    bool has_speed = false;
    int speed = 0;
    bool has_lane = false;
    unsigned char lane = 0;
    bool quiet = false;

    void set_speed(int value)
    {
        has_speed = true;
        speed = value;
    }
    void set_lane(unsigned char value)
    {
        has_lane = true;
        lane = value;
    }

    /// The value of an absent field does not count.
    friend TARN_EXPORT bool operator==(Car const &a, Car const &b);
    /// By the fields in order; an absent field sorts before every value.
    friend TARN_EXPORT bool operator<(Car const &a, Car const &b);
};

/// At most 3 values, each an element Car.
class Cars : public ValueVector<Car, 3> { };

/// Where cars are.
struct TARN_EXPORT Road
{
    Side side = {};
    Cars cars;
    bool has_sides = false;
    SideSet sides;

    void set_sides(SideSet const &value)
    {
        has_sides = true;
        sides = value;
    }

    /// The value of an absent field does not count.
    friend TARN_EXPORT bool operator==(Road const &a, Road const &b);
    /// By the fields in order; an absent field sorts before every value.
    friend TARN_EXPORT bool operator<(Road const &a, Road const &b);
};

} // namespace VCTP3
