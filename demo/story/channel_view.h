// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Tarn/APIQt>

#include <QString>

/// What an application shows of one channel: the newest value of each report.
struct ChannelView
{
    VCTP3::ChannelStatus status = VCTP3::ChannelStatus::nochannel;
    QString clip;
    int speed = 0;
    unsigned position = 0;
    quint64 reports = 0;

    /// "A play  1X  Cam1_... 1234".
    QString line(VCTP3::Channel channel) const
    {
        return QStringLiteral("%1 %2 %3 %4 %5")
            .arg(QString(VCTP3::Channel_to_string(channel)), 2)
            .arg(QString(VCTP3::ChannelStatus_to_string(status)), -8)
            .arg(QString(AString::from_speed(speed, 3)), 6)
            .arg(clip, -18)
            .arg(position, 7);
    }
};
