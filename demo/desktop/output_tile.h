// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Tarn/ATimecodeLabel>
#include <Tarn/ChannelStatus>
#include <Tarn/Glint>
#include <Tarn/OutputSource>

#include <QLabel>

/// What leaves one output: which channel feeds it, and what that does.
class OutputTile : public QWidget
{
    Q_OBJECT

public:
    /// All that it shows can be read from this size on.
    static constexpr QSize least_size{168, 80};

    /// \a output counts from 0.
    OutputTile(Glint *hub, unsigned int output, QWidget *parent);

    unsigned int output() const { return output_number; }
    /// Which channel feeds it. What that does is told by the output's monitor.
    void show_source(ChannelCF::OutputSource const &source);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void show_status();

    unsigned int const output_number;
    QLabel *const title;
    QLabel *const source_label;
    QLabel *const status;
    QLabel *const clip;
    ATimecodeLabel *const timecode;
    VCTP3::ChannelStatus channel_status = VCTP3::ChannelStatus::idle;
    QString clip_id;
};
