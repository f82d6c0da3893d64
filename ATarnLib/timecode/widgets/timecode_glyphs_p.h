// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/timecode/widgets/atimecode_font_symbol.h"
#include "ATarnLib/timecode/widgets/atimecode_label.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QColor>
#include <QPixmap>
#include <QString>

/// The pictures of one set, at one and at two pixels to a point.
/// Thread: the main thread.
class TARN_AUTOTEST_EXPORT TimecodeGlyphs
{
public:
    using Glyph = ATimecodeFontSymbol::Glyph;

    /// Loads the pictures of \a set, such as "/tc/large". Each digit that is not there is an
    /// assertion.
    explicit TimecodeGlyphs(QString const &set);
    /// Loaded once in the life of the application object. A font that does not exist has no
    /// pictures.
    static TimecodeGlyphs const &of(ATimecodeLabel::Font font);
    static QString name(Glyph glyph);

    /// The picture for a device of \a ratio pixels to a point; null where it is not there.
    QPixmap const *find(Glyph glyph, qreal ratio) const;
    /// In points; empty where the picture is not there.
    QSize size(Glyph glyph) const;
    /// What the glyphs stand on; transparent in a set without a ground.
    QColor ground() const { return ground_color; }

private:
    static constexpr int count = static_cast<int>(Glyph::none);

    QPixmap digits[10];
    QPixmap others[count - 10];
    QPixmap dense[count]; // all of them, twice as dense
    QColor ground_color = Qt::transparent;
};
