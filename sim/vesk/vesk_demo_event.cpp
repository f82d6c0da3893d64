// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_demo_event.h"

#include "sim/vesk/vesk_demo_clips.h"
#include "sim/vesk/vesk_world.h"

namespace {

VCTP3::ListElement play_once(char const *clip, char const *label)
{
    VCTP3::ListElement element;
    element.content_id.set_clipid(AString::l1(clip));
    element.set_atstart(VCTP3::ListElementAtStart::play);
    element.set_atend(VCTP3::ListElementAtEnd::take);
    element.set_nickname(AString::l1(label));
    return element;
}

VCTP3::ListElement in_slow_motion(char const *clip, char const *label)
{
    VCTP3::ListElement element = play_once(clip, label);
    element.set_speed(65536 / 2);
    VCTP3::Transition dissolve;
    dissolve.transition_type = VCTP3::TransitionType::dissolve;
    dissolve.set_tlen(25);
    element.set_transition(dissolve);
    return element;
}

void add_lists(VeskWorld *world)
{
    world->lists.store(AString::l1("Opening"),
        {play_once("Bank 1/101-01", "Teams"), play_once("Bank 1/102-01", "Kick-off"),
            play_once("Bank 1/103-02", "Corner")});
    world->lists.store(AString::l1("Goals"),
        {play_once("Bank 2/201-01", "1-0"), in_slow_motion("Bank 2/201-05", "1-0 slow"),
            play_once("Bank 3/304-01", "1-1"), in_slow_motion("Bank 3/304-09", "1-1 slow"),
            play_once("Bank 4/402-01", "2-1")});
    VCTP3::ChaseElement halves[2];
    halves[0].content_id.set_clipid(AString::l1("Programme/First half"));
    halves[0].set_tc_start_trigger(0);
    halves[1].content_id.set_clipid(AString::l1("Programme/Second half"));
    halves[1].set_atend(VCTP3::ChaseElementAtEnd::black);
    world->chases.store(AString::l1("Whole match"), {halves[0], halves[1]});
}

void add_metadata(VeskWorld *world)
{
    static constexpr char const *pairs[][2] = {
        {"event.name", "Harbour United - Northgate"},
        {"event.venue", "Harbour Park"},
        {"event.kick_off", "19:45"},
        {"score.home", "2"},
        {"score.away", "1"},
        {"camera.1", "Main"},
        {"camera.2", "Close"},
        {"camera.3", "Reverse"},
        {"camera.4", "Behind the goal"},
    };
    VeskMetadata::Pairs list;
    for (auto const &[key, value] : pairs) {
        VCTP3::Metadata item;
        item.key = AString::l1(key);
        item.value = AString::l1(value);
        list.push_back(item);
    }
    world->metadata.set(AString::l1("demo"), AString(), list);
}

} // namespace

void vesk_fill_demo_event(VeskWorld *world)
{
    vesk_add_demo_clips(&world->clips, world->clock);
    add_lists(world);
    add_metadata(world);
    world->dictionary.set(AString::l1("Tally0"), AString::l1("green"));
    world->dictionary.set(AString::l1("Tally1"), AString::l1("red"));
    world->configuration.set(AString::l1("VideoAspectRatio"), AString::l1("16x9"));
    world->configuration.set(AString::l1("ControlPanel_ID0"), AString::l1("1001"));
    world->configuration.set(AString::l1("ControlPanel_Channels0"), AString::l1("A,B,C,D"));
}
