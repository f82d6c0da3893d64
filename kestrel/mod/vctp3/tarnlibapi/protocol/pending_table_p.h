// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/afunction.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/portable_mutex.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/enums.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/words_p.h"

#include <array>
#include <atomic>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <type_traits>

namespace VCTP3 {

/// The callables of one command by the kind of reply they are for. A command can get few of the
/// many kinds, so only those that were given take room.
class ReplyFunctions
{
public:
    template <typename F> void set(MessageId kind, F const &function)
    {
        static_assert(std::is_trivially_copyable_v<F> && sizeof(F) == sizeof(AFunction));
        if (function.is_null())
            return;
        slots[used].kind = kind;
        std::memcpy(slots[used].bytes, &function, sizeof(F));
        ++used;
    }
    /// Null if there is none.
    template <typename F> F get(MessageId kind) const
    {
        F function;
        for (unsigned int i = 0; i < used; ++i) {
            if (slots[i].kind == kind)
                std::memcpy(static_cast<void *>(&function), slots[i].bytes, sizeof(F));
        }
        return function;
    }
    bool empty() const { return used == 0; }

private:
    struct Slot
    {
        MessageId kind;
        alignas(AFunction) std::byte bytes[sizeof(AFunction)];
    };

    std::array<Slot, 4> slots;
    unsigned int used = 0;
};

/// The commands in flight of one `API`, by transaction id.
/// Thread: any.
class TARN_AUTOTEST_EXPORT PendingTable
{
public:
    /// Beyond this many commands that error callbacks have sent, `fail_all` stops.
    static constexpr unsigned int most_made_while_failing = 1000000;

    /// Keeps the callables of a new command and returns its id. Without any there is no record, and
    /// the id is "none" and a number.
    AString open(ReplyFunctions const &functions);
    /// An id for a command that nobody waits for.
    AString untracked_xid();

    /// Calls the callable for a reply that is not the last; nothing if the id is unknown.
    template <typename F, typename... Values>
    void answer(AString const &xid, MessageId kind, Values const &...values)
    {
        ReplyFunctions functions;
        if (find(xid, &functions))
            functions.get<F>(kind)(values...);
    }
    /// The same for a last reply, which then ends the transaction.
    template <typename F, typename... Values>
    void finish(AString const &xid, MessageId kind, Values const &...values)
    {
        ReplyFunctions functions;
        if (!begin_end(xid, &functions))
            return;
        functions.get<F>(kind)(values...);
        forget(xid);
    }

    unsigned int outstanding() const;
    bool forget(AString const &xid);
    void fail_all();

    /// The next transaction of the process gets the number behind this one.
    static void set_last_number(std::uint32_t number);

private:
    /// An id as a number that sorts as the text does. Ids are digits, at most ten.
    struct Key
    {
        explicit Key(AString const &xid);
        auto operator<=>(Key const &) const = default;

        std::uint64_t head = 0; // the first eight characters, the first one highest
        std::uint64_t tail = 0; // the rest; all ones for a text that is too long to be an id
    };
    struct Record
    {
        ReplyFunctions functions;
        bool ended = false; // its last reply is being delivered
    };

    bool find(AString const &xid, ReplyFunctions *functions) const;
    /// False also when the last reply is being delivered already.
    bool begin_end(AString const &xid, ReplyFunctions *functions);

    std::map<Key, Record> transactions; // guarded by mutex
    mutable PortableMutex mutex; // recursive: error callbacks run with it held, and may send
    std::atomic<bool> failing{false}; // set before mutex is taken, cleared before it is released
};

} // namespace VCTP3
