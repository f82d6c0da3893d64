// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/timecode/widgets/atimecode_label.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QWidget>

/// One glyph of a readout, drawn from a picture, so that readouts look the same on every machine.
/// While it is disabled, the glyph is faint and the ground as before.
/// Thread: the main thread.
class TARN_EXPORT ATimecodeFontSymbol : public QWidget
{
    Q_OBJECT

public:
    enum class Glyph
    {
        digit0,
        digit1,
        digit2,
        digit3,
        digit4,
        digit5,
        digit6,
        digit7,
        digit8,
        digit9,
        dash,
        comma,
        semicolon,
        period,
        colon,
        percent,
        plus,
        minus,
        x,
        f1,
        f2,
        f12,
        none ///< a blank
    };

    /// Takes the room of \a shape whatever it shows. A blank at first.
    explicit ATimecodeFontSymbol(Glyph shape, QWidget *parent = nullptr);
    ~ATimecodeFontSymbol() override;

    Glyph get_glyph() const { return glyph; }
    /// A glyph that its set lacks is an assertion whenever it is drawn, and a blank.
    void set_glyph(Glyph shown);
    void set_font(ATimecodeLabel::Font chosen);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Glyph const shape;
    Glyph glyph = Glyph::none;
    ATimecodeLabel::Font font = ATimecodeLabel::Font::large;
};

/// A digit of a readout.
class TARN_EXPORT ATimecodeDigit : public ATimecodeFontSymbol
{
    Q_OBJECT

public:
    explicit ATimecodeDigit(QWidget *parent = nullptr);

    /// \a digit: 0 to 9. Above that: an assertion, and what it showed stays.
    void set_digit(unsigned int digit);
    void set_dash() { set_glyph(Glyph::dash); }
    void set_blank() { set_glyph(Glyph::none); }
};

/// What stands between two groups of digits.
class TARN_EXPORT ATimecodeSeparator : public ATimecodeFontSymbol
{
    Q_OBJECT

public:
    explicit ATimecodeSeparator(QWidget *parent = nullptr);

    /// As `Corvane::ATimecode::toString` tells flag and field.
    void set_separator(bool dropframe, bool f2);
};

/// Tells which field of its frame a timecode is of.
class TARN_EXPORT ATimecodeLabelIndicator : public ATimecodeFontSymbol
{
    Q_OBJECT

public:
    explicit ATimecodeLabelIndicator(QWidget *parent = nullptr);

    /// The second field if \a f2.
    void set_field(bool f2) { set_glyph(f2 ? Glyph::f2 : Glyph::f1); }
    /// Both fields.
    void set_frame() { set_glyph(Glyph::f12); }
    void set_blank() { set_glyph(Glyph::none); }
};
