// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_radio_buttons.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <QButtonGroup>

namespace {

/// Unchecks a button that its group, or its neighbours, would keep checked.
void uncheck(QRadioButton *button)
{
    if (!button->isChecked())
        return;
    QButtonGroup *const group = button->group();
    bool const group_exclusive = group && group->exclusive();
    bool const auto_exclusive = button->autoExclusive();
    if (group)
        group->setExclusive(false);
    button->setAutoExclusive(false);
    button->setChecked(false);
    button->setAutoExclusive(auto_exclusive);
    if (group)
        group->setExclusive(group_exclusive);
}

} // namespace

CFRadioButtons::CFRadioButtons(CFModel *cf_model, QString const &name, QObject *parent)
    : CFItem(cf_model, name, parent)
{
}

void CFRadioButtons::insert(QString const &value, QRadioButton *button)
{
    if (!A_ASSERT(button != nullptr))
        return;
    QPointer<QRadioButton> &place = buttons[value];
    if (place)
        place->disconnect(this);
    place = button;
    // Buttons of different parents do not uncheck each other: what the item reads then does.
    connect(button, &QRadioButton::toggled, this, [this, value](bool checked) {
        if (checked)
            emit_if_new(value);
    });
    cf(present_value());
}

void CFRadioButtons::cf(QString const &value)
{
    Showing const showing(this);
    for (auto const &[own, button] : buttons)
        if (button && own != value)
            uncheck(button);
    auto const found = buttons.find(value);
    if (found != buttons.end() && found->second)
        found->second->setChecked(true);
}

void CFRadioButtons::send_change()
{
    for (auto const &[value, button] : buttons)
        if (button && button->isChecked()) {
            emit_if_new(value);
            return;
        }
}
