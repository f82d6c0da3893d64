// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from reports.tbl; do not edit.

#include "sim/vesk/reports.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/element_builder_p.h"

using VCTP3::ElementBuilder;
using VCTP3::Word;
using VCTP3::word;

namespace VeskReports {

XMLTree passed(VCTP3::Side side, AString const &name, AOption<int> const &speed)
{
    ElementBuilder element(word(Word::passed));
    element.add(Word::Side, side);
    element.add(Word::Name, name);
    element.add_speed_if(speed.has_value(), Word::Speed, speed.value());
    return element.take();
}

XMLTree lamp(VCTP3::Side side, bool open)
{
    ElementBuilder element(word(Word::lamp));
    element.add(Word::Side, side);
    element.add(Word::Open, open);
    return element.take();
}

XMLTree names(std::list<AString> const &names)
{
    ElementBuilder element(word(Word::names));
    element.add(Word::Names, names);
    return element.take();
}

} // namespace VeskReports
