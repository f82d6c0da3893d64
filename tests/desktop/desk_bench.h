// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/config/cf_model.h"
#include "ATarnLib/glint/cf_channel_config.h"
#include "demo/desktop/alert_list.h"
#include "demo/desktop/channel_tile.h"
#include "demo/desktop/channel_wall.h"
#include "demo/desktop/desk_window.h"
#include "sim/vesk/vesk_sim.h"
#include "tests/support/loopback_address.h"
#include "tests/support/patience.h"

#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

/// The window of the desk on a simulated server with the demo event. A model that breaks the rules
/// of models ends the test.
struct DeskBench
{
    DeskBench()
        : server(LoopbackAddress::unique(), demo())
        , window(&hub)
    {
        window.resize(1280, 720);
    }

    /// Until the window shows what the server says. The walls are made anew while the board is
    /// being read, so tiles stay from here on only.
    bool open()
    {
        hub.set_server(server.address());
        window.show();
        window.activateWindow();
        return QTest::qWaitForWindowActive(&window, patience_ms)
            && QTest::qWaitFor([this] { return is_live(); }, patience_ms)
            && QTest::qWaitFor([this] { return shows_board(); }, patience_ms)
            && QTest::qWaitFor([this] { return window.clips()->rowCount() > 0; }, patience_ms);
    }
    bool is_live() { return window.link()->is_live(); }
    bool shows_board()
    {
        return hub.get_cf_model()->is_fully_scanned()
            && std::size_t(window.wall()->tiles().size())
            == hub.get_channel_config()->AllUserChannels().size();
    }
    /// Until the server has done what was sent so far, and the window has what it said to that.
    bool sync()
    {
        VCTP3::CallbackGroup_set1 group;
        QSignalSpy done(&group, &VCTP3::CallbackGroup_set1::sig_ok);
        hub.cmd_sync(group);
        return done.wait(patience_ms);
    }
    /// Ends the connection, and waits until the window is live on the next one. That may be up
    /// before anybody has seen that it was not.
    bool reconnect()
    {
        int const before = window.link()->reconnections();
        server.drop_connections();
        return QTest::qWaitFor(
            [&] { return window.link()->reconnections() > before && is_live(); }, patience_ms);
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&window, key, modifiers);
    }
    void click(char const *button)
    {
        for (QToolButton *one : window.findChildren<QToolButton *>())
            if (one->text() == QLatin1String(button))
                QTest::mouseClick(one, Qt::LeftButton);
    }
    ChannelTile *tile(VCTP3::Channel channel)
    {
        for (ChannelTile *one : window.wall()->tiles())
            if (one->channel() == channel)
                return one;
        return nullptr;
    }
    /// The text of a label of a channel's tile; empty without that tile.
    QString shown(VCTP3::Channel channel, char const *label)
    {
        ChannelTile *found = tile(channel);
        return found ? text(found, label) : QString();
    }
    QString speed(VCTP3::Channel channel)
    {
        ChannelTile *found = tile(channel);
        return found ? found->findChild<ASpeedLabel *>()->shown_text() : QString();
    }
    QString timecode(VCTP3::Channel channel)
    {
        ChannelTile *found = tile(channel);
        return found ? found->findChild<ATimecodeLabel *>()->shown_text() : QString();
    }
    static QString text(QWidget *within, char const *label)
    {
        auto *found = within->findChild<QLabel *>(QLatin1String(label));
        return found ? found->text() : QString();
    }
    VeskChannelState state(VCTP3::Channel channel) { return server.channel_state(channel); }
    /// Cues a clip with the keys alone, on all that is selected, until the server has it ready.
    bool cue(VCTP3::Channel channel)
    {
        press(Qt::Key_C);
        return sync() && state(channel).status == VCTP3::ChannelStatus::cueing
            && (server.advance(5), state(channel).status == VCTP3::ChannelStatus::stop);
    }

    static VeskSimOptions demo()
    {
        VeskSimOptions options;
        options.demo = true;
        return options;
    }

    VeskSim server;
    Glint hub{false};
    DeskWindow window;
    static constexpr auto fatal = QAbstractItemModelTester::FailureReportingMode::Fatal;
    QAbstractItemModelTester clips{window.clips(), fatal};
    QAbstractItemModelTester found_clips{
        window.findChild<QComboBox *>(QStringLiteral("clip to cue"))->model(), fatal};
    QAbstractItemModelTester alerts{window.findChild<AlertList *>()->model(), fatal};
};
