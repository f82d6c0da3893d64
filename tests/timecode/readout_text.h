// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/timecode/widgets/atimecode_font_symbol.h"

#include <QAccessible>
#include <QString>
#include <QWidget>
#include <algorithm>

/// The glyphs of \a readout that would show, from the left: digits as they are, the others by a
/// character each: "_" for a dash, "1", "2" and "f" in brackets for the indicator, " " for a blank.
inline QString readout_text(QWidget *readout)
{
    static QString const characters = QStringLiteral("0123456789_,;.:%+-X");
    QList<ATimecodeFontSymbol *> symbols = readout->findChildren<ATimecodeFontSymbol *>();
    symbols.removeIf([readout](ATimecodeFontSymbol *s) { return !s->isVisibleTo(readout); });
    std::sort(symbols.begin(), symbols.end(), [readout](QWidget *a, QWidget *b) {
        return a->mapTo(readout, QPoint()).x() < b->mapTo(readout, QPoint()).x();
    });
    QString text;
    for (ATimecodeFontSymbol *symbol : symbols) {
        int const n = static_cast<int>(symbol->get_glyph());
        if (n < characters.size())
            text += characters[n];
        else if (symbol->get_glyph() == ATimecodeFontSymbol::Glyph::none)
            text += QLatin1Char(' ');
        else
            text += QStringLiteral("[%1]").arg(QStringLiteral("12f")[n - characters.size()]);
    }
    return text;
}

inline QString accessible_text(QWidget *widget, QAccessible::Text kind)
{
    QAccessibleInterface *told = QAccessible::queryAccessibleInterface(widget);
    return told ? told->text(kind) : QStringLiteral("(not told of)");
}
