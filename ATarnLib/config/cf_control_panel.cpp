// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_control_panel.h"

#include "ATarnLib/config/cf_model.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>

namespace {

/// A label that belongs to \a field for the keyboard and for readers of the screen.
QLabel *caption(QString const &text, QWidget *field)
{
    auto *const label = new QLabel(text);
    label->setBuddy(field);
    field->setAccessibleName(text);
    return label;
}

} // namespace

CFControlPanelItem::CFControlPanelItem(CFModel *model, unsigned int panel_number, QWidget *parent)
    : QWidget(parent)
    , id(new QLineEdit)
    , channels(new QLineEdit)
    , id_binding(new CFLineEdit(model, QStringLiteral("ControlPanel_ID%1").arg(panel_number), id))
    , channels_binding(new CFLineEdit(
          model, QStringLiteral("ControlPanel_Channels%1").arg(panel_number), channels))
{
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(caption(tr("Identifier of panel %1").arg(panel_number + 1), id));
    row->addWidget(id);
    row->addWidget(caption(tr("Channels of panel %1").arg(panel_number + 1), channels));
    row->addWidget(channels);
}

void CFControlPanelItem::setHot(bool on)
{
    id_binding->setHot(on);
    channels_binding->setHot(on);
}

CFControlPanel::CFControlPanel(CFModel *model, QWidget *parent)
    : QWidget(parent)
    , cf_model(model)
    , count(new QComboBox)
    , count_binding(new CFComboBox(model, QStringLiteral("ControlPanelCount"), count))
{
    auto *const form = new QFormLayout(this);
    form->addRow(caption(tr("Control panels"), count), count);
    CFItemModel *const item = count_binding->get_item();
    if (!item)
        return; // The binding has said so.
    connect(item, qOverload<>(&CFItemModel::changed), this, &CFControlPanel::show_panels);
    show_panels();
}

CFControlPanelItem *CFControlPanel::panel(unsigned int number) const
{
    return number < shown ? panels[number] : nullptr;
}

void CFControlPanel::setHot(bool on)
{
    is_hot = on;
    count_binding->setHot(on);
    for (CFControlPanelItem *item : panels)
        item->setHot(on);
}

void CFControlPanel::show_panels()
{
    CFItemModel const *const item = count_binding->get_item();
    shown = item ? std::min(item->get().toUInt(), most_panels) : 0;
    while (panels.size() < shown)
        make_panel();
    for (unsigned int number = 0; number < panels.size(); ++number)
        panels[number]->setVisible(number < shown);
}

void CFControlPanel::make_panel()
{
    auto *const item
        = new CFControlPanelItem(cf_model, static_cast<unsigned int>(panels.size()), this);
    item->setHot(is_hot);
    static_cast<QFormLayout *>(layout())->addRow(item);
    panels.push_back(item);
}
