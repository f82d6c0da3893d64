// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>

#include <atomic>

/// The one model of its kind for this machine, made by \a make at the first call, on the
/// application's thread. Any thread.
template <typename Model, typename Make> Model *local_model(std::atomic<Model *> *slot, Make make)
{
    Model *published = slot->load();
    if (published)
        return published;
    Model *const made = make();
    if (QCoreApplication::instance())
        made->moveToThread(QCoreApplication::instance()->thread());
    if (slot->compare_exchange_strong(published, made))
        return made;
    delete made;
    return published;
}
