// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/text_form.h"

#include <algorithm>

namespace TarnCtl {
namespace {

// The longest name of a report.
constexpr int name_column = 32;

bool is_scalar(JsonValue const &value)
{
    return value.kind() != JsonValue::Kind::Array && value.kind() != JsonValue::Kind::Object;
}

QString inline_members(std::vector<JsonValue::Member> const &members, std::size_t from)
{
    QStringList parts;
    for (std::size_t i = from; i < members.size(); ++i)
        parts << members[i].key + u'=' + value_text(members[i].value);
    return parts.join(u' ');
}

/// The members from \a from on, a line each; records go on below, items of arrays each on a line.
void add_lines(JsonValue const &object, std::size_t from, int indent, QStringList *lines)
{
    std::vector<JsonValue::Member> const &members = object.members();
    qsizetype width = 0;
    for (std::size_t i = from; i < members.size(); ++i)
        width = std::max(width, members[i].key.size());
    for (std::size_t i = from; i < members.size(); ++i) {
        JsonValue const &value = members[i].value;
        QString const margin(indent, u' ');
        if (value.kind() == JsonValue::Kind::Object) {
            *lines << margin + members[i].key;
            add_lines(value, 0, indent + 2, lines);
            continue;
        }
        QString const head = margin + members[i].key.leftJustified(width) + QLatin1String("  ");
        if (value.kind() != JsonValue::Kind::Array || value.members().empty()) {
            *lines << head + value_text(value);
            continue;
        }
        QString before = head;
        for (JsonValue::Member const &item : value.members()) {
            *lines << before + value_text(item.value);
            before = QString(head.size(), u' ');
        }
    }
}

} // namespace

QString value_text(JsonValue const &value)
{
    if (value.kind() == JsonValue::Kind::Null)
        return QStringLiteral("-");
    if (is_scalar(value))
        return plain_text(value);
    if (value.kind() == JsonValue::Kind::Object)
        return u'{' + inline_members(value.members(), 0) + u'}';
    QStringList items;
    for (JsonValue::Member const &item : value.members())
        items << value_text(item.value);
    return u'[' + items.join(u' ') + u']';
}

QString plain_text(JsonValue const &scalar)
{
    if (scalar.kind() == JsonValue::Kind::Boolean)
        return scalar.truth() ? QStringLiteral("true") : QStringLiteral("false");
    if (scalar.kind() != JsonValue::Kind::Text)
        return scalar.scalar();
    QString const &text = scalar.scalar();
    QString const quoted = JsonValue::quoted(text);
    bool const is_plain = quoted.size() == text.size() + 2 && !text.isEmpty()
        && std::none_of(text.begin(), text.end(),
            [](QChar c) { return c.isSpace() || QStringLiteral("=[]{}").contains(c); });
    return is_plain ? text : quoted;
}

QString message_line(JsonValue const &message)
{
    if (message.members().empty())
        return QString();
    QString const name = message.members()[0].value.scalar();
    QString const rest = inline_members(message.members(), 1);
    return rest.isEmpty() ? name : name.leftJustified(name_column) + rest;
}

QString message_block(JsonValue const &message)
{
    auto const &members = message.members();
    if (members.empty())
        return QString();
    bool const flat = std::all_of(members.begin(), members.end(),
        [](JsonValue::Member const &member) { return is_scalar(member.value); });
    QStringList lines{members[0].value.scalar()};
    if (flat) {
        lines << inline_members(members, 1);
        lines.removeAll(QString());
        return lines.join(QLatin1String("  "));
    }
    add_lines(message, 1, 2, &lines);
    return lines.join(u'\n');
}

QString TextTable::text() const
{
    std::vector<qsizetype> widths;
    for (QStringList const &row : rows) {
        widths.resize(std::max(widths.size(), std::size_t(row.size())));
        for (qsizetype i = 0; i < row.size(); ++i)
            widths[std::size_t(i)] = std::max(widths[std::size_t(i)], row[i].size());
    }
    QStringList lines;
    for (QStringList const &row : rows) {
        QString line;
        for (qsizetype i = 0; i < row.size(); ++i)
            line += row[i].leftJustified(widths[std::size_t(i)] + 2);
        while (line.endsWith(u' '))
            line.chop(1);
        lines << line;
    }
    return lines.join(u'\n');
}

} // namespace TarnCtl
