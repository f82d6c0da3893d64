// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/widgets/atimecode_entry.h"
#include "tests/support/astring_print.h"
#include "tests/timecode/readout_text.h"
#include "tests/timecode/standard_numbers.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

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
    void listener_of_changed_may_set_the_timecode();
    void modified_flag_stays_when_the_text_is_brought_into_form();
    void timecode_comes_back_data();
    void timecode_comes_back();
    void field_is_told_by_the_separators();
    void frame_is_read_as_two_fields_where_a_field_is_a_frame();
    void numbers_left_out_are_raised_to_2();
    void text_without_a_digit_is_undefined();
    void undefined_empties_the_entry_and_leaves_the_rate();
    void clear_empties_the_entry();
    void days_do_not_show();
    void flag_changes_the_separators_and_keeps_the_digits();
    void invalid_flag_changes_nothing();
    void flag_counts_only_where_there_is_dropframe();
    void frequency_keeps_the_digits();
    void invalid_frequency_gives_undefined();
    void nfields_are_taken_at_the_present_rate();
    void auto_highlight_selects_all_on_focus();
    void dropframe_changes_by_the_menu_only_if_allowed();
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

void TestATimecodeEntry::timecode_comes_back_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("flag_value");
    QTest::addColumn<unsigned>("count");
    QTest::addColumn<QString>("text");
    QTest::newRow("50 Hz") << 3 << 2 << 186158u << QStringLiteral("01.02.03.04");
    QTest::newRow("50 Hz F2") << 3 << 2 << 186159u << QStringLiteral("01:02:03:04");
    QTest::newRow("50 Hz, zero") << 3 << 2 << 0u << QStringLiteral("00.00.00.00");
    QTest::newRow("59.94 Hz df") << 2 << 1 << 3600u << QStringLiteral("00,01,00,02");
    QTest::newRow("59.94 Hz df F2") << 2 << 1 << 3601u << QStringLiteral("00;01;00;02");
    QTest::newRow("59.94 Hz ndf") << 2 << 2 << 3600u << QStringLiteral("00.01.00.00");
    QTest::newRow("60 Hz, last") << 1 << 2 << 5183999u << QStringLiteral("23:59:59:29");
}

void TestATimecodeEntry::timecode_comes_back()
{
    QFETCH(int, value);
    QFETCH(int, flag_value);
    QFETCH(unsigned, count);
    QFETCH(QString, text);
    ATimecodeEntry entry;
    entry.set_timecode(ATimecode(frequency(value), flag(flag_value), count, 1));
    QCOMPARE(entry.text(), text);
    QCOMPARE(entry.timecode().get_nfields(), count);
    QCOMPARE(number(entry.timecode().get_std()), value);
    QCOMPARE(number(entry.timecode().get_df()), flag_value);
    QCOMPARE(number(entry.frequency()), value);
    QCOMPARE(number(entry.dfflag()), flag_value);
}

void TestATimecodeEntry::field_is_told_by_the_separators()
{
    ATimecodeEntry entry;
    entry.set_timecode(ATimecode(VideoFrequency::v50, 101, 1));
    QCOMPARE(entry.text(), QStringLiteral("00:00:02:00"));
    // A digit that is added leaves the field, and one typed into an empty entry is of the first.
    QTest::keyClicks(&entry, QStringLiteral("4"));
    QCOMPARE(entry.text(), QStringLiteral("00:00:20:04"));
    QCOMPARE(entry.timecode().get_nfields(), 1009u);
    entry.selectAll();
    QTest::keyClicks(&entry, QStringLiteral("4"));
    QCOMPARE(entry.timecode().get_nfields(), 8u);
}

void TestATimecodeEntry::frame_is_read_as_two_fields_where_a_field_is_a_frame()
{
    ATimecodeEntry entry;
    entry.set_frequency(VideoFrequency::v25);
    QTest::keyClicks(&entry, QStringLiteral("104"));
    QCOMPARE(entry.text(), QStringLiteral("00.00.01.04"));
    QCOMPARE(entry.timecode().get_nfields(), 33u);
    // There is no second field.
    entry.setText(QStringLiteral("00:00:01:04"));
    QCOMPARE(entry.text(), QStringLiteral("00.00.01.04"));
    entry.blockSignals(true);
    entry.setText(QStringLiteral("00:00:01:04"));
    QCOMPARE(entry.timecode().get_nfields(), 33u);
}

void TestATimecodeEntry::numbers_left_out_are_raised_to_2()
{
    ATimecodeEntry entry;
    QTest::keyClicks(&entry, QStringLiteral("10000"));
    QCOMPARE(entry.text(), QStringLiteral("00,01,00,00"));
    QCOMPARE(entry.timecode().toString(4), AString::l1("00,01,00,02"));
}

void TestATimecodeEntry::text_without_a_digit_is_undefined()
{
    ATimecodeEntry entry;
    entry.blockSignals(true);
    for (char const *text : {"", "...", "(invalid)", "--:--:--:--"}) {
        entry.setText(QLatin1String(text));
        QVERIFY(entry.timecode().is_undefined());
    }
}

void TestATimecodeEntry::undefined_empties_the_entry_and_leaves_the_rate()
{
    ATimecodeEntry entry;
    entry.set_timecode(ATimecode(VideoFrequency::v29_97, flag(2), 100, 1));
    entry.set_timecode(ATimecode());
    QCOMPARE(entry.text(), QString());
    QVERIFY(entry.timecode().is_undefined());
    QCOMPARE(number(entry.frequency()), 7);
    QCOMPARE(number(entry.dfflag()), 2);
}

void TestATimecodeEntry::clear_empties_the_entry()
{
    ATimecodeEntry entry;
    entry.set_timecode(ATimecode(VideoFrequency::v50, 100, 1));
    entry.clear();
    QCOMPARE(entry.text(), QString());
    QVERIFY(entry.timecode().is_undefined());
}

void TestATimecodeEntry::days_do_not_show()
{
    ATimecodeEntry entry;
    entry.set_timecode(ATimecode(VideoFrequency::v50, 3 * 4320000u + 101, 1));
    QCOMPARE(entry.text(), QStringLiteral("00:00:02:00"));
    QCOMPARE(entry.timecode().get_nfields(), 101u);
    QCOMPARE(ATimecodeEntry::text_of(ATimecode(VideoFrequency::v50, 4320000, 1)),
        QStringLiteral("00.00.00.00"));
    QCOMPARE(ATimecodeEntry::text_of(ATimecode()), QString());
}

void TestATimecodeEntry::flag_changes_the_separators_and_keeps_the_digits()
{
    ATimecodeEntry entry;
    entry.setText(QStringLiteral("01020304"));
    QCOMPARE(entry.text(), QStringLiteral("01,02,03,04"));
    QSignalSpy changed(&entry, &ATimecodeEntry::changed);
    entry.set_dfflag_ndf();
    QCOMPARE(entry.text(), QStringLiteral("01.02.03.04"));
    QCOMPARE(changed.count(), 1);
    QVERIFY(emitted(changed).is_ndf());
    entry.set_dfflag_df();
    QCOMPARE(entry.text(), QStringLiteral("01,02,03,04"));
    entry.setText(QStringLiteral("01;02;03;04"));
    entry.set_dfflag(flag(2));
    QCOMPARE(entry.text(), QStringLiteral("01:02:03:04"));
    QCOMPARE(number(entry.dfflag()), 2);
}

void TestATimecodeEntry::invalid_flag_changes_nothing()
{
    ATimecodeEntry entry;
    for (int n : {-1, 0, 3}) {
        entry.set_dfflag(flag(n));
        QCOMPARE(number(entry.dfflag()), 1);
    }
}

void TestATimecodeEntry::flag_counts_only_where_there_is_dropframe()
{
    ATimecodeEntry entry;
    for (int n = 1; n <= 10; ++n) {
        bool const dropframe = n == 2 || n == 7;
        entry.clear();
        entry.set_frequency(frequency(n));
        QTest::keyClicks(&entry, QStringLiteral("1"));
        QCOMPARE(entry.text().at(2), QLatin1Char(dropframe ? ',' : '.'));
        QCOMPARE(entry.timecode().is_df(), dropframe);
        QCOMPARE(number(entry.dfflag()), 1);
    }
}

void TestATimecodeEntry::frequency_keeps_the_digits()
{
    ATimecodeEntry entry;
    entry.setText(QStringLiteral("01020304"));
    QSignalSpy changed(&entry, &ATimecodeEntry::changed);
    entry.set_frequency(VideoFrequency::v50);
    QCOMPARE(entry.text(), QStringLiteral("01.02.03.04"));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(emitted(changed).get_nfields(), 186158u);
    entry.set_frequency(VideoFrequency::v60);
    QCOMPARE(changed.count(), 1);
    // The second field goes where a field is a frame.
    entry.setText(QStringLiteral("01:02:03:04"));
    entry.set_frequency(VideoFrequency::v25);
    QCOMPARE(entry.text(), QStringLiteral("01.02.03.04"));
}

void TestATimecodeEntry::invalid_frequency_gives_undefined()
{
    ATimecodeEntry entry;
    for (int n : {-1, 0, 11}) {
        entry.set_frequency(frequency(n));
        QTest::keyClicks(&entry, QStringLiteral("12"));
        QVERIFY(entry.timecode().is_undefined());
    }
    entry.set_nfields(100);
    QCOMPARE(entry.text(), QString());
}

void TestATimecodeEntry::nfields_are_taken_at_the_present_rate()
{
    ATimecodeEntry entry;
    entry.set_nfields(3601);
    QCOMPARE(entry.text(), QStringLiteral("00;01;00;02"));
    entry.set_dfflag_ndf();
    entry.set_nfields(3601);
    QCOMPARE(entry.text(), QStringLiteral("00:01:00:00"));
    entry.set_frequency(VideoFrequency::v50);
    entry.set_nfields(3600);
    QCOMPARE(entry.text(), QStringLiteral("00.01.12.00"));
    QCOMPARE(entry.timecode().get_nfields(), 3600u);
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
    QVERIFY(QTest::qWaitForWindowActive(&window));
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
