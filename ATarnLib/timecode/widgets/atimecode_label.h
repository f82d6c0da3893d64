// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/timecode/atimecode.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QChar>
#include <QList>
#include <QTimer>
#include <QWidget>

class ATimecodeDigit;
class ATimecodeFontSymbol;
class ATimecodeLabelIndicator;
class ATimecodeSeparator;
class QHBoxLayout;

/// Shows a timecode: hours, minutes, seconds, frames and the field, with days and a sign of
/// counting down ahead of them if asked for. An undefined timecode is a row of dashes.
///
/// Whatever is set shows in the next turn of the event loop, all at once, so that a label that is
/// set for each report is drawn no more often than the loop turns. A disabled label is faint.
/// Thread: the main thread.
class TARN_EXPORT ATimecodeLabel : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(Font glyphs READ get_font WRITE set_font)
    Q_PROPERTY(bool countdown READ is_countdown WRITE set_is_countdown)

public:
    /// Sets of glyphs in one look.
    enum class Font
    {
        large, ///< 36 points high, on a dark ground
        small, ///< 18 points high, on a dark ground
        small_gray, ///< the same with gray digits
        small_transparent ///< the same without a ground
    };
    Q_ENUM(Font)

    /// Undefined, in the large font.
    explicit ATimecodeLabel(QWidget *parent = nullptr);
    ~ATimecodeLabel() override;

    void set_timecode(Corvane::ATimecode const &shown);
    /// What was set last, whether it shows yet or not.
    Corvane::ATimecode get_timecode() const { return timecode; }
    void set_undefined() { set_timecode({}); }
    /// \name Days ahead of the hours, followed by "+"
    /// Those of the timecode itself do not show.
    /// @{
    void set_days(unsigned int n);
    void clear_days();
    AOption<unsigned int> get_days() const { return days; }
    /// @}
    Font get_font() const { return font; }
    /// Without effect if it is the present one.
    void set_font(Font chosen);
    void force_set_font(Font chosen);
    /// The indicator tells the field. So it does unless told otherwise; it is blank while the
    /// timecode is undefined.
    void set_indicator_field() { set_indicator_frame(false); }
    /// With \a frame it tells that both fields of the frame are meant, else the field.
    void set_indicator_frame(bool frame);
    bool is_countdown() const { return countdown; }
    /// Whether the character of counting down stands ahead of all.
    void set_is_countdown(bool on);
    /// '-', which it is unless set here, '+' or 'X'. Any other: an assertion, and the old one
    /// stays.
    void set_countdown_character(QChar character);

    /// All that it shows, as text: "-1+01:02:03:04".
    QString shown_text() const;

public Q_SLOTS:
    /// Shows what is set, in the next turn of the event loop.
    void update();

protected:
    /// Runs once in each turn of the event loop that follows a change.
    virtual void update_action();
    void paintEvent(QPaintEvent *event) override;

private:
    QList<ATimecodeFontSymbol *> symbols() const;
    void show_days();
    void show_components();

    Corvane::ATimecode timecode;
    Font font = Font::large;
    AOption<unsigned int> days;
    bool countdown = false;
    bool indicates_frame = false;
    QChar countdown_character = QLatin1Char('-');

    QTimer update_timer;
    QHBoxLayout *row;
    ATimecodeFontSymbol *countdown_symbol;
    QList<ATimecodeDigit *> day_digits; // as many as were ever needed
    ATimecodeFontSymbol *plus;
    ATimecodeDigit *digits[8];
    ATimecodeSeparator *separators[3];
    ATimecodeLabelIndicator *indicator;
};
