// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/transport.h"

#include <Tarn/TrackSet>

#include <QDateTime>

#include <algorithm>
#include <array>

using namespace VCTP3;

namespace {

constexpr int normal_speed = 65536; // speeds are 16.16 fixed point
constexpr std::array shuttle_speeds{0.1, 0.25, 0.5, 1.0, 2.0, 4.0, 8.0, 16.0};

int shuttle_speed(int step)
{
    if (step == 0)
        return 0;
    double const speed = shuttle_speeds[std::size_t(std::abs(step)) - 1] * normal_speed;
    return int(step < 0 ? -speed : speed);
}

TrackSet recorded_tracks()
{
    TrackSet tracks;
    for (TrackType type : {TrackType::video, TrackType::audio, TrackType::timecode})
        tracks.add_to_set(type);
    return tracks;
}

} // namespace

Transport::Transport(Glint *server, QObject *parent)
    : QObject(parent)
    , hub(server)
{
    connect(&answers, &CallbackGroup_set1::sig_error, this,
        [this](AString const &text, ErrorCode) { Q_EMIT failed(QString(text)); });
}

void Transport::set_channels(ChannelSet const &selection)
{
    if (selection == channels)
        return;
    channels = selection;
    shuttle_step = 0;
}

bool Transport::has_channels()
{
    if (channels.empty())
        Q_EMIT failed(QStringLiteral("no channel is selected"));
    return !channels.empty();
}

void Transport::play()
{
    shuttle_step = 0;
    play_at(normal_speed);
}

void Transport::play_at(int speed)
{
    if (!has_channels())
        return;
    if (is_gang())
        hub->cmd_gang_play(channels, speed, answers);
    else
        hub->cmd_play(channels[0], speed, answers);
}

void Transport::stop()
{
    shuttle_step = 0;
    if (!has_channels())
        return;
    if (is_gang())
        hub->cmd_gang_stop(channels, answers);
    else
        hub->cmd_stop(channels[0], answers);
}

void Transport::jog(int fields)
{
    shuttle_step = 0;
    if (!has_channels())
        return;
    if (is_gang())
        hub->cmd_gang_jog(channels, fields, answers);
    else
        hub->cmd_jog(channels[0], fields, answers);
}

void Transport::shuttle(int direction)
{
    int const fastest = int(shuttle_speeds.size());
    shuttle_step = std::clamp(shuttle_step + direction, -fastest, fastest);
    play_at(shuttle_speed(shuttle_step));
}

void Transport::cue(QString const &clip)
{
    shuttle_step = 0;
    if (!has_channels())
        return;
    if (clip.isEmpty()) {
        Q_EMIT failed(QStringLiteral("no clip is chosen"));
        return;
    }
    for (Channel channel : channels)
        hub->cmd_cue_clip(channel, AString(clip), answers);
}

void Transport::record()
{
    if (!has_channels())
        return;
    QString const time = QDateTime::currentDateTime().toString(QStringLiteral("MMdd-HHmmss"));
    for (Channel channel : channels) {
        QString const clip = QStringLiteral("%1 %2").arg(QString(Channel_to_string(channel)), time);
        // Recording begins with `play`, but only where the clip could be made: otherwise the
        // channel would play what it has.
        auto *made = new CallbackGroup_set1(this);
        connect(made, &CallbackGroup_set1::sig_ok, this, [this, made, channel, clip] {
            hub->cmd_play(channel, answers);
            Q_EMIT recording(clip);
            made->deleteLater();
        });
        connect(made, &CallbackGroup_set1::sig_error, this,
            [this, made](AString const &text, ErrorCode) {
                Q_EMIT failed(QString(text));
                made->deleteLater();
            });
        hub->cmd_create_clip(AString(clip), recorded_tracks(), 0U, channel, *made);
    }
}
