// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/widgets/atimecode_label.h"

#include "ATarnLib/timecode/widgets/accessible_readout_p.h"
#include "ATarnLib/timecode/widgets/atimecode_font_symbol.h"
#include "ATarnLib/timecode/widgets/timecode_glyphs_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <QHBoxLayout>
#include <QPainter>

using Corvane::ATimecode;
using Glyph = ATimecodeFontSymbol::Glyph;

namespace {

/// The glyph of a character of counting down; `Glyph::none` for any other.
Glyph countdown_glyph(QChar character)
{
    switch (character.unicode()) {
    case u'-':
        return Glyph::minus;
    case u'+':
        return Glyph::plus;
    case u'X':
        return Glyph::x;
    default:
        return Glyph::none;
    }
}

} // namespace

ATimecodeLabel::ATimecodeLabel(QWidget *parent)
    : QWidget(parent)
    , row(new QHBoxLayout(this))
    , countdown_symbol(new ATimecodeFontSymbol(Glyph::minus, this))
    , plus(new ATimecodeFontSymbol(Glyph::plus, this))
    , indicator(new ATimecodeLabelIndicator(this))
{
    AccessibleReadout::install();
    setAccessibleName(tr("Timecode"));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addStretch();
    row->addWidget(countdown_symbol);
    row->addWidget(plus);
    for (int n = 0; n < 8; ++n) {
        if (n != 0 && n % 2 == 0)
            row->addWidget(separators[n / 2 - 1] = new ATimecodeSeparator(this));
        row->addWidget(digits[n] = new ATimecodeDigit(this));
    }
    row->addWidget(indicator);
    row->addStretch();
    plus->set_glyph(Glyph::plus);
    update_timer.setSingleShot(true);
    update_timer.setInterval(0);
    connect(&update_timer, &QTimer::timeout, this, [this] { update_action(); });
    // Nothing may be drawn, nor a size be asked for, before the first turn.
    ATimecodeLabel::update_action();
}

ATimecodeLabel::~ATimecodeLabel() = default;

void ATimecodeLabel::set_timecode(ATimecode const &shown)
{
    timecode = shown;
    update();
}

void ATimecodeLabel::set_days(unsigned int n)
{
    days = n;
    update();
}

void ATimecodeLabel::clear_days()
{
    days = AOption<unsigned int>();
    update();
}

void ATimecodeLabel::set_font(Font chosen)
{
    if (chosen != font)
        force_set_font(chosen);
}

void ATimecodeLabel::force_set_font(Font chosen)
{
    font = chosen;
    for (ATimecodeFontSymbol *symbol : symbols())
        symbol->set_font(font);
    QWidget::update();
    update();
}

void ATimecodeLabel::set_indicator_frame(bool frame)
{
    indicates_frame = frame;
    update();
}

void ATimecodeLabel::set_is_countdown(bool on)
{
    countdown = on;
    update();
}

void ATimecodeLabel::set_countdown_character(QChar character)
{
    if (!A_ASSERT(countdown_glyph(character) != Glyph::none))
        return;
    countdown_character = character;
    update();
}

QString ATimecodeLabel::shown_text() const
{
    if (timecode.is_undefined())
        return tr("undefined");
    QString text;
    if (countdown)
        text += countdown_character;
    if (days.has_value())
        text += QString::number(*days) + QLatin1Char('+');
    return text + QString(timecode.get24().toString(4));
}

void ATimecodeLabel::update()
{
    if (!update_timer.isActive())
        update_timer.start();
}

void ATimecodeLabel::update_action()
{
    countdown_symbol->setVisible(countdown);
    countdown_symbol->set_glyph(countdown_glyph(countdown_character));
    show_days();
    show_components();
    bool const dropframe = dropframeByVideoFrequency(timecode.get_std(), timecode.get_df())
        == Corvane::DropframeFlag::df;
    for (ATimecodeSeparator *separator : separators)
        separator->set_separator(dropframe, timecode.get_f2());
    if (timecode.is_undefined())
        indicator->set_blank();
    else if (indicates_frame)
        indicator->set_frame();
    else
        indicator->set_field(timecode.get_f2());
    AccessibleReadout::value_changed(this);
}

void ATimecodeLabel::show_days()
{
    QString const text = days.has_value() ? QString::number(*days) : QString();
    while (day_digits.size() < text.size()) {
        auto *digit = new ATimecodeDigit(this);
        digit->set_font(font);
        // After the stretch and the character of counting down.
        row->insertWidget(2, digit);
        day_digits.append(digit);
    }
    for (int n = 0; n < day_digits.size(); ++n) {
        // The first was put in first, so it stands last.
        bool const shown = n < text.size();
        day_digits[n]->setVisible(shown);
        if (shown)
            day_digits[n]->set_digit(text[text.size() - 1 - n].unicode() - u'0');
    }
    plus->setVisible(days.has_value());
}

void ATimecodeLabel::show_components()
{
    unsigned int const values[] = {timecode.get_hours(), timecode.get_minutes(),
        timecode.get_seconds(), timecode.get_frames()};
    for (int n = 0; n < 8; ++n) {
        if (timecode.is_undefined())
            digits[n]->set_dash();
        else
            digits[n]->set_digit(n % 2 == 0 ? values[n / 2] / 10 : values[n / 2] % 10);
    }
}

QList<ATimecodeFontSymbol *> ATimecodeLabel::symbols() const
{
    return findChildren<ATimecodeFontSymbol *>(QString(), Qt::FindDirectChildrenOnly);
}

void ATimecodeLabel::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), TimecodeGlyphs::of(font).ground());
}
