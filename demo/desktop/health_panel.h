// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Tarn/Glint>
#include <Tarn/GlintHealth>

#include <QFormLayout>
#include <QLabel>

/// How the connection is doing. All of it is the hub's own health object, looked at whenever that
/// says that something has changed.
class HealthPanel : public QWidget
{
    Q_OBJECT

public:
    HealthPanel(Glint *hub, QWidget *parent);

private:
    void show_health();

    GlintHealth *const health;
    QFormLayout *const rows;
    QLabel *const round_trip;
    QLabel *const received;
    QLabel *const sent;
    QLabel *const waiting;
    QLabel *const coalesced;
    QLabel *const dropped;
    QLabel *const stall;
    QLabel *const connections;
    QLabel *const last_error;
};
