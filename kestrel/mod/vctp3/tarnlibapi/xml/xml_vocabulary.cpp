// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_name.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_vocabulary_p.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <vector>

namespace {

/// Open addressing, at most half full. A slot is written once; readers need no lock.
struct Table
{
    explicit Table(std::size_t size)
        : slots(size)
    {
    }
    std::size_t place(XMLNameKey const &key, std::size_t step) const
    {
        return ((key.hash() >> 32) + step) & (slots.size() - 1);
    }
    XMLNameEntry const *find(XMLNameKey const &key, std::string_view name) const
    {
        for (std::size_t step = 0;; ++step) {
            XMLNameEntry const *entry = slots[place(key, step)].load(std::memory_order_acquire);
            if (!entry || (entry->key == key && (name.size() <= 16 || entry->bytes == name)))
                return entry;
        }
    }
    void insert(XMLNameEntry const *entry)
    {
        std::size_t step = 0;
        while (slots[place(entry->key, step)].load(std::memory_order_relaxed))
            ++step;
        slots[place(entry->key, step)].store(entry, std::memory_order_release);
        ++used;
    }

    std::vector<std::atomic<XMLNameEntry const *>> slots;
    std::size_t used = 0; // guarded by the vocabulary's mutex
};

/// Lives as long as the process: strings of parsed messages point into it at any time.
struct Vocabulary
{
    std::mutex mutex; // guards changes of the table; a leaf lock
    std::atomic<Table *> table{new Table(1024)};
    std::vector<Table *> outgrown; // guarded by mutex; a reader may still look there
    std::vector<XMLNameEntry const *> hidden; // guarded by mutex
};

Vocabulary &vocabulary()
{
    static Vocabulary *const only = new Vocabulary;
    return *only;
}

bool is_letter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

} // namespace

XMLNameEntry::XMLNameEntry(std::string_view name, std::uint32_t number)
    : length(static_cast<std::uint32_t>(name.size()))
    , hint(static_cast<std::uint16_t>(number))
    , bytes(name)
    , key(name)
    , text(AString::immortal(AString::from_latin1(name.data(), name.size())))
{
    std::string const closed = bytes + '>';
    std::size_t const compared = std::min<std::size_t>(closed.size(), 16);
    std::memcpy(begin, closed.data(), compared);
    std::memset(mask, 0xff, compared);
}

namespace XMLVocabulary {

bool is_name(std::string_view name)
{
    return !name.empty() && is_letter(name.front())
        && std::all_of(name.begin(), name.end(),
            [](char c) { return is_letter(c) || (c >= '0' && c <= '9') || c == '_'; });
}

XMLNameEntry const *find(std::string_view name)
{
    return vocabulary().table.load(std::memory_order_acquire)->find(XMLNameKey(name), name);
}

XMLNameEntry const *add(std::string_view name)
{
    Vocabulary &v = vocabulary();
    std::lock_guard const lock(v.mutex);
    Table *table = v.table.load(std::memory_order_relaxed);
    if (XMLNameEntry const *known = table->find(XMLNameKey(name), name))
        return known;
    if (table->used * 2 >= table->slots.size()) {
        Table *const larger = new Table(table->slots.size() * 2);
        for (auto const &slot : table->slots) {
            if (XMLNameEntry const *entry = slot.load(std::memory_order_relaxed))
                larger->insert(entry);
        }
        v.outgrown.push_back(table);
        v.table.store(larger, std::memory_order_release);
        table = larger;
    }
    XMLNameEntry const *const made
        = new XMLNameEntry(name, static_cast<std::uint32_t>(table->used + 1));
    table->insert(made);
    return made;
}

XMLNameEntry const *add_hidden(std::string_view name)
{
    Vocabulary &v = vocabulary();
    std::lock_guard const lock(v.mutex);
    return v.hidden.emplace_back(new XMLNameEntry(name, 0));
}

} // namespace XMLVocabulary

XMLName::XMLName(char const *text)
{
    std::string_view const name(text ? text : "");
    bool const fits = XMLVocabulary::is_name(name) && name.size() <= XMLVocabulary::longest_name;
    entry = A_ASSERT(fits) ? XMLVocabulary::add(name) : XMLVocabulary::add_hidden(name);
}

AString const &XMLName::text() const
{
    return entry->text;
}
