// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Tarn/ATimecodeLabel>
#include <Tarn/ChannelStatus>

#include <QColor>
#include <QFont>
#include <QString>
#include <QStyle>

class QApplication;
class QFormLayout;
class QLabel;
class QWidget;

/// How the desk looks. Style, colours and fonts are the program's own, so that it looks the same on
/// every machine.
namespace DeskStyle {

inline QColor const back(0x14, 0x17, 0x1b);
inline QColor const panel(0x1b, 0x1f, 0x24);
inline QColor const tile(0x21, 0x26, 0x2c);
inline QColor const edge(0x33, 0x3a, 0x43);
inline QColor const text(0xd8, 0xdc, 0xe2);
inline QColor const quiet(0x8b, 0x94, 0x9f);
/// What is not known to be true any more.
inline QColor const stale(0x56, 0x5d, 0x67);
inline QColor const accent(0x5b, 0x9b, 0xd9);
inline QColor const green(0x57, 0xb8, 0x7c);
inline QColor const amber(0xd9, 0xa6, 0x4a);
inline QColor const red(0xe0, 0x5d, 0x57);

void apply(QApplication *application);
/// \a pixels: the height of the font; below 9 it is 9.
QFont font(int pixels, bool bold = false);
/// A label for text that comes from a server: never taken for markup.
QLabel *label(QWidget *parent, char const *object_name, int pixels = 13, bool bold = false);
/// Places a readout of timecode or speed in the larger of the fonts that have room.
template <typename Readout>
void place_readout(Readout *readout, QRect const &room, Qt::Alignment alignment)
{
    for (auto font : {ATimecodeLabel::Font::large, ATimecodeLabel::Font::small}) {
        readout->set_font(font);
        if (readout->sizeHint().boundedTo(room.size()) == readout->sizeHint())
            break;
    }
    readout->setGeometry(
        QStyle::alignedRect(Qt::LeftToRight, alignment, readout->sizeHint(), room));
}
/// Shows as much of a text as has room, and all of it as the tool tip. Only once the label has its
/// font and size.
void set_elided(QLabel *label, QString const &text, Qt::TextElideMode mode);
/// Colours the text of a widget while it is enabled; a disabled one has the colour of stale values.
void set_text_colour(QWidget *widget, QColor const &colour);
/// A panel with a heading above \a content.
QWidget *panel_with(QWidget *parent, char const *title, QWidget *content);
/// A form for \a widget, and a row of it: the label for the value, which is named as its title.
QFormLayout *form(QWidget *widget);
QLabel *row(QFormLayout *form, char const *title);
QColor status_colour(VCTP3::ChannelStatus status);

} // namespace DeskStyle
