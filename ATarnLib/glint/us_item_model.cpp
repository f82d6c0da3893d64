// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/us_item_model.h"

#include "ATarnLib/glint/glint.h"
#include "ATarnLib/glint/us_model.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/sanitizer_order_p.h"

#include <QMutexLocker>

USItemModel::USItemModel(QString const &key, USModel *parent_model)
    : QObject(parent_model)
    , name(key)
    , parent(parent_model)
{
}

QString USItemModel::get() const
{
    QMutexLocker const lock(&mutex);
    TellOfLock const order(&mutex);
    return value;
}

void USItemModel::set(QString const &new_value)
{
    {
        QMutexLocker const lock(&mutex);
        TellOfLock const order(&mutex);
        if (!take_value(new_value))
            return;
        tell(false);
    }
    Q_EMIT changed(new_value);
}

void USItemModel::set(QString const &new_value, QString const &new_owner)
{
    {
        QMutexLocker const lock(&mutex);
        TellOfLock const order(&mutex);
        bool const owner_is_new = take_owner(new_owner);
        bool const value_is_new = take_value(new_value);
        if (owner_is_new || value_is_new)
            tell(owner_is_new);
        if (!value_is_new)
            return;
    }
    Q_EMIT changed(new_value);
}

void USItemModel::set_read_write(bool on)
{
    QMutexLocker const lock(&mutex);
    TellOfLock const order(&mutex);
    read_write = on;
    if (!on || watched || !parent || !parent->has_hub())
        return;
    if (Glint *hub = connected_hub())
        watch(hub);
}

/// Null while there is no connection.
Glint *USItemModel::connected_hub() const
{
    if (!A_ASSERT(parent != nullptr))
        return nullptr;
    Glint *const glint = parent->hub();
    return A_ASSERT(glint != nullptr) && parent->is_up() ? glint : nullptr;
}

void USItemModel::watch(Glint *hub)
{
    watched = true;
    hub->cmd_userdict_watch(name);
}

/// False if the owner is what was set before, and for an item that has none.
bool USItemModel::take_owner(QString const &new_owner)
{
    if (read_write || (owner_set && owner == new_owner))
        return false;
    owner_set = true;
    owner = new_owner;
    return true;
}

/// False if the value is what was set before.
bool USItemModel::take_value(QString const &new_value)
{
    if (value_set && value == new_value)
        return false;
    value = new_value;
    value_set = true;
    return true;
}

/// Telling an owner writes to the key, so behind that an old value is sent again.
void USItemModel::tell(bool with_owner)
{
    Glint *const hub = connected_hub();
    if (!hub)
        return;
    if (with_owner)
        hub->cmd_userdict_own(name, owner);
    hub->cmd_userdict_set(name, value);
}

void USItemModel::renew(Glint *hub)
{
    QMutexLocker const lock(&mutex);
    TellOfLock const order(&mutex);
    watched = false;
    if (value_set && owner_set)
        hub->cmd_userdict_own(name, owner);
    if (value_set)
        hub->cmd_userdict_set(name, value);
    if (!value_set || read_write)
        watch(hub);
}

void USItemModel::userdict_change(QString const &new_value)
{
    {
        QMutexLocker const lock(&mutex);
        TellOfLock const order(&mutex);
        if ((value_set && !read_write) || value == new_value)
            return;
        value = new_value;
    }
    Q_EMIT changed(new_value);
}
