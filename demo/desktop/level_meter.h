// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QBasicTimer>
#include <QWidget>

#include <array>
#include <list>

/// The audio levels of a channel: a bar for each of 16 tracks, with a mark where the peak was,
/// which falls until it meets the bar.
class LevelMeter : public QWidget
{
    Q_OBJECT

public:
    static constexpr std::size_t tracks = 16;
    /// Decibels above silence.
    static constexpr double full_scale = 100;

    explicit LevelMeter(QWidget *parent);

    unsigned int level(std::size_t track) const { return levels[track]; }
    double peak(std::size_t track) const { return peaks[track]; }

public Q_SLOTS:
    /// The levels of the last field.
    void set_levels(std::list<unsigned int> const &values);
    /// The highest ones since the last delivery: a window that draws more slowly than the server
    /// reports misses none.
    void set_peaks(std::list<unsigned int> const &values);

protected:
    void timerEvent(QTimerEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QRectF bar(std::size_t track, double height) const;

    std::array<unsigned int, tracks> levels{};
    std::array<double, tracks> peaks{};
    QBasicTimer falling;
};
