// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/channel_tile.h"

#include "demo/desktop/desk_style.h"
#include "demo/desktop/level_meter.h"
#include "demo/desktop/rows.h"

#include <Tarn/CFChannelConfig>
#include <Tarn/USModel>

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

using namespace VCTP3;

namespace {

constexpr int margin = 8;
constexpr int stripe = 4; // of the tally, on the left

QString timecode_text(Corvane::ATimecode const &timecode)
{
    return timecode.is_defined() ? QString(timecode.toString(4)) : QStringLiteral("--:--:--:--");
}

/// "out 1-4 9", numbered from 1.
QString output_list(CFChannelConfig::Outputs const &outputs)
{
    QStringList runs;
    for (auto at = outputs.begin(); at != outputs.end();) {
        auto const first = *at;
        auto last = first;
        while (++at != outputs.end() && *at == last + 1)
            ++last;
        runs << (first == last ? QString::number(first + 1)
                               : QStringLiteral("%1-%2").arg(first + 1).arg(last + 1));
    }
    return runs.isEmpty() ? QString() : QStringLiteral("out ") + runs.join(u' ');
}

} // namespace

ChannelTile::ChannelTile(Glint *server, Channel channel, QWidget *parent)
    : QWidget(parent)
    , hub(server)
    , number(channel)
    , tally(server->get_us_model(), static_cast<unsigned int>(channel))
{
    setObjectName(QStringLiteral("channel ") + QString(Channel_to_string(channel)));
    make_labels();
    letter->setText(QString(Channel_to_string(channel)));
    show_status(ChannelStatus::idle);
    show_configuration();
    follow(hub->toMonitor(channel));
    connect(&tally, &TallyModel::changed, this, qOverload<>(&QWidget::update));
}

void ChannelTile::make_labels()
{
    letter = DeskStyle::label(this, "letter");
    status = DeskStyle::label(this, "status");
    clip = DeskStyle::label(this, "clip");
    timecode = new ATimecodeLabel(this);
    speed = new ASpeedLabel(this);
    input_timecode = DeskStyle::label(this, "input timecode");
    remaining = DeskStyle::label(this, "remaining");
    angles = DeskStyle::label(this, "angles");
    outputs = DeskStyle::label(this, "outputs");
    meter = new LevelMeter(this);
    for (QLabel *right : {remaining, outputs})
        right->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    for (QLabel *small : {input_timecode, remaining, angles, outputs})
        DeskStyle::set_text_colour(small, DeskStyle::quiet);
}

void ChannelTile::follow(GlintChannelMonitor *monitor)
{
    connect(monitor, &GlintChannelMonitor::report_status, this, &ChannelTile::show_status);
    connect(monitor, &GlintChannelMonitor::report_clipid, this, [this](QString const &id) {
        clip_id = id;
        // The end of an id tells more than its directory.
        DeskStyle::set_elided(clip, clip_id, Qt::ElideLeft);
    });
    connect(monitor, &GlintChannelMonitor::report_speed, speed, &ASpeedLabel::set_value);
    connect(monitor, &GlintChannelMonitor::report_timecodes, this, &ChannelTile::show_timecodes);
    connect(monitor, &GlintChannelMonitor::report_information, this,
        [this](ChannelInformation const &value) {
            information = value;
            show_remaining();
        });
    connect(monitor, &GlintChannelMonitor::report_peak, meter, &LevelMeter::set_levels);
    connect(monitor, &GlintChannelMonitor::report_peak_hold, meter, &LevelMeter::set_peaks);
}

void ChannelTile::set_selected(bool on)
{
    selected = on;
    update();
}

void ChannelTile::show_configuration()
{
    auto const count
        = hub->get_channel_config()->get_angle_count(static_cast<unsigned int>(number));
    angles->setText(
        count == 1 ? QStringLiteral("1 angle") : QStringLiteral("%1 angles").arg(count));
    show_outputs();
}

/// Beside the angles, in what room they leave.
void ChannelTile::show_outputs()
{
    int const taken = angles->fontMetrics().horizontalAdvance(angles->text()) + margin;
    outputs->setGeometry(angles->geometry().adjusted(taken, 0, 0, 0));
    DeskStyle::set_elided(outputs,
        output_list(
            hub->get_channel_config()->AllOutputs(static_cast<unsigned int>(number), false)),
        Qt::ElideRight);
}

void ChannelTile::show_status(ChannelStatus value)
{
    channel_status = value;
    DeskStyle::set_elided(status, QString(ChannelStatus_to_string(value)), Qt::ElideRight);
    DeskStyle::set_text_colour(status, DeskStyle::status_colour(value));
    show_remaining();
}

void ChannelTile::show_timecodes(
    unsigned int clip_position, Corvane::ATimecode const &display, Corvane::ATimecode const &input)
{
    timecode->set_timecode(display);
    input_timecode->setText(QStringLiteral("in ") + timecode_text(input));
    position = clip_position;
    frequency = display.get_std();
    show_remaining();
}

void ChannelTile::show_remaining()
{
    // A clip that is being recorded has no end yet.
    bool const known = information.has_cliplength && Corvane::isValid(frequency)
        && channel_status != ChannelStatus::record;
    unsigned int const left = information.cliplength - std::min(information.cliplength, position);
    remaining->setText(known
            ? QLatin1Char('-') + QString(Corvane::ATimecode(frequency, left, 1).toString(3))
            : QString());
}

QColor ChannelTile::tally_colour() const
{
    switch (tally.get_state()) {
    case TallyModel::red:
        return DeskStyle::red;
    case TallyModel::green:
        return DeskStyle::green;
    case TallyModel::yellow:
        return DeskStyle::amber;
    default:
        return DeskStyle::edge;
    }
}

void ChannelTile::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), DeskStyle::tile);
    if (selected) {
        painter.setPen(QPen(isEnabled() ? DeskStyle::accent : DeskStyle::stale, 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
    painter.fillRect(0, 0, stripe, height(), isEnabled() ? tally_colour() : DeskStyle::stale);
}

void ChannelTile::resizeEvent(QResizeEvent *)
{
    QRect const area = rect().adjusted(stripe + margin, margin / 2, -margin, -margin);
    unit = std::clamp(std::min(area.height() / 9, area.width() / 13), 11, 28);
    int const line = unit * 5 / 4;
    Rows rows(area);
    place_head(rows.take(std::max(unit * 3 / 2, 20)));
    place(clip, rows.take(line), 0.85, false);
    DeskStyle::place_readout(
        timecode, rows.take(std::max(unit * 9 / 4, 22)), Qt::AlignLeft | Qt::AlignVCenter);
    QRect const times = rows.take(line);
    place(input_timecode, times, 0.72, false);
    place(remaining, times, 0.72, false);
    QRect const board = rows.take(line);
    place(angles, board, 0.72, false);
    place(outputs, board, 0.72, false);
    meter->setGeometry(rows.rest().adjusted(0, 2, 0, 0));
    DeskStyle::set_elided(clip, clip_id, Qt::ElideLeft);
    show_outputs();
}

/// The letter, as wide as it needs to be; the speed on the right; the state between them.
void ChannelTile::place_head(QRect const &row)
{
    place(letter, row, 1.1, true);
    int const name
        = std::max(unit * 3 / 2, letter->fontMetrics().horizontalAdvance(letter->text()));
    DeskStyle::place_readout(speed, row, Qt::AlignRight | Qt::AlignVCenter);
    int const left = row.left() + name + unit / 2;
    place(status, QRect(left, row.top(), speed->x() - left, row.height()), 0.85, true);
    show_status(channel_status);
}

void ChannelTile::place(QLabel *label, QRect const &row, double size, bool bold)
{
    label->setFont(DeskStyle::font(int(unit * size), bold));
    label->setGeometry(row);
}

void ChannelTile::mousePressEvent(QMouseEvent *event)
{
    Q_EMIT clicked(number, event->modifiers());
}
