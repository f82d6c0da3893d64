// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/widgets/atimecode_entry.h"
#include "tests/support/patience.h"
#include "tests/timecode/readout_text.h"
#include "tests/timecode/standard_numbers.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <random>

using Corvane::ATimecode;
using Corvane::VideoFrequency;

namespace {

/// The text with the cursor in it: "00.00.00|.12".
QString with_cursor(ATimecodeEntry const &entry)
{
    QString text = entry.text();
    text.insert(entry.cursorPosition(), QLatin1Char('|'));
    return text;
}

ATimecode emitted(QSignalSpy const &spy)
{
    return spy.last().first().value<ATimecode>();
}

QAction *dropframe_action(ATimecodeEntry *entry)
{
    // The menus of before.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), QPoint(1, 1));
    QCoreApplication::sendEvent(entry, &event);
    QAction *found = nullptr;
    for (QMenu *menu : entry->findChildren<QMenu *>()) {
        for (QAction *action : menu->actions()) {
            if (action->text() == QLatin1String("Drop frame"))
                found = action;
        }
        menu->close();
    }
    return found;
}

} // namespace

class TestATimecodeEntry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void is_empty_and_undefined_at_first();
    void digits_come_in_from_the_right_data();
    void digits_come_in_from_the_right();
    void digit_at_the_cursor_moves_those_to_its_left_data();
    void digit_at_the_cursor_moves_those_to_its_left();
    void only_digits_count_data();
    void only_digits_count();
    void separator_key_types_00_data();
    void separator_key_types_00();
    void separator_key_deletes_what_is_selected_data();
    void separator_key_deletes_what_is_selected();
    void other_separators_go_to_the_line();
    void backspace_removes_a_digit_data();
    void backspace_removes_a_digit();
    void backspace_removes_what_is_selected();
    void backspace_brings_the_text_into_form_first();
    void keys_with_control_go_to_the_line();
    void read_only_entry_takes_no_key();
    void changed_comes_when_the_text_was_brought_into_form();
    void changed_does_not_come_by_itself();
    void changed_tells_the_timecode();
    void changed_comes_when_all_is_in_place();
    void listener_of_changed_may_set_the_timecode();
    void text_that_a_listener_puts_in_meanwhile_waits_for_the_next_key();
    void modified_flag_stays_when_the_text_is_brought_into_form();
    void auto_highlight_selects_all_on_focus();
    void dropframe_changes_by_the_menu_only_if_allowed();
    void any_keys_leave_the_text_in_form();
    void tells_assistive_programs_name_and_value();
};

void TestATimecodeEntry::is_empty_and_undefined_at_first()
{
    ATimecodeEntry entry;
    QCOMPARE(entry.text(), QString());
    QVERIFY(entry.timecode().is_undefined());
    QCOMPARE(number(entry.frequency()), 2);
    QCOMPARE(number(entry.dfflag()), 1);
    QVERIFY(!entry.get_auto_highlight());
    QVERIFY(!entry.isDfAlterable());
}

void TestATimecodeEntry::digits_come_in_from_the_right_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("text");
    QTest::newRow("one") << QStringLiteral("5") << QStringLiteral("00,00,00,05");
    QTest::newRow("two") << QStringLiteral("52") << QStringLiteral("00,00,00,52");
    QTest::newRow("three") << QStringLiteral("521") << QStringLiteral("00,00,05,21");
    QTest::newRow("all") << QStringLiteral("12345678") << QStringLiteral("12,34,56,78");
    QTest::newRow("more") << QStringLiteral("123456789") << QStringLiteral("23,45,67,89");
    QTest::newRow("zeros") << QStringLiteral("00") << QStringLiteral("00,00,00,00");
}

void TestATimecodeEntry::digits_come_in_from_the_right()
{
    QFETCH(QString, keys);
    QFETCH(QString, text);
    ATimecodeEntry entry;
    QTest::keyClicks(&entry, keys);
    QCOMPARE(with_cursor(entry), text + QLatin1Char('|'));
}

void TestATimecodeEntry::digit_at_the_cursor_moves_those_to_its_left_data()
{
    QTest::addColumn<int>("cursor");
    QTest::addColumn<QString>("text"); // of 12.34.56.78 with a 9 typed there
    QTest::newRow("end") << 11 << QStringLiteral("23.45.67.89|");
    QTest::newRow("before the last") << 10 << QStringLiteral("23.45.67.9|8");
    QTest::newRow("after a separator") << 9 << QStringLiteral("23.45.69.|78");
    QTest::newRow("before a separator") << 8 << QStringLiteral("23.45.69|.78");
    QTest::newRow("middle") << 4 << QStringLiteral("23.9|4.56.78");
    QTest::newRow("second") << 1 << QStringLiteral("9|2.34.56.78");
    // What comes in at the left is one digit too many at once.
    QTest::newRow("begin") << 0 << QStringLiteral("|12.34.56.78");
}

void TestATimecodeEntry::digit_at_the_cursor_moves_those_to_its_left()
{
    QFETCH(int, cursor);
    QFETCH(QString, text);
    ATimecodeEntry entry;
    entry.set_dfflag_ndf();
    QTest::keyClicks(&entry, QStringLiteral("12345678"));
    entry.setCursorPosition(cursor);
    QTest::keyClicks(&entry, QStringLiteral("9"));
    QCOMPARE(with_cursor(entry), text);
}

void TestATimecodeEntry::only_digits_count_data()
{
    QTest::addColumn<QString>("put");
    QTest::addColumn<QString>("text");
    QTest::newRow("letters") << QStringLiteral("1a2b") << QStringLiteral("00.00.00.12");
    QTest::newRow("none") << QStringLiteral("abc") << QString();
    QTest::newRow("separators alone") << QStringLiteral(":::") << QString();
    QTest::newRow("other digits") << QStringLiteral("\u0664\uff15\u00b23")
                                  << QStringLiteral("00.00.00.03");
    QTest::newRow("days") << QStringLiteral("1+02.03.04.05") << QStringLiteral("02.03.04.05");
    QTest::newRow("pair of units")
        << QStringLiteral("\U0001d7d91") << QStringLiteral("00.00.00.01");
    QTest::newRow("many") << QString(5000, QLatin1Char('7')) << QStringLiteral("77.77.77.77");
    QTest::newRow("other separators") << QStringLiteral("1,2,3") << QStringLiteral("00.00.01.23");
    QTest::newRow("second field") << QStringLiteral("01:02:03:04") << QStringLiteral("01:02:03:04");
    QTest::newRow("second field, dropframe")
        << QStringLiteral("01;02;03;04") << QStringLiteral("01:02:03:04");
    QTest::newRow("mixed") << QStringLiteral("01:02.03:04") << QStringLiteral("01.02.03.04");
}

void TestATimecodeEntry::only_digits_count()
{
    QFETCH(QString, put);
    QFETCH(QString, text);
    ATimecodeEntry entry;
    entry.set_frequency(VideoFrequency::v50);
    entry.setText(put);
    QCOMPARE(entry.text(), text);
    entry.clear();
    entry.insert(put);
    QCOMPARE(entry.text(), text);
}

void TestATimecodeEntry::separator_key_types_00_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("text");
    QTest::newRow("comma") << QStringLiteral("1,") << QStringLiteral("00.00.01.00");
    QTest::newRow("semicolon") << QStringLiteral("1;") << QStringLiteral("00.00.01.00");
    QTest::newRow("three") << QStringLiteral("1,;,") << QStringLiteral("01.00.00.00");
    QTest::newRow("four") << QStringLiteral("1,,,,") << QStringLiteral("00.00.00.00");
    QTest::newRow("empty") << QStringLiteral(",") << QStringLiteral("00.00.00.00");
    QTest::newRow("between") << QStringLiteral("12,34") << QStringLiteral("00.12.00.34");
}

void TestATimecodeEntry::separator_key_types_00()
{
    QFETCH(QString, keys);
    QFETCH(QString, text);
    ATimecodeEntry entry;
    entry.set_frequency(VideoFrequency::v50);
    QTest::keyClicks(&entry, keys);
    QCOMPARE(with_cursor(entry), text + QLatin1Char('|'));
}

void TestATimecodeEntry::separator_key_deletes_what_is_selected_data()
{
    QTest::addColumn<int>("begin");
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("text"); // of 12.34.56.78
    QTest::newRow("a digit") << 10 << 1 << QStringLiteral("01.23.45.67|");
    QTest::newRow("a group") << 6 << 2 << QStringLiteral("00.12.34|.78");
    QTest::newRow("across a separator") << 4 << 3 << QStringLiteral("00.12.3|6.78");
    QTest::newRow("a separator") << 2 << 1 << QStringLiteral("12.|34.56.78");
    QTest::newRow("all") << 0 << 11 << QStringLiteral("|");
}

void TestATimecodeEntry::separator_key_deletes_what_is_selected()
{
    QFETCH(int, begin);
    QFETCH(int, length);
    QFETCH(QString, text);
    for (QString const &key : {QStringLiteral(","), QStringLiteral(";")}) {
        ATimecodeEntry entry;
        entry.set_frequency(VideoFrequency::v50);
        entry.setText(QStringLiteral("12345678"));
        entry.setSelection(begin, length);
        QTest::keyClicks(&entry, key);
        QCOMPARE(with_cursor(entry), text);
        QVERIFY(!entry.hasSelectedText());
    }
}

void TestATimecodeEntry::other_separators_go_to_the_line()
{
    ATimecodeEntry entry;
    entry.set_frequency(VideoFrequency::v50);
    QTest::keyClicks(&entry, QStringLiteral("12.3:4"));
    QCOMPARE(entry.text(), QStringLiteral("00.00.12.34"));
    entry.selectAll();
    QTest::keyClicks(&entry, QStringLiteral("."));
    QCOMPARE(entry.text(), QString());
}

void TestATimecodeEntry::backspace_removes_a_digit_data()
{
    QTest::addColumn<int>("cursor");
    QTest::addColumn<QString>("text"); // of 12.34.56.78
    QTest::newRow("end") << 11 << QStringLiteral("01.23.45.67|");
    QTest::newRow("10") << 10 << QStringLiteral("01.23.45.6|8");
    // After a separator the digit before it goes.
    QTest::newRow("9") << 9 << QStringLiteral("01.23.45|.78");
    QTest::newRow("8") << 8 << QStringLiteral("01.23.45|.78");
    QTest::newRow("6") << 6 << QStringLiteral("01.23|.56.78");
    QTest::newRow("5") << 5 << QStringLiteral("01.23|.56.78");
    QTest::newRow("3") << 3 << QStringLiteral("01|.34.56.78");
    QTest::newRow("2") << 2 << QStringLiteral("01|.34.56.78");
    QTest::newRow("1") << 1 << QStringLiteral("0|2.34.56.78");
    QTest::newRow("begin") << 0 << QStringLiteral("|12.34.56.78");
}

void TestATimecodeEntry::backspace_removes_a_digit()
{
    QFETCH(int, cursor);
    QFETCH(QString, text);
    ATimecodeEntry entry;
    entry.set_frequency(VideoFrequency::v50);
    entry.setText(QStringLiteral("12345678"));
    entry.setCursorPosition(cursor);
    QTest::keyClick(&entry, Qt::Key_Backspace);
    QCOMPARE(with_cursor(entry), text);
}

void TestATimecodeEntry::backspace_removes_what_is_selected()
{
    ATimecodeEntry entry;
    entry.set_frequency(VideoFrequency::v50);
    // Selected from right to left, the cursor stands after a separator.
    entry.setText(QStringLiteral("12345678"));
    entry.setSelection(8, -5);
    QCOMPARE(entry.cursorPosition(), 3);
    QTest::keyClick(&entry, Qt::Key_Backspace);
    QCOMPARE(with_cursor(entry), QStringLiteral("00.00.12|.78"));
    entry.selectAll();
    QTest::keyClick(&entry, Qt::Key_Backspace);
    QCOMPARE(entry.text(), QString());
    QVERIFY(entry.timecode().is_undefined());
    QTest::keyClick(&entry, Qt::Key_Backspace);
    QCOMPARE(entry.text(), QString());
}

void TestATimecodeEntry::backspace_brings_the_text_into_form_first()
{
    ATimecodeEntry entry;
    entry.set_frequency(VideoFrequency::v50);
    entry.blockSignals(true);
    entry.setText(QStringLiteral("1234"));
    entry.blockSignals(false);
    entry.setCursorPosition(2);
    QTest::keyClick(&entry, Qt::Key_Backspace);
    // 00.00.12.|34, and then as above.
    QCOMPARE(with_cursor(entry), QStringLiteral("00.00.01|.34"));
}

void TestATimecodeEntry::keys_with_control_go_to_the_line()
{
    ATimecodeEntry entry;
    entry.set_frequency(VideoFrequency::v50);
    entry.setText(QStringLiteral("12345678"));
    QTest::keyClick(&entry, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(entry.selectedText(), QStringLiteral("12.34.56.78"));
    entry.end(false);
    QTest::keyClick(&entry, Qt::Key_Backspace, Qt::ControlModifier);
    // To the begin of the word, as in any line.
    QCOMPARE(entry.text(), QStringLiteral("00.12.34.56"));
    QTest::keyClick(&entry, Qt::Key_Home);
    QCOMPARE(entry.cursorPosition(), 0);
    QTest::keyClick(&entry, Qt::Key_Delete);
    QCOMPARE(with_cursor(entry), QStringLiteral("0|0.12.34.56"));
}

void TestATimecodeEntry::read_only_entry_takes_no_key()
{
    ATimecodeEntry entry;
    entry.set_frequency(VideoFrequency::v50);
    entry.setText(QStringLiteral("12345678"));
    entry.setReadOnly(true);
    QTest::keyClicks(&entry, QStringLiteral("9,;"));
    QTest::keyClick(&entry, Qt::Key_Backspace);
    QCOMPARE(entry.text(), QStringLiteral("12.34.56.78"));
}

void TestATimecodeEntry::changed_comes_when_the_text_was_brought_into_form()
{
    ATimecodeEntry entry;
    entry.set_frequency(VideoFrequency::v50);
    QSignalSpy changed(&entry, &ATimecodeEntry::changed);
    QTest::keyClicks(&entry, QStringLiteral("12"));
    QCOMPARE(changed.count(), 2);
    QTest::keyClicks(&entry, QStringLiteral(","));
    QCOMPARE(changed.count(), 3);
    QTest::keyClick(&entry, Qt::Key_Backspace);
    QCOMPARE(changed.count(), 4);
    // A letter is taken out again.
    QTest::keyClicks(&entry, QStringLiteral("x"));
    QCOMPARE(changed.count(), 5);
    // The text is in form at once.
    entry.setSelection(10, 1);
    QTest::keyClicks(&entry, QStringLiteral("7"));
    QCOMPARE(entry.text(), QStringLiteral("00.00.01.27"));
    QCOMPARE(changed.count(), 5);
    entry.selectAll();
    QTest::keyClick(&entry, Qt::Key_Delete);
    QCOMPARE(changed.count(), 5);
}

void TestATimecodeEntry::changed_does_not_come_by_itself()
{
    ATimecodeEntry entry;
    QSignalSpy changed(&entry, &ATimecodeEntry::changed);
    entry.set_frequency(VideoFrequency::v50);
    entry.set_timecode(ATimecode(VideoFrequency::v59_94, 3601, 1));
    entry.set_nfields(7);
    entry.set_dfflag_df();
    entry.clear();
    entry.set_dfflag_ndf();
    QTest::keyClick(&entry, Qt::Key_Left);
    QCOMPARE(changed.count(), 0);
}

void TestATimecodeEntry::changed_tells_the_timecode()
{
    ATimecodeEntry entry;
    entry.set_frequency(VideoFrequency::v50);
    QSignalSpy changed(&entry, &ATimecodeEntry::changed);
    QTest::keyClicks(&entry, QStringLiteral("1234"));
    QVERIFY(emitted(changed).is_defined());
    QCOMPARE(emitted(changed).get_nfields(), 12u * 50 + 34 * 2);
    QCOMPARE(number(emitted(changed).get_std()), 3);
    QVERIFY(emitted(changed) == entry.timecode());
    entry.clear();
    QTest::keyClicks(&entry, QStringLiteral("x"));
    QVERIFY(emitted(changed).is_undefined());
}

void TestATimecodeEntry::changed_comes_when_all_is_in_place()
{
    ATimecodeEntry entry;
    entry.set_frequency(VideoFrequency::v50);
    QStringList seen;
    connect(&entry, &ATimecodeEntry::changed, &entry, [&] {
        seen += with_cursor(entry);
        seen += entry.isModified() ? QStringLiteral("modified") : QStringLiteral("as set");
    });
    entry.setText(QStringLiteral("1234"));
    entry.setCursorPosition(8);
    QTest::keyClicks(&entry, QStringLiteral("5"));
    QCOMPARE(seen,
        QStringList({QStringLiteral("00.00.12.34|"), QStringLiteral("as set"),
            QStringLiteral("00.01.25|.34"), QStringLiteral("modified")}));
}

void TestATimecodeEntry::listener_of_changed_may_set_the_timecode()
{
    ATimecodeEntry entry;
    entry.set_frequency(VideoFrequency::v50);
    QSignalSpy changed(&entry, &ATimecodeEntry::changed);
    connect(&entry, &ATimecodeEntry::changed, &entry,
        [&entry](ATimecode const &t) { entry.set_timecode(t + 50u); });
    QTest::keyClicks(&entry, QStringLiteral("1"));
    QCOMPARE(entry.text(), QStringLiteral("00.00.01.01"));
    QCOMPARE(changed.count(), 1);
}

void TestATimecodeEntry::text_that_a_listener_puts_in_meanwhile_waits_for_the_next_key()
{
    ATimecodeEntry entry;
    entry.set_frequency(VideoFrequency::v50);
    connect(&entry, &QLineEdit::textChanged, &entry, [&entry](QString const &text) {
        if (text == QLatin1String("00.00.00.01"))
            entry.setText(QStringLiteral("7"));
    });
    QSignalSpy changed(&entry, &ATimecodeEntry::changed);
    QTest::keyClicks(&entry, QStringLiteral("1"));
    QCOMPARE(entry.text(), QStringLiteral("7"));
    QCOMPARE(changed.count(), 1);
    QTest::keyClick(&entry, Qt::Key_End);
    QTest::keyClicks(&entry, QStringLiteral("5"));
    QCOMPARE(entry.text(), QStringLiteral("00.00.00.75"));
    QCOMPARE(changed.count(), 2);
}

void TestATimecodeEntry::modified_flag_stays_when_the_text_is_brought_into_form()
{
    ATimecodeEntry entry;
    QVERIFY(!entry.isModified());
    QTest::keyClicks(&entry, QStringLiteral("1"));
    QVERIFY(entry.isModified());
    entry.set_timecode(ATimecode(VideoFrequency::v50, 7, 1));
    QVERIFY(!entry.isModified());
    entry.setText(QStringLiteral("12"));
    QCOMPARE(entry.text(), QStringLiteral("00.00.00.12"));
    QVERIFY(!entry.isModified());
    QTest::keyClick(&entry, Qt::Key_Backspace);
    QVERIFY(entry.isModified());
}

void TestATimecodeEntry::auto_highlight_selects_all_on_focus()
{
    QWidget window;
    ATimecodeEntry other(&window);
    ATimecodeEntry entry(&window);
    entry.move(0, 50);
    entry.setText(QStringLiteral("1234"));
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window, patience_ms));
    for (bool on : {true, false}) {
        entry.set_auto_highlight(on);
        QCOMPARE(entry.get_auto_highlight(), on);
        other.setFocus();
        entry.deselect();
        QTest::mouseClick(&entry, Qt::LeftButton);
        QTRY_VERIFY(entry.hasFocus());
        bool turned = false;
        QTimer::singleShot(0, &entry, [&turned] { turned = true; });
        QTRY_VERIFY(turned);
        QCOMPARE(entry.selectedText(), on ? entry.text() : QString());
    }
}

void TestATimecodeEntry::dropframe_changes_by_the_menu_only_if_allowed()
{
    ATimecodeEntry entry;
    entry.setText(QStringLiteral("1234"));
    QVERIFY(!dropframe_action(&entry));
    entry.allowDfAlteration(true);
    QVERIFY(entry.isDfAlterable());
    QSignalSpy changed(&entry, &ATimecodeEntry::changed);
    QAction *action = dropframe_action(&entry);
    QVERIFY(action && action->isCheckable() && action->isChecked());
    action->trigger();
    QCOMPARE(number(entry.dfflag()), 2);
    QCOMPARE(entry.text(), QStringLiteral("00.00.12.34"));
    QCOMPARE(changed.count(), 1);
    QVERIFY(entry.isModified());
    action = dropframe_action(&entry);
    QVERIFY(action && !action->isChecked());
    action->trigger();
    QCOMPARE(number(entry.dfflag()), 1);
    entry.setReadOnly(true);
    QVERIFY(!dropframe_action(&entry));
    entry.setReadOnly(false);
    entry.set_frequency(VideoFrequency::v50);
    QVERIFY(!dropframe_action(&entry));
    entry.set_frequency(VideoFrequency::v29_97);
    QVERIFY(dropframe_action(&entry));
    entry.allowDfAlteration(false);
    QVERIFY(!dropframe_action(&entry));
}

void TestATimecodeEntry::any_keys_leave_the_text_in_form()
{
    QRegularExpression const form(QStringLiteral("^(\\d\\d([,.:;])\\d\\d\\2\\d\\d\\2\\d\\d)?$"));
    QList<Qt::Key> const keys{Qt::Key_0, Qt::Key_5, Qt::Key_9, Qt::Key_Comma, Qt::Key_Semicolon,
        Qt::Key_Colon, Qt::Key_Period, Qt::Key_A, Qt::Key_Space, Qt::Key_Backspace, Qt::Key_Delete,
        Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End};
    std::mt19937 random(7);
    auto const below = [&random](qsizetype n) {
        return static_cast<int>(random() % static_cast<unsigned int>(n));
    };
    ATimecodeEntry entry;
    for (int n = 0; n < 20000; ++n) {
        if (below(20) == 0)
            entry.set_frequency(frequency(1 + below(10)));
        if (below(20) == 0)
            entry.set_dfflag(flag(1 + below(2)));
        if (below(50) == 0)
            entry.set_nfields(static_cast<unsigned int>(random()));
        bool const select = below(4) == 0;
        QTest::keyClick(
            &entry, keys[below(keys.size())], select ? Qt::ShiftModifier : Qt::NoModifier);
        QVERIFY2(form.match(entry.text()).hasMatch(), qPrintable(entry.text()));
        QCOMPARE(entry.timecode().is_defined(), !entry.text().isEmpty());
    }
}

void TestATimecodeEntry::tells_assistive_programs_name_and_value()
{
    ATimecodeEntry entry;
    entry.set_timecode(ATimecode(VideoFrequency::v50, 186158, 1));
    QCOMPARE(accessible_text(&entry, QAccessible::Name), QStringLiteral("Timecode"));
    QCOMPARE(accessible_text(&entry, QAccessible::Value), QStringLiteral("01.02.03.04"));
    QVERIFY(!accessible_text(&entry, QAccessible::Description).isEmpty());
}

QTEST_MAIN(TestATimecodeEntry)
#include "tst_atimecode_entry.moc"
