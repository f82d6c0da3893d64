// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_format.h"
#include "sim/vesk/vesk_lists.h"
#include "sim/vesk/vesk_request.h"

/// Answers one connection's commands on stored sequences. The bracket of a save is the
/// connection's own: a start begins anew, and only the end stores what was gathered.
/// Thread: the server's.
template <typename Kind> class VeskSequenceDesk
{
public:
    using Sequences = VeskSequences<Kind>;
    using Element = typename Kind::Element;

    explicit VeskSequenceDesk(Sequences *sequences)
        : stored(sequences)
    {
    }

    void start(VeskRequest &request, AString const &id)
    {
        if (id.empty())
            return request.error(text("A %1 needs a name%2", id));
        open_id = id;
        gathered.clear();
        request.ok();
    }
    void add(VeskRequest &request, Element const &element)
    {
        if (!is_open(request))
            return;
        gathered.push_back(element);
        request.ok();
    }
    void end(VeskRequest &request)
    {
        if (!is_open(request))
            return;
        stored->store(*open_id, gathered);
        open_id.clear();
        gathered.clear();
        request.ok();
    }
    void download(VeskRequest &request, AString const &id) const
    {
        auto const *elements = stored->find(id);
        if (!elements) {
            request.error(text("There is no %1 \"%2\"", id));
            return;
        }
        for (Element const &element : *elements)
            request.reply(Kind::element_reply(element));
        request.ok();
    }
    void ids(VeskRequest &request) const
    {
        for (auto const &[id, elements] : stored->all())
            request.reply(Kind::id_reply(id));
        request.ok();
    }
    void remove(VeskRequest &request, AString const &id)
    {
        if (stored->remove(id))
            request.ok();
        else
            request.error(text("There is no %1 \"%2\"", id));
    }
    void rename(VeskRequest &request, AString const &from, AString const &to)
    {
        if (to.empty())
            request.error(text("A %1 needs a name%2", to));
        else if (stored->rename(from, to))
            request.ok();
        else if (stored->find(from))
            request.error(text("There is a %1 \"%2\" already", to));
        else
            request.error(text("There is no %1 \"%2\"", from));
    }

private:
    static AString text(char const *format, AString const &id)
    {
        return AString::from_latin1(format).arg(AString::from_latin1(Kind::noun)).arg(id);
    }
    bool is_open(VeskRequest &request) const
    {
        if (!open_id)
            request.error(AString::l1("No %1 is being saved; %1_save_start comes first")
                              .arg(AString::from_latin1(Kind::noun))
                              .arg(AString::from_latin1(Kind::noun)));
        return open_id.has_value();
    }

    Sequences *stored;
    AOption<AString> open_id;
    typename Sequences::Elements gathered;
};
