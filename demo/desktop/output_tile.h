// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Tarn/ATimecodeLabel>
#include <Tarn/Glint>
#include <Tarn/OutputSource>

#include <QLabel>

/// What leaves one output: which channel feeds it, and what that does.
class OutputTile : public QWidget
{
    Q_OBJECT

public:
    /// \a output counts from 0.
    OutputTile(Glint *hub, unsigned int output, QWidget *parent);

    unsigned int output() const { return output_number; }
    /// Which channel feeds it. What that does is told by the output's monitor.
    void show_source(ChannelCF::OutputSource const &source);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void show_clip();

    unsigned int const output_number;
    QLabel *const title;
    QLabel *const source_label;
    QLabel *const status;
    QLabel *const clip;
    ATimecodeLabel *const timecode;
    QString clip_id;
};
