// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_parse_engine.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_boundary_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_reader_p.h"

#include <algorithm>
#include <cstring>
#include <vector>

struct XMLParseEngine::Private
{
    explicit Private(std::size_t of_size)
        : buffer(of_size + XMLReader::slack)
        , size(of_size)
    {
    }
    char const *held() const { return buffer.data() + first; }

    std::vector<char> buffer; // with slack behind its size
    std::size_t const size;
    std::size_t first = 0; // where the bytes held begin in the buffer
    std::size_t count = 0;
    bool error = false;
    unsigned long long last_message = 0;
    XMLBoundary boundary;
    XMLReader reader;
};

XMLParseEngine::XMLParseEngine(unsigned long long buffer_size)
    : d(std::make_unique<Private>(A_ASSERT(buffer_size != 0) ? buffer_size : 1024))
{
}

XMLParseEngine::~XMLParseEngine() = default;

void XMLParseEngine::config_tag(char const *tag)
{
    if (A_ASSERT(tag && !std::strpbrk(tag, "<>")))
        d->boundary.add_tag(tag);
}

unsigned long long XMLParseEngine::input_bytes(unsigned long long count, void const *data)
{
    if (d->error)
        return count;
    std::size_t const taken = std::min<std::size_t>(count, d->size - d->count);
    if (taken == 0)
        return 0;
    if (taken > d->size - d->first - d->count) {
        std::memmove(d->buffer.data(), d->held(), d->count);
        d->first = 0;
    }
    std::memcpy(d->buffer.data() + d->first + d->count, data, taken);
    d->count += taken;
    return taken;
}

unsigned long long XMLParseEngine::available_buffer_space() const
{
    return d->size - d->count;
}

XMLTree XMLParseEngine::get_xml()
{
    d->last_message = 0;
    if (d->error || !d->boundary.find(d->held(), d->count))
        return {};
    std::size_t const begin = d->boundary.begin();
    std::size_t const end = d->boundary.end();
    XMLTree tree = d->reader.read_utf8({d->held() + begin, end - begin});
    if (tree.is_null()) {
        d->error = true;
        return tree;
    }
    d->last_message = end - begin;
    d->count -= end;
    d->first = d->count == 0 ? 0 : d->first + end;
    d->boundary.restart();
    return tree;
}

bool XMLParseEngine::has_error() const
{
    return d->error;
}

unsigned long long XMLParseEngine::last_message_bytes() const
{
    return d->last_message;
}

void XMLParseEngine::reset()
{
    d->first = 0;
    d->count = 0;
    d->error = false;
    d->boundary.restart();
}

unsigned long long XMLParseEngine::examined_bytes() const
{
    return d->boundary.examined();
}
