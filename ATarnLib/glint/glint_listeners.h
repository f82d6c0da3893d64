// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aprotect.h"

#include <QMetaMethod>

#include <algorithm>
#include <iterator>
#include <list>

/// How a monitor hears of the listeners of its signals. One that has come is looked at from the
/// event loop, when its connection is complete; one that has gone is looked at later still, as at
/// that moment the toolkit cannot say whether another listener is left, and may hold its locks.
///
/// A row of \a Monitor is what belongs to one of its signals: the `method`, and the monitor's
/// function to `update` what it knows of the listeners.
/// Thread: any, but for `process_disconnected`.
template <typename Monitor> class GlintListeners
{
public:
    /// \a of must outlive this object.
    explicit GlintListeners(Monitor *of)
        : monitor(of)
    {
    }

    /// A listener of \a signal has come or gone. An invalid signal means all at once, as the
    /// toolkit does not say which of them had a listener; an unknown one is an assertion.
    template <typename Rows> void notify(bool connect, QMetaMethod const &signal, Rows const &rows)
    {
        if (!connect && !signal.isValid()) {
            for (auto const &row : rows)
                add(row.update);
            return;
        }
        static QMetaMethod const relay
            = QMetaMethod::fromSignal(&Monitor::relay_connect_disconnect_notify2);
        if (signal == relay)
            return;
        auto const row = std::find_if(std::begin(rows), std::end(rows),
            [&signal](auto const &candidate) { return candidate.method == signal; });
        if (row == std::end(rows))
            A_ASSERT(false);
        else if (connect)
            Q_EMIT monitor->relay_connect_disconnect_notify2(true, row->update);
        else
            add(row->update);
    }
    /// Updates the signals that have lost a listener since the last time, in the order in which
    /// they did.
    void process_disconnected()
    {
        List waiting;
        Lock(disconnected)->swap(waiting);
        for (UpdateMethod const update : waiting)
            (monitor->*update)(false);
    }

private:
    using UpdateMethod = void (Monitor::*)(bool);
    using List = std::list<UpdateMethod>;
    using Lock = typename AProtect<List>::Lock;

    /// One that waits already stays where it is.
    void add(UpdateMethod update)
    {
        Lock const lock(disconnected);
        if (std::find(lock->begin(), lock->end(), update) == lock->end())
            lock->push_back(update);
    }

    Monitor *const monitor;
    AProtect<List> disconnected;
};
