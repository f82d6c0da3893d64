// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_show.h"

#include <algorithm>

CFShow::CFShow(CFModel *cf_model, QString const &name, QObject *parent)
    : CFItem(cf_model, name, parent)
{
}

CFShow::CFShow(
    CFModel *cf_model, QString const &name, QSet<QString> const &accepted_values, QObject *parent)
    : CFItem(cf_model, name, parent)
    , accepted(accepted_values)
{
}

void CFShow::add(QWidget *widget)
{
    widgets.append(widget);
    update_visibility();
}

void CFShow::cf(QString const &)
{
    update_visibility();
}

bool CFShow::is_visible() const
{
    CFItemModel const *const item = get_item();
    if (!item || !accepted.has_value())
        return item && item->have_cf();
    QList<QString> const allowed = item->allowed_values();
    return std::any_of(allowed.begin(), allowed.end(),
        [this](QString const &value) { return accepted->contains(value); });
}

void CFShow::update_visibility()
{
    bool const visible = is_visible();
    for (QPointer<QWidget> const &widget : widgets)
        if (widget)
            widget->setVisible(visible);
}
