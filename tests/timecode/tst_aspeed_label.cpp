// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/widgets/aspeed_label.h"
#include "ATarnLib/timecode/widgets/atimecode_font_symbol.h"
#include "ATarnLib/timecode/widgets/timecode_glyphs_p.h"
#include "tests/timecode/readout_text.h"

#include <QImage>
#include <QStackedWidget>
#include <QTest>
#include <climits>

namespace {

QString page(ASpeedLabel &label)
{
    return label.findChild<QStackedWidget *>(QStringLiteral("stack"))
        ->currentWidget()
        ->objectName();
}

QString shown(ASpeedLabel &label)
{
    label.show();
    QCoreApplication::processEvents();
    return readout_text(&label);
}

} // namespace

class TestASpeedLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void speed_is_percent_up_to_4_and_a_multiple_beyond_data();
    void speed_is_percent_up_to_4_and_a_multiple_beyond();
    void no_value_is_the_undefined_page();
    void pages_hold_the_named_widgets();
    void pages_take_the_same_room();
    void font_is_that_of_all_pages();
    void ground_is_that_of_the_font();
    void tells_assistive_programs_name_and_value();
};

void TestASpeedLabel::speed_is_percent_up_to_4_and_a_multiple_beyond_data()
{
    QTest::addColumn<int>("speed");
    QTest::addColumn<QString>("page_name");
    QTest::addColumn<QString>("glyphs");
    QTest::addColumn<QString>("text");
    auto const percent = [](int speed, char const *glyphs, char const *text) {
        QTest::addRow("%d", speed) << speed << QStringLiteral("page_percent")
                                   << QString::fromLatin1(glyphs) << QString::fromLatin1(text);
    };
    auto const multiple = [](int speed, char const *glyphs, char const *text) {
        QTest::addRow("%d", speed) << speed << QStringLiteral("page_x")
                                   << QString::fromLatin1(glyphs) << QString::fromLatin1(text);
    };
    percent(0, "   0%", "0%");
    percent(1, "   0%", "0%");
    percent(-1, "-  0%", "-0%");
    percent(327, "   0%", "0%");
    percent(328, "   1%", "1%");
    // 29 and 57 percent, cut off to 16 bits of fraction.
    percent(19005, "  29%", "29%");
    percent(37355, "  57%", "57%");
    percent(32768, "  50%", "50%");
    percent(-32768, "- 50%", "-50%");
    percent(65536, " 100%", "100%");
    percent(-65536, "-100%", "-100%");
    percent(65536 + 3277, " 105%", "105%");
    percent(131072, " 200%", "200%");
    percent(262143, " 400%", "400%");
    percent(262144, " 400%", "400%");
    percent(-262144, "-400%", "-400%");
    multiple(262145, " 04.0X", "4.0X");
    multiple(-262145, "-04.0X", "-4.0X");
    multiple(294912, " 04.5X", "4.5X");
    multiple(-655360, "-10.0X", "-10.0X");
    multiple(32 * 65536, " 32.0X", "32.0X");
    multiple(99 * 65536 + 58982, " 99.9X", "99.9X");
    // No more tenths than fit.
    multiple(100 * 65536, " 99.9X", "99.9X");
    multiple(INT_MAX, " 99.9X", "99.9X");
    multiple(INT_MIN, "-99.9X", "-99.9X");
}

void TestASpeedLabel::speed_is_percent_up_to_4_and_a_multiple_beyond()
{
    QFETCH(int, speed);
    QFETCH(QString, page_name);
    QFETCH(QString, glyphs);
    QFETCH(QString, text);
    ASpeedLabel label;
    label.set_value(speed);
    QCOMPARE(page(label), page_name);
    QCOMPARE(shown(label), glyphs);
    QCOMPARE(label.shown_text(), text);
    QVERIFY(label.has_value());
    QCOMPARE(label.get_value(), speed);
}

void TestASpeedLabel::no_value_is_the_undefined_page()
{
    ASpeedLabel label;
    QVERIFY(!label.has_value());
    QCOMPARE(label.get_value(), 0);
    QCOMPARE(page(label), QStringLiteral("page_undefined"));
    QCOMPARE(shown(label), QStringLiteral(" ___ "));
    label.set_value(65536);
    QCOMPARE(page(label), QStringLiteral("page_percent"));
    label.set_value(10 * 65536);
    QCOMPARE(page(label), QStringLiteral("page_x"));
    label.clear_value();
    QVERIFY(!label.has_value());
    QCOMPARE(label.get_value(), 0);
    QCOMPARE(page(label), QStringLiteral("page_undefined"));
}

void TestASpeedLabel::pages_hold_the_named_widgets()
{
    ASpeedLabel label;
    auto *stack = label.findChild<QStackedWidget *>(QStringLiteral("stack"));
    struct
    {
        char const *page;
        QStringList widgets;
    } const pages[]
        = {{"page_percent",
               {QStringLiteral("pct_sign"), QStringLiteral("pct_100"), QStringLiteral("pct_10"),
                   QStringLiteral("pct_1"), QStringLiteral("pct_sym")}},
            {"page_x",
                {QStringLiteral("x_sign"), QStringLiteral("x_10"), QStringLiteral("x_1"),
                    QStringLiteral("x_point"), QStringLiteral("x_tenth"), QStringLiteral("x_sym")}},
            {"page_undefined", {}}};
    QCOMPARE(stack->count(), 3);
    for (auto const &row : pages) {
        auto *held = stack->findChild<QWidget *>(QLatin1String(row.page));
        QVERIFY(stack->indexOf(held) >= 0);
        for (QString const &name : row.widgets)
            QVERIFY2(held->findChild<ATimecodeFontSymbol *>(name), qPrintable(name));
    }
}

void TestASpeedLabel::pages_take_the_same_room()
{
    ASpeedLabel label;
    auto *stack = label.findChild<QStackedWidget *>(QStringLiteral("stack"));
    for (int n = 0; n < stack->count(); ++n)
        QCOMPARE(stack->widget(n)->sizeHint(), QSize(132, 36));
    QCOMPARE(label.sizeHint(), QSize(132, 36));
}

void TestASpeedLabel::font_is_that_of_all_pages()
{
    ASpeedLabel label;
    label.set_font(ATimecodeLabel::Font::small_gray);
    QVERIFY(label.get_font() == ATimecodeLabel::Font::small_gray);
    QCOMPARE(label.sizeHint(), QSize(66, 18));
    shown(label);
    label.set_font(ATimecodeLabel::Font::large);
    QCOMPARE(label.sizeHint(), QSize(132, 36));
    label.set_font(ATimecodeLabel::Font::small_gray);
    auto *stack = label.findChild<QStackedWidget *>(QStringLiteral("stack"));
    for (int n = 0; n < stack->count(); ++n)
        QCOMPARE(stack->widget(n)->sizeHint(), QSize(66, 18));
    QCOMPARE(label.sizeHint(), QSize(66, 18));
}

void TestASpeedLabel::ground_is_that_of_the_font()
{
    ASpeedLabel label;
    label.resize(500, 60);
    label.set_value(65536);
    label.show();
    QImage const image = label.grab().toImage();
    // Beside and above the pages too.
    QColor const ground = TimecodeGlyphs::of(ATimecodeLabel::Font::large).ground();
    QCOMPARE(image.pixelColor(0, 0), ground);
    QCOMPARE(image.pixelColor(image.width() - 1, image.height() - 1), ground);
}

void TestASpeedLabel::tells_assistive_programs_name_and_value()
{
    ASpeedLabel label;
    QCOMPARE(accessible_text(&label, QAccessible::Name), QStringLiteral("Speed"));
    QCOMPARE(accessible_text(&label, QAccessible::Value), QStringLiteral("undefined"));
    label.set_value(-32768);
    QCOMPARE(accessible_text(&label, QAccessible::Value), QStringLiteral("-50%"));
    label.set_value(10 * 65536);
    QCOMPARE(accessible_text(&label, QAccessible::Value), QStringLiteral("10.0X"));
}

QTEST_MAIN(TestASpeedLabel)
#include "tst_aspeed_label.moc"
