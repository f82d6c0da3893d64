// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/parameters.h"

#include "tools/tarnctl/json_reader.h"

namespace TarnCtl {
namespace {

/// Builds the element of one parameter, and what is below it.
class ArgumentBuilder
{
public:
    /// \a path: the names from the parameter down to this field, for messages.
    bool build(FieldInfo const &field, JsonValue const &value, QString const &path, XMLTree *out)
    {
        TypeInfo const &type = *field.type;
        if (!type.structured())
            return leaf(field, value, path, out);
        bool const keyed = type.kind == TypeKind::Record;
        if (value.kind() != (keyed ? JsonValue::Kind::Object : JsonValue::Kind::Array))
            return bad(type, value, path);
        XMLTree element(AString::l1(field.element));
        if (!(keyed ? fields(type, value, path, &element) : items(type, value, path, &element)))
            return false;
        AString reason;
        if (!type.check(element, &reason)) {
            error
                = QStringLiteral("%1: %2; expected %3").arg(path, QString(reason), accepted(type));
            return false;
        }
        *out = element;
        return true;
    }

    QString error;

private:
    bool bad(TypeInfo const &type, JsonValue const &value, QString const &path)
    {
        QString const shown = value.kind() == JsonValue::Kind::Text
            ? value.scalar()
            : QString::fromUtf8(value.to_json());
        error
            = QStringLiteral("bad value '%1' for %2: expected %3").arg(shown, path, accepted(type));
        return false;
    }

    bool leaf(FieldInfo const &field, JsonValue const &value, QString const &path, XMLTree *out)
    {
        TypeInfo const &type = *field.type;
        QString text;
        if (!leaf_text(type, value, &text))
            return bad(type, value, path);
        XMLTree const element(AString::l1(field.element), AString(text));
        AString reason;
        if (!type.check(element, &reason))
            return bad(type, value, path);
        *out = element;
        return true;
    }

    /// The wire form, where \a value can have one. Booleans are stricter than on the wire, where
    /// every number is one: a typed 2 is more likely a mistake.
    static bool leaf_text(TypeInfo const &type, JsonValue const &value, QString *text)
    {
        bool const truth = type.kind == TypeKind::Bool || type.kind == TypeKind::Flag;
        if (truth && value.kind() == JsonValue::Kind::Boolean) {
            *text = value.truth() ? QStringLiteral("true") : QStringLiteral("false");
            return true;
        }
        *text = value.scalar();
        if (truth)
            return *text == QLatin1String("true") || *text == QLatin1String("false");
        if (value.kind() == JsonValue::Kind::Number)
            return type.kind != TypeKind::Text && type.kind != TypeKind::Enum;
        return value.kind() == JsonValue::Kind::Text;
    }

    bool fields(TypeInfo const &type, JsonValue const &value, QString const &path, XMLTree *out)
    {
        for (JsonValue::Member const &member : value.members()) {
            if (!find_field(type.fields, member.key)) {
                error = QStringLiteral("%1 has no element %2: it holds %3")
                            .arg(path, member.key, field_list(type.fields, QStringLiteral(", ")));
                return false;
            }
        }
        for (FieldInfo const &field : type.fields) {
            QString const below = path + u'.' + QLatin1String(field.element);
            JsonValue const *const given = value.find(QLatin1String(field.element));
            if (!given && !field.optional) {
                error = QStringLiteral("%1 is missing: expected %2")
                            .arg(below, accepted(*field.type));
                return false;
            }
            if (given && !add(field, *given, below, out))
                return false;
        }
        return true;
    }

    bool items(TypeInfo const &type, JsonValue const &value, QString const &path, XMLTree *out)
    {
        if (type.capacity && value.members().size() > type.capacity) {
            error = QStringLiteral("%1 has %2 items: expected %3")
                        .arg(path)
                        .arg(value.members().size())
                        .arg(accepted(type));
            return false;
        }
        int number = 0;
        for (JsonValue::Member const &member : value.members()) {
            QString const below = QStringLiteral("%1[%2]").arg(path).arg(number++);
            if (!add(*type.item, member.value, below, out))
                return false;
        }
        return true;
    }

    bool add(FieldInfo const &field, JsonValue const &value, QString const &path, XMLTree *out)
    {
        XMLTree child;
        if (!build(field, value, path, &child))
            return false;
        // Below the parameters the presence of a flag is its value.
        if (field.type->kind != TypeKind::Flag)
            out->add_subnode(child);
        else if (child.get_content().equal_z("true"))
            out->add_subnode(XMLTree(child.get_tag()));
        return true;
    }
};

} // namespace

bool read_argument(
    FieldInfo const &field, QString const &text, QString const &name, XMLTree *out, QString *error)
{
    JsonValue value = JsonValue::text(text);
    QString reason;
    if (field.type->structured() && !read_json(text, &value, &reason)) {
        *error = QStringLiteral("bad value for %1: %2; expected %3")
                     .arg(name, reason, accepted(*field.type));
        return false;
    }
    ArgumentBuilder builder;
    if (builder.build(field, value, name, out))
        return true;
    *error = builder.error;
    return false;
}

bool Parameters::read(CommandInfo const &command, QStringList const &arguments, QString *error)
{
    elements.clear();
    for (QString const &argument : arguments) {
        if (!add(command, argument, error))
            return false;
    }
    for (FieldInfo const &field : command.parameters) {
        if (!field.optional && !has(field.element)) {
            *error = QStringLiteral("%1 is missing: expected %2")
                         .arg(QLatin1String(field.element), accepted(*field.type));
            return false;
        }
    }
    return true;
}

bool Parameters::add(CommandInfo const &command, QString const &argument, QString *error)
{
    qsizetype const equals = argument.indexOf(u'=');
    QString const name = argument.left(equals);
    FieldInfo const *const field = find_field(command.parameters, name);
    if (equals < 0 || !field) {
        QString const takes = command.parameters.empty()
            ? QStringLiteral("no parameters")
            : field_list(command.parameters, QStringLiteral(", "));
        QString const what = equals < 0 ? QStringLiteral("'%1' is not of the form ELEMENT=VALUE")
                                        : QStringLiteral("no parameter is named '%1'");
        *error = what.arg(name) + QStringLiteral(": %1 takes ").arg(QLatin1String(command.name))
            + takes;
        return false;
    }
    if (has(field->element)) {
        *error = QStringLiteral("%1 is given twice: expected once, %2")
                     .arg(name, accepted(*field->type));
        return false;
    }
    XMLTree element;
    if (!read_argument(*field, argument.mid(equals + 1), &element, error))
        return false;
    elements.emplace(field->element, element);
    return true;
}

AOption<int> Parameters::option_speed(char const *element) const
{
    return get<int>(element, [](XMLTree const &tree, int *out, AString *error) {
        return VCTP3::read_speed(tree, tree.get_tag(), out, error);
    });
}

} // namespace TarnCtl
