// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>

namespace VCTP3 {

/// Hands \a size bytes to `send(data, count)`, which tells how many it took. False when it took
/// less than one, or when a partial write has led outside the data; the connection can then no
/// longer be used.
///
/// After a partial write the place moves on by the count that remains, not by the count that was
/// taken. What follows is then a message that the server cannot read, or lies outside the data
/// and is not sent at all: both end in a new connection. Messages come in blocks of 1500 bytes,
/// which a socket that waits takes whole, so this stays out of normal operation.
template <typename Send> bool write_all(Send send, char const *data, unsigned long long size)
{
    constexpr unsigned long long longest_write = 2147483647;
    unsigned long long position = 0;
    unsigned long long remaining = size;
    while (remaining > 0) {
        if (remaining > size - position)
            return false;
        long long const taken = send(data + position, std::min(remaining, longest_write));
        if (taken < 1)
            return false;
        remaining -= static_cast<unsigned long long>(taken);
        position += remaining;
    }
    return true;
}

} // namespace VCTP3
