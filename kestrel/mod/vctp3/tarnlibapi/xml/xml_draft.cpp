// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_draft_p.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/astring_builder_p.h"

XMLTree XMLDraft::finish()
{
    AStringBuilder builder(text.size());
    for (std::size_t done = 0; done < text.size();) {
        unsigned long long room = 0;
        AChar *const to = builder.room(&room);
        std::size_t const part = std::min<std::size_t>(room, text.size() - done);
        for (std::size_t i = 0; i < part; ++i)
            to[i] = AChar(text[done + i]);
        builder.commit(part);
        done += part;
    }
    return XMLDocument::make(nodes, attributes, builder.take_storage());
}
