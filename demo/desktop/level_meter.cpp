// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/level_meter.h"

#include "demo/desktop/desk_style.h"

#include <QPainter>
#include <QTimerEvent>

#include <algorithm>

namespace {

constexpr int fall_interval_ms = 40;
constexpr double fall = 2; // decibels in each interval
constexpr double loud = 80;

QColor colour(double level, bool enabled)
{
    if (!enabled)
        return DeskStyle::stale;
    return level >= loud ? DeskStyle::amber : DeskStyle::green;
}

} // namespace

LevelMeter::LevelMeter(QWidget *parent)
    : QWidget(parent)
{
}

void LevelMeter::set_levels(std::list<unsigned int> const &values)
{
    levels = {};
    std::copy_n(values.begin(), std::min(values.size(), tracks), levels.begin());
    update();
}

void LevelMeter::set_peaks(std::list<unsigned int> const &values)
{
    std::size_t track = 0;
    for (unsigned int value : values)
        if (track < tracks) {
            peaks[track] = std::max(peaks[track], double(value));
            ++track;
        }
    // The last delivery may hold a peak and silence both, so marks fall by themselves.
    if (!falling.isActive())
        falling.start(fall_interval_ms, this);
    update();
}

void LevelMeter::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != falling.timerId())
        return;
    bool at_rest = true;
    for (std::size_t track = 0; track < tracks; ++track) {
        peaks[track] = std::max(double(levels[track]), peaks[track] - fall);
        at_rest = at_rest && peaks[track] <= levels[track];
    }
    if (at_rest)
        falling.stop();
    update();
}

QRectF LevelMeter::bar(std::size_t track, double level) const
{
    double const pitch = double(width()) / double(tracks);
    double const tall = height() * std::clamp(level / full_scale, 0.0, 1.0);
    return {double(track) * pitch, height() - tall, std::max(1.0, pitch - 2), tall};
}

void LevelMeter::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    for (std::size_t track = 0; track < tracks; ++track) {
        painter.fillRect(bar(track, full_scale), DeskStyle::panel);
        painter.fillRect(bar(track, levels[track]), colour(levels[track], isEnabled()).darker(150));
        if (peaks[track] > 0) {
            QRectF mark = bar(track, peaks[track]);
            mark.setHeight(2);
            painter.fillRect(mark, colour(peaks[track], isEnabled()));
        }
    }
}
