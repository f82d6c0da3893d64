// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_metadata.h"

#include "sim/vesk/reports.h"

#include <vector>

namespace {

// A block stays below what the smallest receiver takes as one message, 32768 bytes, with room for
// the names around it; a value that is larger alone travels alone.
constexpr std::size_t max_items = 200;
constexpr std::size_t max_bytes = 24000;
constexpr std::size_t tag_bytes = 64;

/// Bytes that \a text takes in a message.
std::size_t wire_size(AString const &text)
{
    std::size_t size = 0;
    for (char c : text.to_string())
        size += c == '\'' || c == '"' ? 6 : c == '&' ? 5 : c == '<' || c == '>' ? 4 : 1;
    return size;
}

/// Gathers items and hands them on in blocks; what is left goes at the end of its life.
template <typename Item> class Blocks
{
public:
    explicit Blocks(std::function<void(std::list<Item> const &)> const &block)
        : handed(block)
    {
    }
    ~Blocks() { flush(); }
    Blocks(Blocks const &) = delete;
    Blocks &operator=(Blocks const &) = delete;

    void add(Item const &item, std::size_t bytes)
    {
        if (items.size() == max_items || (!items.empty() && size + bytes + tag_bytes > max_bytes))
            flush();
        items.push_back(item);
        size += bytes + tag_bytes;
    }

private:
    void flush()
    {
        if (!items.empty())
            handed(items);
        items.clear();
        size = 0;
    }

    std::function<void(std::list<Item> const &)> handed;
    std::list<Item> items;
    std::size_t size = 0;
};

VCTP3::Metadata pair(AString const &key, AString const &value)
{
    VCTP3::Metadata made;
    made.key = key;
    made.value = value;
    return made;
}

} // namespace

VeskMetadata::VeskMetadata(VeskReporter *reporter)
    : told(reporter)
{
}

void VeskMetadata::set(AString const &database, AString const &prefix, Pairs const &pairs)
{
    Database &kept = databases[database];
    for (VCTP3::Metadata const &item : pairs)
        kept[(prefix + item.key).deep_copy(32)] = item.value.deep_copy(32);

    for (auto const &watching : watches[database])
        for (AString const &watched : watching.second) {
            Blocks<VCTP3::Metadata> blocks([&](Pairs const &block) {
                told->report_to(
                    watching.first, VeskReports::metadata_change(database, watched, block));
            });
            for (VCTP3::Metadata const &item : pairs) {
                AString const key = prefix + item.key;
                if (key.has_prefix(watched))
                    blocks.add(pair(key.remove_front(watched.length()), item.value),
                        wire_size(key) + wire_size(item.value));
            }
        }
}

void VeskMetadata::erase(AString const &database, AString const &prefix, Keys const &keys)
{
    std::vector<AString> gone;
    Database &kept = databases[database];
    for (AString const &key : keys)
        if (kept.erase(prefix + key) != 0)
            gone.push_back(prefix + key);

    for (auto const &watching : watches[database])
        for (AString const &watched : watching.second) {
            Blocks<AString> blocks([&](Keys const &block) {
                told->report_to(
                    watching.first, VeskReports::metadata_remove(database, watched, block));
            });
            for (AString const &key : gone)
                if (key.has_prefix(watched))
                    blocks.add(key.remove_front(watched.length()), wire_size(key));
        }
}

void VeskMetadata::read(AString const &database, AString const &prefix,
    std::function<void(Pairs const &)> const &block) const
{
    auto found = databases.find(database);
    if (found == databases.end())
        return;
    Blocks<VCTP3::Metadata> blocks(block);
    Database const &kept = found->second;
    for (auto at = kept.lower_bound(prefix); at != kept.end() && at->first.has_prefix(prefix); ++at)
        blocks.add(pair(at->first.remove_front(prefix.length()), at->second),
            wire_size(at->first) + wire_size(at->second));
}

AOption<AString> VeskMetadata::value(AString const &database, AString const &key) const
{
    auto found = databases.find(database);
    if (found == databases.end())
        return {};
    auto pair_found = found->second.find(key);
    return pair_found == found->second.end() ? AOption<AString>()
                                             : AOption<AString>(pair_found->second);
}

void VeskMetadata::watch(AString const &database, AString const &prefix, quint64 connection)
{
    watches[database][connection].insert(prefix);
}

void VeskMetadata::unwatch(AString const &database, quint64 connection)
{
    watches[database].erase(connection);
}

void VeskMetadata::connection_ended(quint64 connection)
{
    for (auto &[database, watching] : watches)
        watching.erase(connection);
}
