// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QLatin1String>
#include <QString>

#include <vector>

namespace TarnCtl {

/// A JSON value that a script sees exactly as it was made: keys keep their order, numbers their
/// digits.
class JsonValue
{
public:
    enum class Kind
    {
        Null,
        Boolean,
        Number,
        Text,
        Array,
        Object
    };
    struct Member;

    /// Null.
    JsonValue();
    JsonValue(JsonValue const &other);
    JsonValue(JsonValue &&other) noexcept;
    JsonValue &operator=(JsonValue const &other);
    JsonValue &operator=(JsonValue &&other) noexcept;
    ~JsonValue();
    static JsonValue boolean(bool value);
    /// \a digits must be a JSON number; it is written as it stands.
    static JsonValue number(QString const &digits);
    static JsonValue text(QString const &value);
    static JsonValue array();
    static JsonValue object();

    Kind kind() const { return own_kind; }
    /// False for whatever is no boolean.
    bool truth() const { return own_truth; }
    /// A text, or the digits of a number; empty for all else.
    QString const &scalar() const { return own_scalar; }
    /// The items of an array, without keys, or the members of an object.
    std::vector<Member> const &members() const { return own_members; }
    /// The first member of that key; null if there is none.
    JsonValue const *find(QString const &key) const;
    /// The scalar of the first member of that key; empty if there is none.
    QString scalar_of(QString const &key) const;

    void append(JsonValue item);
    /// Replaces the member of that key, or adds one.
    void set(QString const &key, JsonValue value);
    void add(QString const &key, JsonValue value);
    void add(char const *key, JsonValue value);

    /// As JSON in UTF-8, on one line.
    QByteArray to_json() const;
    /// A text as JSON writes it, quotes included; control characters as `visible` shows them.
    static QString quoted(QString const &text);

private:
    explicit JsonValue(Kind kind);
    void write(QString *out) const;

    Kind own_kind = Kind::Null;
    bool own_truth = false;
    QString own_scalar;
    std::vector<Member> own_members;
};

struct JsonValue::Member
{
    QString key;
    JsonValue value;
};

/// Control characters, those from 127 to 159 too, as the escapes of JSON: no text of a server may
/// steer a terminal or look like two lines.
QString visible(QString const &text);

} // namespace TarnCtl
