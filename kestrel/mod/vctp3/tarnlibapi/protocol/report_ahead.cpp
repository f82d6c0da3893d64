// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/report_ahead_p.h"

#include "kestrel/mod/vctp3/tarnlibapi/protocol/words_p.h"

#include <algorithm>
#include <array>
#include <utility>

namespace VCTP3 {

namespace {

/// Whether a message holds one report, of a kind that is read ahead.
bool is_read_ahead(XMLTree const &message)
{
    static std::array<AString const *, 8> const kinds{&word(Word::channel_status),
        &word(Word::channel_clipid), &word(Word::channel_speed), &word(Word::channel_info),
        &word(Word::channel_aux_audio_status), &word(Word::channel_aux_audio_clipid),
        &word(Word::channel_aux_audio_speed), &word(Word::channel_aux_audio_info)};
    if (!message.has_tag(word(Word::report)))
        return false;
    auto child = message.children().begin();
    if (child == XMLChildren::const_iterator())
        return false;
    XMLTree const &report = *child;
    return std::any_of(kinds.begin(), kinds.end(), [&report](AString const *kind) {
        return report.has_tag(*kind);
    }) && ++child == XMLChildren::const_iterator();
}

} // namespace

std::shared_ptr<ReportAhead const> ReportReader::read(XMLTree const &message)
{
    if (is_read_ahead(message))
        parse(message);
    return std::exchange(made, nullptr);
}

template <typename Value> void ReportReader::make(Channel channel, bool bed, Value const &value)
{
    made = std::make_shared<ReportAhead>();
    made->channel = channel;
    made->bed = bed;
    made->value = value;
}

void ReportReader::report_channel_status(
    Channel channel, ChannelStatus status, AOption<AString> const &clip_id)
{
    make(channel, false, ReportAhead::Status{status, clip_id});
}

void ReportReader::report_channel_clipid(Channel channel, AString const &clip_id)
{
    make(channel, false, ReportAhead::ClipID{clip_id});
}

void ReportReader::report_channel_speed(Channel channel, int speed)
{
    make(channel, false, ReportAhead::Speed{speed});
}

void ReportReader::report_channel_info(Channel channel, ChannelInformation const &information)
{
    make(channel, false, information);
}

void ReportReader::report_channel_aux_audio_status(
    Channel channel, ChannelStatus status, AOption<AString> const &clip_id)
{
    make(channel, true, ReportAhead::Status{status, clip_id});
}

void ReportReader::report_channel_aux_audio_clipid(Channel channel, AString const &clip_id)
{
    make(channel, true, ReportAhead::ClipID{clip_id});
}

void ReportReader::report_channel_aux_audio_speed(Channel channel, int speed)
{
    make(channel, true, ReportAhead::Speed{speed});
}

void ReportReader::report_channel_aux_audio_info(
    Channel channel, ChannelInformation const &information)
{
    make(channel, true, information);
}

} // namespace VCTP3
