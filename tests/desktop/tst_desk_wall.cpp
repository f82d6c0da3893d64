// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/level_meter.h"
#include "demo/desktop/output_tile.h"
#include "sim/vesk/vesk_world.h"
#include "tests/desktop/desk_bench.h"
#include "tests/support/patience.h"

#include <QScrollBar>

using namespace VCTP3;

/// How the walls of channels and outputs look, on small boards and on large ones.
class TestDeskWall : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothing_is_cut_off_data();
    void nothing_is_cut_off();
    void the_cursor_stays_in_sight();
    void outputs_side_by_side_are_told_as_one();
    void pages_say_what_they_wait_for();
    void stale_readouts_are_faint();
    void nothing_can_be_played_while_the_server_is_gone();
    void marks_of_peaks_fall_by_themselves();
};

namespace {

constexpr int quads = 8;

/// Sets up the board: what each group of four outputs carries, and nothing in the others.
void set_board(DeskBench *desk, QStringList const &sets)
{
    desk->server.with_world([&](VeskWorld &world) {
        for (int quad = 0; quad < quads; ++quad)
            world.configuration.set(AString::sprintf("ChannelConfigurationSet%d", quad),
                AString(sets.value(quad, QStringLiteral("absent"))));
    });
}

/// Whether all that \a tile shows lies in it and has the room that it needs; what is wrong
/// otherwise.
QString cut_off_in(QWidget *tile)
{
    for (QWidget *part : tile->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        QString const name = tile->objectName() + QLatin1Char(' ') + part->objectName();
        if (!tile->rect().contains(part->geometry()))
            return name + QStringLiteral(" lies outside");
        auto const *label = qobject_cast<QLabel *>(part);
        if (label && label->fontMetrics().horizontalAdvance(label->text()) > label->width())
            return name + QStringLiteral(" is cut off: ") + label->text();
        if (label && label->fontMetrics().height() > label->height() + 1)
            return name + QStringLiteral(" is too low");
        if (!label && part->sizeHint().isValid()
            && part->sizeHint().boundedTo(part->size()) != part->sizeHint())
            return name + QStringLiteral(" is too small");
    }
    return {};
}

/// Whether texts that share a row leave each other alone.
QString overlap_in(QWidget *tile, char const *left_name, char const *right_name)
{
    auto const *left = tile->findChild<QLabel *>(QLatin1String(left_name));
    auto const *right = tile->findChild<QLabel *>(QLatin1String(right_name));
    int const end = left->x() + left->fontMetrics().horizontalAdvance(left->text());
    int const begin
        = right->geometry().right() + 1 - right->fontMetrics().horizontalAdvance(right->text());
    return end < begin ? QString() : left->text() + QStringLiteral(" runs into ") + right->text();
}

} // namespace

void TestDeskWall::nothing_is_cut_off_data()
{
    QTest::addColumn<QStringList>("sets");
    QTest::addColumn<QSize>("size");
    QString const plain = QStringLiteral("VVVV");
    QStringList const most(quads, plain);
    QStringList const mixed{QStringLiteral("C444_3SSM3_VVV"), QStringLiteral("absent"),
        QStringLiteral("absent"), QStringLiteral("VKVK"), QStringLiteral("ISO4_2P_VK_2")};
    QSize const least(1024, 576);
    QTest::newRow("1, least") << QStringList{QStringLiteral("SSM4")} << least;
    QTest::newRow("1, full") << QStringList{QStringLiteral("SSM4")} << QSize(1920, 1080);
    QTest::newRow("8") << QStringList{plain, plain} << QSize(1280, 720);
    QTest::newRow("mixed, least") << mixed << least;
    QTest::newRow("mixed") << mixed << QSize(1280, 720);
    QTest::newRow("32, least") << most << least;
    QTest::newRow("32") << most << QSize(1280, 720);
    QTest::newRow("32, full") << most << QSize(1920, 1080);
}

void TestDeskWall::nothing_is_cut_off()
{
    QFETCH(QStringList, sets);
    QFETCH(QSize, size);
    DeskBench desk;
    set_board(&desk, sets);
    desk.window.resize(size);
    QVERIFY(desk.open());
    QCOMPARE(desk.window.size(), size);
    for (ChannelTile *tile : desk.window.wall()->tiles())
        desk.hub.cmd_cue_clip(tile->channel(), desk.server.clip_ids().back());
    QVERIFY(desk.sync());
    for (ChannelTile *tile : desk.window.wall()->tiles())
        QCOMPARE(desk.state(tile->channel()).status, ChannelStatus::cueing);
    desk.server.advance(5);
    for (ChannelTile *tile : desk.window.wall()->tiles()) {
        QTRY_COMPARE(desk.shown(tile->channel(), "status"), QStringLiteral("stop"));
        QTRY_VERIFY(!desk.shown(tile->channel(), "remaining").isEmpty());
        QCOMPARE(cut_off_in(tile), QString());
        QCOMPARE(overlap_in(tile, "input timecode", "remaining"), QString());
        QCOMPARE(overlap_in(tile, "angles", "outputs"), QString());
        QCOMPARE(overlap_in(tile, "letter", "status"), QString());
    }
    QVERIFY(desk.window.show_page(QStringLiteral("Outputs")));
    QList<OutputTile *> const outputs = desk.window.findChildren<OutputTile *>();
    QVERIFY(!outputs.isEmpty());
    for (OutputTile *tile : outputs) {
        QTRY_COMPARE(cut_off_in(tile), QString());
        QCOMPARE(overlap_in(tile, "title", "source"), QString());
    }
}

void TestDeskWall::the_cursor_stays_in_sight()
{
    DeskBench desk;
    set_board(&desk, QStringList(quads, QStringLiteral("VVVV")));
    desk.window.resize(1024, 576);
    QVERIFY(desk.open());
    QTRY_COMPARE(desk.window.wall()->tiles().size(), 32);
    ChannelWall *wall = desk.window.wall();
    QVERIFY(wall->verticalScrollBar()->maximum() > 0);
    for (int i = 1; i < 32; ++i) {
        desk.press(Qt::Key_Right, i % 2 ? Qt::NoModifier : Qt::ShiftModifier);
        QWidget *tile = wall->tiles()[i];
        QCOMPARE(tile->visibleRegion().boundingRect(), tile->rect());
    }
}

void TestDeskWall::outputs_side_by_side_are_told_as_one()
{
    DeskBench desk;
    set_board(&desk,
        {QStringLiteral("C444_3SSM3_VVV"), QStringLiteral("absent"), QStringLiteral("absent"),
            QStringLiteral("VVVV"), QStringLiteral("DUAL_VK")});
    QVERIFY(desk.open());
    QTRY_COMPARE(desk.shown(Channel::A, "outputs"), QStringLiteral("out 1-9"));
    QTRY_COMPARE(desk.shown(Channel::A, "angles"), QStringLiteral("3 angles"));
    QTRY_COMPARE(desk.shown(Channel::J, "outputs"), QStringLiteral("out 10"));
    QTRY_COMPARE(desk.shown(Channel::Q, "outputs"), QStringLiteral("out 17-18"));
}

void TestDeskWall::pages_say_what_they_wait_for()
{
    DeskBench desk;
    set_board(&desk, {});
    desk.window.show();
    auto const hint = [&] { return DeskBench::text(desk.window.wall(), "hint"); };
    QCOMPARE(hint(), QStringLiteral("Waiting for the server"));
    QStringList hints;
    connect(desk.window.link(), &ServerLink::changed, this, [&] { hints << hint(); });
    desk.hub.set_server(desk.server.address());
    QTRY_COMPARE(hint(), QStringLiteral("No channel is configured"));
    // The configuration is read behind what the live state waits for.
    QCOMPARE(hints,
        (QStringList{QStringLiteral("Waiting for the server"),
            QStringLiteral("Reading the configuration")}));
    QVERIFY(desk.window.wall()->findChild<QLabel *>(QStringLiteral("hint"))->isVisible());
}

void TestDeskWall::stale_readouts_are_faint()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QTRY_COMPARE(desk.window.wall()->tiles().size(), 8);
    QTRY_VERIFY(!desk.window.findChildren<OutputTile *>().isEmpty());
    QList<QWidget *> const readouts{desk.tile(Channel::A)->findChild<ATimecodeLabel *>(),
        desk.tile(Channel::A)->findChild<ASpeedLabel *>(),
        desk.window.findChild<OutputTile *>()->findChild<ATimecodeLabel *>()};
    auto const is_bright = [](QWidget *readout) {
        QImage const picture = readout->grab().toImage();
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (picture.pixelColor(x, y).lightness() > 200)
                    return true;
        return false;
    };
    for (QWidget *readout : readouts)
        QTRY_VERIFY(is_bright(readout));
    desk.server.stop();
    QTRY_VERIFY(!desk.is_live());
    for (QWidget *readout : readouts)
        QVERIFY(!is_bright(readout));
    desk.server.restart(VeskState::keep);
    QTRY_VERIFY(desk.is_live());
    for (QWidget *readout : readouts)
        QVERIFY(is_bright(readout));
}

void TestDeskWall::nothing_can_be_played_while_the_server_is_gone()
{
    DeskBench desk;
    QVERIFY(desk.open());
    QVERIFY(desk.cue(Channel::A));
    auto const play = desk.window.findChild<QAction *>(QStringLiteral("Play"));
    QSignalSpy played(play, &QAction::triggered);
    desk.server.stop();
    QTRY_VERIFY(!desk.is_live());
    desk.press(Qt::Key_Space);
    QCOMPARE(played.count(), 0);
    desk.server.restart(VeskState::keep);
    QTRY_VERIFY(desk.is_live());
    desk.press(Qt::Key_Space);
    QCOMPARE(played.count(), 1);
}

void TestDeskWall::marks_of_peaks_fall_by_themselves()
{
    LevelMeter meter(nullptr);
    meter.set_levels({30, 0});
    meter.set_peaks({60, 40});
    QCOMPARE(meter.peak(0), 60.0);
    // No delivery follows.
    QTRY_COMPARE(meter.peak(0), 30.0);
    QTRY_COMPARE(meter.peak(1), 0.0);
    meter.set_levels({0, 0});
    meter.set_peaks({90, 0});
    QCOMPARE(meter.peak(0), 90.0);
    meter.set_peaks({50, 0});
    QVERIFY(meter.peak(0) > 80);
    QTRY_COMPARE(meter.peak(0), 0.0);
}

QTEST_MAIN(TestDeskWall)
#include "tst_desk_wall.moc"
