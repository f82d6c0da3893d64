// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Tarn/Glint>

class ChannelWall;
class DeskWindow;

/// Gives the channels of a simulated server something to do, once, so that there is something to
/// see.
class DemoShow : public QObject
{
    Q_OBJECT

public:
    DemoShow(Glint *hub, DeskWindow *window, QObject *parent);

private:
    void begin_when_ready();
    void set_tally();

    Glint *const hub;
    DeskWindow *const window;
    bool begun = false;
};
