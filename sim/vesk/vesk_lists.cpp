// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_lists.h"

#include "sim/vesk/replies.h"
#include "sim/vesk/reports.h"

XMLTree VeskListKind::created(AString const &id)
{
    return VeskReports::playlist_created(id);
}

XMLTree VeskListKind::changed(AString const &id)
{
    return VeskReports::playlist_changed(id);
}

XMLTree VeskListKind::deleted(AString const &id)
{
    return VeskReports::playlist_deleted(id);
}

XMLTree VeskChaseKind::created(AString const &id)
{
    return VeskReports::chaselist_created(id);
}

XMLTree VeskChaseKind::changed(AString const &id)
{
    return VeskReports::chaselist_changed(id);
}

XMLTree VeskChaseKind::deleted(AString const &id)
{
    return VeskReports::chaselist_deleted(id);
}

XMLTree VeskListKind::element_reply(Element const &element)
{
    return VeskReplies::list_element(element);
}

XMLTree VeskListKind::id_reply(AString const &id)
{
    return VeskReplies::listid(id);
}

XMLTree VeskChaseKind::element_reply(Element const &element)
{
    return VeskReplies::chase_element(element);
}

XMLTree VeskChaseKind::id_reply(AString const &id)
{
    return VeskReplies::chaseid(id);
}
