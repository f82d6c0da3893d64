// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/config/cf_model.h"
#include "ATarnLib/config/cf_model_get_one_helper.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/atimer.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/portable_mutex.h"

#include <array>
#include <atomic>
#include <map>
#include <set>

struct CFModel::Private
{
    enum class Scan
    {
        not_started,
        scanning,
        fully_scanned
    };

    explicit Private(CFModel *model);

    // Objects of the model's thread; the timer may be started from any.
    ATimer update_timer;
    std::array<CFModelGetOneHelper *, 6> get_one_cb;

    // Each set by the model's thread alone.
    std::atomic<VCTP3::APIQt *> api{nullptr};
    std::atomic<bool> up{false};

    // Held while sending, so that what is taken last is sent last; never while emitting.
    PortableMutex commit_mutex;

    mutable PortableMutex mutex; // before that of an item; never held while sending or emitting
    // All of this is guarded by mutex.
    Scan scan_state = Scan::not_started;
    std::map<QString, CFItemModel *> items;
    /// Each name until its fetch has been answered.
    std::set<QString> item_update_needed;
    std::set<unsigned int> get_one_cb_freelist;
    std::map<unsigned int, QString> get_one_in_process;
    bool have_changes_valid = false;
    bool have_changes_cached = false;

    // These are called with mutex held.
    /// Ends every fetch, answered or not.
    void free_helpers();
    bool is_in_process(QString const &name) const;
    /// The first name that is wanted and not being fetched; null if there is none.
    QString const *next_wanted() const;
};
