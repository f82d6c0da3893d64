// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/vocabulary_info.h"

#include <algorithm>
#include <limits>
#include <map>
#include <numeric>
#include <utility>
#include <vector>

namespace TarnCtl {
namespace {

template <typename Number> QString number_range()
{
    return QStringLiteral("a number from %1 to %2")
        .arg(std::numeric_limits<Number>::min())
        .arg(std::numeric_limits<Number>::max());
}

QString collection_form(TypeInfo const &type)
{
    QString const limit
        = type.capacity ? QStringLiteral("at most %1 ").arg(type.capacity) : QString();
    return QStringLiteral("a JSON array of %1%2, each %3")
        .arg(limit, QLatin1String(type.item->element), accepted(*type.item->type));
}

/// How many characters must be put in, taken out or replaced to come from one to the other.
int edit_distance(QString const &a, QString const &b)
{
    std::vector<int> row(std::size_t(b.size()) + 1);
    std::iota(row.begin(), row.end(), 0);
    for (qsizetype i = 0; i < a.size(); ++i) {
        int diagonal = std::exchange(row[0], int(i) + 1);
        for (std::size_t j = 1; j < row.size(); ++j) {
            int const replaced = diagonal + (a[i] == b[qsizetype(j) - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

} // namespace

CommandInfo const *find_command(QString const &name)
{
    for (CommandInfo const &command : all_commands()) {
        if (name == QLatin1String(command.name))
            return &command;
    }
    return nullptr;
}

FieldInfo const *find_field(std::span<FieldInfo const> fields, QString const &element)
{
    for (FieldInfo const &field : fields) {
        if (element == QLatin1String(field.element))
            return &field;
    }
    return nullptr;
}

QString accepted(TypeInfo const &type)
{
    switch (type.kind) {
    case TypeKind::Text:
        return QStringLiteral("a text");
    case TypeKind::UChar:
        return number_range<unsigned char>();
    case TypeKind::UShort:
        return number_range<unsigned short>();
    case TypeKind::UInt:
        return number_range<unsigned int>();
    case TypeKind::UInt64:
        return number_range<unsigned long long>();
    case TypeKind::Int:
        return number_range<int>();
    case TypeKind::Bool:
    case TypeKind::Flag:
        return QStringLiteral("true or false");
    case TypeKind::Speed:
        return QStringLiteral("a speed such as 1X or -0.5X");
    case TypeKind::Enum:
        return QStringLiteral("one of ") + names_of(type).join(QStringLiteral(", "));
    case TypeKind::Record:
        return QStringLiteral("a JSON object of ") + field_list(type.fields, QStringLiteral(", "));
    case TypeKind::Set:
    case TypeKind::Vector:
    case TypeKind::List:
        break;
    }
    return collection_form(type);
}

QString field_list(std::span<FieldInfo const> fields, QString const &separator)
{
    QStringList list;
    for (FieldInfo const &field : fields)
        list << QLatin1String(field.element) + QLatin1String(field.optional ? "?" : "");
    return list.join(separator);
}

QStringList names_of(TypeInfo const &type)
{
    QStringList list;
    for (char const *name : type.names)
        list << QLatin1String(name);
    return list;
}

QStringList command_names()
{
    QStringList list;
    for (CommandInfo const &command : all_commands())
        list << QLatin1String(command.name);
    return list;
}

QStringList report_names()
{
    QStringList list = names_of(enumeration("ReportType"));
    list += names_of(enumeration("ChannelReportType"));
    for (ReportInfo const &report : all_reports())
        list << QLatin1String(report.name);
    list.removeDuplicates();
    return list;
}

QString unknown_name(
    char const *what, QString const &typed, QStringList const &names, char const *verb)
{
    QStringList const similar = similar_names(typed, names);
    QString const near = similar.isEmpty()
        ? QString()
        : QStringLiteral("like %1; ").arg(similar.join(QStringLiteral(", ")));
    return QStringLiteral("no %1 '%2': %3'tarnctl %4 --help' lists them")
        .arg(QLatin1String(what), typed, near, QLatin1String(verb));
}

CommandInfo const *known_command(QString const &name, QString *error)
{
    CommandInfo const *const command = find_command(name);
    if (!command)
        *error = unknown_name("command", name, command_names(), "call");
    return command;
}

QStringList similar_names(QString const &typed, QStringList const &names)
{
    std::multimap<int, QString> by_distance;
    for (QString const &name : names) {
        int const distance = edit_distance(typed, name);
        if (distance <= 3 || (typed.size() > 2 && name.contains(typed)))
            by_distance.emplace(distance, name);
    }
    QStringList nearest;
    for (auto const &[distance, name] : by_distance)
        nearest << name;
    return nearest.mid(0, 3);
}

} // namespace TarnCtl
