// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/alert_list.h"
#include "demo/desktop/board_picture.h"
#include "demo/desktop/level_meter.h"
#include "demo/desktop/log_page.h"
#include "sim/vesk/reports.h"
#include "sim/vesk/vesk_world.h"
#include "tests/desktop/desk_bench.h"
#include "tests/support/patience.h"

#include <QComboBox>
#include <QPushButton>
#include <QSignalSpy>

using namespace VCTP3;

/// The window of the desk: keys that reach the server, and what the server does in the window.
class TestDeskWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void the_wall_has_a_tile_for_each_configured_channel();
    void the_wall_follows_the_configuration();
    void the_cue_key_cues_the_chosen_clip();
    void another_clip_is_chosen_by_keys();
    void play_and_stop_keys_change_the_channel_data();
    void play_and_stop_keys_change_the_channel();
    void a_button_does_what_its_key_does();
    void jog_keys_move_by_a_field();
    void shuttle_keys_step_along_the_speeds();
    void another_channel_begins_to_shuttle_at_the_lowest_speed();
    void the_record_key_records_a_new_clip();
    void arrow_keys_choose_the_channel();
    void a_gang_is_played_within_one_field();
    void buttons_and_clicks_gang_channels();
    void what_the_server_refuses_is_told_and_logged();
    void the_tile_shows_what_the_channel_does();
    void the_tile_shows_timecode_and_what_remains();
    void the_meter_shows_the_levels();
    void the_tile_follows_the_tally();
    void keys_choose_the_page();
    void the_bar_names_the_server();
    void nothing_is_stale_before_the_server_has_told_anything();
    void values_are_stale_while_the_server_is_gone();
    void an_output_shows_the_channel_that_feeds_it();
    void an_output_follows_the_configuration();
    void the_server_page_tells_the_facts();
    void an_alert_is_shown_and_logged();
    void a_chosen_setting_waits_for_the_commit();
    void a_revert_takes_back_what_was_chosen();
    void a_setting_that_goes_back_behind_a_refused_one_leaves_nothing_to_commit();
    void the_board_is_drawn_as_chosen();
    void the_health_of_the_connection_stays_readable();
};

void TestDeskWindow::the_wall_has_a_tile_for_each_configured_channel()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QTRY_COMPARE(desk.window.wall()->tiles().size(), 8);
    QCOMPARE(desk.shown(Channel::A, "letter"), QStringLiteral("A"));
    QCOMPARE(desk.shown(Channel::H, "letter"), QStringLiteral("H"));
    QCOMPARE(desk.shown(Channel::H, "outputs"), QStringLiteral("out 8"));
    QCOMPARE(desk.shown(Channel::H, "angles"), QStringLiteral("1 angle"));
    QVERIFY(!desk.tile(Channel::I));
}

void TestDeskWindow::the_wall_follows_the_configuration()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QTRY_COMPARE(desk.window.wall()->tiles().size(), 8);
    desk.server.with_world([](VeskWorld &world) {
        for (int quad = 2; quad < 8; ++quad)
            world.configuration.set(
                AString::sprintf("ChannelConfigurationSet%d", quad), AString::l1("VVVV"));
    });
    QTRY_COMPARE(desk.window.wall()->tiles().size(), 32);
    QCOMPARE(desk.shown(Channel::AF, "outputs"), QStringLiteral("out 32"));
    // All of them fit, and none has shrunk to nothing.
    QTRY_VERIFY(desk.tile(Channel::AF)->width() > 100);
    QVERIFY(desk.window.wall()->rect().contains(desk.tile(Channel::AF)->geometry()));
}

void TestDeskWindow::the_cue_key_cues_the_chosen_clip()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QVERIFY(desk.cue(Channel::A));
    QCOMPARE(QString(desk.state(Channel::A).clip), QStringLiteral("Bank 1/101-01"));
    QTRY_COMPARE(desk.shown(Channel::A, "clip"), QStringLiteral("Bank 1/101-01"));
}

void TestDeskWindow::another_clip_is_chosen_by_keys()
{
    DeskBench desk;
    QVERIFY(desk.open());
    desk.press(Qt::Key_PageDown);
    desk.press(Qt::Key_PageDown);
    desk.press(Qt::Key_PageUp);
    QVERIFY(desk.cue(Channel::A));
    QCOMPARE(QString(desk.state(Channel::A).clip), QStringLiteral("Bank 1/101-02"));
}

void TestDeskWindow::play_and_stop_keys_change_the_channel_data()
{
    QTest::addColumn<int>("play");
    QTest::addColumn<int>("stop");
    QTest::newRow("space and K") << int(Qt::Key_Space) << int(Qt::Key_K);
    QTest::newRow("P and S") << int(Qt::Key_P) << int(Qt::Key_S);
}

void TestDeskWindow::play_and_stop_keys_change_the_channel()
{
    QFETCH(int, play);
    QFETCH(int, stop);
    DeskBench desk;
    QVERIFY(desk.open());
    QVERIFY(desk.cue(Channel::A));
    desk.press(Qt::Key(play));
    QTRY_COMPARE(desk.state(Channel::A).status, ChannelStatus::play);
    QCOMPARE(desk.state(Channel::A).speed, 65536);
    desk.press(Qt::Key(stop));
    QTRY_COMPARE(desk.state(Channel::A).status, ChannelStatus::stop);
}

void TestDeskWindow::a_button_does_what_its_key_does()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QVERIFY(desk.cue(Channel::A));
    desk.click("Play");
    QTRY_COMPARE(desk.state(Channel::A).status, ChannelStatus::play);
}

void TestDeskWindow::jog_keys_move_by_a_field()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QVERIFY(desk.cue(Channel::A));
    for (int i = 0; i < 3; ++i)
        desk.press(Qt::Key_Period);
    QTRY_COMPARE(desk.state(Channel::A).position, 3U);
    desk.press(Qt::Key_Comma);
    QTRY_COMPARE(desk.state(Channel::A).position, 2U);
}

void TestDeskWindow::shuttle_keys_step_along_the_speeds()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QVERIFY(desk.cue(Channel::A));
    for (int speed : {6553, 16384, 32768, 65536, 131072}) {
        desk.press(Qt::Key_L);
        QTRY_COMPARE(desk.state(Channel::A).speed, speed);
    }
    desk.press(Qt::Key_J);
    QTRY_COMPARE(desk.state(Channel::A).speed, 65536);
    QTRY_COMPARE(desk.speed(Channel::A), QStringLiteral("100%"));
    desk.press(Qt::Key_K);
    QTRY_COMPARE(desk.state(Channel::A).status, ChannelStatus::stop);
    desk.press(Qt::Key_J);
    QTRY_COMPARE(desk.state(Channel::A).speed, -6553);
    QTRY_COMPARE(desk.speed(Channel::A), QStringLiteral("-10%"));
}

void TestDeskWindow::another_channel_begins_to_shuttle_at_the_lowest_speed()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QTRY_COMPARE(desk.window.wall()->tiles().size(), 8);
    desk.press(Qt::Key_Right);
    QVERIFY(desk.cue(Channel::B));
    desk.press(Qt::Key_Left);
    QVERIFY(desk.cue(Channel::A));
    for (int i = 0; i < 4; ++i)
        desk.press(Qt::Key_L);
    QTRY_COMPARE(desk.state(Channel::A).speed, 65536);
    desk.press(Qt::Key_Right);
    desk.press(Qt::Key_L);
    QTRY_COMPARE(desk.state(Channel::B).speed, 6553);
    QCOMPARE(desk.state(Channel::A).speed, 65536);
}

void TestDeskWindow::the_record_key_records_a_new_clip()
{
    DeskBench desk;
    QVERIFY(desk.open());
    desk.press(Qt::Key_R);
    QTRY_COMPARE(desk.state(Channel::A).status, ChannelStatus::record);
    desk.server.advance(30);
    QVERIFY(desk.state(Channel::A).position > 0);
    QTRY_COMPARE(desk.shown(Channel::A, "status"), QStringLiteral("record"));
    QTRY_COMPARE(desk.shown(Channel::A, "clip"), QString(desk.state(Channel::A).clip));
    QCOMPARE(desk.shown(Channel::A, "remaining"), QString());
}

void TestDeskWindow::arrow_keys_choose_the_channel()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QTRY_COMPARE(desk.window.wall()->tiles().size(), 8);
    desk.press(Qt::Key_Left); // there is nothing to the left of the first one
    desk.press(Qt::Key_Right);
    QVERIFY(desk.cue(Channel::B));
    QCOMPARE(desk.state(Channel::A).status, ChannelStatus::idle);
    QCOMPARE(DeskBench::text(&desk.window, "selection"), QStringLiteral("Channel B"));
}

void TestDeskWindow::a_gang_is_played_within_one_field()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QTRY_COMPARE(desk.window.wall()->tiles().size(), 8);
    desk.press(Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(DeskBench::text(&desk.window, "selection"), QStringLiteral("Gang A B"));
    QVERIFY(desk.cue(Channel::A));
    QCOMPARE(desk.state(Channel::B).status, ChannelStatus::stop);
    desk.press(Qt::Key_Space);
    QTRY_COMPARE(desk.state(Channel::B).status, ChannelStatus::play);
    QCOMPARE(desk.state(Channel::A).status, ChannelStatus::play);
    QCOMPARE(desk.server.counters().count("gang_play"), 1U);
    QCOMPARE(desk.server.counters().count("play"), 0U);
}

void TestDeskWindow::buttons_and_clicks_gang_channels()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QTRY_COMPARE(desk.window.wall()->tiles().size(), 8);
    auto const selection = [&] { return DeskBench::text(&desk.window, "selection"); };
    desk.click("Gang all");
    QCOMPARE(selection(), QStringLiteral("Gang of 8"));
    desk.click("Gang off");
    QCOMPARE(selection(), QStringLiteral("Channel A"));
    QTest::mouseClick(desk.tile(Channel::F), Qt::LeftButton);
    QCOMPARE(selection(), QStringLiteral("Channel F"));
    QTest::mouseClick(desk.tile(Channel::C), Qt::LeftButton, Qt::ControlModifier);
    QCOMPARE(selection(), QStringLiteral("Gang C F"));
    desk.press(Qt::Key_R);
    QTRY_COMPARE(desk.state(Channel::C).status, ChannelStatus::record);
    QTRY_COMPARE(desk.state(Channel::F).status, ChannelStatus::record);
    QCOMPARE(desk.state(Channel::A).status, ChannelStatus::idle);
    QTest::mouseClick(desk.tile(Channel::C), Qt::LeftButton, Qt::ControlModifier);
    QCOMPARE(selection(), QStringLiteral("Channel F"));
}

void TestDeskWindow::what_the_server_refuses_is_told_and_logged()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QTRY_COMPARE(desk.window.wall()->tiles().size(), 8);
    desk.server.fail_command("play", "not today");
    desk.press(Qt::Key_Space);
    QTRY_COMPARE(DeskBench::text(&desk.window, "notice"), QStringLiteral("not today"));
    QVERIFY(desk.window.log()->toPlainText().contains(QLatin1String("not today")));
}

void TestDeskWindow::the_tile_shows_what_the_channel_does()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QTRY_VERIFY(desk.tile(Channel::C));
    APIQt other;
    other.connect_to_server(desk.server.address());
    QTRY_VERIFY(other.is_connected());
    other.cmd_cue_clip(Channel::C, AString::l1("Bank 2/201-05"));
    QTRY_COMPARE(desk.shown(Channel::C, "status"), QStringLiteral("cueing"));
    desk.server.advance(5);
    QTRY_COMPARE(desk.shown(Channel::C, "status"), QStringLiteral("stop"));
    QTRY_COMPARE(desk.shown(Channel::C, "clip"), QStringLiteral("Bank 2/201-05"));
    other.cmd_play(Channel::C, -32768);
    QTRY_COMPARE(desk.shown(Channel::C, "status"), QStringLiteral("play"));
    QTRY_COMPARE(desk.speed(Channel::C), QStringLiteral("-50%"));
}

void TestDeskWindow::the_tile_shows_timecode_and_what_remains()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QVERIFY(desk.cue(Channel::A));
    QTRY_VERIFY(desk.shown(Channel::A, "remaining").startsWith(QLatin1String("-01")));
    QString const at_first = desk.timecode(Channel::A);
    QString const input = desk.shown(Channel::A, "input timecode");
    desk.press(Qt::Key_Space);
    QTRY_COMPARE(desk.state(Channel::A).status, ChannelStatus::play);
    desk.server.advance(120);
    QTRY_VERIFY(desk.timecode(Channel::A) > at_first);
    QTRY_VERIFY(desk.shown(Channel::A, "input timecode") > input);
    // Of its 90 s two have gone.
    QTRY_VERIFY(desk.shown(Channel::A, "remaining").startsWith(QLatin1String("-01,27"))
        || desk.shown(Channel::A, "remaining").startsWith(QLatin1String("-01,28")));
}

void TestDeskWindow::the_meter_shows_the_levels()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QVERIFY(desk.cue(Channel::A));
    auto *meter = desk.tile(Channel::A)->findChild<LevelMeter *>();
    desk.press(Qt::Key_Space);
    QTRY_COMPARE(desk.state(Channel::A).status, ChannelStatus::play);
    desk.server.advance(10);
    QTRY_VERIFY(meter->level(0) > 0);
    QTRY_VERIFY(meter->peak(0) > 0);
    QCOMPARE(meter->level(15), 0U);
    desk.press(Qt::Key_K);
    QTRY_COMPARE(desk.state(Channel::A).status, ChannelStatus::stop);
    desk.server.advance(2);
    QTRY_COMPARE(meter->level(0), 0U);
    QTRY_COMPARE(meter->peak(0), 0.0);
}

void TestDeskWindow::the_tile_follows_the_tally()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QTRY_VERIFY(desk.tile(Channel::D));
    auto const stripe = [&] { return desk.tile(Channel::D)->grab().toImage().pixelColor(1, 20); };
    QColor const before = stripe();
    desk.server.with_world(
        [](VeskWorld &world) { world.dictionary.set(AString::l1("Tally3"), AString::l1("red")); });
    QTRY_VERIFY(stripe() != before);
    QVERIFY(stripe().red() > 2 * stripe().green());
}

void TestDeskWindow::keys_choose_the_page()
{
    DeskBench desk;
    QVERIFY(desk.open());
    auto *pages = desk.window.findChild<QTabWidget *>();
    QCOMPARE(desk.window.page_titles().size(), 5);
    for (int page : {4, 2, 0, 3, 1}) {
        desk.press(Qt::Key(Qt::Key_1 + page), Qt::ControlModifier);
        QCOMPARE(pages->currentIndex(), page);
    }
    // The transport is not at hand where it does not show.
    QSignalSpy played(
        desk.window.findChild<QAction *>(QStringLiteral("Play")), &QAction::triggered);
    desk.press(Qt::Key_Space);
    QCOMPARE(played.count(), 0);
}

void TestDeskWindow::the_bar_names_the_server()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QTRY_COMPARE(DeskBench::text(&desk.window, "server name"), QStringLiteral("vesk-sim"));
    QTRY_COMPARE(DeskBench::text(&desk.window, "standard"), QStringLiteral("1080_59_94i"));
    QTRY_VERIFY(DeskBench::text(&desk.window, "link state").startsWith(QLatin1String("live for ")));
}

void TestDeskWindow::nothing_is_stale_before_the_server_has_told_anything()
{
    DeskBench desk;
    auto const state = [&] { return DeskBench::text(&desk.window, "link state"); };
    auto const connecting = QLatin1String("connecting, for ");
    QVERIFY2(state().startsWith(connecting), qPrintable(state()));
    // It takes connections and says nothing.
    desk.server.stay_silent(true);
    QSignalSpy news(desk.window.link(), &ServerLink::changed);
    desk.hub.set_server(desk.server.address());
    QTRY_COMPARE(news.count(), 1);
    QVERIFY2(state().startsWith(connecting), qPrintable(state()));
    desk.server.drop_connections();
    QTRY_VERIFY(news.count() >= 2);
    QVERIFY2(state().startsWith(connecting), qPrintable(state()));
    desk.server.clear_faults();
    desk.server.drop_connections();
    QTRY_VERIFY(state().startsWith(QLatin1String("live for ")));
}

void TestDeskWindow::values_are_stale_while_the_server_is_gone()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QVERIFY(desk.cue(Channel::A));
    QTRY_COMPARE(desk.shown(Channel::A, "status"), QStringLiteral("stop"));
    desk.server.stop();
    QTRY_VERIFY(!desk.is_live());
    QVERIFY(DeskBench::text(&desk.window, "link state").startsWith(QLatin1String("NOT LIVE")));
    QVERIFY(!desk.tile(Channel::A)->isEnabled());
    QCOMPARE(desk.shown(Channel::A, "status"), QStringLiteral("stop")); // the last that was known

    desk.server.restart(VeskState::keep);
    QTRY_VERIFY(desk.is_live());
    QVERIFY(desk.tile(Channel::A)->isEnabled());
    QCOMPARE(desk.shown(Channel::A, "status"), QStringLiteral("idle"));
    QCOMPARE(desk.window.link()->reconnections(), 1);
}

void TestDeskWindow::an_output_shows_the_channel_that_feeds_it()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QVERIFY(desk.window.show_page(QStringLiteral("Outputs")));
    QTRY_VERIFY(desk.window.findChild<QWidget *>(QStringLiteral("output 8")));
    auto *output = desk.window.findChild<QWidget *>(QStringLiteral("output 3"));
    QVERIFY(output);
    QCOMPARE(DeskBench::text(output, "source"), QStringLiteral("from C, video 1"));
    desk.hub.cmd_cue_clip(Channel::C, AString::l1("Bank 2/201-05"));
    QTRY_COMPARE(DeskBench::text(output, "status"), QStringLiteral("cueing"));
    desk.server.advance(5);
    QTRY_COMPARE(DeskBench::text(output, "status"), QStringLiteral("stop"));
    QTRY_COMPARE(DeskBench::text(output, "clip"), QStringLiteral("Bank 2/201-05"));
}

void TestDeskWindow::an_output_follows_the_configuration()
{
    DeskBench desk;
    QVERIFY(desk.open());
    auto const output_9
        = [&] { return desk.window.findChild<QWidget *>(QStringLiteral("output 9")); };
    QTRY_VERIFY(desk.window.findChild<QWidget *>(QStringLiteral("output 8")));
    QVERIFY(!output_9());
    desk.server.with_world([](VeskWorld &world) {
        world.configuration.set(AString::l1("ChannelConfigurationSet2"), AString::l1("VVVV"));
    });
    QTRY_VERIFY(output_9());
    QCOMPARE(DeskBench::text(output_9(), "source"), QStringLiteral("from I, video 1"));
}

void TestDeskWindow::the_server_page_tells_the_facts()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QVERIFY(desk.window.show_page(QStringLiteral("Server")));
    auto const fact = [&](char const *title) { return DeskBench::text(&desk.window, title); };
    QTRY_COMPARE(fact("Version"), QStringLiteral("1000 of sim/vesk"));
    QTRY_COMPARE(fact("Standard after a reboot"), QStringLiteral("1080_59_94i"));
    QTRY_COMPARE(fact("Board"), QStringLiteral("tamarind, 8 channels"));
    QTRY_COMPARE(fact("Clips"), QString::number(desk.server.clip_ids().size()));
    QTRY_VERIFY(fact("From input to output").endsWith(QLatin1String(" fields")));
    QTRY_VERIFY(fact("Disk").endsWith(QLatin1String(" free")));
    QTRY_VERIFY(fact("Temperature").endsWith(QStringLiteral("\u00B0C")));
}

void TestDeskWindow::an_alert_is_shown_and_logged()
{
    DeskBench desk;
    QVERIFY(desk.open());
    auto *list = desk.window.findChild<AlertList *>();
    QCOMPARE(list->rowCount(), 0);
    QVERIFY(desk.window.show_page(QStringLiteral("Server")));
    auto *nothing = desk.window.findChild<QLabel *>(QStringLiteral("no alerts"));
    QVERIFY(nothing->isVisible());
    Alert alert;
    alert.alert_name = AString::l1("fan");
    alert.alert_name_description = AString::l1("Fan 2");
    alert.alerting_level = AlertingLevel::error;
    alert.alert_value_description = AString::l1("stands still");
    desk.server.with_world([&](VeskWorld &world) {
        world.reporter->report(ReportType::alerts, VeskReports::alert(alert));
    });
    QTRY_COMPARE(list->rowCount(), 1);
    QTRY_COMPARE(list->item(0, 1)->text(), QStringLiteral("error"));
    QVERIFY(!nothing->isVisible());
    QCOMPARE(list->item(0, 0)->text(), QStringLiteral("Fan 2"));
    QCOMPARE(list->item(0, 2)->text(), QStringLiteral("stands still"));
    QVERIFY(desk.window.log()->toPlainText().contains(
        QLatin1String("alert Fan 2: error, stands still")));
}

namespace {

/// Chooses a value as a user does.
void choose(QComboBox *box, QString const &value)
{
    box->setCurrentIndex(box->findData(value));
    Q_EMIT box->activated(box->currentIndex());
}

/// The box of a setting, on its page, when all has been read; null if it does not show \a value.
QComboBox *open_setting(DeskBench *desk, char const *name, char const *value)
{
    if (!desk->open() || !desk->window.show_page(QStringLiteral("Configuration")))
        return nullptr;
    auto *box = desk->window.findChild<QComboBox *>(QLatin1String(name));
    auto const shown = [&] {
        return box->currentData().toString() == QLatin1String(value)
            && DeskBench::text(&desk->window, "configuration state")
            == QLatin1String("All is as the server has it");
    };
    return box && QTest::qWaitFor(shown, patience_ms) ? box : nullptr;
}

QPushButton *button(DeskBench *desk, char const *text)
{
    for (auto *one : desk->window.findChildren<QPushButton *>())
        if (one->text() == QLatin1String(text))
            return one;
    return nullptr;
}

} // namespace

void TestDeskWindow::a_chosen_setting_waits_for_the_commit()
{
    DeskBench desk;
    QComboBox *box = open_setting(&desk, "VideoAspectRatio", "16x9");
    QVERIFY(box);
    QVERIFY(!button(&desk, "Commit")->isEnabled());
    choose(box, QStringLiteral("4x3"));
    QTRY_VERIFY(button(&desk, "Commit")->isEnabled());
    QCOMPARE(DeskBench::text(&desk.window, "configuration state"),
        QStringLiteral("There are changes to commit"));
    auto const saved
        = [&] { return QString(desk.server.setting(AString::l1("VideoAspectRatio"))->saved); };
    QCOMPARE(saved(), QStringLiteral("16x9"));
    QTest::mouseClick(button(&desk, "Commit"), Qt::LeftButton);
    QTRY_COMPARE(saved(), QStringLiteral("4x3"));
    QTRY_VERIFY(!button(&desk, "Commit")->isEnabled());
}

void TestDeskWindow::a_revert_takes_back_what_was_chosen()
{
    DeskBench desk;
    QComboBox *box = open_setting(&desk, "VideoAspectRatio", "16x9");
    QVERIFY(box);
    choose(box, QStringLiteral("4x3"));
    QTRY_VERIFY(button(&desk, "Revert")->isEnabled());
    QTest::mouseClick(button(&desk, "Revert"), Qt::LeftButton);
    QTRY_COMPARE(box->currentData().toString(), QStringLiteral("16x9"));
    QTRY_VERIFY(!button(&desk, "Revert")->isEnabled());
}

void TestDeskWindow::a_setting_that_goes_back_behind_a_refused_one_leaves_nothing_to_commit()
{
    DeskBench desk;
    QComboBox *box = open_setting(&desk, "VideoAspectRatio", "16x9");
    QVERIFY(box);
    auto const sent = [&] { return desk.server.counters().count("set_configuration"); };
    desk.server.fail_command("set_configuration", "not today");
    choose(box, QStringLiteral("4x3"));
    QTest::mouseClick(button(&desk, "Commit"), Qt::LeftButton);
    QTRY_COMPARE(sent(), 1U);
    choose(box, QStringLiteral("16x9"));
    QVERIFY(button(&desk, "Commit")->isEnabled());
    QTest::mouseClick(button(&desk, "Commit"), Qt::LeftButton);
    QVERIFY(!button(&desk, "Commit")->isEnabled());
    QTRY_COMPARE(sent(), 2U);
    QCOMPARE(DeskBench::text(&desk.window, "configuration state"),
        QStringLiteral("All is as the server has it"));
    for (QLabel *note : desk.window.findChildren<QLabel *>(QStringLiteral("note")))
        QCOMPARE(note->text(), QString());
}

void TestDeskWindow::the_board_is_drawn_as_chosen()
{
    DeskBench desk;
    QComboBox *box = open_setting(&desk, "ChannelConfigurationSet2", "absent");
    QVERIFY(box);
    auto *picture = desk.window.findChild<BoardPicture *>();
    QImage const before = picture->grab().toImage();
    choose(box, QStringLiteral("VVVV"));
    QTRY_VERIFY(picture->grab().toImage() != before);
    QTRY_COMPARE(desk.window.wall()->tiles().size(), 12);
    QCOMPARE(QString(desk.server.setting(AString::l1("ChannelConfigurationSet2"))->saved),
        QStringLiteral("absent"));
}

void TestDeskWindow::the_health_of_the_connection_stays_readable()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QVERIFY(desk.window.show_page(QStringLiteral("Server")));
    auto const value
        = [&](char const *title) { return desk.window.findChild<QLabel *>(QLatin1String(title)); };
    QTRY_VERIFY(value("Round trip")->text().endsWith(QLatin1String(" ms")));
    QTRY_VERIFY(!value("Received")->text().startsWith(QLatin1String("0 ")));
    desk.server.restart(VeskState::keep);
    QTRY_VERIFY(value("Connections")->text().endsWith(QLatin1String(", 1 reconnection")));
    desk.server.stop();
    QTRY_VERIFY(!desk.is_live());
    QVERIFY(!value("Temperature")->isEnabled());
    QVERIFY(value("Last error")->isEnabled());
    QTRY_VERIFY(!value("Last error")->text().isEmpty());
}

QTEST_MAIN(TestDeskWindow)
#include "tst_desk_window.moc"
