// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_world.h"
#include "tests/desktop/desk_bench.h"
#include "tests/support/patience.h"

#include <QComboBox>
#include <QLineEdit>

using namespace VCTP3;

/// The clips that can be cued, and how one of them is found.
class TestDeskClips : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void clips_that_come_and_go_are_in_the_list();
    void what_changes_while_the_list_is_read_is_not_lost();
    void a_list_that_is_refused_leaves_the_one_before();
    void typing_leaves_the_clips_that_hold_it_data();
    void typing_leaves_the_clips_that_hold_it();
    void the_clip_that_was_found_is_cued();
    void return_gives_the_keys_back_to_the_transport();
    void escape_shows_all_clips_again();
    void a_clip_that_is_made_is_found_too();
    void the_chosen_clip_stays_chosen_over_a_reconnection();
};

namespace {

struct ClipBench : DeskBench
{
    ClipBench()
        : box(window.findChild<QComboBox *>(QStringLiteral("clip to cue")))
        , filter(window.findChild<QLineEdit *>(QStringLiteral("clip filter")))
    {
    }

    /// Types as at a keyboard: into what has the focus, else into the window.
    void type(QString const &text)
    {
        QWidget *focused = window.focusWidget();
        QTest::keyClicks(focused ? focused : &window, text);
    }

    QComboBox *box;
    QLineEdit *filter;
};

} // namespace

void TestDeskClips::clips_that_come_and_go_are_in_the_list()
{
    ClipBench desk;
    QVERIFY(desk.open());
    QTRY_COMPARE(desk.window.clips()->rowCount(), int(desk.server.clip_ids().size()));
    desk.hub.cmd_create_clip(AString::l1("Aaa"), TrackSet(TrackType::video), 100U);
    QTRY_COMPARE(desk.window.clips()->stringList().first(), QStringLiteral("Aaa"));
    desk.hub.cmd_delete_clip(AString::l1("Aaa"));
    QTRY_COMPARE(desk.window.clips()->stringList().first(), QStringLiteral("Bank 1/101-01"));
}

void TestDeskClips::what_changes_while_the_list_is_read_is_not_lost()
{
    ClipBench desk;
    QVERIFY(desk.open());
    auto const has = [&](char const *id) {
        std::vector<AString> const ids = desk.server.clip_ids();
        return std::find(ids.begin(), ids.end(), AString::l1(id)) != ids.end();
    };
    // Answers wait from here on, reports do not.
    desk.server.delay_replies(1);
    desk.server.drop_connections();
    QTRY_COMPARE(desk.server.counters().count("download_clipids"), 2U);
    APIQt other;
    other.connect_to_server(desk.server.address());
    QTRY_VERIFY(other.is_connected());
    other.cmd_create_clip(AString::l1("Aaa"), TrackSet(TrackType::video), 100U);
    other.cmd_delete_clip(AString::l1("Bank 1/101-01"));
    QTRY_VERIFY(has("Aaa") && !has("Bank 1/101-01"));
    desk.server.clear_faults();
    QTRY_VERIFY(desk.is_live());
    QTRY_COMPARE(desk.window.clips()->stringList().mid(0, 2),
        (QStringList{QStringLiteral("Aaa"), QStringLiteral("Bank 1/101-02")}));
    QCOMPARE(desk.window.clips()->rowCount(), int(desk.server.clip_ids().size()));
}

void TestDeskClips::a_list_that_is_refused_leaves_the_one_before()
{
    ClipBench desk;
    QVERIFY(desk.open());
    int const before = desk.window.clips()->rowCount();
    desk.server.fail_command("download_clipids", "not today");
    QVERIFY(desk.reconnect());
    QVERIFY(desk.sync());
    QCOMPARE(desk.window.clips()->rowCount(), before);
    desk.hub.cmd_create_clip(AString::l1("Aaa"), TrackSet(TrackType::video), 100U);
    QTRY_COMPARE(desk.window.clips()->rowCount(), before + 1);
}

void TestDeskClips::typing_leaves_the_clips_that_hold_it_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("a bank") << QStringLiteral("Bank 2");
    QTest::newRow("small letters") << QStringLiteral("bank 3/");
    QTest::newRow("the end") << QStringLiteral("-05");
    QTest::newRow("what a pattern would take for more") << QStringLiteral("...");
    QTest::newRow("nothing that there is") << QStringLiteral("no such clip");
}

void TestDeskClips::typing_leaves_the_clips_that_hold_it()
{
    QFETCH(QString, typed);
    ClipBench desk;
    QVERIFY(desk.open());
    desk.press(Qt::Key_F);
    QVERIFY(desk.filter->hasFocus());
    desk.type(typed);
    QCOMPARE(desk.filter->text(), typed);
    QStringList expected;
    for (QString const &id : desk.window.clips()->stringList())
        if (id.contains(typed, Qt::CaseInsensitive))
            expected << id;
    QStringList found;
    for (int i = 0; i < desk.box->count(); ++i)
        found << desk.box->itemText(i);
    QCOMPARE(found, expected);
    QCOMPARE(desk.box->currentText(), expected.value(0));
    // Letters that are typed are no keys of the transport.
    QVERIFY(desk.sync());
    QCOMPARE(desk.state(Channel::A).status, ChannelStatus::idle);
}

void TestDeskClips::the_clip_that_was_found_is_cued()
{
    ClipBench desk;
    QVERIFY(desk.open());
    desk.press(Qt::Key_F);
    desk.type(QStringLiteral("2/203-1"));
    QTest::keyClick(desk.filter, Qt::Key_PageDown);
    QTest::keyClick(desk.filter, Qt::Key_Return);
    QVERIFY(desk.cue(Channel::A));
    QCOMPARE(QString(desk.state(Channel::A).clip), QStringLiteral("Bank 2/203-11"));
}

void TestDeskClips::return_gives_the_keys_back_to_the_transport()
{
    ClipBench desk;
    QVERIFY(desk.open());
    desk.press(Qt::Key_F);
    desk.type(QStringLiteral("kr"));
    QTest::keyClick(desk.filter, Qt::Key_Return);
    QVERIFY(!desk.filter->hasFocus());
    desk.type(QStringLiteral("r"));
    QTRY_COMPARE(desk.state(Channel::A).status, ChannelStatus::record);
    QCOMPARE(desk.filter->text(), QStringLiteral("kr"));
}

void TestDeskClips::escape_shows_all_clips_again()
{
    ClipBench desk;
    QVERIFY(desk.open());
    desk.press(Qt::Key_A, Qt::ControlModifier);
    int const all = desk.box->count();
    desk.press(Qt::Key_F);
    desk.type(QStringLiteral("Bank 4"));
    QVERIFY(desk.box->count() < all);
    QTest::keyClick(desk.filter, Qt::Key_Escape);
    QCOMPARE(desk.box->count(), all);
    QVERIFY(desk.box->currentText().startsWith(QLatin1String("Bank 4")));
    QVERIFY(!desk.filter->hasFocus());
    // Only the next one ends the gang.
    QVERIFY(desk.window.wall()->selection().size() > 1);
    desk.press(Qt::Key_Escape);
    QCOMPARE(desk.window.wall()->selection().size(), 1U);
}

void TestDeskClips::a_clip_that_is_made_is_found_too()
{
    ClipBench desk;
    QVERIFY(desk.open());
    desk.press(Qt::Key_F);
    desk.type(QStringLiteral("interview"));
    QCOMPARE(desk.box->count(), 0);
    desk.hub.cmd_create_clip(AString::l1("Interview 1"), TrackSet(TrackType::video), 100U);
    QTRY_COMPARE(desk.box->currentText(), QStringLiteral("Interview 1"));
    desk.hub.cmd_create_clip(AString::l1("Something else"), TrackSet(TrackType::video), 100U);
    desk.hub.cmd_delete_clip(AString::l1("Interview 1"));
    QTRY_COMPARE(desk.box->count(), 0);
}

void TestDeskClips::the_chosen_clip_stays_chosen_over_a_reconnection()
{
    ClipBench desk;
    QVERIFY(desk.open());
    desk.hub.cmd_create_clip(AString::l1("Aaa"), TrackSet(TrackType::video), 100U);
    QTRY_COMPARE(desk.window.clips()->stringList().first(), QStringLiteral("Aaa"));
    desk.box->setCurrentText(QStringLiteral("Bank 2/203-11"));
    desk.server.stop();
    QTRY_VERIFY(!desk.is_live());
    desk.server.restart(VeskState::lose);
    QTRY_VERIFY(desk.is_live());
    // What was made before has gone; the choice has not.
    QTRY_COMPARE(desk.window.clips()->stringList().first(), QStringLiteral("Bank 1/101-01"));
    QCOMPARE(desk.box->currentText(), QStringLiteral("Bank 2/203-11"));
    QCOMPARE(desk.window.clips()->rowCount(), int(desk.server.clip_ids().size()));
}

QTEST_MAIN(TestDeskClips)
#include "tst_desk_clips.moc"
