// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/widgets/atimecode_label.h"
#include "tests/support/assert_log.h"
#include "tests/support/patience.h"
#include "tests/timecode/readout_text.h"
#include "tests/timecode/standard_numbers.h"

#include <QCoreApplication>
#include <QImage>
#include <QTest>
#include <QTimer>
#include <functional>

using Corvane::ATimecode;
using Corvane::VideoFrequency;
using Font = ATimecodeLabel::Font;

namespace {

/// Counts how often it shows what was set.
class CountingLabel : public ATimecodeLabel
{
public:
    int updates = 0;

protected:
    void update_action() override
    {
        ++updates;
        ATimecodeLabel::update_action();
    }
};

/// What shows once the loop has turned.
QString shown(ATimecodeLabel &label)
{
    label.show();
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    return readout_text(&label);
}

ATimecode at(int value, int flag_value, bool f2)
{
    return ATimecode(frequency(value), flag(flag_value), 1, 23, 45, 6, f2);
}

} // namespace

class TestATimecodeLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void undefined_is_dashes();
    void digits_separators_and_field_follow_the_timecode_data();
    void digits_separators_and_field_follow_the_timecode();
    void timecode_is_kept_as_set();
    void updates_once_in_a_turn_of_the_loop();
    void each_setter_asks_for_an_update();
    void indicator_tells_the_frame_if_asked();
    void days_stand_ahead_data();
    void days_stand_ahead();
    void days_go_again();
    void days_of_the_timecode_do_not_show();
    void countdown_character_stands_ahead_of_all();
    void countdown_character_without_a_glyph_is_an_assertion();
    void set_font_acts_on_a_new_font_alone();
    void size_is_that_of_its_glyphs();
    void pictures_stand_side_by_side_without_a_gap();
    void tells_assistive_programs_name_and_value();
};

void TestATimecodeLabel::undefined_is_dashes()
{
    ATimecodeLabel label;
    QVERIFY(label.get_timecode().is_undefined());
    QCOMPARE(shown(label), QStringLiteral("__.__.__.__ "));
    label.set_timecode(at(2, 1, true));
    QCOMPARE(shown(label), QStringLiteral("01;23;45;06[2]"));
    label.set_undefined();
    QCOMPARE(shown(label), QStringLiteral("__.__.__.__ "));
    label.set_indicator_frame(true);
    QCOMPARE(shown(label), QStringLiteral("__.__.__.__ "));
}

void TestATimecodeLabel::digits_separators_and_field_follow_the_timecode_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("flag_value");
    QTest::addColumn<bool>("f2");
    QTest::addColumn<QString>("text");
    QTest::newRow("df F1") << 2 << 1 << false << QStringLiteral("01,23,45,06[1]");
    QTest::newRow("df F2") << 2 << 1 << true << QStringLiteral("01;23;45;06[2]");
    QTest::newRow("ndf F1") << 2 << 2 << false << QStringLiteral("01.23.45.06[1]");
    QTest::newRow("ndf F2") << 2 << 2 << true << QStringLiteral("01:23:45:06[2]");
    QTest::newRow("50 Hz F2") << 3 << 2 << true << QStringLiteral("01:23:45:06[2]");
    QTest::newRow("29.97 Hz df") << 7 << 1 << true << QStringLiteral("01,23,45,06[1]");
    QTest::newRow("25 Hz") << 8 << 2 << true << QStringLiteral("01.23.45.06[1]");
    // 50 Hz has no dropframe, whatever the flag.
    QTest::newRow("50 Hz, told to drop") << 3 << 1 << false << QStringLiteral("01.23.45.06[1]");
}

void TestATimecodeLabel::digits_separators_and_field_follow_the_timecode()
{
    QFETCH(int, value);
    QFETCH(int, flag_value);
    QFETCH(bool, f2);
    QFETCH(QString, text);
    ATimecodeLabel label;
    label.set_timecode(at(value, flag_value, f2));
    QCOMPARE(shown(label), text);
}

void TestATimecodeLabel::timecode_is_kept_as_set()
{
    ATimecodeLabel label;
    QCOMPARE(shown(label), QStringLiteral("__.__.__.__ "));
    ATimecode t;
    t.set(VideoFrequency::v59_94, flag(2), 5184000 + 7, 3);
    label.set_timecode(t);
    QVERIFY(label.get_timecode() == t);
    QCOMPARE(label.get_timecode().get_ssm_speed(), 3u);
    QCOMPARE(number(label.get_timecode().get_df()), 2);
    // It shows only in the next turn.
    QCOMPARE(readout_text(&label), QStringLiteral("__.__.__.__ "));
}

void TestATimecodeLabel::updates_once_in_a_turn_of_the_loop()
{
    CountingLabel label;
    label.show();
    QCoreApplication::processEvents();
    label.updates = 0;
    for (unsigned int n = 0; n < 100; ++n) {
        label.set_timecode(ATimecode(VideoFrequency::v50, n, 1));
        label.set_days(n);
        label.update();
    }
    QCOMPARE(label.updates, 0);
    QTRY_COMPARE(label.updates, 1);
    QCOMPARE(readout_text(&label), QStringLiteral("99+00:00:01:24[2]"));
    // Nothing follows by itself: a timer set after all of its timers comes after them.
    bool turned = false;
    QTimer::singleShot(0, &label, [&turned] { turned = true; });
    QTRY_VERIFY(turned);
    QCOMPARE(label.updates, 1);
    label.set_timecode(ATimecode());
    QTRY_COMPARE(label.updates, 2);
}

void TestATimecodeLabel::each_setter_asks_for_an_update()
{
    CountingLabel label;
    QList<std::function<void()>> const setters{[&] { label.set_timecode({}); },
        [&] { label.set_undefined(); }, [&] { label.set_days(1); }, [&] { label.clear_days(); },
        [&] { label.set_font(Font::small); }, [&] { label.force_set_font(Font::small); },
        [&] { label.set_indicator_field(); }, [&] { label.set_indicator_frame(true); },
        [&] { label.set_is_countdown(true); },
        [&] { label.set_countdown_character(QLatin1Char('+')); }, [&] { label.update(); }};
    int updates = 0;
    for (auto const &set : setters) {
        set();
        ++updates;
        QTRY_COMPARE(label.updates, updates);
    }
}

void TestATimecodeLabel::indicator_tells_the_frame_if_asked()
{
    ATimecodeLabel label;
    label.set_timecode(at(3, 2, true));
    label.set_indicator_frame(true);
    QCOMPARE(shown(label), QStringLiteral("01:23:45:06[f]"));
    label.set_indicator_frame(false);
    QCOMPARE(shown(label), QStringLiteral("01:23:45:06[2]"));
    label.set_indicator_frame(true);
    label.set_indicator_field();
    QCOMPARE(shown(label), QStringLiteral("01:23:45:06[2]"));
}

void TestATimecodeLabel::days_stand_ahead_data()
{
    QTest::addColumn<unsigned>("days");
    QTest::addColumn<QString>("ahead");
    QTest::newRow("none") << 0u << QStringLiteral("0+");
    QTest::newRow("one digit") << 7u << QStringLiteral("7+");
    QTest::newRow("two") << 12u << QStringLiteral("12+");
    QTest::newRow("most") << 4294967295u << QStringLiteral("4294967295+");
}

void TestATimecodeLabel::days_stand_ahead()
{
    QFETCH(unsigned, days);
    QFETCH(QString, ahead);
    ATimecodeLabel label;
    label.set_timecode(at(3, 2, false));
    label.set_days(days);
    QCOMPARE(label.get_days().value(), days);
    QCOMPARE(shown(label), ahead + QStringLiteral("01.23.45.06[1]"));
    QCOMPARE(label.shown_text(), ahead + QStringLiteral("01.23.45.06"));
}

void TestATimecodeLabel::days_go_again()
{
    ATimecodeLabel label;
    label.set_timecode(at(3, 2, false));
    label.set_font(Font::small);
    label.set_days(123);
    QCOMPARE(shown(label), QStringLiteral("123+01.23.45.06[1]"));
    int const wide = label.sizeHint().width();
    label.set_days(4);
    QCOMPARE(shown(label), QStringLiteral("4+01.23.45.06[1]"));
    QCOMPARE(label.sizeHint().width(), wide - 2 * 12);
    label.clear_days();
    QVERIFY(!label.get_days().has_value());
    QCOMPARE(shown(label), QStringLiteral("01.23.45.06[1]"));
    QCOMPARE(label.sizeHint().width(), wide - 4 * 12);
}

void TestATimecodeLabel::days_of_the_timecode_do_not_show()
{
    ATimecodeLabel label;
    label.set_timecode(at(3, 2, false) + 4320000u);
    QCOMPARE(shown(label), QStringLiteral("01.23.45.06[1]"));
    QCOMPARE(label.shown_text(), QStringLiteral("01.23.45.06"));
}

void TestATimecodeLabel::countdown_character_stands_ahead_of_all()
{
    ATimecodeLabel label;
    label.set_timecode(at(3, 2, false));
    label.set_is_countdown(true);
    QVERIFY(label.is_countdown());
    QCOMPARE(shown(label), QStringLiteral("-01.23.45.06[1]"));
    label.set_days(2);
    label.set_countdown_character(QLatin1Char('+'));
    QCOMPARE(shown(label), QStringLiteral("+2+01.23.45.06[1]"));
    label.set_countdown_character(QLatin1Char('X'));
    QCOMPARE(shown(label), QStringLiteral("X2+01.23.45.06[1]"));
    label.set_countdown_character(QLatin1Char('-'));
    QCOMPARE(label.shown_text(), QStringLiteral("-2+01.23.45.06"));
    label.set_is_countdown(false);
    QCOMPARE(shown(label), QStringLiteral("2+01.23.45.06[1]"));
}

void TestATimecodeLabel::countdown_character_without_a_glyph_is_an_assertion()
{
    ATimecodeLabel label;
    label.set_timecode(at(3, 2, false));
    label.set_is_countdown(true);
    AssertLog log;
    for (QChar const c : QStringLiteral("x*5 \u2212")) {
        label.set_countdown_character(c);
        QCOMPARE(log.take().size(), 1);
    }
    label.set_countdown_character(QChar());
    QCOMPARE(log.take().size(), 1);
    QCOMPARE(shown(label), QStringLiteral("-01.23.45.06[1]"));
}

void TestATimecodeLabel::set_font_acts_on_a_new_font_alone()
{
    CountingLabel label;
    label.set_font(Font::small_gray);
    QVERIFY(label.get_font() == Font::small_gray);
    QTRY_COMPARE(label.updates, 1);
    label.set_font(Font::small_gray);
    bool turned = false;
    QTimer::singleShot(0, &label, [&turned] { turned = true; });
    QTRY_VERIFY(turned);
    QCOMPARE(label.updates, 1);
    label.force_set_font(Font::small_gray);
    QTRY_COMPARE(label.updates, 2);
}

void TestATimecodeLabel::size_is_that_of_its_glyphs()
{
    ATimecodeLabel label;
    QCOMPARE(label.sizeHint(), QSize(8 * 24 + 3 * 12 + 36, 36));
    for (Font font : {Font::small, Font::small_gray, Font::small_transparent}) {
        label.set_font(font);
        QCOMPARE(label.sizeHint(), QSize(8 * 12 + 3 * 6 + 18, 18));
        shown(label);
        QCOMPARE(label.sizeHint(), QSize(8 * 12 + 3 * 6 + 18, 18));
    }
    label.set_is_countdown(true);
    shown(label);
    QCOMPARE(label.sizeHint(), QSize(9 * 12 + 3 * 6 + 18, 18));
}

void TestATimecodeLabel::pictures_stand_side_by_side_without_a_gap()
{
    ATimecodeLabel label;
    label.set_timecode(at(2, 1, true));
    label.set_days(3);
    label.resize(500, 60);
    shown(label);
    QImage const image = label.grab().toImage();
    // The row of pixels below all glyphs is ground from end to end.
    QColor const ground = image.pixelColor(0, 0);
    QCOMPARE(ground.alpha(), 255);
    int const y = image.height() / 2 + 17;
    for (int x = 0; x < image.width(); ++x)
        QCOMPARE(image.pixelColor(x, y), ground);
}

void TestATimecodeLabel::tells_assistive_programs_name_and_value()
{
    ATimecodeLabel label;
    QCOMPARE(accessible_text(&label, QAccessible::Name), QStringLiteral("Timecode"));
    QCOMPARE(accessible_text(&label, QAccessible::Value), QStringLiteral("undefined"));
    label.set_timecode(at(2, 1, true));
    QCOMPARE(accessible_text(&label, QAccessible::Value), QStringLiteral("01;23;45;06"));
    label.setAccessibleName(QStringLiteral("Remaining"));
    QCOMPARE(accessible_text(&label, QAccessible::Name), QStringLiteral("Remaining"));
    QAccessibleInterface *told = QAccessible::queryAccessibleInterface(&label);
    QCOMPARE(told->role(), QAccessible::StaticText);
    QCOMPARE(told->childCount(), 0);
    QVERIFY(!told->child(0));
    QCOMPARE(told->indexOfChild(told), -1);
}

QTEST_MAIN(TestATimecodeLabel)
#include "tst_atimecode_label.moc"
