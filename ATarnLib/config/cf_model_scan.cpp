// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_model_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt.h"

#include <algorithm>

// How a model reads its items from the server.

CFModel::Private::Private(CFModel *model)
    : update_timer(true, model)
{
    for (unsigned int number = 0; number < get_one_cb.size(); ++number)
        get_one_cb[number] = new CFModelGetOneHelper(number, model);
    free_helpers();
}

void CFModel::Private::free_helpers()
{
    get_one_in_process.clear();
    for (unsigned int number = 0; number < get_one_cb.size(); ++number)
        get_one_cb_freelist.insert(number);
}

bool CFModel::Private::is_in_process(QString const &name) const
{
    return std::any_of(get_one_in_process.begin(), get_one_in_process.end(),
        [&](auto const &fetch) { return fetch.second == name; });
}

QString const *CFModel::Private::next_wanted() const
{
    auto const found = std::find_if(item_update_needed.begin(), item_update_needed.end(),
        [&](QString const &name) { return !is_in_process(name); });
    return found == item_update_needed.end() ? nullptr : &*found;
}

void CFModel::update()
{
    d->update_timer.start();
}

bool CFModel::is_fully_scanned() const
{
    PortableMutexLock const lock(d->mutex);
    return d->scan_state == Private::Scan::fully_scanned && d->item_update_needed.empty();
}

void CFModel::connected()
{
    d->up = true;
    {
        PortableMutexLock const lock(d->mutex);
        d->scan_state = Private::Scan::not_started;
    }
    d->api.load()->cmd_report_register(VCTP3::ReportType::config_change);
    update();
}

void CFModel::disconnected()
{
    d->up = false;
    PortableMutexLock const lock(d->mutex);
    d->scan_state = Private::Scan::not_started;
    d->free_helpers();
}

void CFModel::update_action()
{
    if (!d->api || !d->api.load()->is_connected()) {
        PortableMutexLock const lock(d->mutex);
        d->scan_state = Private::Scan::not_started;
        return;
    }
    if (advance_scan())
        Q_EMIT fully_scanned();
    while (fetch_next()) { }
}

/// True when this was the last step of a scan.
bool CFModel::advance_scan()
{
    PortableMutexLock const lock(d->mutex);
    if (d->scan_state == Private::Scan::not_started && d->get_one_in_process.empty()) {
        for (auto const &[name, item] : d->items)
            d->item_update_needed.insert(name);
        d->scan_state = Private::Scan::scanning;
    }
    bool const idle = d->item_update_needed.empty() && d->get_one_in_process.empty();
    if (d->scan_state == Private::Scan::fully_scanned && !idle)
        d->scan_state = Private::Scan::scanning;
    if (d->scan_state != Private::Scan::scanning || !idle)
        return false;
    d->scan_state = Private::Scan::fully_scanned;
    return true;
}

/// False when there is nothing to fetch, or nothing to fetch it with.
bool CFModel::fetch_next()
{
    unsigned int icb = 0;
    QString name;
    {
        PortableMutexLock const lock(d->mutex);
        QString const *wanted = d->next_wanted();
        if (!wanted || d->get_one_cb_freelist.empty() || !d->api.load()->is_connected())
            return false;
        name = *wanted;
        icb = *d->get_one_cb_freelist.begin();
        d->get_one_cb_freelist.erase(icb);
        d->get_one_in_process[icb] = name;
    }
    d->api.load()->cmd_get_one_configuration(name, d->get_one_cb[icb]->callback_group());
    return true;
}

/// The name that was fetched; empty for a helper that fetches nothing.
AOption<QString> CFModel::end_fetch(unsigned int icb)
{
    PortableMutexLock const lock(d->mutex);
    if (!A_ASSERT(!d->get_one_cb_freelist.contains(icb))
        || !A_ASSERT(d->get_one_in_process.contains(icb)))
        return {};
    QString const name = d->get_one_in_process[icb];
    auto it2 = d->item_update_needed.find(name);
    if (A_ASSERT(it2 != d->item_update_needed.cend()))
        d->item_update_needed.erase(it2);
    d->get_one_in_process.erase(icb);
    d->get_one_cb_freelist.insert(icb);
    return name;
}

void CFModel::get_one_reply(unsigned int icb, VCTP3::ConfigurationItem const &item)
{
    if (!end_fetch(icb))
        return;
    configuration_item(item);
    update();
}

/// A fetch that a lost connection has ended says nothing about the item.
void CFModel::get_one_error(unsigned int icb, AString const &, VCTP3::ErrorCode code)
{
    AOption<QString> const name = end_fetch(icb);
    if (!name)
        return;
    if (code == VCTP3::ErrorCode::configname_invalid)
        find_item(*name)->forget();
    update();
}

void CFModel::configuration_item(VCTP3::ConfigurationItem const &item)
{
    CFItemModel *const known = find_item(item.configuration_item_name);
    if (!known)
        return;
    known->config(item);
    cache_clear();
}

void CFModel::config_changed_on_server(AOption<std::list<VCTP3::ConfigurationItem>> const &items)
{
    if (items.has_value()) {
        for (VCTP3::ConfigurationItem const &item : *items)
            configuration_item(item);
        return;
    }
    {
        PortableMutexLock const lock(d->mutex);
        d->scan_state = Private::Scan::not_started;
    }
    update();
}
