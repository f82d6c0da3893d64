// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/widgets/timecode_glyphs_p.h"
#include "tests/support/assert_log.h"
#include "tests/support/patience.h"

#include <QImage>
#include <QTest>

using Font = ATimecodeLabel::Font;
using Glyph = ATimecodeFontSymbol::Glyph;

namespace {

constexpr int glyph_count = static_cast<int>(Glyph::none);

QImage picture(QString const &set, QString const &file)
{
    // As a pixmap holds it, where colours are weighed with their opacity.
    QImage const image = QImage(QStringLiteral(":%1/%2.png").arg(set, file));
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied)
        .convertToFormat(QImage::Format_ARGB32);
}

/// What differs from the ground, which the upper left corner is of.
QRect ink(QImage const &image)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != image.pixel(0, 0))
                box |= QRect(x, y, 1, 1);
        }
    }
    return box;
}

/// How many pixels would be needed for its ink if all of it were full.
qreal amount(QImage const &image, QRect const &inside)
{
    auto const tone = [&image](int x, int y) {
        QRgb const p = image.pixel(x, y);
        return qAlpha(p) * qGreen(p) / 255.0;
    };
    qreal sum = 0;
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x)
            sum += tone(x, y) - tone(0, 0);
    }
    return sum;
}

bool is_opaque(QImage const &image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) != 255)
                return false;
        }
    }
    return true;
}

void add_sets()
{
    QTest::addColumn<QString>("set");
    QTest::addColumn<int>("unit"); // pixels to a point of the small sets
    QTest::newRow("large") << QStringLiteral("/tc/large") << 2;
    QTest::newRow("small") << QStringLiteral("/tc/small") << 1;
    QTest::newRow("small_gray") << QStringLiteral("/tc/small_gray") << 1;
    QTest::newRow("small_transparent") << QStringLiteral("/tc/small_transparent") << 1;
}

/// Counts how often it is drawn.
class CountingSymbol : public ATimecodeFontSymbol
{
public:
    CountingSymbol()
        : ATimecodeFontSymbol(Glyph::digit0)
    {
    }
    int paints = 0;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        ++paints;
        ATimecodeFontSymbol::paintEvent(event);
    }
};

} // namespace

class TestTimecodeGlyphs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void each_set_has_each_glyph_in_two_densities_data() { add_sets(); }
    void each_set_has_each_glyph_in_two_densities();
    void digits_stand_on_one_line_and_touch_no_edge_data() { add_sets(); }
    void digits_stand_on_one_line_and_touch_no_edge();
    void strokes_are_as_heavy_in_all_sets_data() { add_sets(); }
    void strokes_are_as_heavy_in_all_sets();
    void grounds_are_dark_or_none();
    void fonts_are_these_sets();
    void digit_that_is_not_there_is_an_assertion();
    void font_that_does_not_exist_has_no_pictures();
    void glyph_that_is_not_there_is_an_assertion_when_drawn();
    void blank_is_drawn_as_the_ground();
    void disabled_glyph_is_faint_on_the_same_ground();
    void picture_is_drawn_pixel_by_pixel_data();
    void picture_is_drawn_pixel_by_pixel();
    void change_is_drawn();
    void symbol_takes_the_room_of_its_shape();
    void digit_above_9_is_an_assertion();
    void separator_tells_flag_and_field();
    void indicator_tells_field_or_frame();
};

void TestTimecodeGlyphs::each_set_has_each_glyph_in_two_densities()
{
    QFETCH(QString, set);
    QFETCH(int, unit);
    QStringList const names{QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2"),
        QStringLiteral("3"), QStringLiteral("4"), QStringLiteral("5"), QStringLiteral("6"),
        QStringLiteral("7"), QStringLiteral("8"), QStringLiteral("9"), QStringLiteral("dash"),
        QStringLiteral("comma"), QStringLiteral("semicolon"), QStringLiteral("period"),
        QStringLiteral("colon"), QStringLiteral("percent"), QStringLiteral("plus"),
        QStringLiteral("minus"), QStringLiteral("X"), QStringLiteral("f1"), QStringLiteral("f2"),
        QStringLiteral("f12")};
    QCOMPARE(names.size(), glyph_count);
    for (int n = 0; n < glyph_count; ++n) {
        QCOMPARE(TimecodeGlyphs::name(static_cast<Glyph>(n)), names[n]);
        QImage const single = picture(set, names[n]);
        QImage const dense = picture(set, names[n] + QStringLiteral("@2x"));
        QVERIFY2(!single.isNull(), qPrintable(names[n]));
        QCOMPARE(single.height(), 18 * unit);
        QCOMPARE(dense.size(), 2 * single.size());
        QVERIFY2(!ink(single).isEmpty(), qPrintable(names[n]));
    }
}

void TestTimecodeGlyphs::digits_stand_on_one_line_and_touch_no_edge()
{
    QFETCH(QString, set);
    QFETCH(int, unit);
    for (bool dense : {false, true}) {
        int const scale = dense ? 2 * unit : unit;
        for (int n = 0; n < glyph_count; ++n) {
            QString const name = TimecodeGlyphs::name(static_cast<Glyph>(n));
            QImage const image = picture(set, dense ? name + QStringLiteral("@2x") : name);
            QRect const box = ink(image);
            QVERIFY2(image.rect().adjusted(1, 1, -1, -1).contains(box), qPrintable(name));
            if (n > 9)
                continue;
            QCOMPARE(image.width(), 12 * scale);
            QCOMPARE(box.top(), 3 * scale);
            QCOMPARE(box.bottom(), 15 * scale - 1);
        }
    }
}

void TestTimecodeGlyphs::strokes_are_as_heavy_in_all_sets()
{
    QFETCH(QString, set);
    QFETCH(int, unit);
    for (int density : {1, 2}) {
        QImage const minus
            = picture(set, density == 2 ? QStringLiteral("minus@2x") : QStringLiteral("minus"));
        QImage const one
            = picture(set, density == 2 ? QStringLiteral("1@2x") : QStringLiteral("1"));
        int const scale = unit * density;
        // The level stroke and the upright one, cut across in their middle.
        qreal const across_minus = amount(minus, QRect(6 * scale, 0, 1, minus.height()));
        qreal const across_one = amount(one, QRect(0, 10 * scale, one.width(), 1));
        qreal const full = amount(minus, QRect(6 * scale, 9 * scale, 1, 1));
        QVERIFY(full > 0);
        QVERIFY2(qAbs(across_minus / full - 2 * scale) < 0.1,
            qPrintable(QString::number(across_minus / full)));
        QVERIFY2(qAbs(across_one / full - 2 * scale) < 0.1,
            qPrintable(QString::number(across_one / full)));
    }
}

void TestTimecodeGlyphs::grounds_are_dark_or_none()
{
    for (Font font : {Font::large, Font::small, Font::small_gray}) {
        TimecodeGlyphs const &set = TimecodeGlyphs::of(font);
        QCOMPARE(set.ground().alpha(), 255);
        QVERIFY(set.ground().lightness() < 40);
        for (int n = 0; n < glyph_count; ++n)
            QVERIFY(is_opaque(set.find(static_cast<Glyph>(n), 1)->toImage()));
    }
    QCOMPARE(TimecodeGlyphs::of(Font::small_transparent).ground().alpha(), 0);
}

void TestTimecodeGlyphs::fonts_are_these_sets()
{
    struct
    {
        Font font;
        QString set;
    } const fonts[]
        = {{Font::large, QStringLiteral("/tc/large")}, {Font::small, QStringLiteral("/tc/small")},
            {Font::small_gray, QStringLiteral("/tc/small_gray")},
            {Font::small_transparent, QStringLiteral("/tc/small_transparent")}};
    for (auto const &row : fonts) {
        TimecodeGlyphs const &set = TimecodeGlyphs::of(row.font);
        QCOMPARE(&TimecodeGlyphs::of(row.font), &set);
        for (int n = 0; n < glyph_count; ++n) {
            Glyph const glyph = static_cast<Glyph>(n);
            QString const name = TimecodeGlyphs::name(glyph);
            QImage const single = set.find(glyph, 1)->toImage();
            QCOMPARE(single.convertToFormat(QImage::Format_ARGB32), picture(row.set, name));
            QImage dense = set.find(glyph, 2)->toImage().convertToFormat(QImage::Format_ARGB32);
            QCOMPARE(dense.devicePixelRatio(), 2.0);
            dense.setDevicePixelRatio(1);
            QImage expected = picture(row.set, name + QStringLiteral("@2x"));
            expected.setDevicePixelRatio(1);
            QCOMPARE(dense, expected);
        }
    }
}

void TestTimecodeGlyphs::digit_that_is_not_there_is_an_assertion()
{
    AssertLog log;
    TimecodeGlyphs const set(QStringLiteral("/tc/nowhere"));
    QCOMPARE(log.take(), QStringList(10, QStringLiteral("!digits[ n ].isNull()")));
    for (int n = 0; n <= glyph_count; ++n) {
        QVERIFY(!set.find(static_cast<Glyph>(n), 1));
        QVERIFY(!set.find(static_cast<Glyph>(n), 2));
        QCOMPARE(set.size(static_cast<Glyph>(n)), QSize(0, 0));
    }
    TimecodeGlyphs const whole(QStringLiteral("/tc/small"));
    QCOMPARE(log.take(), QStringList());
}

void TestTimecodeGlyphs::font_that_does_not_exist_has_no_pictures()
{
    AssertLog log;
    TimecodeGlyphs const &set = TimecodeGlyphs::of(static_cast<Font>(9));
    QCOMPARE(log.take().size(), 10);
    QVERIFY(!set.find(Glyph::digit0, 1));
    TimecodeGlyphs::of(static_cast<Font>(9));
    QCOMPARE(log.take().size(), 0);
}

void TestTimecodeGlyphs::glyph_that_is_not_there_is_an_assertion_when_drawn()
{
    TimecodeGlyphs::of(static_cast<Font>(9));
    ATimecodeDigit digit;
    digit.set_font(static_cast<Font>(9));
    digit.resize(12, 18);
    AssertLog log;
    digit.grab();
    // A blank has no picture to lack.
    QCOMPARE(log.take(), QStringList());
    digit.set_digit(3);
    digit.grab();
    QCOMPARE(log.take(), QStringList(QStringLiteral("pixmap != 0")));
}

void TestTimecodeGlyphs::blank_is_drawn_as_the_ground()
{
    ATimecodeDigit digit;
    digit.set_font(Font::small);
    digit.set_digit(3);
    digit.set_blank();
    digit.resize(digit.sizeHint());
    QImage const shown = digit.grab().toImage();
    QVERIFY(ink(shown).isEmpty());
    QCOMPARE(shown.pixelColor(0, 0), TimecodeGlyphs::of(Font::small).ground());
}

void TestTimecodeGlyphs::disabled_glyph_is_faint_on_the_same_ground()
{
    ATimecodeDigit digit;
    digit.set_digit(8);
    digit.resize(digit.sizeHint());
    QImage const enabled = digit.grab().toImage();
    digit.setEnabled(false);
    QImage const disabled = digit.grab().toImage();
    QCOMPARE(disabled.pixelColor(0, 0), enabled.pixelColor(0, 0));
    QCOMPARE(ink(disabled), ink(enabled));
    qreal const left = amount(disabled, disabled.rect()) / amount(enabled, enabled.rect());
    QVERIFY2(left > 0.35 && left < 0.45, qPrintable(QString::number(left)));
    digit.setEnabled(true);
    QCOMPARE(digit.grab().toImage(), enabled);
}

void TestTimecodeGlyphs::picture_is_drawn_pixel_by_pixel_data()
{
    QTest::addColumn<int>("font_value");
    for (int font : {0, 1, 2})
        QTest::addRow("%d", font) << font;
}

void TestTimecodeGlyphs::picture_is_drawn_pixel_by_pixel()
{
    QFETCH(int, font_value);
    Font const font = static_cast<Font>(font_value);
    ATimecodeDigit digit;
    digit.set_font(font);
    digit.set_digit(8);
    digit.resize(digit.sizeHint());
    QImage shown = digit.grab().toImage().convertToFormat(QImage::Format_ARGB32);
    QImage expected = TimecodeGlyphs::of(font)
                          .find(Glyph::digit8, digit.devicePixelRatioF())
                          ->toImage()
                          .convertToFormat(QImage::Format_ARGB32);
    shown.setDevicePixelRatio(1);
    expected.setDevicePixelRatio(1);
    QCOMPARE(shown.size(), (QSizeF(digit.sizeHint()) * digit.devicePixelRatioF()).toSize());
    QCOMPARE(shown, expected);
}

void TestTimecodeGlyphs::change_is_drawn()
{
    CountingSymbol symbol;
    // Of a size of its own, so that a font changes none.
    symbol.setFixedSize(100, 100);
    symbol.show();
    QVERIFY(QTest::qWaitForWindowExposed(&symbol, patience_ms));
    QTRY_VERIFY(symbol.paints > 0);
    QCoreApplication::processEvents();
    int paints = symbol.paints;
    symbol.set_glyph(Glyph::minus);
    QTRY_VERIFY(symbol.paints > paints);
    paints = symbol.paints;
    symbol.set_font(Font::small_gray);
    QTRY_VERIFY(symbol.paints > paints);
}

void TestTimecodeGlyphs::symbol_takes_the_room_of_its_shape()
{
    ATimecodeFontSymbol symbol(Glyph::percent);
    QCOMPARE(symbol.sizeHint(), QSize(36, 36));
    symbol.set_glyph(Glyph::digit0);
    QCOMPARE(symbol.sizeHint(), QSize(36, 36));
    symbol.set_font(Font::small_gray);
    QCOMPARE(symbol.sizeHint(), QSize(18, 18));
    QCOMPARE(symbol.minimumSizeHint(), QSize(18, 18));
    QCOMPARE(ATimecodeSeparator().sizeHint(), QSize(12, 36));
    QCOMPARE(ATimecodeLabelIndicator().sizeHint(), QSize(36, 36));
}

void TestTimecodeGlyphs::digit_above_9_is_an_assertion()
{
    ATimecodeDigit digit;
    for (unsigned int n = 0; n <= 9; ++n) {
        digit.set_digit(n);
        QCOMPARE(static_cast<unsigned int>(digit.get_glyph()), n);
    }
    AssertLog log;
    digit.set_digit(10);
    QCOMPARE(log.take().size(), 1);
    QVERIFY(digit.get_glyph() == Glyph::digit9);
    digit.set_dash();
    QVERIFY(digit.get_glyph() == Glyph::dash);
}

void TestTimecodeGlyphs::separator_tells_flag_and_field()
{
    ATimecodeSeparator separator;
    separator.set_separator(true, false);
    QVERIFY(separator.get_glyph() == Glyph::comma);
    separator.set_separator(true, true);
    QVERIFY(separator.get_glyph() == Glyph::semicolon);
    separator.set_separator(false, false);
    QVERIFY(separator.get_glyph() == Glyph::period);
    separator.set_separator(false, true);
    QVERIFY(separator.get_glyph() == Glyph::colon);
}

void TestTimecodeGlyphs::indicator_tells_field_or_frame()
{
    ATimecodeLabelIndicator indicator;
    QVERIFY(indicator.get_glyph() == Glyph::none);
    indicator.set_field(false);
    QVERIFY(indicator.get_glyph() == Glyph::f1);
    indicator.set_field(true);
    QVERIFY(indicator.get_glyph() == Glyph::f2);
    indicator.set_frame();
    QVERIFY(indicator.get_glyph() == Glyph::f12);
    indicator.set_blank();
    QVERIFY(indicator.get_glyph() == Glyph::none);
}

QTEST_MAIN(TestTimecodeGlyphs)
#include "tst_timecode_glyphs.moc"
