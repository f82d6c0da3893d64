// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/json_value.h"

#include <utility>

namespace TarnCtl {

// Here, where a member is a complete type.
JsonValue::JsonValue() = default;
JsonValue::JsonValue(JsonValue const &other) = default;
JsonValue::JsonValue(JsonValue &&other) noexcept = default;
JsonValue &JsonValue::operator=(JsonValue const &other) = default;
JsonValue &JsonValue::operator=(JsonValue &&other) noexcept = default;
JsonValue::~JsonValue() = default;

JsonValue::JsonValue(Kind kind)
    : own_kind(kind)
{
}

JsonValue JsonValue::array()
{
    return JsonValue(Kind::Array);
}

JsonValue JsonValue::object()
{
    return JsonValue(Kind::Object);
}

JsonValue JsonValue::boolean(bool value)
{
    JsonValue result(Kind::Boolean);
    result.own_truth = value;
    return result;
}

JsonValue JsonValue::number(QString const &digits)
{
    JsonValue result(Kind::Number);
    result.own_scalar = digits;
    return result;
}

JsonValue JsonValue::text(QString const &value)
{
    JsonValue result(Kind::Text);
    result.own_scalar = value;
    return result;
}

JsonValue const *JsonValue::find(QString const &key) const
{
    for (Member const &member : own_members) {
        if (member.key == key)
            return &member.value;
    }
    return nullptr;
}

QString JsonValue::scalar_of(QString const &key) const
{
    JsonValue const *const found = find(key);
    return found ? found->scalar() : QString();
}

void JsonValue::append(JsonValue item)
{
    own_members.push_back({QString(), std::move(item)});
}

void JsonValue::add(QString const &key, JsonValue value)
{
    own_members.push_back({key, std::move(value)});
}

void JsonValue::add(char const *key, JsonValue value)
{
    add(QString::fromLatin1(key), std::move(value));
}

QByteArray JsonValue::to_json() const
{
    QString text;
    write(&text);
    return text.toUtf8();
}

void JsonValue::set(QString const &key, JsonValue value)
{
    for (Member &member : own_members) {
        if (member.key == key) {
            member.value = std::move(value);
            return;
        }
    }
    add(key, std::move(value));
}

QString JsonValue::quoted(QString const &text)
{
    QString inside = text;
    inside.replace(u'\\', QLatin1String("\\\\")).replace(u'"', QLatin1String("\\\""));
    return u'"' + visible(inside) + u'"';
}

void JsonValue::write(QString *out) const
{
    switch (own_kind) {
    case Kind::Null:
        *out += QLatin1String("null");
        return;
    case Kind::Boolean:
        *out += own_truth ? QLatin1String("true") : QLatin1String("false");
        return;
    case Kind::Number:
        *out += own_scalar;
        return;
    case Kind::Text:
        *out += quoted(own_scalar);
        return;
    case Kind::Array:
    case Kind::Object:
        break;
    }
    bool const keyed = own_kind == Kind::Object;
    *out += keyed ? u'{' : u'[';
    for (std::size_t i = 0; i < own_members.size(); ++i) {
        if (i > 0)
            *out += u',';
        if (keyed)
            *out += quoted(own_members[i].key) + u':';
        own_members[i].value.write(out);
    }
    *out += keyed ? u'}' : u']';
}

QString visible(QString const &text)
{
    QString out;
    for (QChar const c : text) {
        ushort const code = c.unicode();
        if (code == '\n')
            out += QLatin1String("\\n");
        else if (code == '\r')
            out += QLatin1String("\\r");
        else if (code == '\t')
            out += QLatin1String("\\t");
        else if (code < 32 || (code >= 127 && code < 160))
            out += QStringLiteral("\\u%1").arg(code, 4, 16, QLatin1Char('0'));
        else
            out += c;
    }
    return out;
}

} // namespace TarnCtl
