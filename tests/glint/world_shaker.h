// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_world.h"

#include <iterator>
#include <map>
#include <random>
#include <vector>

/// Changes what a server with the demo event is doing, at random but the same for the same seed.
/// Thread: any one, as long as the world is the server's on that thread.
class WorldShaker
{
public:
    explicit WorldShaker(unsigned int seed)
        : random(seed)
    {
    }

    unsigned int below(unsigned int limit) { return static_cast<unsigned int>(random() % limit); }

    /// Some channels, the board and other settings, tally, alerts, latency and time.
    void shake(VeskWorld &world)
    {
        for (unsigned int step = below(30); step-- > 0;)
            shake_channel(world);
        for (unsigned int number = 0; number < tally_count; ++number)
            world.dictionary.set(
                tally_key(number), one_of({"red", "green", "yellow", "offline", ""}));
        for (char const *name : {"fan", "power"})
            shake_alert(world, name);
        world.facts.set_io_latency(below(12));
        shake_settings(world);
        for (unsigned int fields = below(8); fields-- > 0;)
            world.advance_field();
    }

    /// The alerts as they were set last.
    std::map<AString, VCTP3::Alert> const &alerts() const { return raised; }
    static constexpr unsigned int tally_count = 4;
    static AString tally_key(unsigned int number) { return AString::sprintf("Tally%u", number); }

private:
    AString one_of(std::vector<char const *> const &texts)
    {
        return AString::l1(texts[below(static_cast<unsigned int>(texts.size()))]);
    }
    void shake_channel(VeskWorld &world)
    {
        VeskChannel &channel = world.channels.at(static_cast<VCTP3::Channel>(below(40)));
        VCTP3::Layer const layer = below(4) == 0 ? VCTP3::Layer::bed : VCTP3::Layer::normal;
        VeskFailure failure;
        if (!channel.can_move(layer, &failure) || below(4) == 0) {
            channel.load(layer, clip(world), {});
            return;
        }
        switch (below(7)) {
        case 0:
            channel.stop(layer);
            break;
        case 1:
            channel.jog(layer, static_cast<int>(below(9)) - 4);
            break;
        case 2:
            channel.unload(layer);
            break;
        case 3:
            channel.set_loop(layer, VCTP3::Loop::loop);
            break;
        default:
            channel.play(layer, static_cast<int>(below(5)) * 0x8000 - 0x10000);
        }
    }
    VeskClip &clip(VeskWorld &world)
    {
        auto const &all = world.clips.all();
        auto const at = std::next(all.begin(), below(static_cast<unsigned int>(all.size())));
        return *world.clips.find(at->first);
    }
    void shake_alert(VeskWorld &world, char const *name)
    {
        VCTP3::Alert alert;
        alert.alerting_priority = VCTP3::AlertingPriority::malfunction;
        alert.alerting_level
            = below(2) == 0 ? VCTP3::AlertingLevel::error : VCTP3::AlertingLevel::warning;
        alert.alert_name = AString::l1(name);
        alert.alert_value_description = AString::sprintf("%u", below(100));
        world.alerts.set(alert);
        raised[alert.alert_name] = alert;
    }
    void shake_settings(VeskWorld &world)
    {
        world.configuration.set(
            AString::l1("ControlPanel_ID0"), AString::sprintf("panel %u", below(1000)));
        if (below(3) == 0)
            world.configuration.set(AString::l1("ChannelConfigurationSet0"),
                one_of({"VVVV", "ISO4", "VKVV", "absent", "VVVK", "SSM4"}));
    }

    std::mt19937 random;
    std::map<AString, VCTP3::Alert> raised;
};
