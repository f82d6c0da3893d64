// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_item.h"

#include "ATarnLib/config/cf_model.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

CFItem::CFItem(CFModel *cf_model, QString const &name, QObject *parent)
    : QObject(parent)
    , model(cf_model)
    , bound(cf_model ? cf_model->get_item(name) : nullptr)
{
    if (!A_ASSERT(cf_model != nullptr))
        return;
    connect(bound, qOverload<QString const &>(&CFItemModel::changed), this, &CFItem::show_present);
    connect(bound, qOverload<>(&CFItemModel::changed), this, &CFItem::update_autohide);
    connect(this, &CFItem::sig_change, bound, qOverload<QString const &>(&CFItemModel::set),
        Qt::DirectConnection);
}

CFModel *CFItem::get_model() const
{
    return model;
}

void CFItem::autohide(QWidget *widget)
{
    if (hidden && hidden != widget)
        hidden->show();
    hidden = bound && !bound->have_cf() ? widget : nullptr;
    if (hidden)
        hidden->hide();
}

void CFItem::update_autohide()
{
    if (!hidden || !bound || !bound->have_cf())
        return;
    hidden->show();
    hidden.clear();
}

void CFItem::setHot(bool on)
{
    if (bound)
        bound->setHot(on);
}

/// Not what the signal carries: by now the item may hold something else, typed here or set by a
/// slot of the same signal. Once more where a slot of the widget has set it while it was shown.
void CFItem::show_present()
{
    QString const value = present_value();
    cf(value);
    if (present_value() != value)
        cf(present_value());
}

void CFItem::cf(QString const &) { }

void CFItem::send_change() { }

QString CFItem::present_value() const
{
    return bound ? bound->get() : QString();
}

void CFItem::emit_if_new(QString const &value)
{
    if (is_user_change() && value != bound->get())
        Q_EMIT sig_change(value);
}
