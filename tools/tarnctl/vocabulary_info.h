// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

#include <span>

class AString;
class XMLTree;
namespace VCTP3 {
class APIQt;
}

namespace TarnCtl {

class Answer;
class Parameters;
struct FieldInfo;

enum class TypeKind
{
    Text,
    UChar,
    UShort,
    UInt,
    UInt64,
    Int,
    Bool,
    Flag,
    Speed,
    Enum,
    Record,
    Set,
    Vector,
    List
};

/// What elements hold; the tables behind these are made from the protocol's vocabulary.
struct TypeInfo
{
    TypeKind kind;
    char const *name;
    /// Of an enumeration, in value order.
    std::span<char const *const> names;
    /// Of a record, in wire order.
    std::span<FieldInfo const> fields;
    /// Of a set, vector or list: what it holds, and how many at most (0 is any number).
    FieldInfo const *item;
    unsigned int capacity;
    /// Whether the library reads \a element as this type; the reason in *error if not.
    bool (*check)(XMLTree const &element, AString *error);

    /// Whether it is given as JSON.
    bool structured() const { return kind >= TypeKind::Record; }
};

/// An element where a record, a collection or a command uses it.
struct FieldInfo
{
    char const *element;
    TypeInfo const *type;
    bool optional;
};

struct CommandInfo
{
    char const *name;
    char const *family;
    /// In wire order, required ones first.
    std::span<FieldInfo const> parameters;
    /// Sends it with \a parameters, which were read for this command.
    void (*call)(Parameters const &parameters, VCTP3::APIQt &api, Answer *answer);
};

struct ReportInfo
{
    char const *name;
    /// What to register for it; empty for a report that needs no registration.
    char const *registration;
    /// Whether it is registered for channels.
    bool per_channel;
};

std::span<CommandInfo const> all_commands();
QStringList command_names();
std::span<ReportInfo const> all_reports();
/// The type of an enumeration, by its name; it must exist.
TypeInfo const &enumeration(char const *name);

/// Null for an unknown name.
CommandInfo const *find_command(QString const &name);
FieldInfo const *find_field(std::span<FieldInfo const> fields, QString const &element);

/// What is accepted as a value, for people: "a number from 0 to 255".
QString accepted(TypeInfo const &type);
/// Names with a "?" behind each optional one: "Channel, Speed?".
QString field_list(std::span<FieldInfo const> fields, QString const &separator);
/// The names of an enumeration.
QStringList names_of(TypeInfo const &type);
/// All that can be registered for by name: reports and their groups.
QStringList report_names();
/// Those of \a names that come nearest to what was typed, best first; at most 3.
QStringList similar_names(QString const &typed, QStringList const &names);
/// The error for a name that is none: what comes near, and the verb whose help lists them all.
QString unknown_name(
    char const *what, QString const &typed, QStringList const &names, char const *verb);
/// The command of that name. Null for an unknown one, the reason in *error.
CommandInfo const *known_command(QString const &name, QString *error);

} // namespace TarnCtl
