// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from api_command.h.in and commands.tbl; do not edit.
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/portable_mutex.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_parser2.h"

#include <atomic>

namespace VCTP3 {

class CommandTree;

/// Builds and writes the commands. Each `cmd_x` sends the command `x` under a transaction id that
/// the server will return; what comes of it is up to `reply_*`.
///
/// A command with optional parameters has a full form, in which a flag before each of them tells
/// whether it is present, and short forms that take the first 0, 1, ... of them.
/// Thread: commands from any; messages of several threads are written one after the other.
class TARN_EXPORT APICommand : public APIParser2
{
public:
    /// Writes one message.
    void send(XMLTree const &message);

    /// Called at the head of every `send`; null ends that. Set it while no thread sends.
    void set_send_debug_hook(AFunction1<XMLTree const &> const &hook);

    /// How many messages have been sent, from any thread.
    unsigned long long messages_sent() const { return sent; }

    // Driving
    /// Answer: ok.
    void cmd_stop(AString const &xid);
    /// Sends OtherCar Offset? Rate? Quiet!. Answer: ok.
    void cmd_drive(AString const &xid, Car const &other_car, bool has_offset, int const &offset,
        bool has_rate, Rate const &rate, bool has_quiet, bool const &quiet);
    void cmd_drive(AString const &xid, Car const &other_car);
    void cmd_drive(AString const &xid, Car const &other_car, int const &offset);
    void cmd_drive(AString const &xid, Car const &other_car, int const &offset, Rate const &rate);
    void cmd_drive(AString const &xid, Car const &other_car, int const &offset, Rate const &rate,
        bool const &quiet);

    // Asking
    /// Sends Count. Answer: car* ok.
    void cmd_cars(AString const &xid, unsigned int const &count);
    /// Sends SideSet Speed?. Answer: road.
    void cmd_get_road(AString const &xid, SideSet const &side_set, bool has_speed,
        int const &speed);
    void cmd_get_road(AString const &xid, SideSet const &side_set);
    void cmd_get_road(AString const &xid, SideSet const &side_set, int const &speed);

protected:
    /// The transport: takes all \a size bytes, or loses them. A message comes in blocks of 1500
    /// bytes and a rest, so a small one comes whole.
    virtual void send(void const *data, unsigned long long size) = 0;

    /// The transport says so when another stream to the server begins, from any thread.
    void begin_stream() { ++streams; }
    /// Whether what `send` was given belongs to the present stream; call it there. The first block
    /// of a message does, and binds the others: what is left of a message when its stream is gone
    /// must be lost, since no stream may begin with it.
    bool belongs_to_stream();
    /// The stream that the message being written is bound to; call it behind `belongs_to_stream`.
    unsigned int stream_of_message() const;
    unsigned int present_stream() const { return streams; }

private:
    class Message;

    void send_command(CommandTree &command);

    AFunction1<XMLTree const &> send_debug_hook;
    PortableMutex send_mutex; // held while a message is written; taken after no other lock
    Message *writing = nullptr; // being written; guarded by send_mutex
    std::atomic<unsigned int> streams{0};
    std::atomic<unsigned long long> sent{0};
};

} // namespace VCTP3
