// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Tarn/ASpeedLabel>
#include <Tarn/ATimecodeLabel>
#include <Tarn/ChannelInformation>
#include <Tarn/Glint>
#include <Tarn/GlintChannelMonitor>
#include <Tarn/TallyModel>

#include <QLabel>

class LevelMeter;

/// What one channel does, live. To connect a slot to a signal of the channel's monitor is all there
/// is to do for a value: the monitor registers for the report that it needs, and gives the report
/// up when nobody listens any more.
class ChannelTile : public QWidget
{
    Q_OBJECT

public:
    /// All that it shows can be read from this size on.
    static constexpr QSize least_size{152, 108};

    /// \a hub must outlive the tile.
    ChannelTile(Glint *hub, VCTP3::Channel channel, QWidget *parent);

    VCTP3::Channel channel() const { return number; }
    void set_selected(bool on);
    bool is_selected() const { return selected; }
    /// Shows with which outputs the channel is configured.
    void show_configuration();

Q_SIGNALS:
    void clicked(VCTP3::Channel channel, Qt::KeyboardModifiers modifiers);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    void make_labels();
    void follow(GlintChannelMonitor *monitor);
    void place_head(QRect const &row);
    void place(QLabel *label, QRect const &row, double size, bool bold);
    void show_status(VCTP3::ChannelStatus value);
    void show_outputs();
    void show_timecodes(unsigned int clip_position, Corvane::ATimecode const &display,
        Corvane::ATimecode const &input);
    void show_remaining();
    QColor tally_colour() const;

    Glint *const hub;
    VCTP3::Channel const number;
    TallyModel tally;
    QLabel *letter = nullptr;
    QLabel *status = nullptr;
    ASpeedLabel *speed = nullptr;
    QLabel *clip = nullptr;
    ATimecodeLabel *timecode = nullptr;
    QLabel *input_timecode = nullptr;
    QLabel *remaining = nullptr;
    QLabel *angles = nullptr;
    QLabel *outputs = nullptr;
    LevelMeter *meter = nullptr;
    VCTP3::ChannelStatus channel_status = VCTP3::ChannelStatus::idle;
    QString clip_id;
    int unit = 11; // of what it holds, in pixels
    VCTP3::ChannelInformation information;
    unsigned int position = 0;
    Corvane::VideoFrequency frequency = Corvane::VideoFrequency::invalid;
    bool selected = false;
};
