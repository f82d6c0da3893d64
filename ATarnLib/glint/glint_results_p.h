// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aprotect.h"

#include <atomic>
#include <deque>
#include <vector>

/// What a new value takes from the one that it overtakes; most values take nothing.
template <typename Value> void overtake(Value *, Value const &) { }

/// The newest value of each channel on its way from a worker to the hub, in the order in which the
/// channels got one. A value that is overtaken before it is taken is replaced, so the delay cannot
/// grow; what must not be lost with it the new one takes by `overtake`.
/// Thread: one that stores and one that takes.
template <typename Value> class GlintResults
{
public:
    /// Channels from here on are a fault of whoever decodes.
    static constexpr unsigned int channel_limit = 200;

    /// True if the channel had no value waiting, so that a signal is due. A channel from
    /// `channel_limit` on is an assertion, and is stored all the same.
    bool store(unsigned int channel, unsigned long long connection, Value value)
    {
        A_ASSERT_TEXT(channel < channel_limit, "c < 200");
        typename AProtect<Results>::Lock lock(results);
        if (channel >= lock->channel_info.size())
            lock->channel_info.resize(channel + 1);
        Info &info = lock->channel_info[channel];
        if (info.pending && info.connection == connection)
            overtake(&value, info.value);
        info.value = std::move(value);
        info.connection = connection;
        if (info.pending) {
            overtaken_count.fetch_add(1, std::memory_order_relaxed);
            return false;
        }
        info.pending = true;
        lock->queue.push_back(channel);
        return true;
    }
    /// Behind stores of which one made a signal due: whether it is to be emitted.
    bool raise() { return !flagged.exchange(true); }

    /// The value of the channel that has waited longest; false when none waits, and the next store
    /// is signalled then. Values of another connection are passed over.
    bool take(unsigned long long connection, unsigned int *channel, Value *value)
    {
        typename AProtect<Results>::Lock lock(results);
        while (!lock->queue.empty()) {
            *channel = lock->queue.front();
            lock->queue.pop_front();
            if (!A_ASSERT_TEXT(
                    *channel < lock->channel_info.size(), "channel < lock->channel_info.size()"))
                return false;
            Info &info = lock->channel_info[*channel];
            if (!A_ASSERT(info.pending))
                return false;
            info.pending = false;
            if (info.connection != connection)
                continue;
            *value = info.value;
            return true;
        }
        flagged.exchange(false);
        return false;
    }

    /// How many values were overtaken, from any thread.
    unsigned long long overtaken() const { return overtaken_count.load(std::memory_order_relaxed); }
    /// How many channels have a value waiting, from any thread.
    unsigned int waiting() const
    {
        return static_cast<unsigned int>(typename AProtect<Results>::Lock(results)->queue.size());
    }

private:
    struct Info
    {
        bool pending = false; // stands in the queue
        unsigned long long connection = 0;
        Value value{};
    };
    struct Results
    {
        std::vector<Info> channel_info;
        std::deque<unsigned int> queue;
    };

    AProtect<Results> results;
    /// A signal is on its way. Cleared with the lock held, so that no result is stranded.
    std::atomic<bool> flagged{false};
    std::atomic<unsigned long long> overtaken_count{0};
};
