// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"
#include "sim/vesk/replies.h"
#include "sim/vesk/reports.h"
#include "sim/vesk/vesk_reporter.h"

#include <map>
#include <vector>

/// Stored sequences under their ids: playlists and chases differ only in their elements and in
/// what is said of them, which \a Kind gives: `Element`, its `noun`, the reports `created(id)`,
/// `changed(id)`, `deleted(id)` with their `group`, and the replies `element_reply(element)` and
/// `id_reply(id)`.
/// Thread: the server's.
template <typename Kind> class VeskSequences
{
public:
    using Element = typename Kind::Element;
    using Elements = std::vector<Element>;

    explicit VeskSequences(VeskReporter *reporter)
        : told(reporter)
    {
    }

    /// Puts \a elements in the place of what was stored.
    void store(AString const &id, Elements const &elements)
    {
        bool const fresh = sequences.count(id) == 0;
        sequences[id] = elements;
        told->report(Kind::group, fresh ? Kind::created(id) : Kind::changed(id));
    }
    /// False if there is none.
    bool remove(AString const &id)
    {
        if (sequences.erase(id) == 0)
            return false;
        told->report(Kind::group, Kind::deleted(id));
        return true;
    }
    /// False, and nothing done, if \a from is unknown or \a to is taken. To those who follow the
    /// ids it is a deletion and a creation.
    bool rename(AString const &from, AString const &to)
    {
        auto found = sequences.find(from);
        if (found == sequences.end() || sequences.count(to) != 0)
            return false;
        Elements elements = found->second;
        sequences.erase(found);
        told->report(Kind::group, Kind::deleted(from));
        store(to, elements);
        return true;
    }
    /// Null if there is none.
    Elements const *find(AString const &id) const
    {
        auto found = sequences.find(id);
        return found == sequences.end() ? nullptr : &found->second;
    }
    /// In the order of the ids.
    std::map<AString, Elements> const &all() const { return sequences; }

private:
    VeskReporter *told;
    std::map<AString, Elements> sequences;
};

/// Playlists.
struct VeskListKind
{
    using Element = VCTP3::ListElement;
    static constexpr char noun[] = "list";
    static constexpr VCTP3::ReportType group = VCTP3::ReportType::playlist_change;
    static constexpr auto created = &VeskReports::playlist_created;
    static constexpr auto changed = &VeskReports::playlist_changed;
    static constexpr auto deleted = &VeskReports::playlist_deleted;
    static constexpr auto element_reply = &VeskReplies::list_element;
    static constexpr auto id_reply = &VeskReplies::listid;
};
using VeskLists = VeskSequences<VeskListKind>;

/// Chases.
struct VeskChaseKind
{
    using Element = VCTP3::ChaseElement;
    static constexpr char noun[] = "chase";
    static constexpr VCTP3::ReportType group = VCTP3::ReportType::chaselist_change;
    static constexpr auto created = &VeskReports::chaselist_created;
    static constexpr auto changed = &VeskReports::chaselist_changed;
    static constexpr auto deleted = &VeskReports::chaselist_deleted;
    static constexpr auto element_reply = &VeskReplies::chase_element;
    static constexpr auto id_reply = &VeskReplies::chaseid;
};
using VeskChases = VeskSequences<VeskChaseKind>;
