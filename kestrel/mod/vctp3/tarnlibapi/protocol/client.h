// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api.h"

#include <memory>

namespace VCTP3 {

/// The transport for programs without an event loop: a loop on one thread keeps the connection,
/// reads it and calls the callbacks. A lost connection fails the commands in flight, and the loop
/// dials again every 100 ms for as long as it runs.
///
/// A subclass that overrides a virtual function calls `stop` first in its own destructor, so that
/// the loop has ended before the override goes. No callback may destroy the object.
/// Thread: any may send commands and call what stands here; the socket is read, and callbacks and
/// virtual functions are called, on the loop's thread. A command that finds no connection, or one
/// that can no longer be written to, fails at once all that are in flight, on the thread that
/// sends.
class TARN_EXPORT Client : public API
{
public:
    /// For a server on this machine, at 127.0.0.1.
    Client();
    /// \a ipaddr: IPv4 address in host byte order.
    explicit Client(unsigned int ipaddr);
    /// Waits for the loop to end. Commands in flight are forgotten, and nothing is called for them.
    ~Client() override;

    /// 127.0.0.1 in host byte order.
    static unsigned int localhost() { return 2130706433U; }
    static unsigned int ip_127_0_0_1() { return localhost(); }

    /// Takes effect at the next connect.
    void set_ipaddr(unsigned int ipaddr);
    /// Has the loop run \a call when \a seconds have passed since the last time, or since the
    /// connect. It is held back while four commands or more are in flight, and looked at each
    /// second at least. One call at a time: a second one replaces the first.
    void add_periodic(unsigned int seconds, AFunction const &call);
    bool isConnected() const;

    /// Runs the loop on the caller's thread, until the object is destroyed.
    void run_forever();
    /// Runs the loop on a thread of its own with a stack of 64 KiB. \a priority: 0 as other
    /// threads, above 0 more urgent, below 0 less, in steps of niceness; what the process has no
    /// right to is ignored. While the thread runs: an assertion, and nothing else.
    void run_forever_in_own_thread(int priority);
    /// What that thread runs.
    void run_forever_ownthread();

    using API::send;

    /// Called when a connection stands, before anything is read from it.
    virtual void connected();
    /// Called when it is gone and the commands in flight have failed.
    virtual void disconnected();

protected:
    /// Ends the loop for good and waits for that; not from the loop's thread.
    void stop();

    /// Writes to the server. While there is no connection, and after a write has failed, the
    /// commands in flight are failed instead, on this thread. A write that fails closes the
    /// connection at the loop's next turn. What is left of a message that was begun before the
    /// present connection is lost.
    void send(void const *data, unsigned long long size) override;

private:
    struct Private;

    void perform_connect();
    void run_once();
    bool run_periodic();
    bool receive();
    void close_connection();

    std::unique_ptr<Private> d;
};

} // namespace VCTP3
