// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_model.h"

#include "ATarnLib/config/cf_model_p.h"
#include "ATarnLib/config/local_model_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt.h"

#include <algorithm>
#include <functional>

using VCTP3::APIQt;

namespace {

std::atomic<CFModel *> local_configuration{nullptr};

} // namespace

CFModel::CFModel()
    : d(std::make_unique<Private>(this))
{
    connect(&d->update_timer, &ATimer::timeout, this, &CFModel::update_action);
    for (CFModelGetOneHelper *helper : d->get_one_cb) {
        connect(helper, &CFModelGetOneHelper::sig_one_configuration_item, this,
            &CFModel::get_one_reply);
        connect(helper, &CFModelGetOneHelper::sig_error, this, &CFModel::get_one_error);
    }
}

CFModel::~CFModel()
{
    CFModel *self = this;
    local_configuration.compare_exchange_strong(self, nullptr);
    for (auto const &[name, item] : d->items)
        delete item;
}

CFModel *CFModel::create(bool local, APIQt *api)
{
    CFModel *model = local ? localhost() : new CFModel;
    model->config(api);
    return model;
}

CFModel *CFModel::localhost()
{
    return local_model(&local_configuration, [] { return new CFModel; });
}

CFItemModel *CFModel::get_item_localhost(QString const &name)
{
    return localhost()->get_item(name);
}

void CFModel::config(APIQt *connection)
{
    if (!A_ASSERT_TEXT(d->api == nullptr, "api == 0") || !A_ASSERT(connection != nullptr))
        return;
    d->api = connection;
    setParent(connection);
    connect(connection, &APIQt::connected, this, &CFModel::connected);
    connect(connection, &APIQt::disconnected, this, &CFModel::disconnected);
    connect(connection, &APIQt::report_config_changed, this, &CFModel::config_changed_on_server);
    if (!connection->is_connected())
        return;
    disconnected();
    connected();
}

CFItemModel *CFModel::get_item(QString const &name)
{
    PortableMutexLock const lock(d->mutex);
    CFItemModel *&item = d->items[name];
    if (item)
        return item;
    item = new CFItemModel(name);
    item->moveToThread(thread());
    connect(item, &CFItemModel::hot_change, this, &CFModel::hot_change);
    // At once, also from another thread: who changes an item and asks then hears of the change.
    connect(item, qOverload<QString const &>(&CFItemModel::changed), this, &CFModel::item_changed,
        Qt::DirectConnection);
    connect(item, &CFItemModel::edit_ended, this, &CFModel::item_changed, Qt::DirectConnection);
    d->item_update_needed.insert(name);
    d->update_timer.start();
    return item;
}

CFItemModel *CFModel::find_item(QString const &name) const
{
    PortableMutexLock const lock(d->mutex);
    auto const found = d->items.find(name);
    return found == d->items.end() ? nullptr : found->second;
}

QList<CFItemModel *> CFModel::all_items() const
{
    PortableMutexLock const lock(d->mutex);
    QList<CFItemModel *> result;
    for (auto const &[name, item] : d->items)
        result.append(item);
    return result;
}

QList<CFItemModel *> CFModel::named_items(QStringList const &names) const
{
    QList<CFItemModel *> result;
    for (QString const &name : names) {
        CFItemModel *const item = find_item(name);
        if (item && !result.contains(item))
            result.append(item);
    }
    return result;
}

void CFModel::commit_items(QList<CFItemModel *> const &items)
{
    APIQt *const api = d->api;
    if (!api || !d->up)
        return;
    QList<CFItemModel *> sent;
    {
        PortableMutexLock const lock(d->commit_mutex);
        QString value;
        for (CFItemModel *item : items)
            if (item->take_change(&value)) {
                api->cmd_set_configuration(item->get_name(), value);
                sent.append(item);
            }
    }
    // A value that goes back to what the server holds is no change any more. The server, for which
    // nothing has changed, may never tell of it.
    for (CFItemModel *item : sent)
        if (!item->have_changes())
            Q_EMIT item->edit_ended();
}

void CFModel::commit_changes()
{
    commit_items(all_items());
}

void CFModel::commit(QStringList const &names)
{
    commit_items(named_items(names));
}

void CFModel::hot_change()
{
    QList<CFItemModel *> items = all_items();
    items.removeIf([](CFItemModel const *item) { return !item->hot(); });
    commit_items(items);
}

void CFModel::revert(QStringList const &names)
{
    for (CFItemModel *item : named_items(names))
        item->revert_item();
}

void CFModel::revert_all_items()
{
    for (CFItemModel *item : all_items())
        item->revert_item();
}

bool CFModel::have_changes() const
{
    PortableMutexLock const lock(d->mutex);
    if (!d->have_changes_valid) {
        d->have_changes_cached = std::any_of(d->items.begin(), d->items.end(),
            [](auto const &entry) { return entry.second->have_changes(); });
        d->have_changes_valid = true;
    }
    return d->have_changes_cached;
}

bool CFModel::need_reboot() const
{
    QList<CFItemModel *> const items = all_items();
    return std::any_of(items.begin(), items.end(), std::mem_fn(&CFItemModel::need_reboot));
}

bool CFModel::commit_done() const
{
    QList<CFItemModel *> const items = all_items();
    return std::all_of(items.begin(), items.end(), std::mem_fn(&CFItemModel::commit_done));
}

void CFModel::cache_clear()
{
    PortableMutexLock const lock(d->mutex);
    d->have_changes_valid = false;
}

void CFModel::item_changed()
{
    cache_clear();
    Q_EMIT changed();
}
