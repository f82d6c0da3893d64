// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt.h"
#include "sim/vesk/vesk_storm.h"

#include <algorithm>
#include <array>
#include <deque>
#include <tuple>

/// Compares the reports that a client of a storm makes with what the channels show: the first of
/// each kind of a channel with field 0, the next with field 1 and so on.
class StormListener
{
public:
    static constexpr int channel_count = 40;
    static constexpr int group_count = 12;

    /// Whether timecodes and levels, which come at field rate, may be passed over by the client.
    enum class HighRate
    {
        all,
        newest
    };

    /// To \a api, which \a standard's fields come to; it must outlive this object.
    StormListener(VCTP3::APIQt *api, VCTP3::VideoStandard standard, HighRate rate)
        : hears(api)
        , high_rate(rate)
        , fields(1, VeskFieldClock(standard))
    {
        using API = VCTP3::APIQt;
        hear_layer(Layer::normal, &API::report_channel_status, &API::report_channel_clipid,
            &API::report_channel_speed, &API::report_channel_info, &API::report_channel_peak);
        hear_layer(Layer::bed, &API::report_channel_aux_audio_status,
            &API::report_channel_aux_audio_clipid, &API::report_channel_aux_audio_speed,
            &API::report_channel_aux_audio_info, &API::report_channel_aux_audio_peak);
        hear(&API::report_channel_timecode,
            [this](Channel channel, unsigned int position, VCTP3::Timecode const &display,
                VCTP3::Timecode const &input) {
                VeskStormLayer const shown
                    = next_of(channel, Group::timecode, Layer::normal, position);
                note(position == shown.position() && display == shown.display_timecode()
                    && input == shown.input_timecode());
            });
        hear(&API::report_channel_aux_audio_timecode,
            [this](Channel channel, unsigned int position) {
                note(position
                    == next_of(channel, Group::aux_audio_timecode, Layer::bed, position)
                           .position());
            });
    }

    /// Kinds of reports, of all channels together, that came so often.
    int came(int times) const
    {
        int number = 0;
        for (auto const &channel : heard)
            number += static_cast<int>(std::count(channel.begin(), channel.end(), times));
        return number;
    }
    /// Reports that told something else than they had to.
    int wrong() const { return wrong_count; }
    /// The clock in that field.
    VeskFieldClock const &at(quint64 field)
    {
        while (fields.size() <= field) {
            fields.push_back(fields.back());
            fields.back().advance();
        }
        return fields[field];
    }

private:
    using Channel = VCTP3::Channel;
    using Group = VCTP3::ChannelReportType;
    using Layer = VCTP3::Layer;

    template <typename Signal, typename Slot> void hear(Signal signal, Slot const &slot)
    {
        QObject::connect(hears, signal, &here, slot);
    }
    template <typename... Signals> void hear_layer(Layer layer, Signals... signal)
    {
        int const first = layer == Layer::bed ? static_cast<int>(Group::aux_audio_status) : 0;
        auto const group
            = [first](Group of) { return static_cast<Group>(first + static_cast<int>(of)); };
        auto const signals_of = std::make_tuple(signal...);
        hear(std::get<0>(signals_of),
            [=, this](Channel channel, VCTP3::ChannelStatus status, AOption<AString> const &clip) {
                VeskStormLayer const shown = next(channel, group(Group::status), layer);
                note(status == shown.status() && clip && *clip == shown.clip_id());
            });
        hear(std::get<1>(signals_of), [=, this](Channel channel, AString const &clip) {
            note(clip == next(channel, group(Group::clipid), layer).clip_id());
        });
        hear(std::get<2>(signals_of), [=, this](Channel channel, int speed) {
            note(speed == next(channel, group(Group::speed), layer).speed());
        });
        hear(std::get<3>(signals_of),
            [=, this](Channel channel, VCTP3::ChannelInformation const &information) {
                note(information == next(channel, group(Group::info), layer).information());
            });
        hear(std::get<4>(signals_of), [=, this](Channel channel, AString const &levels) {
            VeskStormLayer const shown = next(channel, group(Group::peak), layer);
            // Levels do not tell their field.
            note(high_rate == HighRate::newest
                || levels == VeskChannelReports::levels_text(shown.levels()));
        });
    }
    VeskStormLayer next(Channel channel, Group group, Layer layer)
    {
        return {channel, layer, &at(quint64(count(channel, group)++))};
    }
    /// The same of a report that tells its field; what was passed over counts as heard.
    VeskStormLayer next_of(Channel channel, Group group, Layer layer, unsigned int position)
    {
        if (high_rate == HighRate::newest)
            count(channel, group) = std::max(count(channel, group),
                static_cast<int>(VeskStormLayer::field_of(channel, position)));
        return next(channel, group, layer);
    }
    int &count(Channel channel, Group group)
    {
        return heard[static_cast<std::size_t>(channel)][static_cast<std::size_t>(group)];
    }
    void note(bool right) { wrong_count += right ? 0 : 1; }

    VCTP3::APIQt *hears;
    QObject here;
    HighRate high_rate;
    std::deque<VeskFieldClock> fields;
    std::array<std::array<int, group_count>, channel_count> heard{};
    int wrong_count = 0;
};
