// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/afunction.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/atomic.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/portable_mutex.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QObject>

namespace VCTP3 {

/// Stands between a callback group and its commands in flight. Their callables hold the helper,
/// never the group, so a group may go at any time: later answers find no group and are dropped.
///
/// It counts one reference for the group and one for each command in flight, and deletes itself
/// with the last one. A group calls `addref` for each command that it is given to, binds its
/// callables once by `bind_streaming` and `bind_final`, and calls `detach` first in its
/// destructor.
///
/// Signals are emitted with the helper's mutex held: a group that is deleted in another thread
/// waits until its signal is through. The mutex is recursive, so a slot may delete the group
/// whose signal it answers.
/// Thread: any.
class TARN_EXPORT CallbackGroupHelper
{
public:
    /// Made by \a group, whose reference is counted from the start.
    explicit CallbackGroupHelper(QObject *group);
    CallbackGroupHelper(CallbackGroupHelper const &) = delete;
    CallbackGroupHelper &operator=(CallbackGroupHelper const &) = delete;

    /// One more command in flight.
    void addref();
    /// Clears the way back to the group and drops the group's own reference.
    void detach();

    /// Makes \a slot call the group's method \a Send, for an answer that more of its kind follow.
    template <auto Send, typename... Args> void bind_streaming(AFunctionRecord<void, Args...> *slot)
    {
        *slot = {&CallbackGroupHelper::deliver<Send, false, Args...>, this};
    }
    /// The same for the last answer to a command: its reference is dropped after the call.
    template <auto Send, typename... Args> void bind_final(AFunctionRecord<void, Args...> *slot)
    {
        *slot = {&CallbackGroupHelper::deliver<Send, true, Args...>, this};
    }

    /// While one lives, answers that arrive on its thread only drop references.
    class TARN_EXPORT Mute
    {
    public:
        Mute();
        ~Mute();
        Mute(Mute const &) = delete;
        Mute &operator=(Mute const &) = delete;
    };

private:
    template <typename Method> struct Owner;
    template <typename Group, typename... Parameters> struct Owner<void (Group::*)(Parameters...)>
    {
        using type = Group;
    };

    template <auto Send, bool last, typename... Args>
    static void deliver(void *word, AFunctionArgument<Args>... args)
    {
        auto *helper = static_cast<CallbackGroupHelper *>(word);
        if (!A_ASSERT_TEXT(helper, "helper != 0"))
            return;
        // The slot may end this very command and delete the group: hold on until the mutex is back.
        helper->addref();
        {
            PortableMutexLock lock(helper->mutex);
            if (QObject *group = helper->audience())
                (static_cast<typename Owner<decltype(Send)>::type *>(group)->*Send)(args...);
        }
        if constexpr (last)
            helper->release();
        helper->release();
    }

    ~CallbackGroupHelper();
    void release();
    /// The group, if it is there and this thread is not muted. Called with the mutex held.
    QObject *audience() const;

    PortableMutex mutex; // held while the group's signals are emitted, before the group's own locks
    AtomicUnsigned references{1};
    QObject *qtcb; // guarded by mutex; null once the group is gone
};

} // namespace VCTP3
