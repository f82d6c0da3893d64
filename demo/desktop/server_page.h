// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Tarn/Glint>

#include <QWidget>

class AlertList;
class ClipList;
class ServerFacts;

/// What the server is, how the connection to it is doing, and what it has to say about its health.
class ServerPage : public QWidget
{
    Q_OBJECT

public:
    ServerPage(Glint *hub, ClipList *clips, QWidget *parent);

    /// Dims what comes from the server; how the connection is doing is known in any case.
    void set_live(bool on);
    AlertList *alerts() const { return alert_list; }

private:
    ServerFacts *const facts;
    AlertList *const alert_list;
};
