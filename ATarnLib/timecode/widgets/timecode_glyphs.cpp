// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/widgets/timecode_glyphs_p.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <QCoreApplication>
#include <QImage>
#include <iterator>
#include <map>
#include <memory>

namespace {

using Font = ATimecodeLabel::Font;

char const *const names[] = {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "dash", "comma",
    "semicolon", "period", "colon", "percent", "plus", "minus", "X", "f1", "f2", "f12"};
static_assert(std::size(names) == static_cast<int>(ATimecodeFontSymbol::Glyph::none));

QString set_of(Font font)
{
    switch (font) {
    case Font::large:
        return QStringLiteral("/tc/large");
    case Font::small:
        return QStringLiteral("/tc/small");
    case Font::small_gray:
        return QStringLiteral("/tc/small_gray");
    case Font::small_transparent:
        return QStringLiteral("/tc/small_transparent");
    }
    return {};
}

using Sets = std::map<Font, std::unique_ptr<TimecodeGlyphs>>;

Sets &sets()
{
    static Sets loaded;
    return loaded;
}

/// Pictures must be gone before the application object is.
void forget_sets()
{
    sets().clear();
}

} // namespace

TimecodeGlyphs::TimecodeGlyphs(QString const &set)
{
    for (int n = 0; n < count; ++n) {
        QString const path = QStringLiteral(":%1/%2.png");
        QString const glyph_name = name(static_cast<Glyph>(n));
        (n < 10 ? digits[n] : others[n - 10]) = QPixmap(path.arg(set, glyph_name));
        if (n < 10)
            A_ASSERT_TEXT(!digits[n].isNull(), "!digits[ n ].isNull()");
        dense[n] = QPixmap(path.arg(set, glyph_name + QStringLiteral("@2x")));
        dense[n].setDevicePixelRatio(2);
    }
    if (!digits[0].isNull())
        ground_color = digits[0].toImage().pixelColor(0, 0);
}

TimecodeGlyphs const &TimecodeGlyphs::of(ATimecodeLabel::Font font)
{
    if (sets().empty())
        qAddPostRoutine(forget_sets);
    std::unique_ptr<TimecodeGlyphs> &set = sets()[font];
    if (!set)
        set = std::make_unique<TimecodeGlyphs>(set_of(font));
    return *set;
}

QString TimecodeGlyphs::name(Glyph glyph)
{
    return QLatin1String(names[static_cast<int>(glyph)]);
}

QPixmap const *TimecodeGlyphs::find(Glyph glyph, qreal ratio) const
{
    if (glyph == Glyph::none)
        return nullptr;
    int const n = static_cast<int>(glyph);
    QPixmap const &single = n < 10 ? digits[n] : others[n - 10];
    QPixmap const &best = ratio > 1 && !dense[n].isNull() ? dense[n] : single;
    return best.isNull() ? nullptr : &best;
}

QSize TimecodeGlyphs::size(Glyph glyph) const
{
    QPixmap const *pixmap = find(glyph, 1);
    return pixmap ? pixmap->size() : QSize(0, 0);
}
