// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from all tables; do not edit.

#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"

/// A value for each element.
namespace VCTP3 {

inline Side sample_Side() { return Side::right; }
inline Rate sample_Rate() { return Rate::auto_; }
inline ReportType sample_ReportType() { return ReportType::cars; }
inline ChannelReportType sample_ChannelReportType() { return ChannelReportType::lamps; }
inline AString sample_Name() { return AString::from_utf8("Name <8> & é"); }
inline unsigned int sample_Count() { return 4000000005U; }
inline int sample_Offset() { return -10; }
inline unsigned long long sample_Serial() { return 18000000000000000017ULL; }
inline unsigned char sample_Lane() { return 7; }
inline int sample_Speed() { return 163840; }
inline bool sample_Open() { return true; }
inline bool sample_Quiet() { return true; }
inline AString sample_Message() { return AString::from_utf8("Message <7> & é"); }
inline unsigned int sample_Code() { return 4000000004U; }

inline Road sample_Road();
inline Car sample_Car();
inline SideSet sample_SideSet();
inline Cars sample_Cars();
inline std::list<AString> sample_Names();
inline Car sample_OtherCar();

inline Road sample_Road()
{
    Road value;
    value.side = sample_Side();
    value.cars = sample_Cars();
    value.set_sides(sample_SideSet());
    return value;
}

inline Car sample_Car()
{
    Car value;
    value.name = sample_Name();
    value.set_speed(sample_Speed());
    value.set_lane(sample_Lane());
    value.quiet = sample_Quiet();
    return value;
}

inline SideSet sample_SideSet()
{
    SideSet value;
    value.add_to_set(Side::right);
    value.add_to_set(Side::left);
    return value;
}

inline Cars sample_Cars()
{
    Cars value;
    value.push_back(sample_Car());
    value.push_back(sample_Car());
    return value;
}

inline std::list<AString> sample_Names()
{
    std::list<AString> value;
    value.push_back(sample_Name());
    value.push_back(sample_Name());
    return value;
}

inline Car sample_OtherCar()
{
    Car value;
    value.name = sample_Name();
    value.set_speed(sample_Speed());
    value.set_lane(sample_Lane());
    value.quiet = sample_Quiet();
    return value;
}

} // namespace VCTP3
