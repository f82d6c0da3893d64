// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Tarn/AlertModel>
#include <Tarn/Glint>

#include <QLabel>
#include <QTableWidget>

/// What the server has to say about its health: a row for each alert, those that are over too.
class AlertList : public QTableWidget
{
    Q_OBJECT

public:
    AlertList(Glint *hub, QWidget *parent);

Q_SIGNALS:
    /// An alert came, changed or ended.
    void news(QString const &text);

private:
    void add(QString const &name);
    void show_alert(QString const &name);
    int row_of(QString const &name) const;

    AlertModel *const alert_model;
    QLabel *const nothing;
};
