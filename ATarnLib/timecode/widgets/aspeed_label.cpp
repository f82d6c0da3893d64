// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/widgets/aspeed_label.h"

#include "ATarnLib/timecode/widgets/accessible_readout_p.h"
#include "ATarnLib/timecode/widgets/atimecode_font_symbol.h"
#include "ATarnLib/timecode/widgets/timecode_glyphs_p.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QStackedWidget>
#include <algorithm>

using Glyph = ATimecodeFontSymbol::Glyph;

namespace {

constexpr unsigned int normal_speed = 65536;
constexpr unsigned int most_in_percent = 4 * normal_speed;
constexpr unsigned int most_tenths = 999;

/// Wide enough for the lowest speed too.
unsigned int magnitude(int speed)
{
    return static_cast<unsigned int>(std::abs(qint64{speed}));
}

/// \a speed in parts of normal speed of which there are \a parts, rounded.
unsigned int in_parts(int speed, unsigned int parts)
{
    return static_cast<unsigned int>(
        (quint64{magnitude(speed)} * parts + normal_speed / 2) / normal_speed);
}

unsigned int percent(int speed)
{
    return in_parts(speed, 100);
}

unsigned int tenths(int speed)
{
    return std::min(in_parts(speed, 10), most_tenths);
}

template <typename Symbol> Symbol *put(QWidget *page, Symbol *symbol, char const *name)
{
    symbol->setObjectName(QLatin1String(name));
    page->layout()->addWidget(symbol);
    return symbol;
}

ATimecodeFontSymbol *put_glyph(QWidget *page, Glyph glyph, char const *name)
{
    ATimecodeFontSymbol *symbol = put(page, new ATimecodeFontSymbol(glyph, page), name);
    symbol->set_glyph(glyph);
    return symbol;
}

ATimecodeDigit *put_digit(QWidget *page, char const *name)
{
    return put(page, new ATimecodeDigit(page), name);
}

} // namespace

ASpeedLabel::ASpeedLabel(QWidget *parent)
    : QWidget(parent)
    , stack(new QStackedWidget(this))
{
    AccessibleReadout::install();
    setAccessibleName(tr("Speed"));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    stack->setObjectName(QStringLiteral("stack"));
    stack->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addStretch();
    row->addWidget(stack);
    row->addStretch();
    make_percent_page();
    make_x_page();
    make_undefined_page();
    update_speed();
}

ASpeedLabel::~ASpeedLabel() = default;

void ASpeedLabel::set_value(int speed)
{
    value = speed;
    update_speed();
}

void ASpeedLabel::clear_value()
{
    value.clear();
    update_speed();
}

void ASpeedLabel::set_font(ATimecodeLabel::Font chosen)
{
    font = chosen;
    for (ATimecodeFontSymbol *symbol : findChildren<ATimecodeFontSymbol *>())
        symbol->set_font(font);
    // Only the layout next to a symbol hears of that at once.
    stack->updateGeometry();
    updateGeometry();
    update();
}

QString ASpeedLabel::shown_text() const
{
    if (!has_value())
        return tr("undefined");
    QString const sign = *value < 0 ? QStringLiteral("-") : QString();
    if (!is_beyond_percent())
        return sign + QStringLiteral("%1%").arg(percent(*value));
    return sign + QStringLiteral("%1.%2X").arg(tenths(*value) / 10).arg(tenths(*value) % 10);
}

void ASpeedLabel::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), TimecodeGlyphs::of(font).ground());
}

QWidget *ASpeedLabel::make_page(QString const &name)
{
    auto *page = new QWidget(stack);
    page->setObjectName(name);
    auto *row = new QHBoxLayout(page);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    stack->addWidget(page);
    return page;
}

void ASpeedLabel::make_percent_page()
{
    page_percent = make_page(QStringLiteral("page_percent"));
    pct_sign = put_glyph(page_percent, Glyph::minus, "pct_sign");
    pct_digits[0] = put_digit(page_percent, "pct_100");
    pct_digits[1] = put_digit(page_percent, "pct_10");
    pct_digits[2] = put_digit(page_percent, "pct_1");
    put_glyph(page_percent, Glyph::percent, "pct_sym");
}

void ASpeedLabel::make_x_page()
{
    page_x = make_page(QStringLiteral("page_x"));
    x_sign = put_glyph(page_x, Glyph::minus, "x_sign");
    x_digits[0] = put_digit(page_x, "x_10");
    x_digits[1] = put_digit(page_x, "x_1");
    put_glyph(page_x, Glyph::period, "x_point");
    x_digits[2] = put_digit(page_x, "x_tenth");
    put_glyph(page_x, Glyph::x, "x_sym");
}

void ASpeedLabel::make_undefined_page()
{
    page_undefined = make_page(QStringLiteral("page_undefined"));
    // The room of the other pages, so that no page leaves a gap.
    put_glyph(page_undefined, Glyph::minus, "undefined_sign")->set_glyph(Glyph::none);
    for (char const *name : {"undefined_100", "undefined_10", "undefined_1"})
        put_glyph(page_undefined, Glyph::dash, name);
    put_glyph(page_undefined, Glyph::percent, "undefined_sym")->set_glyph(Glyph::none);
}

void ASpeedLabel::update_speed()
{
    if (!has_value()) {
        stack->setCurrentWidget(page_undefined);
    } else if (is_beyond_percent()) {
        show_x();
        stack->setCurrentWidget(page_x);
    } else {
        show_percent();
        stack->setCurrentWidget(page_percent);
    }
    AccessibleReadout::value_changed(this);
}

void ASpeedLabel::show_percent()
{
    unsigned int const shown = percent(*value);
    unsigned int const digits[] = {shown / 100, shown / 10 % 10, shown % 10};
    pct_sign->set_glyph(*value < 0 ? Glyph::minus : Glyph::none);
    bool leading = true;
    for (int n = 0; n < 3; ++n) {
        leading = leading && digits[n] == 0 && n < 2;
        if (leading)
            pct_digits[n]->set_blank();
        else
            pct_digits[n]->set_digit(digits[n]);
    }
}

void ASpeedLabel::show_x()
{
    unsigned int const shown = tenths(*value);
    x_sign->set_glyph(*value < 0 ? Glyph::minus : Glyph::none);
    x_digits[0]->set_digit(shown / 100);
    x_digits[1]->set_digit(shown / 10 % 10);
    x_digits[2]->set_digit(shown % 10);
}

bool ASpeedLabel::is_beyond_percent() const
{
    return magnitude(*value) > most_in_percent;
}
