// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_parser.h"

#include "kestrel/mod/vctp3/tarnlibapi/protocol/leaf_xml.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/tag_table_p.h"

#include <utility>

namespace VCTP3 {

APIParser::APIParser()
{
    // Makes the protocol's names known before the first message is parsed.
    word(Word::reply);
}

void APIParser::set_receive_debug_hook(AFunction1<XMLTree const &> const &hook)
{
    receive_debug_hook = hook;
}

void APIParser::parse(XMLTree const &message)
{
    receive_debug_hook.run(message);
    FirstError found;
    FirstError *const outer = std::exchange(running, &found);
    dispatch(message);
    running = outer;
    first_error = std::move(found);
}

void APIParser::dispatch(XMLTree const &message)
{
    bool const is_reply = message.has_tag(word(Word::reply));
    if (!is_reply && !message.has_tag(word(Word::report))) {
        store_error(AString(), AString::l1("XML Message is not a <reply> or <report> message"));
        return;
    }
    AString xid;
    AString error;
    if (is_reply && !read_element(message, word(Word::xid), &xid, &error)) {
        store_error(AString(), error);
        return;
    }

    MessageTable const &table = is_reply ? reply_table() : report_table();
    XMLTree const *command = nullptr;
    Handler const *handler = nullptr;
    for (XMLTree const &child : message.children()) {
        Handler const *known = table.find_of(child);
        if (!known)
            continue;
        if (handler) {
            store_error(xid, AString::l1("XML Message contains multiple commands"));
            return;
        }
        handler = known;
        command = &child;
    }
    if (!handler) {
        store_error(xid, AString::l1("XML Message contains no commands"));
        return;
    }
    (*handler)(*this, *command, xid);
}

void APIParser::store_error(AString const &xid, AString const &text)
{
    FirstError &error = running ? *running : first_error;
    if (!error.ok)
        return;
    error.ok = false;
    error.xid = xid;
    error.text = text;
}

} // namespace VCTP3
