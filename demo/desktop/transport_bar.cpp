// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/transport_bar.h"

#include "demo/desktop/channel_wall.h"
#include "demo/desktop/clip_list.h"
#include "demo/desktop/desk_style.h"

#include <QAction>

#include <algorithm>

TransportBar::TransportBar(
    Transport *channel_transport, ClipList *clips, ChannelWall *channel_wall, QWidget *parent)
    : QWidget(parent)
    , transport(channel_transport)
    , wall(channel_wall)
    , row(new QHBoxLayout(this))
{
    row->setContentsMargins(8, 4, 8, 4);
    row->setSpacing(4);
    selection_label = DeskStyle::label(this, "selection", 13, true);
    selection_label->setMinimumWidth(110);
    row->addWidget(selection_label);
    add_buttons();
    row->addSpacing(12);
    row->addStretch();
    add_clips(clips);
    add_cursor_keys();
    connect(wall, &ChannelWall::selection_changed, this, &TransportBar::show_selection);
    show_selection();
}

void TransportBar::add_buttons()
{
    add_button("Gang all", "Ctrl+A", {Qt::CTRL | Qt::Key_A}, [this] { wall->select_all(); });
    add_button("Gang off", "Escape", {}, [this] { wall->select_one(); });
    row->addSpacing(12);
    add_button("Shuttle -", "J", {Qt::Key_J}, [this] { transport->shuttle(-1); });
    add_button("Jog -", ",", {Qt::Key_Comma}, [this] { transport->jog(-1); });
    add_button("Stop", "K, S", {Qt::Key_K, Qt::Key_S}, [this] { transport->stop(); });
    add_button("Play", "Space, P", {Qt::Key_Space, Qt::Key_P}, [this] { transport->play(); });
    add_button("Jog +", ".", {Qt::Key_Period}, [this] { transport->jog(1); });
    add_button("Shuttle +", "L", {Qt::Key_L}, [this] { transport->shuttle(1); });
    add_button("Record", "R", {Qt::Key_R}, [this] { transport->record(); });
    add_button("Cue", "C", {Qt::Key_C}, [this] { transport->cue(clip()); });
}

void TransportBar::add_clips(ClipList *clips)
{
    found.setSourceModel(clips);
    found.setFilterCaseSensitivity(Qt::CaseInsensitive);
    filter = new QLineEdit(this);
    filter->setObjectName(QStringLiteral("clip filter"));
    filter->setPlaceholderText(QStringLiteral("Find (F)"));
    filter->setAccessibleName(QStringLiteral("Find a clip"));
    filter->setClearButtonEnabled(true);
    filter->setFocusPolicy(Qt::ClickFocus);
    filter->setMaximumWidth(220);
    connect(filter, &QLineEdit::textChanged, &found, &QSortFilterProxyModel::setFilterFixedString);
    // The keys are the transport's again.
    connect(filter, &QLineEdit::returnPressed, filter, &QWidget::clearFocus);
    clip_box = new QComboBox(this);
    clip_box->setObjectName(QStringLiteral("clip to cue"));
    clip_box->setModel(&found);
    clip_box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    clip_box->setFocusPolicy(Qt::NoFocus);
    clip_box->setMaximumWidth(440);
    for (QWidget *widget : {static_cast<QWidget *>(filter), static_cast<QWidget *>(clip_box)})
        widget->setMinimumHeight(28);
    row->addWidget(filter, 1);
    row->addWidget(clip_box, 2);
}

void TransportBar::add_cursor_keys()
{
    add_key(Qt::Key_Left, [this] { wall->move_cursor(-1, 0); });
    add_key(Qt::Key_Right, [this] { wall->move_cursor(1, 0); });
    add_key(Qt::Key_Up, [this] { wall->move_cursor(0, -1); });
    add_key(Qt::Key_Down, [this] { wall->move_cursor(0, 1); });
    add_key(Qt::SHIFT | Qt::Key_Left, [this] { wall->extend_to(-1, 0); });
    add_key(Qt::SHIFT | Qt::Key_Right, [this] { wall->extend_to(1, 0); });
    add_key(Qt::SHIFT | Qt::Key_Up, [this] { wall->extend_to(0, -1); });
    add_key(Qt::SHIFT | Qt::Key_Down, [this] { wall->extend_to(0, 1); });
    add_key(Qt::Key_Escape, [this] { escape(); });
    add_key(Qt::Key_F, [this] { filter->setFocus(); });
    add_key(Qt::Key_PageUp, [this] { step_clip(-1); });
    add_key(Qt::Key_PageDown, [this] { step_clip(1); });
}

void TransportBar::add_button(char const *text, char const *help, QList<QKeySequence> const &keys,
    std::function<void()> const &action)
{
    auto *button = new QToolButton(this);
    auto *press = new QAction(QLatin1String(text), button);
    press->setObjectName(QLatin1String(text));
    press->setShortcuts(keys);
    press->setToolTip(QStringLiteral("%1 (%2)").arg(QLatin1String(text), QLatin1String(help)));
    connect(press, &QAction::triggered, this, action);
    button->setDefaultAction(press);
    button->setFocusPolicy(Qt::NoFocus);
    button->setMinimumSize(50, 32);
    row->addWidget(button);
}

void TransportBar::add_key(QKeySequence const &key, std::function<void()> const &action)
{
    auto *press = new QAction(this);
    press->setShortcut(key);
    connect(press, &QAction::triggered, this, action);
    addAction(press);
}

void TransportBar::show_selection()
{
    VCTP3::ChannelSet const channels = wall->selection();
    QStringList names;
    for (VCTP3::Channel channel : channels)
        names << QString(VCTP3::Channel_to_string(channel));
    transport->set_channels(channels);
    QString const list = names.join(u' ');
    if (names.isEmpty())
        selection_label->setText(QStringLiteral("No channel"));
    else if (names.size() == 1)
        selection_label->setText(QStringLiteral("Channel ") + list);
    else if (names.size() <= 6)
        selection_label->setText(QStringLiteral("Gang ") + list);
    else
        selection_label->setText(QStringLiteral("Gang of %1").arg(names.size()));
}

void TransportBar::step_clip(int rows)
{
    if (clip_box->count() > 0)
        clip_box->setCurrentIndex(
            std::clamp(clip_box->currentIndex() + rows, 0, clip_box->count() - 1));
}

/// Out of the filter first, then out of the gang.
void TransportBar::escape()
{
    if (!filter->hasFocus()) {
        wall->select_one();
        return;
    }
    filter->clear();
    filter->clearFocus();
}
