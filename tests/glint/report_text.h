// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_parse.h"

#include <QByteArray>

/// Reports as a server writes them.
namespace ReportText {

inline QByteArray letter(int channel)
{
    return QByteArray::fromStdString(
        VCTP3::Channel_to_string(static_cast<VCTP3::Channel>(channel)).to_string());
}

inline QByteArray report(QByteArray const &element)
{
    return "<report>" + element + "</report>";
}

inline QByteArray field(char const *tag, QByteArray const &text)
{
    return QByteArray("<") + tag + ">" + text + "</" + tag + ">";
}

inline QByteArray timecode_record(int position)
{
    return "<Valid>true</Valid><VideoStandard>1080_50i</VideoStandard><FieldNumber>"
        + QByteArray::number(position) + "</FieldNumber>";
}

/// The same as a value.
inline VCTP3::Timecode timecode_value(int position)
{
    VCTP3::Timecode timecode;
    timecode.valid = true;
    timecode.set_std(VCTP3::VideoStandard::v1080_50i);
    timecode.set_position(position);
    return timecode;
}

/// A report of one channel with the given fields behind its letter.
inline QByteArray channel_report(char const *tag, int channel, QByteArray const &fields)
{
    return report(field(tag, field("Channel", letter(channel)) + fields));
}

inline QByteArray timecode(int channel, int position, int display = 0, int input = 0)
{
    return channel_report("channel_timecode", channel,
        field("ClipPosition", QByteArray::number(position))
            + field("DisplayTimecode", timecode_record(display))
            + field("InputTimecode", timecode_record(input)));
}

inline QByteArray aux_position(int channel, int position)
{
    return channel_report(
        "channel_aux_audio_timecode", channel, field("ClipPosition", QByteArray::number(position)));
}

inline QByteArray peak(int channel, QByteArray const &levels)
{
    return channel_report("channel_peak", channel, field("LevelsString", levels));
}

inline QByteArray aux_peak(int channel, QByteArray const &levels)
{
    return channel_report("channel_aux_audio_peak", channel, field("LevelsString", levels));
}

inline QByteArray ltc(int position)
{
    return report(field("ltc_timecode", field("Timecode", timecode_record(position))));
}

inline XMLTree parsed(QByteArray const &text)
{
    return XMLParse(
        AString::from_utf8(text.constData(), static_cast<unsigned long long>(text.size())));
}

} // namespace ReportText
