// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <atomic>
#include <memory>

namespace VCTP3 {

/// Ends the waits of a thread, now and for good.
/// Thread: any.
class TARN_AUTOTEST_EXPORT WakeUp
{
public:
    WakeUp();
    ~WakeUp();
    WakeUp(WakeUp const &) = delete;
    WakeUp &operator=(WakeUp const &) = delete;

    void set();
    bool is_set() const { return flag; }
    /// Returns after \a milliseconds, or as soon as this is set.
    void wait(int milliseconds) const;

private:
    friend class BlockingSocket;

    int handle; // readable once this is set; -1 if there was none to be had
    std::atomic<bool> flag{false};
};

/// A TCP connection over IPv4 whose calls wait. It stays open while anybody holds it, so that no
/// call can meet a handle that has become another's.
/// Thread: any; one thread reads.
class TARN_AUTOTEST_EXPORT BlockingSocket
{
public:
    enum class Readable
    {
        yes,
        timeout, ///< also when woken
        failed
    };

    /// \a ipaddr and \a port in host byte order. Null if nobody answers there, or when woken.
    static std::shared_ptr<BlockingSocket> connect(
        unsigned int ipaddr, unsigned short port, WakeUp const &wake);
    ~BlockingSocket();
    BlockingSocket(BlockingSocket const &) = delete;
    BlockingSocket &operator=(BlockingSocket const &) = delete;

    /// Sends each write at once.
    void set_no_delay();
    /// Ends the connection both ways, and with it calls that wait.
    void shutdown();
    /// The number of bytes that were taken; below 1 on failure.
    long long send(void const *data, unsigned long long size);
    /// Waits for bytes, or for the end of the connection.
    Readable wait_readable(int milliseconds, WakeUp const &wake);
    /// The number of bytes that were read: 0 at the end of the connection, below 0 on failure.
    long long receive(void *buffer, unsigned long long size);

private:
    explicit BlockingSocket(int descriptor);

    bool connect_to(unsigned int ipaddr, unsigned short port, WakeUp const &wake);
    bool finish_connect(WakeUp const &wake);

    int const handle;
};

} // namespace VCTP3
