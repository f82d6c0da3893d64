// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_item_model.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/portable_mutex.h"

/// Everything but the mutex is guarded by it. Members are called with it held.
struct CFItemModel::Private
{
    mutable PortableMutex mutex; // after a CFModel's; never held while emitting
    bool config_set = false;
    VCTP3::ConfigurationItem config;
    QString effective_value;
    QString boot_value;
    QString saved_value;
    QList<QString> allowed_values;
    bool requires_reboot = false;
    bool hot = false;
    bool set_flag = false;
    QString set_value;
    // A commit whose effect has not arrived.
    bool sent = false;
    QString sent_value;

    QString cf_get() const { return requires_reboot ? boot_value : effective_value; }
    QString get() const { return set_flag ? set_value : cf_get(); }
    // What the server holds may be typed again before the other value that was sent has arrived.
    bool overtakes() const { return sent && set_value != sent_value; }
    bool have_changes() const { return set_flag && (set_value != cf_get() || overtakes()); }
    bool commit_done() const
    {
        return !set_flag || (config_set && set_value == saved_value && !overtakes());
    }
    /// True if that ends an edit.
    bool fixup_set_value()
    {
        if (!set_flag || set_value != cf_get())
            return false;
        set_flag = false;
        return true;
    }
    void store(VCTP3::ConfigurationItem const &cf);
};

void CFItemModel::Private::store(VCTP3::ConfigurationItem const &cf)
{
    config_set = true;
    config = cf;
    effective_value = cf.configuration_item_effective_value;
    boot_value = cf.configuration_item_boot_value;
    saved_value = cf.configuration_item_saved_value;
    allowed_values.clear();
    for (AString const &value : cf.configuration_item_allowed_values)
        allowed_values.append(value);
    requires_reboot = cf.configuration_item_requires_reboot;
}

CFItemModel::CFItemModel(QString const &item_name, QObject *parent)
    : QObject(parent)
    , name(item_name)
    , d(std::make_unique<Private>())
{
}

CFItemModel::~CFItemModel() = default;

QString CFItemModel::get() const
{
    PortableMutexLock const lock(d->mutex);
    return d->get();
}

QString CFItemModel::cf_get() const
{
    PortableMutexLock const lock(d->mutex);
    return d->cf_get();
}

bool CFItemModel::have_cf() const
{
    PortableMutexLock const lock(d->mutex);
    return d->config_set;
}

void CFItemModel::set(QString const &value)
{
    {
        PortableMutexLock const lock(d->mutex);
        if (value == d->get())
            return;
        d->set_flag = true;
        d->set_value = value;
    }
    signal_change();
}

void CFItemModel::set(int value)
{
    set(QString::number(value));
}

void CFItemModel::set(unsigned int value)
{
    set(QString::number(value));
}

void CFItemModel::revert_item()
{
    {
        PortableMutexLock const lock(d->mutex);
        if (!d->set_flag)
            return;
        d->set_flag = false;
    }
    signal_change();
}

bool CFItemModel::have_changes() const
{
    PortableMutexLock const lock(d->mutex);
    return d->have_changes();
}

void CFItemModel::fixup_set_value()
{
    {
        PortableMutexLock const lock(d->mutex);
        if (!d->fixup_set_value())
            return;
    }
    Q_EMIT edit_ended();
}

QList<QString> CFItemModel::allowed_values() const
{
    PortableMutexLock const lock(d->mutex);
    return d->allowed_values;
}

bool CFItemModel::is_allowed(QString const &value) const
{
    PortableMutexLock const lock(d->mutex);
    return d->config_set && (d->allowed_values.isEmpty() || d->allowed_values.contains(value));
}

bool CFItemModel::need_reboot() const
{
    PortableMutexLock const lock(d->mutex);
    return d->requires_reboot && d->get() != d->effective_value;
}

bool CFItemModel::commit_done() const
{
    PortableMutexLock const lock(d->mutex);
    return d->commit_done();
}

void CFItemModel::setHot(bool on)
{
    PortableMutexLock const lock(d->mutex);
    d->hot = on;
}

bool CFItemModel::hot() const
{
    PortableMutexLock const lock(d->mutex);
    return d->hot;
}

void CFItemModel::config(VCTP3::ConfigurationItem const &cf)
{
    if (!A_ASSERT_TEXT(QString(cf.configuration_item_name) == name, "cf.name == name"))
        return;
    bool known = false;
    bool ended = false;
    {
        PortableMutexLock const lock(d->mutex);
        known = d->config_set && d->config == cf;
        if (!known)
            d->store(cf);
        d->sent = false;
        ended = d->fixup_set_value();
    }
    if (!known)
        signal_change();
    else if (ended)
        Q_EMIT edit_ended();
}

void CFItemModel::forget()
{
    {
        PortableMutexLock const lock(d->mutex);
        d->sent = false;
        if (!d->config_set)
            return;
        d->store({});
        d->config_set = false;
    }
    signal_change();
}

bool CFItemModel::take_change(QString *value)
{
    PortableMutexLock const lock(d->mutex);
    if (!d->have_changes())
        return false;
    d->sent = true;
    d->sent_value = d->set_value;
    *value = d->set_value;
    return true;
}

void CFItemModel::signal_change()
{
    QString const value = get();
    Q_EMIT changed();
    Q_EMIT changed(value);
    Q_EMIT changed(value.toInt());
    Q_EMIT changed(value.toUInt());
    Q_EMIT changed(name, value);
    if (hot())
        Q_EMIT hot_change();
}
