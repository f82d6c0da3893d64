// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/abyte_array.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/byte_order.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

constexpr unsigned long long smallest_block = 32;
constexpr unsigned long long page = 4096;
/// Longer arrays are a fault of the caller, not a wish for memory.
constexpr unsigned long long max_size = 1ull << 30;

unsigned long long block_size(unsigned long long request)
{
    unsigned long long size = smallest_block;
    while (size < request + 1)
        size *= 2;
    return size;
}

} // namespace

AByteArray::Byte const AByteArray::nul = 0;

AByteArray::DataStruct::DataStruct(unsigned long long request)
    : reserved_size(block_size(request))
{
    std::size_t allocated = reserved_size;
    if (reserved_size >= page)
        allocated += 2 * page;
    raw = static_cast<Byte *>(::operator new(allocated));
    void *begin = raw;
    if (reserved_size >= page)
        begin = std::align(page, reserved_size, begin, allocated);
    data = static_cast<Byte *>(begin);
    data[0] = 0;
}

AByteArray::DataStruct::~DataStruct()
{
    ::operator delete(raw);
}

void AByteArray::DataStruct::add(void const *source, unsigned long long n)
{
    // An empty source may be a null pointer, which memmove does not allow.
    if (n != 0)
        std::memmove(data + size, source, n);
    size += n;
    data[size] = 0;
}

AByteArray::DataStruct &AByteArray::room_for(unsigned long long n, ARef<DataStruct> *old)
{
    bool const fits = block && n < block->reserved_size;
    if (fits && block->count.unique())
        return *block;
    unsigned long long const kept = fits ? block->reserved_size - 1 : n;
    ARef<DataStruct> fresh
        = ARef<DataStruct>::adopt(new DataStruct(std::max(kept, smallest_block - 1)));
    fresh->add(const_data(), size());
    block.swap(fresh);
    if (old)
        old->swap(fresh);
    return *block;
}

void AByteArray::append_bytes(void const *source, unsigned long long n)
{
    if (!source || n == 0 || !A_ASSERT(n <= max_size - size()))
        return;
    // The source may lie in the block that is given up.
    ARef<DataStruct> old;
    room_for(size() + n, &old).add(source, n);
}

AByteArray AByteArray::fromLatin1(char const *text)
{
    return AByteArray(text, text ? std::strlen(text) : 0);
}

AByteArray AByteArray::toUtf8(AString const &text)
{
    std::string const bytes = text.to_string();
    return AByteArray(bytes.data(), bytes.size());
}

void AByteArray::append(Byte a, Byte b)
{
    Byte const bytes[] = {a, b};
    append_bytes(bytes, sizeof bytes);
}

void AByteArray::append(Byte a, Byte b, Byte c)
{
    Byte const bytes[] = {a, b, c};
    append_bytes(bytes, sizeof bytes);
}

void AByteArray::append(Byte a, Byte b, Byte c, Byte d)
{
    Byte const bytes[] = {a, b, c, d};
    append_bytes(bytes, sizeof bytes);
}

void AByteArray::append16(std::uint16_t value)
{
    std::uint16_t const ordered = toBE::s16(value);
    append_bytes(&ordered, sizeof ordered);
}

void AByteArray::append32(std::uint32_t value)
{
    std::uint32_t const ordered = toBE::s32(value);
    append_bytes(&ordered, sizeof ordered);
}

void AByteArray::append64(std::uint64_t value)
{
    std::uint64_t const ordered = toBE::s64(value);
    append_bytes(&ordered, sizeof ordered);
}

AByteArray::Byte &AByteArray::operator[](unsigned long long i)
{
    thread_local Byte scratch;
    if (!A_ASSERT(i < size())) {
        scratch = 0;
        return scratch;
    }
    return ref().data[i];
}

AByteArray::Byte AByteArray::operator[](unsigned long long i) const
{
    return A_ASSERT(i < size()) ? block->data[i] : Byte(0);
}

void AByteArray::reserve(unsigned long long n)
{
    if (A_ASSERT(n <= max_size))
        room_for(std::max(n, size()));
}

void AByteArray::resize(unsigned long long n, Byte fill)
{
    if (!A_ASSERT(n <= max_size))
        return;
    DataStruct &own = room_for(std::max(n, size()));
    if (n > own.size)
        std::memset(own.data + own.size, fill, n - own.size);
    own.size = n;
    own.data[n] = 0;
}

bool AByteArray::copy_from(void const *source, unsigned long long n, unsigned long long offset)
{
    if (offset >= size() || n > size() - offset)
        return false;
    if (n != 0)
        std::memmove(ref().data + offset, source, n);
    return true;
}

bool AByteArray::copy_to(void *target, unsigned long long n, unsigned long long offset) const
{
    if (offset >= size() || n > size() - offset)
        return false;
    if (n != 0)
        std::memmove(target, const_data() + offset, n);
    return true;
}

AByteArray AByteArray::mid(unsigned long long position, unsigned long long n) const
{
    if (position >= size())
        return {};
    unsigned long long const part = std::min(n, size() - position);
    return part == size() ? *this : AByteArray(const_data() + position, part);
}

long long AByteArray::find(Byte byte, long long from) const
{
    unsigned long long const begin = from > 0 ? static_cast<unsigned long long>(from) : 0;
    if (begin >= size())
        return -1;
    Byte const *base = const_data();
    void const *hit = std::memchr(base + begin, byte, size() - begin);
    return hit ? static_cast<Byte const *>(hit) - base : -1;
}

long long AByteArray::rfind(Byte byte, long long from) const
{
    long long i = std::min(from, static_cast<long long>(size()) - 1);
    while (i >= 0 && const_data()[i] != byte)
        --i;
    return std::max(i, -1ll);
}

bool AByteArray::has_prefix(AByteArray const &prefix) const
{
    return prefix.size() <= size()
        && std::memcmp(const_data(), prefix.const_data(), prefix.size()) == 0;
}

bool AByteArray::has_suffix(AByteArray const &suffix) const
{
    return suffix.size() <= size()
        && std::memcmp(const_data() + (size() - suffix.size()), suffix.const_data(), suffix.size())
        == 0;
}

void AByteArray::replace(Byte old_byte, Byte new_byte)
{
    if (find(old_byte) < 0)
        return;
    DataStruct &own = ref();
    std::replace(own.data, own.data + own.size, old_byte, new_byte);
}

int AByteArray::cmp(AByteArray const &other) const
{
    int const bytes = std::memcmp(const_data(), other.const_data(), std::min(size(), other.size()));
    if (bytes != 0)
        return bytes < 0 ? -1 : 1;
    return size() < other.size() ? -1 : size() > other.size() ? 1 : 0;
}
