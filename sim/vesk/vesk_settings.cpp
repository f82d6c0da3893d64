// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_settings.h"

#include "sim/vesk/vesk_configuration.h"
#include "sim/vesk/vesk_dictionary.h"
#include "sim/vesk/vesk_field_clock.h"

#include <initializer_list>

namespace {

using Access = VCTP3::ConfigurationItemAccess;

void define(VeskSettings *to, AString const &name, AString const &value,
    std::vector<AString> const &allowed, Access access, bool requires_reboot)
{
    (*to)[name] = VeskSetting{name, value, value, value, allowed, access, requires_reboot};
}

std::vector<AString> texts(std::initializer_list<char const *> list)
{
    std::vector<AString> result;
    for (char const *text : list)
        result.push_back(AString::l1(text));
    return result;
}

/// The names of an enumeration in the order of its values.
template <typename Enum> std::vector<AString> names(AString (*name)(Enum), bool (*valid)(int))
{
    std::vector<AString> result;
    for (int value = 0; valid(value); ++value)
        result.push_back(name(Enum(value)));
    return result;
}

/// The standards that the house can run at.
std::vector<AString> standard_names()
{
    std::vector<AString> result;
    for (int value = 0; VCTP3::valid_VideoStandard(value); ++value)
        if (VeskFieldClock::has_rate(VCTP3::VideoStandard(value)))
            result.push_back(VCTP3::VideoStandard_to_string(VCTP3::VideoStandard(value)));
    return result;
}

void define_board(VeskSettings *to, VeskBoard board)
{
    VeskBoardFacts const facts = vesk_board_facts(board);
    for (std::size_t quad = 0; quad < 8; ++quad)
        define(to, AString::sprintf("ChannelConfigurationSet%d", int(quad)),
            quad < facts.quads.size() ? facts.quads[quad] : facts.configurations.front(),
            facts.configurations, Access::eng, true);
}

void define_video(VeskSettings *to)
{
    define(to, AString::l1("VideoStandard"),
        VCTP3::VideoStandard_to_string(VCTP3::VideoStandard::v1080_59_94i), standard_names(),
        Access::eng, true);
    define(to, AString::l1("ReferenceSource"), AString::l1("refin"),
        names(VCTP3::ReferenceSource_to_string, VCTP3::valid_ReferenceSource), Access::eng, false);
    define(to, AString::l1("VideoAspectRatio"), AString::l1("16x9"), texts({"16x9", "4x3"}),
        Access::user, false);
}

void define_panels(VeskSettings *to)
{
    define(to, AString::l1("ControlPanelCount"), AString::l1("1"), texts({"0", "1", "2", "3", "4"}),
        Access::user, false);
    for (int panel = 0; panel < 4; ++panel) {
        define(
            to, AString::sprintf("ControlPanel_ID%d", panel), AString(), {}, Access::user, false);
        define(to, AString::sprintf("ControlPanel_Channels%d", panel), AString(), {}, Access::user,
            false);
    }
}

void define_router(VeskSettings *to)
{
    define(to, AString::l1("RouterControlInputIpaddr"), AString(), {}, Access::eng, false);
    define(to, AString::l1("RouterControlInputPortnum"), AString(), {}, Access::eng, false);
    define(to, AString::l1("RouterControlInputProtocolType"), AString::l1("Quartz"),
        texts({"Quartz", "Probel"}), Access::eng, false);
    define(to, AString::l1("RouterControlInputLevels"), AString::l1("1"), {}, Access::eng, false);
    for (int input = 0; input < 8; ++input)
        define(to, AString::sprintf("RouterControlInput_Channel%d", input), AString(), {},
            Access::eng, false);
}

void define_exports(VeskSettings *to)
{
    std::vector<AString> const on_or_off = texts({"Enabled", "Disabled"});
    auto switched = [&](AString const &name) {
        define(to, name, on_or_off.back(), on_or_off, Access::user, false);
    };
    for (int number = 0; number < 4; ++number) {
        define(to, AString::sprintf("Channel_GrowingMxfExportPath%d", number), AString(), {},
            Access::user, false);
        switched(AString::sprintf("Channel_GrowingMxfExportEnable%d", number));
        switched(AString::sprintf("Channel_GrowingMxfExportSingleMxf%d", number));
        switched(AString::sprintf("Channel_GrowingMxfFrom1stFrame%d", number));
        switched(AString::sprintf("Channel_GrowingMxfClipINTimecode%d", number));
        switched(AString::sprintf("Channel_GrowingMxfStartWithClipINTimecode%d", number));
        for (char const angle : {'0', '1', '2', '3', '4', '5', '6', '7', '8', '9', 'A', 'B'})
            switched(AString::sprintf("Channel_GrowingMxfAngle%c%d", angle, number));
    }
}

VeskSettings common_settings()
{
    VeskSettings result;
    define_video(&result);
    define_panels(&result);
    define_router(&result);
    define_exports(&result);
    return result;
}

} // namespace

VeskSettings vesk_settings(VCTP3::VideoStandard standard, VeskBoard board)
{
    static VeskSettings const common = common_settings();
    VeskSettings result = common;
    define_board(&result, board);
    VeskSetting &video = result[AString::l1("VideoStandard")];
    video.boot = video.saved = video.effective = VCTP3::VideoStandard_to_string(standard);
    return result;
}

void vesk_define_user_settings(VeskDictionary *dictionary, VeskBoard board)
{
    VeskBoardFacts const facts = vesk_board_facts(board);
    dictionary->set(
        AString::l1("cf.orchard.0.channel_count"), AString::from_uint32_t(facts.channel_count));
    dictionary->set(AString::l1("cf.orchard.type"), facts.type);
}
