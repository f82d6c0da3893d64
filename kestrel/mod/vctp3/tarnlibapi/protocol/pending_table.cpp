// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/pending_table_p.h"

#include <utility>

namespace VCTP3 {

namespace {

std::atomic<std::uint32_t> last_number{0};

std::uint32_t next_number()
{
    return last_number.fetch_add(1, std::memory_order_relaxed) + 1;
}

} // namespace

PendingTable::Key::Key(AString const &xid)
{
    bool fits = xid.length() <= 16;
    AStringSegmentPosition at = xid.get_first_position();
    AChar c;
    // Character by character, since an id may lie across two runs of its message's text.
    for (unsigned int i = 0; fits && xid.get_next_position(&at, &c); ++i) {
        std::uint64_t &half = i < 8 ? head : tail;
        half |= std::uint64_t(c.ord()) << (56 - 8 * (i % 8));
        fits = c.ord() != 0 && c.ord() <= 0x7F; // 0 stands for the end
    }
    if (!fits)
        tail = ~std::uint64_t(0);
}

AString PendingTable::open(ReplyFunctions const &functions)
{
    if (functions.empty())
        return untracked_xid();
    PortableMutexLock const lock(mutex);
    for (;;) {
        AString const xid = AString::from_uint32_t(next_number());
        if (transactions.try_emplace(Key(xid), Record{functions}).second)
            return xid;
    }
}

AString PendingTable::untracked_xid()
{
    return AString::l1("none") + AString::from_uint32_t(next_number());
}

bool PendingTable::find(AString const &xid, ReplyFunctions *functions) const
{
    PortableMutexLock const lock(mutex);
    auto const found = transactions.find(Key(xid));
    if (found == transactions.end() || found->second.ended)
        return false;
    *functions = found->second.functions;
    return true;
}

bool PendingTable::begin_end(AString const &xid, ReplyFunctions *functions)
{
    PortableMutexLock const lock(mutex);
    auto const found = transactions.find(Key(xid));
    if (found == transactions.end() || found->second.ended)
        return false;
    // The record stays until its callback is through, but nothing may end it a second time.
    found->second.ended = true;
    *functions = found->second.functions;
    return true;
}

unsigned int PendingTable::outstanding() const
{
    PortableMutexLock const lock(mutex);
    return static_cast<unsigned int>(transactions.size());
}

bool PendingTable::forget(AString const &xid)
{
    PortableMutexLock const lock(mutex);
    return transactions.erase(Key(xid)) > 0;
}

void PendingTable::fail_all()
{
    // Tested before the mutex is waited for: who comes here while holding the lock of a transport
    // would otherwise wait for a run whose callbacks wait for that lock.
    if (failing.exchange(true))
        return;
    PortableMutexLock const lock(mutex);
    AString const text = AString::l1("Failing all outstanding commands");
    std::size_t left = transactions.size() + most_made_while_failing;
    while (!transactions.empty()) {
        if (!A_ASSERT_TEXT(left > 0, "fail_all_pending_commands: error callbacks keep sending"))
            break;
        --left;
        auto const first = transactions.begin();
        Key const key = first->first;
        // As with a last reply, the record stays until its callback is through. The callback may
        // forget it all the same, so that neither it nor its place is good behind the call.
        if (!std::exchange(first->second.ended, true)) {
            ReplyFunctions const functions = first->second.functions;
            functions.get<AFunction2<AString, ErrorCode>>(MessageId::reply_error)(
                text, ErrorCode::general);
        }
        transactions.erase(key);
    }
    // Still under the mutex: a command that finds this set is one that the loop has dealt with.
    failing = false;
}

void PendingTable::set_last_number(std::uint32_t number)
{
    last_number = number;
}

} // namespace VCTP3
