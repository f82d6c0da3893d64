// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "demo/desktop/transport.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSortFilterProxyModel>
#include <QToolButton>

class ChannelWall;
class ClipList;

/// The transport of the selected channels: a button and a key for each command, and the clip that
/// is to be cued, chosen among those whose id holds what is typed.
class TransportBar : public QWidget
{
    Q_OBJECT

public:
    TransportBar(Transport *transport, ClipList *clips, ChannelWall *wall, QWidget *parent);

    QString clip() const { return clip_box->currentText(); }

private:
    void add_buttons();
    void add_clips(ClipList *clips);
    void add_cursor_keys();
    void add_button(char const *text, char const *help, QList<QKeySequence> const &keys,
        std::function<void()> const &action);
    void add_key(QKeySequence const &key, std::function<void()> const &action);
    void show_selection();
    void step_clip(int rows);
    void escape();

    Transport *const transport;
    ChannelWall *const wall;
    QHBoxLayout *const row;
    QLabel *selection_label = nullptr;
    QSortFilterProxyModel found;
    QLineEdit *filter = nullptr;
    QComboBox *clip_box = nullptr;
};
