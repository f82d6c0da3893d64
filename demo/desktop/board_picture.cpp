// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/board_picture.h"

#include "demo/desktop/desk_style.h"

#include <Tarn/ChannelName>

#include <QPainter>

#include <algorithm>

namespace {

constexpr double tallest_row = 36;
constexpr double gap = 3;

/// Where each column begins and ends, in parts of the width.
constexpr double columns[][2] = {{0, 0.3}, {0.33, 0.63}, {0.66, 1}};
enum Column
{
    channel_column,
    angle_column,
    output_column
};

/// Neighbours differ, and none is loud.
QColor channel_colour(unsigned int channel)
{
    return QColor::fromHsv(int(channel * 67 + 200) % 360, 90, 120);
}

} // namespace

BoardPicture::BoardPicture(CFChannelConfig *channel_config, QWidget *parent)
    : QWidget(parent)
    , config(channel_config)
{
    connect(config, &CFChannelConfig::changed, this, qOverload<>(&QWidget::update));
}

int BoardPicture::row_count() const
{
    std::size_t rows = 0;
    for (unsigned int channel : config->AllUserChannels())
        rows
            += config->AllOutputs(channel, false).size() + config->AllOutputs(channel, true).size();
    return int(rows);
}

void BoardPicture::draw_box(QPainter *painter, int column, Rows const &rows, QString const &text,
    QColor const &colour) const
{
    double const left = columns[column][0] * width();
    double const right = columns[column][1] * width();
    QRectF const area(left, rows.first * row_height, right - left, rows.count * row_height - gap);
    painter->setPen(Qt::NoPen);
    painter->setBrush(isEnabled() ? colour : DeskStyle::edge);
    painter->drawRoundedRect(area, 3, 3);
    painter->setPen(isEnabled() ? DeskStyle::text : DeskStyle::stale);
    painter->drawText(area.adjusted(8, 0, -8, 0), Qt::AlignVCenter | Qt::AlignLeft, text);
}

int BoardPicture::draw_channel(QPainter *painter, unsigned int channel, int row) const
{
    QColor const colour = channel_colour(channel);
    CFChannelConfig::Outputs const outputs = config->AllOutputs(channel, false);
    CFChannelConfig::Outputs const keys = config->AllOutputs(channel, true);
    int const count = int(outputs.size() + keys.size());
    QString name = QStringLiteral("channel ") + QString(ChannelCF::ChannelName(channel));
    if (config->is4K(channel))
        name += QStringLiteral(", 4K");
    draw_box(painter, channel_column, {row, count}, name, colour);
    draw_angles(painter, channel, row, colour.darker(110));
    int next = row;
    for (auto output : outputs)
        draw_box(painter, output_column, {next++, 1}, QStringLiteral("output %1").arg(output + 1),
            colour.darker(110));
    if (!keys.empty())
        draw_box(painter, angle_column, {next, int(keys.size())}, QStringLiteral("key"),
            colour.darker(150));
    for (auto output : keys)
        draw_box(painter, output_column, {next++, 1},
            QStringLiteral("output %1, key").arg(output + 1), colour.darker(150));
    return count;
}

/// The outputs of a channel are listed angle after angle, and the first one of each is known.
void BoardPicture::draw_angles(
    QPainter *painter, unsigned int channel, int row, QColor const &colour) const
{
    CFChannelConfig::Outputs const all = config->AllOutputs(channel, false);
    CFChannelConfig::Outputs const firsts = config->PrimaryAngleOutputs(channel, false);
    auto begin = all.begin();
    for (std::size_t angle = 0; angle < firsts.size(); ++angle) {
        auto const end = angle + 1 < firsts.size() ? std::find(begin, all.end(), firsts[angle + 1])
                                                   : all.end();
        draw_box(painter, angle_column, {row + int(begin - all.begin()), int(end - begin)},
            QStringLiteral("angle %1").arg(angle + 1), colour);
        begin = end;
    }
}

void BoardPicture::paintEvent(QPaintEvent *)
{
    int const rows = row_count();
    if (rows == 0)
        return;
    row_height = std::min(tallest_row, double(height()) / rows);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(DeskStyle::font(std::min(13, int(row_height * 0.62))));
    int row = 0;
    for (unsigned int channel : config->AllUserChannels())
        row += draw_channel(&painter, channel, row);
}
