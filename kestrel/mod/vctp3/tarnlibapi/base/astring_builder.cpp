// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_builder_p.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/astring_blocks_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_p.h"

#include <cstring>
#include <new>

namespace {

/// More than this is never foreseen, so that the size of an allocation cannot overflow.
constexpr unsigned long long max_foreseen = 1ull << 40;
/// Room of a store whose text is not foreseen.
constexpr unsigned long long default_room = AStringChunk::max_text;

static_assert(sizeof(AStringInternalStorageStruct) % alignof(AStringChunk) == 0);
static_assert(sizeof(AStringChunk) % alignof(AChar) == 0);
static_assert(AStringChunk::stride() % alignof(AStringChunk) == 0);

char *block_of(AStringInternalStorageStruct *store)
{
    return reinterpret_cast<char *>(store + 1);
}

AStringChunk *make_chunk(void *memory, unsigned long long room)
{
    AStringChunk *chunk = new (memory) AStringChunk;
    chunk->room = static_cast<std::uint16_t>(room);
    return chunk;
}

/// Lets \a write fill the room for \a n code points, chunk by chunk: where, which of them comes
/// first, and how many.
template <typename Write>
void append_by_chunks(AStringBuilder *builder, unsigned long long n, Write const &write)
{
    for (unsigned long long first = 0; first < n;) {
        unsigned long long part = 0;
        AChar *to = builder->room(&part);
        part = std::min(part, n - first);
        write(to, first, part);
        builder->commit(part);
        first += part;
    }
}

} // namespace

void AStringInternalStorageStruct::destroy(AStringInternalStorageStruct *store) noexcept
{
    // Chunks of the store's own block go with it; those chained behind it are single.
    AStringChunk *chunk = store->even ? nullptr : store->first;
    while (chunk) {
        AStringChunk *next = chunk->next;
        if (chunk->single)
            ::operator delete(chunk);
        chunk = next;
    }
    store->~AStringInternalStorageStruct();
    ::operator delete(store);
}

AStringChunk const *AStringInternalStorageStruct::far_chunk_at(
    std::uint64_t position, std::uint32_t *index) const noexcept
{
    if (even) {
        *index = static_cast<std::uint32_t>(position % AStringChunk::max_text);
        return reinterpret_cast<AStringChunk const *>(reinterpret_cast<char const *>(first)
            + position / AStringChunk::max_text * AStringChunk::stride());
    }
    AStringChunk const *chunk = first;
    while (position >= chunk->used) {
        position -= chunk->used;
        chunk = chunk->next;
    }
    *index = static_cast<std::uint32_t>(position);
    return chunk;
}

void AStringBuilder::reserve(unsigned long long expected)
{
    if (!store)
        wanted = expected;
}

void AStringBuilder::make_store(unsigned long long room_for)
{
    if (room_for == 0 || room_for > max_foreseen)
        room_for = default_room;
    unsigned long long const full_chunks = (room_for - 1) / AStringChunk::max_text;
    unsigned long long const last_room = room_for - full_chunks * AStringChunk::max_text;
    std::size_t const bytes = sizeof(AString::Storage) + full_chunks * AStringChunk::stride()
        + sizeof(AStringChunk) + last_room * sizeof(AChar);
    store = new (::operator new(bytes)) AString::Storage;
    foreseen = room_for;
    unsigned long long const room = std::min<unsigned long long>(foreseen, AStringChunk::max_text);
    foreseen -= room;
    store->first = make_chunk(block_of(store), room);
    enter(store->first);
}

void AStringBuilder::grow()
{
    if (!store) {
        make_store(wanted);
        return;
    }
    settle();
    AStringChunk *chunk = nullptr;
    if (foreseen != 0) {
        unsigned long long const room
            = std::min<unsigned long long>(foreseen, AStringChunk::max_text);
        foreseen -= room;
        chunk = make_chunk(reinterpret_cast<char *>(store->last) + AStringChunk::stride(), room);
    } else {
        chunk = make_chunk(::operator new(AStringChunk::stride()), AStringChunk::max_text);
        chunk->single = true;
        store->even = 0;
    }
    store->last->next = chunk;
    enter(chunk);
}

void AStringBuilder::enter(AStringChunk *chunk)
{
    store->last = chunk;
    write = chunk->text();
    chunk_left = chunk->room;
}

void AStringBuilder::settle()
{
    AStringChunk *last = store->last;
    std::uint32_t const used = last->room - chunk_left;
    store->size += used - last->used;
    last->used = used;
}

unsigned long long AStringBuilder::size() const
{
    return store ? store->size + store->last->room - chunk_left - store->last->used : 0;
}

void AStringBuilder::append(AString const &s)
{
    if (AChar const *flat = flat_text(s)) {
        append(flat, s.length());
        return;
    }
    for (AStringRuns run(s); run.next();)
        append(run.text, run.size);
}

void AStringBuilder::append(AChar const *text, unsigned long long n)
{
    append_by_chunks(this, n, [text](AChar *to, unsigned long long first, unsigned long long part) {
        std::copy_n(text + first, part, to);
    });
}

void AStringBuilder::append_repeated(AChar c, unsigned long long n)
{
    append_by_chunks(this, n,
        [c](AChar *to, unsigned long long, unsigned long long part) { std::fill_n(to, part, c); });
}

void AStringBuilder::append_latin1(char const *text, unsigned long long n)
{
    append_by_chunks(this, n, [text](AChar *to, unsigned long long first, unsigned long long part) {
        AStringBlocks::widen_latin1(text + first, part, to);
    });
}

unsigned long long AStringBuilder::append_utf8(char const *text, unsigned long long n)
{
    unsigned long long done = 0;
    while (done < n) {
        unsigned long long part = 0;
        AChar *to = room(&part);
        part = AStringBlocks::widen_ascii(text + done, std::min(part, n - done), to);
        commit(part);
        done += part;
        if (part != 0)
            continue;
        AChar c;
        unsigned long long taken = 0;
        if (!AChar::consume_utf8(text + done, n - done, &c, &taken))
            break;
        put(c);
        done += taken;
    }
    return done;
}

void AStringBuilder::append_utf16(char16_t const *text, unsigned long long n)
{
    while (n != 0) {
        unsigned long long part = 0;
        AChar *to = room(&part);
        part = AStringBlocks::widen_utf16(text, std::min(part, n), to);
        commit(part);
        if (part == 0) {
            AChar c;
            if (!AChar::consume_utf16(text, n, &c, &part))
                break;
            put(c);
        }
        text += part;
        n -= part;
    }
}

AString::Storage *AStringBuilder::finish()
{
    if (!store)
        return nullptr;
    settle();
    write = nullptr;
    chunk_left = 0;
    foreseen = 0;
    AString::Storage *done = std::exchange(store, nullptr);
    if (done->size == 0) {
        AString::Storage::destroy(done);
        return nullptr;
    }
    done->sealed = 1;
    return done;
}

ARef<AString::Storage> AStringBuilder::take_storage()
{
    return ARef<AString::Storage>::adopt(finish());
}

AString AStringBuilder::take()
{
    AString text;
    if (AString::Storage *done = finish()) {
        text.length_ = done->size;
        text.storage = ARef<AString::Storage>::adopt(done);
    }
    return text;
}
