// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Tarn/CFChannelConfig>

#include <QWidget>

/// What the channel sets mean: which channels there are, the angles of each, and the outputs that
/// carry them, drawn beside each other. What was typed counts already, so that an edit is seen
/// before it is committed.
class BoardPicture : public QWidget
{
    Q_OBJECT

public:
    /// \a config must outlive this widget.
    BoardPicture(CFChannelConfig *config, QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    /// A row for each output, channel after channel; the outputs of one need not be neighbours.
    struct Rows
    {
        int first;
        int count;
    };

    int row_count() const;
    /// Returns the rows that it has taken.
    int draw_channel(QPainter *painter, unsigned int channel, int row) const;
    void draw_angles(QPainter *painter, unsigned int channel, int row, QColor const &colour) const;
    void draw_box(QPainter *painter, int column, Rows const &rows, QString const &text,
        QColor const &colour) const;

    CFChannelConfig *const config;
    double row_height = 0;
};
