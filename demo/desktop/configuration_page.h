// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Tarn/CFModel>
#include <Tarn/Glint>

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

/// The server's channel sets and video settings. What is chosen here is kept until it is committed;
/// some of it holds after the server's next reboot only.
class ConfigurationPage : public QWidget
{
    Q_OBJECT

public:
    ConfigurationPage(Glint *hub, QWidget *parent);

private:
    QWidget *make_items();
    QWidget *make_buttons();
    void add_item(QString const &name, QString const &title);
    void show_state();

    Glint *const hub;
    CFModel *const model;
    QGridLayout *grid = nullptr;
    QPushButton *commit = nullptr;
    QPushButton *revert = nullptr;
    QLabel *state = nullptr;
};
