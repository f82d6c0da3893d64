// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint_worker.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/clock.h"

#include <algorithm>
#include <iterator>

GlintWorker::GlintWorker()
{
    connect(
        this, &GlintWorker::work_available, this, &GlintWorker::process_work, Qt::QueuedConnection);
}

void GlintWorker::hold_work(unsigned long long connection, XMLTree const &message)
{
    held.push_back({connection, message});
}

void GlintWorker::send_work()
{
    if (held.empty())
        return;
    bool wake = false;
    undecoded.fetch_add(static_cast<unsigned int>(held.size()), std::memory_order_relaxed);
    {
        AProtect<Work>::Lock lock(work);
        if (lock->items.empty())
            lock->items.swap(held);
        else
            std::move(held.begin(), held.end(), std::back_inserter(lock->items));
        wake = !std::exchange(lock->wake_sent, true);
    }
    held.clear();
    if (wake)
        Q_EMIT work_available();
}

void GlintWorker::add_work(unsigned long long connection, XMLTree const &message)
{
    hold_work(connection, message);
    send_work();
}

AString GlintWorker::last_drop_reason() const
{
    return AProtect<Drop>::Lock(last_drop)->reason;
}

long long GlintWorker::last_drop_ticks() const
{
    return AProtect<Drop>::Lock(last_drop)->at_ticks;
}

void GlintWorker::process_work()
{
    while (take_work()) {
        for (WorkItem const &item : taken)
            process(item);
        undecoded.fetch_sub(static_cast<unsigned int>(taken.size()), std::memory_order_release);
        taken.clear();
    }
    publish();
}

void GlintWorker::end_thread()
{
    thread()->end();
}

bool GlintWorker::take_work()
{
    AProtect<Work>::Lock lock(work);
    lock->items.swap(taken);
    lock->wake_sent = !taken.empty();
    return !taken.empty();
}

void GlintWorker::process(WorkItem const &item)
{
    XMLTree const &tree = item.message;
    if (!A_ASSERT_TEXT(tree.has_tag_z("report"), "tree.has_tag_z(\"report\")")
        || !A_ASSERT_TEXT(tree.count_subnodes() == 1, "tree_nodes.size() == 1"))
        return;
    AString error;
    if (decode(item.connection, *tree.children().begin(), &error))
        return;
    A_ASSERT(false);
    dropped_count.fetch_add(1, std::memory_order_relaxed);
    *AProtect<Drop>::Lock(last_drop) = {error.deep_copy(32), ACounter::ticks()};
}
