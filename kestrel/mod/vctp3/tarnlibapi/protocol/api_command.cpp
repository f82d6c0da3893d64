// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_command.h"

#include "kestrel/mod/vctp3/tarnlibapi/protocol/command_tree_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/send_ring_p.h"

#include <utility>

namespace VCTP3 {

/// The message that is written while this lives. One that is sent from within the sink is another,
/// and may go to another stream.
class APICommand::Message
{
public:
    explicit Message(APICommand *of)
        : owner(of)
        , outer(std::exchange(of->writing, this))
    {
        ++of->sent;
    }
    ~Message() { owner->writing = outer; }
    Message(Message const &) = delete;
    Message &operator=(Message const &) = delete;

    bool belongs_to(unsigned int stream)
    {
        if (!std::exchange(begun, true))
            begun_in = stream;
        return begun_in == stream;
    }
    unsigned int stream() const { return begun_in; }

private:
    APICommand *const owner;
    Message *const outer;
    bool begun = false;
    unsigned int begun_in = 0;
};

void APICommand::set_send_debug_hook(AFunction1<XMLTree const &> const &hook)
{
    send_debug_hook = hook;
}

void APICommand::send(XMLTree const &message)
{
    send_debug_hook.run(message);
    PortableMutexLock const lock(send_mutex);
    Message const scope(this);
    SendRing ring([this](char const *data, std::size_t size) { send(data, size); });
    using Ring = decltype(ring);
    AFunction2<char const *, unsigned long long> const sink(
        [](void *to, char const *data, unsigned long long size) {
            static_cast<Ring *>(to)->write(data, size);
        },
        &ring);
    message.send_utf8(sink, XMLTree::FlattenLines, true);
    ring.flush();
}

bool APICommand::belongs_to_stream()
{
    return !writing || writing->belongs_to(streams);
}

unsigned int APICommand::stream_of_message() const
{
    return writing ? writing->stream() : present_stream();
}

void APICommand::send_command(CommandTree &command)
{
    if (!send_debug_hook.is_null())
        send_debug_hook(command.tree());
    std::string_view bytes = command.finish();
    PortableMutexLock const lock(send_mutex);
    Message const scope(this);
    while (!bytes.empty()) {
        std::string_view const block = bytes.substr(0, send_block_size);
        send(block.data(), block.size());
        bytes.remove_prefix(block.size());
    }
}

} // namespace VCTP3
