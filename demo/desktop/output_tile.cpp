// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/output_tile.h"

#include "demo/desktop/desk_style.h"

#include <Tarn/GlintOutputMonitor>

#include <QPainter>

#include <algorithm>

using namespace VCTP3;

namespace {

constexpr int margin = 8;

QString source_text(ChannelCF::OutputSource const &source)
{
    return QStringLiteral("from %1, %2 %3")
        .arg(QString(Channel_to_string(Channel(source.channel))),
            source.key ? QStringLiteral("key") : QStringLiteral("video"))
        .arg(source.angle + 1);
}

} // namespace

OutputTile::OutputTile(Glint *hub, unsigned int output, QWidget *parent)
    : QWidget(parent)
    , output_number(output)
    , title(DeskStyle::label(this, "title"))
    , source_label(DeskStyle::label(this, "source"))
    , status(DeskStyle::label(this, "status"))
    , clip(DeskStyle::label(this, "clip"))
    , timecode(new ATimecodeLabel(this))
{
    setObjectName(QStringLiteral("output %1").arg(output + 1));
    title->setText(QStringLiteral("Output %1").arg(output + 1));
    source_label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    status->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    DeskStyle::set_text_colour(source_label, DeskStyle::quiet);

    GlintOutputMonitor *monitor = hub->get_output_monitor(output);
    connect(monitor, &GlintOutputMonitor::report_status, this, [this](ChannelStatus value) {
        status->setText(QString(ChannelStatus_to_string(value)));
        DeskStyle::set_text_colour(status, DeskStyle::status_colour(value));
    });
    connect(monitor, &GlintOutputMonitor::report_clipid, this, [this](QString const &id) {
        clip_id = id;
        show_clip();
    });
    connect(monitor, &GlintOutputMonitor::report_display_timecode, timecode,
        &ATimecodeLabel::set_timecode);
}

void OutputTile::show_source(ChannelCF::OutputSource const &source)
{
    source_label->setText(source_text(source));
}

void OutputTile::show_clip()
{
    clip->setText(clip->fontMetrics().elidedText(clip_id, Qt::ElideLeft, clip->width()));
    clip->setToolTip(clip_id);
}

void OutputTile::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), DeskStyle::tile);
}

void OutputTile::resizeEvent(QResizeEvent *)
{
    QRect const area = rect().adjusted(margin, margin / 2, -margin, -margin / 2);
    int const row = std::clamp(area.height() / 4, 14, 44);
    int const half = area.width() / 2;
    int const pixels = std::min({row * 5 / 8, area.width() / 14, 20});
    int y = area.top();
    auto const place = [&](QLabel *label, int x, int width, bool bold) {
        label->setFont(DeskStyle::font(pixels, bold));
        label->setGeometry(area.left() + x, y, width, row);
    };
    place(title, 0, half, true);
    place(source_label, half - 20, area.width() - half + 20, false);
    y += row;
    place(clip, 0, area.width() * 2 / 3, false);
    place(status, half, area.width() - half, true);
    y += row;
    bool const is_large = area.width() >= 270 && area.bottom() - y >= 44;
    timecode->set_font(is_large ? ATimecodeLabel::Font::large : ATimecodeLabel::Font::small);
    QSize const size = timecode->sizeHint();
    int const below = std::min((area.bottom() - y - size.height()) / 2, row / 3);
    timecode->setGeometry(area.left(), y + below, size.width(), size.height());
    show_clip();
}
