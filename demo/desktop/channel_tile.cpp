// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/channel_tile.h"

#include "demo/desktop/desk_style.h"
#include "demo/desktop/level_meter.h"

#include <Tarn/CFChannelConfig>
#include <Tarn/USModel>

#include <QGraphicsOpacityEffect>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

using namespace VCTP3;

namespace {

constexpr int margin = 8;
constexpr int stripe = 4; // of the tally, on the left

/// Glyphs are pictures, which the palette of a disabled widget does not reach.
void dim(QWidget *widget, bool on)
{
    if (!on) {
        widget->setGraphicsEffect(nullptr);
        return;
    }
    auto *effect = new QGraphicsOpacityEffect(widget);
    effect->setOpacity(0.4);
    widget->setGraphicsEffect(effect);
}

/// The larger of the fonts that fit.
ATimecodeLabel::Font glyphs(int height)
{
    return height >= 40 ? ATimecodeLabel::Font::large : ATimecodeLabel::Font::small;
}

QString timecode_text(Corvane::ATimecode const &timecode)
{
    return timecode.is_defined() ? QString(timecode.toString(4)) : QStringLiteral("--:--:--:--");
}

QString output_list(CFChannelConfig::Outputs const &outputs)
{
    QStringList numbers;
    for (auto output : outputs)
        numbers << QString::number(output + 1);
    return numbers.isEmpty() ? QString() : QStringLiteral("out ") + numbers.join(u' ');
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
        show_clip();
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
    auto const i = static_cast<unsigned int>(number);
    CFChannelConfig const *config = hub->get_channel_config();
    auto const count = config->get_angle_count(i);
    angles->setText(
        count == 1 ? QStringLiteral("1 angle") : QStringLiteral("%1 angles").arg(count));
    outputs->setText(output_list(config->AllOutputs(i, false)));
}

void ChannelTile::show_status(ChannelStatus value)
{
    channel_status = value;
    status->setText(QString(ChannelStatus_to_string(value)));
    DeskStyle::set_text_colour(status, DeskStyle::status_colour(value));
    show_remaining();
}

void ChannelTile::show_clip()
{
    // The end of an id tells more than its directory.
    clip->setText(clip->fontMetrics().elidedText(clip_id, Qt::ElideLeft, clip->width()));
    clip->setToolTip(clip_id);
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
            ? QStringLiteral("left ") + QString(Corvane::ATimecode(frequency, left, 1).toString(3))
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

/// Places the rows by hand: a layout would be asked anew whenever a text changes, which is with
/// every field on every channel.
void ChannelTile::resizeEvent(QResizeEvent *)
{
    QRect const area = rect().adjusted(stripe + margin, margin / 2, -margin, -margin);
    int const row = std::clamp(std::min(area.height() / 9, area.width() / 13), 11, 28);
    int const half = area.width() / 2;
    int y = area.top();
    auto const place = [&](QLabel *label, int x, int width, int height, double size, bool bold) {
        label->setGeometry(area.left() + x, y, width, height);
        label->setFont(DeskStyle::font(int(row * size), bold));
    };
    int const head = std::max(row * 3 / 2, 20);
    letter->setFont(DeskStyle::font(int(row * 1.1), true));
    int const name
        = std::max(row * 3 / 2, letter->fontMetrics().horizontalAdvance(letter->text())) + row / 2;
    speed->set_font(glyphs(head));
    QSize const speed_size = speed->sizeHint();
    place(letter, 0, name, head, 1.1, true);
    place(status, name, area.width() - name - speed_size.width(), head, 0.85, true);
    speed->setGeometry(area.right() + 1 - speed_size.width(), y + (head - speed_size.height()) / 2,
        speed_size.width(), speed_size.height());
    y += head;
    place(clip, 0, area.width(), row * 5 / 4, 0.85, false);
    y += row * 5 / 4;
    int const large = std::max(row * 9 / 4, 22);
    timecode->set_font(glyphs(large));
    QSize const timecode_size = timecode->sizeHint();
    timecode->setGeometry(area.left(), y + (large - timecode_size.height()) / 2,
        timecode_size.width(), timecode_size.height());
    y += large;
    place(input_timecode, 0, area.width(), row * 5 / 4, 0.72, false);
    place(remaining, half, area.width() - half, row * 5 / 4, 0.72, false);
    y += row * 5 / 4;
    place(angles, 0, half, row * 5 / 4, 0.72, false);
    place(outputs, half, area.width() - half, row * 5 / 4, 0.72, false);
    y += row * 5 / 4 + 2;
    meter->setGeometry(area.left(), y, area.width(), std::max(0, area.bottom() + 1 - y));
    show_clip();
}

void ChannelTile::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange)
        for (QWidget *widget : {static_cast<QWidget *>(timecode), static_cast<QWidget *>(speed)})
            dim(widget, !isEnabled());
    QWidget::changeEvent(event);
}

void ChannelTile::mousePressEvent(QMouseEvent *event)
{
    Q_EMIT clicked(number, event->modifiers());
}
