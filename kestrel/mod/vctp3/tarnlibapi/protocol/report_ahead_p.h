// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_parser.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/xml_parse_engine2.h"

#include <memory>
#include <variant>

namespace VCTP3 {

/// What a channel reports of its status, clip id, speed or information, of either layer, read by
/// the thread that has parsed the message: its memory is at hand there, and still far from the
/// thread that delivers.
struct ReportAhead final : XMLParseEngine2::Prepared
{
    struct Status
    {
        ChannelStatus status;
        AOption<AString> clip_id;
    };
    struct ClipID
    {
        AString clip_id;
    };
    struct Speed
    {
        int speed;
    };

    Channel channel{};
    bool bed = false; // of the auxiliary audio
    std::variant<Status, ClipID, Speed, ChannelInformation> value;
};

/// Reads such reports as `APIParser::parse` does.
/// Thread: one at a time.
class ReportReader final : private APIParser
{
public:
    /// Null for any other message, and for one that is not as it should be: `parse` tells why.
    std::shared_ptr<ReportAhead const> read(XMLTree const &message);

private:
    void report_channel_status(
        Channel channel, ChannelStatus status, AOption<AString> const &clip_id) override;
    void report_channel_clipid(Channel channel, AString const &clip_id) override;
    void report_channel_speed(Channel channel, int speed) override;
    void report_channel_info(Channel channel, ChannelInformation const &information) override;
    void report_channel_aux_audio_status(
        Channel channel, ChannelStatus status, AOption<AString> const &clip_id) override;
    void report_channel_aux_audio_clipid(Channel channel, AString const &clip_id) override;
    void report_channel_aux_audio_speed(Channel channel, int speed) override;
    void report_channel_aux_audio_info(
        Channel channel, ChannelInformation const &information) override;
    template <typename Value> void make(Channel channel, bool bed, Value const &value);

    std::shared_ptr<ReportAhead> made;
};

} // namespace VCTP3
