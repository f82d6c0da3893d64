// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/portable_mutex.h"

#include <memory>
#include <utility>

/// A value that can be reached only with its mutex held. Copies share the one value.
/// Thread: any; a thread may lock again what it has locked.
template <typename T> class AProtect
{
    struct Item
    {
        PortableMutex mutex;
        T value; // guarded by mutex
    };

public:
    /// Holds the mutex for its scope: `AProtect<List>::Lock list(queue); list->clear();`
    /// The `AProtect` must outlive it.
    class Lock
    {
    public:
        explicit Lock(AProtect const &protect)
            : item(*protect.item)
        {
            // The first take after a thread ended inside fails, and the next succeeds.
            while (!item.mutex.take()) { }
        }
        ~Lock() { item.mutex.release(); }
        Lock(Lock const &) = delete;
        Lock &operator=(Lock const &) = delete;

        T *operator->() const { return &item.value; }
        T &operator*() const { return item.value; }

    private:
        Item &item;
    };

    /// A default value of its own.
    AProtect()
        : item(std::make_shared<Item>())
    {
    }
    explicit AProtect(T value)
        : AProtect()
    {
        item->value = std::move(value);
    }

private:
    std::shared_ptr<Item> item;
};
