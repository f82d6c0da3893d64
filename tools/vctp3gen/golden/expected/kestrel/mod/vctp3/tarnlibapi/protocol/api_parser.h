// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from api_parser.h.in, replies.tbl and reports.tbl; do not edit.
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/afunction.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"

namespace VCTP3 {

template <typename Value> class TagTable;

/// Reads the server's messages: finds the reply or report in a message, reads its fields and calls
/// the virtual function of that kind. What is not understood is dropped, so that a newer server
/// can send more kinds and more fields.
/// Thread: `parse` on one thread at a time; all that it calls runs there.
class TARN_EXPORT APIParser
{
public:
    APIParser();
    virtual ~APIParser() = default;
    APIParser(APIParser const &) = delete;
    APIParser &operator=(APIParser const &) = delete;

    /// Handles one message. A reply with a missing or bad field calls nothing, and its transaction
    /// stays open. What this calls may parse other messages, as an event loop of its own does, and
    /// must leave the parser there.
    void parse(XMLTree const &message);

    /// Called at the head of every `parse`; null ends that. Set it on the thread of `parse`.
    void set_receive_debug_hook(AFunction1<XMLTree const &> const &hook);

    /// Whether the last `parse` that has ended found nothing wrong; a tried field does not count.
    bool parsed_ok() const { return first_error.ok; }
    /// What it found wrong first, empty if nothing.
    AString const &parse_error_text() const { return first_error.text; }
    /// The transaction of the reply that was wrong; empty for a report or an unreadable reply.
    AString const &parse_error_xid() const { return first_error.xid; }

protected:
    virtual void reply_ok(AString const &xid);
    virtual void reply_error(AString const &xid, AString const &message, unsigned int code);
    virtual void reply_car(AString const &xid, Car const &car);
    virtual void reply_road(AString const &xid, Road const &road, unsigned long long serial);

    virtual void report_passed(Side side, AString const &name, AOption<int> const &speed);
    virtual void report_lamp(Side side, bool open);
    virtual void report_names(std::list<AString> const &names);

    /// Keeps the first error since the start of the `parse` that runs.
    void store_error(AString const &xid, AString const &text);

private:
    using Handler = void (*)(APIParser &, XMLTree const &, AString const &);
    using MessageTable = TagTable<Handler>;
    struct Dispatch;
    struct FirstError
    {
        bool ok = true;
        AString xid;
        AString text;
    };

    static MessageTable const &reply_table();
    static MessageTable const &report_table();
    void dispatch(XMLTree const &message);

    AFunction1<XMLTree const &> receive_debug_hook;
    FirstError first_error; // of the last parse that has ended
    FirstError *running = nullptr; // of the innermost parse that runs
};

} // namespace VCTP3
