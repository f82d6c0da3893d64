// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Tarn/Glint>

#include <QWidget>

class AlertList;
class ClipList;

/// What the server is, and what it has to say about its health.
class ServerPage : public QWidget
{
    Q_OBJECT

public:
    ServerPage(Glint *hub, ClipList *clips, QWidget *parent);

    AlertList *alerts() const { return alert_list; }

private:
    AlertList *alert_list;
};
