// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from replies.tbl; do not edit.

#include "sim/vesk/replies.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/element_builder_p.h"

using VCTP3::ElementBuilder;
using VCTP3::Word;
using VCTP3::word;

namespace VeskReplies {

XMLTree ok()
{
    return XMLTree(word(Word::ok));
}

XMLTree error(AString const &message, unsigned int code)
{
    ElementBuilder element(word(Word::error));
    element.add(Word::Message, message);
    element.add(Word::Code, code);
    return element.take();
}

XMLTree car(VCTP3::Car const &car)
{
    ElementBuilder element(word(Word::car));
    element.add(Word::Car, car);
    return element.take();
}

XMLTree road(VCTP3::Road const &road, unsigned long long serial)
{
    ElementBuilder element(word(Word::road));
    element.add(Word::Road, road);
    element.add(Word::Serial, serial);
    return element.take();
}

} // namespace VeskReplies
