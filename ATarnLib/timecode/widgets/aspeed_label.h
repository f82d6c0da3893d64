// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/timecode/widgets/atimecode_label.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QString>
#include <QWidget>

class ATimecodeDigit;
class ATimecodeFontSymbol;
class QStackedWidget;

/// Shows a speed, in percent up to four times normal speed and as a multiple beyond. Speeds are
/// rounded to what can be shown. Without a value it is a row of dashes. A disabled label is faint.
/// Thread: the main thread.
class TARN_EXPORT ASpeedLabel : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int value READ get_value WRITE set_value RESET clear_value)
    Q_PROPERTY(ATimecodeLabel::Font glyphs READ get_font WRITE set_font)

public:
    /// Without a value, in the large font.
    explicit ASpeedLabel(QWidget *parent = nullptr);
    ~ASpeedLabel() override;

    /// \a speed in 16.16 fixed point: 65536 is normal speed. Beyond 99.9 times it shows as that.
    void set_value(int speed);
    /// 0 without a value.
    int get_value() const { return value.value(); }
    bool has_value() const { return value.has_value(); }
    void clear_value();
    ATimecodeLabel::Font get_font() const { return font; }
    void set_font(ATimecodeLabel::Font chosen);

    /// All that it shows, as text: "-50%", "5.0X".
    QString shown_text() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *make_page(QString const &name);
    void make_percent_page();
    void make_x_page();
    void make_undefined_page();
    void update_speed();
    void show_percent();
    void show_x();
    bool is_beyond_percent() const;

    AOption<int> value;
    ATimecodeLabel::Font font = ATimecodeLabel::Font::large;

    QStackedWidget *stack;
    QWidget *page_percent;
    QWidget *page_x;
    QWidget *page_undefined;
    ATimecodeFontSymbol *pct_sign;
    ATimecodeDigit *pct_digits[3];
    ATimecodeFontSymbol *x_sign;
    ATimecodeDigit *x_digits[3];
};
