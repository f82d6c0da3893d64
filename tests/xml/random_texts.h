// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/xml/xml_texts.h"

#include <QByteArray>
#include <random>

/// Makes texts that look like messages, whole or spoilt, the same ones for the same seed.
class RandomTexts
{
public:
    explicit RandomTexts(unsigned int seed)
        : random(seed)
    {
    }

    unsigned int below(unsigned int n) { return static_cast<unsigned int>(random() % n); }
    template <std::size_t N> char const *one_of(char const *const (&items)[N])
    {
        return items[below(N)];
    }

    QByteArray space()
    {
        static char const *const spaces[] = {"", "", "", " ", "\r\n", "\t", "\v", "\f", "  ",
            "\xC4\x80", "\xE6\xB1\xBA", "\xF0\x9F\x98\x80", "\b", "\xC2\xA0"};
        return one_of(spaces);
    }
    QByteArray name()
    {
        static char const *const names[] = {"a", "b", "reply", "LongerNameThan16Characters", "a_1",
            "Z9", "abcdefgh", "abcd", "1a", "_a", "a-b", "\xC3\xA9", "a"};
        return one_of(names);
    }
    QByteArray attribute()
    {
        static char const *const attributes[]
            = {"b=c", "b=\"c\"", "b=", "=c", "=", "b=\"c", "b=c\"", "b=\"", "b=\"\"", "b", "b=c=d",
                "b=\"c d\"", "\xE6\xB1\xBA=1", "b=<", "b=&lt;", "b=/", "b=c/"};
        return one_of(attributes);
    }
    QByteArray text()
    {
        static char const *const texts[] = {"", "", "x", "plain text", "&lt;", "&amp;lt;", "&",
            "&bogus;", "&apos;&quot;&gt;", "\xC3\xA9t\xC3\xA9", "\xE6\xB1\xBA\xE5\x8B\x9D", ">",
            "&#60;", "0123456789012345678901234567890123456789", "=", "/", "\"", "&am", "\r\n x"};
        return one_of(texts);
    }
    QByteArray bad()
    {
        static char const *const bytes[] = {"\xFF", "\xC0\xBC", "\xE0\x80\xBC", "\xE0\x80\xBE",
            "\xF0\x80\x80\xBC", "\xE6\xB1", "\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "<", ">",
            "</", "/>", "<>", "< >", "</>", "<a", "a>", "<?xml?>", "<!-- -->", "<![CDATA[x]]>"};
        return below(20) == 0 ? QByteArray(1, '\0') : QByteArray(one_of(bytes));
    }
    QByteArray element(unsigned int depth)
    {
        QByteArray const tag = below(4) == 0 ? name() : QByteArray(below(2) ? "a" : "Key");
        QByteArray head = "<" + noise() + tag;
        for (unsigned int i = below(6) == 0 ? below(3) : 0; i != 0; --i)
            head += " " + noise() + attribute();
        if (below(5) == 0)
            return head + (below(2) ? " " : "") + noise() + "/" + noise() + ">";
        QByteArray body;
        if (depth == 0 || below(2) == 0) {
            body = text();
        } else {
            for (unsigned int i = below(4); i != 0; --i)
                body += (below(3) ? QByteArray("\r\n") : noise()) + element(depth - 1);
            body += below(30) == 0 ? text() : noise();
        }
        QByteArray const closing = below(50) == 0 ? name() : tag;
        return head + noise() + ">" + body + "</" + noise() + closing
            + (below(40) == 0 ? " " + attribute() : "") + noise() + ">";
    }
    /// Mostly nothing.
    QByteArray noise() { return below(12) == 0 ? space() : QByteArray(); }

    QByteArray message()
    {
        QByteArray made = noise() + element(below(5)) + noise();
        if (below(40) == 0)
            made += element(1);
        for (unsigned int i = below(3) == 0 ? 1 + below(2) : 0; i != 0; --i)
            spoil(made);
        return made;
    }
    void spoil(QByteArray &made)
    {
        qsizetype const place = below(static_cast<unsigned int>(made.size()) + 1);
        switch (below(4)) {
        case 0:
            made.insert(place, bad());
            break;
        case 1:
            made.remove(place, 1 + below(3));
            break;
        case 2:
            made.insert(place, space());
            break;
        default:
            made.insert(place, text());
        }
    }
    QByteArray garbage()
    {
        QByteArray made;
        for (unsigned int i = below(12); i != 0; --i) {
            switch (below(6)) {
            case 0:
                made += bad();
                break;
            case 1:
                made += space();
                break;
            case 2:
                made += text();
                break;
            case 3:
                made += "<" + name() + ">";
                break;
            case 4:
                made += "</" + name() + ">";
                break;
            default:
                made += "<" + name() + " " + attribute() + "/>";
            }
        }
        return made;
    }
    XMLTree tree(unsigned int depth)
    {
        static char const *const tags[] = {"a", "Key", "Value", "reply", "A_9"};
        AString const tag = l1(one_of(tags));
        XMLTree made(tag);
        if (depth == 0 || below(3) == 0)
            made.set_content(AString::from_utf8((text() + text()).constData()));
        else
            for (unsigned int i = below(5); i != 0; --i)
                made.add_subnode(tree(depth - 1));
        for (unsigned int i = below(8) == 0 ? below(3) : 0; i != 0; --i)
            made.attr()[l1(one_of(tags))] = l1(one_of(tags));
        return made;
    }

private:
    std::mt19937 random;
};
