// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/widgets/atimecode_font_symbol.h"

#include "ATarnLib/timecode/widgets/timecode_glyphs_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <QPainter>

namespace {

constexpr qreal disabled_opacity = 0.4;

} // namespace

ATimecodeFontSymbol::ATimecodeFontSymbol(Glyph room, QWidget *parent)
    : QWidget(parent)
    , shape(room)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

ATimecodeFontSymbol::~ATimecodeFontSymbol() = default;

void ATimecodeFontSymbol::set_glyph(Glyph shown)
{
    if (shown == glyph)
        return;
    glyph = shown;
    update();
}

void ATimecodeFontSymbol::set_font(ATimecodeLabel::Font chosen)
{
    font = chosen;
    updateGeometry();
    update();
}

QSize ATimecodeFontSymbol::sizeHint() const
{
    return TimecodeGlyphs::of(font).size(shape);
}

void ATimecodeFontSymbol::paintEvent(QPaintEvent *)
{
    TimecodeGlyphs const &set = TimecodeGlyphs::of(font);
    QPainter painter(this);
    painter.fillRect(rect(), set.ground());
    if (glyph == Glyph::none)
        return;
    QPixmap const *pixmap = set.find(glyph, devicePixelRatioF());
    if (!A_ASSERT_TEXT(pixmap, "pixmap != 0"))
        return;
    if (!isEnabled())
        painter.setOpacity(disabled_opacity);
    // Only a ratio that is no whole number makes it another size.
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    QSize const size = set.size(glyph);
    painter.drawPixmap(
        QRect(QPoint((width() - size.width()) / 2, (height() - size.height()) / 2), size), *pixmap);
}

ATimecodeDigit::ATimecodeDigit(QWidget *parent)
    : ATimecodeFontSymbol(Glyph::digit0, parent)
{
}

void ATimecodeDigit::set_digit(unsigned int digit)
{
    if (A_ASSERT(digit <= 9))
        set_glyph(static_cast<Glyph>(digit));
}

ATimecodeSeparator::ATimecodeSeparator(QWidget *parent)
    : ATimecodeFontSymbol(Glyph::colon, parent)
{
}

void ATimecodeSeparator::set_separator(bool dropframe, bool f2)
{
    if (dropframe)
        set_glyph(f2 ? Glyph::semicolon : Glyph::comma);
    else
        set_glyph(f2 ? Glyph::colon : Glyph::period);
}

ATimecodeLabelIndicator::ATimecodeLabelIndicator(QWidget *parent)
    : ATimecodeFontSymbol(Glyph::f12, parent)
{
}
