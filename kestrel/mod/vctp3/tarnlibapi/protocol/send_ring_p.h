// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstring>

namespace VCTP3 {

/// Near the size of a network frame.
constexpr std::size_t send_block_size = 1500;

/// Gathers the pieces of a message into blocks, so that a small message becomes a single write. A
/// tree is written in pieces far smaller than a block. Each message has its own ring, so that a
/// message that is sent from within the sink does no harm.
template <typename Sink> class SendRing
{
public:
    static constexpr std::size_t size = send_block_size;

    explicit SendRing(Sink to)
        : sink(to)
    {
    }

    void write(char const *data, std::size_t count);
    void flush();

private:
    Sink sink;
    std::size_t held = 0;
    char ring[size];
};

template <typename Sink> void SendRing<Sink>::write(char const *data, std::size_t count)
{
    while (count > 0) {
        std::size_t const part = count < size - held ? count : size - held;
        std::memcpy(ring + held, data, part);
        held += part;
        data += part;
        count -= part;
        if (held == size)
            flush();
    }
}

template <typename Sink> void SendRing<Sink>::flush()
{
    if (held == 0)
        return;
    std::size_t const count = held;
    held = 0;
    sink(ring, count);
}

} // namespace VCTP3
