// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/output_tile.h"

#include "demo/desktop/desk_style.h"
#include "demo/desktop/rows.h"

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
        channel_status = value;
        show_status();
    });
    connect(monitor, &GlintOutputMonitor::report_clipid, this, [this](QString const &id) {
        clip_id = id;
        DeskStyle::set_elided(clip, clip_id, Qt::ElideLeft);
    });
    connect(monitor, &GlintOutputMonitor::report_display_timecode, timecode,
        &ATimecodeLabel::set_timecode);
}

void OutputTile::show_source(ChannelCF::OutputSource const &source)
{
    source_label->setText(source_text(source));
}

void OutputTile::show_status()
{
    DeskStyle::set_elided(status, QString(ChannelStatus_to_string(channel_status)), Qt::ElideRight);
    DeskStyle::set_text_colour(status, DeskStyle::status_colour(channel_status));
}

void OutputTile::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), DeskStyle::tile);
}

void OutputTile::resizeEvent(QResizeEvent *)
{
    QRect const area = rect().adjusted(margin, margin / 2, -margin, -margin / 2);
    int const row = std::clamp(area.height() / 4, 18, 44);
    int const pixels = std::min({row * 5 / 8, area.width() / 14, 20});
    auto const place = [&](QLabel *label, QRect const &room, bool bold) {
        label->setFont(DeskStyle::font(pixels, bold));
        label->setGeometry(room);
    };
    Rows rows(area);
    QRect const head = rows.take(row);
    place(title, head, true);
    place(source_label, head, false);
    QRect const state = rows.take(row);
    int const third = area.width() / 3;
    place(clip, state.adjusted(0, 0, -third, 0), false);
    place(status, state.adjusted(state.width() - third, 0, 0, 0), true);
    DeskStyle::place_readout(
        timecode, rows.rest().adjusted(0, 0, 0, -row / 2), Qt::AlignLeft | Qt::AlignVCenter);
    DeskStyle::set_elided(clip, clip_id, Qt::ElideLeft);
    show_status();
}
