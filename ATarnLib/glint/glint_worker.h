// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/base/athreaded_object.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aprotect.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"

#include <atomic>
#include <vector>

/// Decodes reports of one kind on a thread of its own, which a subclass starts when it is made and
/// ends when it goes. What it makes of them is told by signals of the subclass, once for all the
/// work that it found.
/// Thread: work is added on the hub's; the slots run on its own.
class TARN_EXPORT GlintWorker : public AThreadedObject
{
    Q_OBJECT

public:
    /// Takes a message that came on the connection of that number, and keeps it until `send_work`:
    /// to wake a thread costs more than to decode a message.
    void hold_work(unsigned long long connection, XMLTree const &message);
    /// Hands over what was held.
    void send_work();
    /// Both.
    void add_work(unsigned long long connection, XMLTree const &message);
    /// Messages held.
    std::size_t held_work() const { return held.size(); }

    /// \name From any thread
    /// @{
    /// Messages that have been handed over and are not decoded yet. At 0 each of them has left its
    /// result behind.
    unsigned int work_waiting() const { return undecoded.load(std::memory_order_acquire); }
    /// Messages that could not be decoded.
    unsigned long long dropped() const { return dropped_count.load(std::memory_order_relaxed); }
    /// What was wrong with the last one, and when that was by `ACounter`.
    AString last_drop_reason() const;
    long long last_drop_ticks() const;
    /// @}

Q_SIGNALS:
    /// There is work, after a time without.
    void work_available();

public Q_SLOTS:
    /// Decodes all the work there is. A message that cannot be decoded is an assertion, and the
    /// next one follows.
    void process_work();

protected:
    GlintWorker();

    /// Decodes the child of a report that came on that connection. False, and the reason in *error.
    virtual bool decode(unsigned long long connection, XMLTree const &report, AString *error) = 0;
    /// Emits the signals that are due.
    virtual void publish() = 0;
    /// Ends the thread and waits for that; the first thing in the destructor of a subclass.
    void end_thread();

private:
    struct WorkItem
    {
        unsigned long long connection;
        XMLTree message;
    };
    struct Work
    {
        std::vector<WorkItem> items;
        bool wake_sent = false; // since the worker took the items last
    };

    struct Drop
    {
        AString reason;
        long long at_ticks = 0;
    };

    bool take_work();
    void process(WorkItem const &item);

    std::vector<WorkItem> held; // hub
    AProtect<Work> work;
    std::vector<WorkItem> taken; // worker; its room goes back and forth
    std::atomic<unsigned int> undecoded{0};
    std::atomic<unsigned long long> dropped_count{0};
    AProtect<Drop> last_drop;
};
