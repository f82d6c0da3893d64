// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_document_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_escape_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"

#include <QVarLengthArray>
#include <cstring>
#include <string_view>

namespace {

using Sink = AFunction2<char const *, unsigned long long>;

/// Gathers UTF-8 in a block and hands full blocks to the sink.
class ByteOutput
{
public:
    explicit ByteOutput(Sink const &to)
        : sink(to)
    {
    }

    void ascii(std::string_view text)
    {
        while (text.size() > sizeof block - used) {
            std::size_t const part = sizeof block - used;
            put(text.substr(0, part));
            text.remove_prefix(part);
            flush();
        }
        put(text);
    }
    void name(XMLTree const &tree)
    {
        XMLNode const *const node = XMLAccess::node(tree);
        if (node && node->named)
            ascii(node->name->bytes);
        else
            text(tree.get_tag());
    }
    void text(AString const &text)
    {
        each_character(text, [this](AChar c) { character(c); });
    }
    void escaped(AString const &text)
    {
        each_character(text, [this](AChar c) {
            std::string_view const entity = xml_entity_of(c.ord());
            if (entity.empty())
                character(c);
            else
                ascii(entity);
        });
    }
    void flush()
    {
        if (used != 0)
            sink(block, used);
        used = 0;
    }

private:
    template <typename Each> static void each_character(AString const &text, Each const &each)
    {
        AStringSegmentPosition place = text.get_first_position();
        AChar const *run = nullptr;
        while (unsigned long long const n = text.linear_access(place, &run)) {
            for (AChar const *c = run; c != run + n; ++c)
                each(*c);
            text.get_next_position(&place, n);
        }
    }
    void put(std::string_view text)
    {
        std::memcpy(block + used, text.data(), text.size());
        used += text.size();
    }
    void character(AChar c)
    {
        if (sizeof block - used < 4)
            flush();
        if (c.is_ascii()) {
            block[used++] = static_cast<char>(c.ord());
            return;
        }
        unsigned long long written = 0;
        if (c.to_utf8(block + used, sizeof block - used, &written))
            used += written;
    }

    Sink const &sink;
    std::size_t used = 0;
    char block[512];
};

/// Gathers strings.
class PieceOutput
{
public:
    void ascii(std::string_view text)
    {
        pieces.push_back(AString::from_latin1(text.data(), text.size()));
    }
    void name(XMLTree const &tree) { text(tree.get_tag()); }
    void text(AString const &text)
    {
        if (!text.empty())
            pieces.push_back(text);
    }
    /// Pushes the runs between the characters that have an entity as slices of \a text.
    void escaped(AString const &content)
    {
        unsigned long long done = 0;
        unsigned long long place = 0;
        for (AChar const c : content) {
            std::string_view const entity = xml_entity_of(c.ord());
            if (!entity.empty()) {
                text(content.mid(done, place - done));
                ascii(entity);
                done = place + 1;
            }
            ++place;
        }
        text(content.mid(done));
    }

    AStringList pieces;
};

/// Writes one element with all that is below it. Keeps its own stack of open elements, so that
/// the depth of a tree costs memory and no call stack.
template <typename Output> class Writer
{
public:
    Writer(Output &to, XMLTree::FlattenStyle with, bool empty_as_one_tag)
        : out(to)
        , style(with)
        , short_empty(empty_as_one_tag)
    {
    }

    void write(XMLTree const &tree)
    {
        open_element(tree);
        while (!open.isEmpty()) {
            Open &top = open.back();
            if (top.next == XMLChildren::const_iterator()) {
                line(open.size() - 1);
                close_tag(*top.tree);
                open.pop_back();
            } else {
                XMLTree const &child = *top.next;
                ++top.next;
                line(open.size());
                open_element(child);
            }
        }
    }

private:
    struct Open
    {
        XMLTree const *tree;
        XMLChildren::const_iterator next;
    };

    /// Writes a leaf whole; an element with children stays open.
    void open_element(XMLTree const &tree)
    {
        if (!A_ASSERT(!tree.is_null()))
            return;
        out.ascii("<");
        out.name(tree);
        for (auto const &[name, value] : tree.attr())
            attribute(name, value);
        XMLChildren const children = tree.children();
        if (children.begin() != children.end()) {
            out.ascii(">");
            open.append({&tree, children.begin()});
            return;
        }
        AString const content = tree.get_content();
        if (short_empty && content.empty()) {
            out.ascii(" />");
            return;
        }
        out.ascii(">");
        out.escaped(content);
        close_tag(tree);
    }
    void attribute(AString const &name, AString const &value)
    {
        out.ascii(" ");
        out.text(name);
        out.ascii("=\"");
        out.escaped(value);
        out.ascii("\"");
    }
    void close_tag(XMLTree const &tree)
    {
        out.ascii("</");
        out.name(tree);
        out.ascii(">");
    }
    void line(qsizetype level)
    {
        if (style == XMLTree::FlattenCompact)
            return;
        out.ascii("\r\n");
        if (style == XMLTree::FlattenIndented) {
            for (qsizetype i = 0; i < level; ++i)
                out.ascii("    ");
        }
    }

    Output &out;
    XMLTree::FlattenStyle const style;
    bool const short_empty;
    QVarLengthArray<Open, 16> open;
};

} // namespace

AString XMLTree::flatten(FlattenStyle style, bool short_empty) const
{
    return AString(flatten_base(style, short_empty));
}

AStringList XMLTree::flatten_base(FlattenStyle style, bool short_empty) const
{
    PieceOutput out;
    Writer(out, style, short_empty).write(*this);
    return out.pieces;
}

void XMLTree::send_utf8(Sink const &sink, FlattenStyle style, bool short_empty) const
{
    ByteOutput out(sink);
    Writer(out, style, short_empty).write(*this);
    out.flush();
}
