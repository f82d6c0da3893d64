// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/json_reader.h"

#include <QRegularExpression>
#include <algorithm>

namespace TarnCtl {
namespace {

constexpr int deepest = 32;

class JsonText
{
public:
    explicit JsonText(QString const &given)
        : text(given)
    {
    }

    bool read(JsonValue *out)
    {
        if (!value(out, 0))
            return false;
        skip_space();
        return place == text.size() || fail("nothing more");
    }

    QString error() const { return reason; }

private:
    bool fail(char const *expected)
    {
        reason = QStringLiteral("no JSON: expected %1 at character %2")
                     .arg(QLatin1String(expected))
                     .arg(place + 1);
        return false;
    }

    void skip_space()
    {
        while (place < text.size() && QStringLiteral(" \t\r\n").contains(text[place]))
            ++place;
    }

    /// Takes that character behind any space.
    bool take(char16_t wanted)
    {
        skip_space();
        if (place >= text.size() || text[place] != QChar(wanted))
            return false;
        ++place;
        return true;
    }

    bool take_word(char const *word)
    {
        QLatin1String const wanted(word);
        if (!QStringView(text).mid(place).startsWith(wanted))
            return false;
        place += wanted.size();
        return true;
    }

    bool value(JsonValue *out, int depth)
    {
        if (depth == deepest)
            return fail("fewer levels");
        if (take(u'{'))
            return object(out, depth);
        if (take(u'['))
            return array(out, depth);
        if (take(u'"')) {
            QString content;
            if (!string_rest(&content))
                return false;
            *out = JsonValue::text(content);
            return true;
        }
        return word_or_number(out);
    }

    bool word_or_number(JsonValue *out)
    {
        if (take_word("true"))
            *out = JsonValue::boolean(true);
        else if (take_word("false"))
            *out = JsonValue::boolean(false);
        else if (take_word("null"))
            *out = JsonValue();
        else
            return number(out);
        return true;
    }

    bool number(JsonValue *out)
    {
        static QRegularExpression const form(
            QStringLiteral("-?(0|[1-9][0-9]*)([.][0-9]+)?([eE][-+]?[0-9]+)?"));
        auto const match = form.match(text, place, QRegularExpression::NormalMatch,
            QRegularExpression::AnchorAtOffsetMatchOption);
        if (!match.hasMatch())
            return fail("a value (texts stand in double quotes)");
        place += match.capturedLength();
        *out = JsonValue::number(match.captured());
        return true;
    }

    bool object(JsonValue *out, int depth)
    {
        JsonValue result = JsonValue::object();
        if (!take(u'}')) {
            do {
                if (!member(&result, depth))
                    return false;
            } while (take(u','));
            if (!take(u'}'))
                return fail("',' or '}'");
        }
        *out = result;
        return true;
    }

    bool member(JsonValue *object, int depth)
    {
        QString key;
        if (!take(u'"'))
            return fail("a name in double quotes");
        if (!string_rest(&key))
            return false;
        if (object->find(key))
            return fail("each name once");
        JsonValue content;
        if (!take(u':'))
            return fail("':'");
        if (!value(&content, depth + 1))
            return false;
        object->add(key, content);
        return true;
    }

    bool array(JsonValue *out, int depth)
    {
        JsonValue result = JsonValue::array();
        if (!take(u']')) {
            do {
                JsonValue item;
                if (!value(&item, depth + 1))
                    return false;
                result.append(item);
            } while (take(u','));
            if (!take(u']'))
                return fail("',' or ']'");
        }
        *out = result;
        return true;
    }

    /// A string, from behind its opening quote.
    bool string_rest(QString *out)
    {
        for (; place < text.size(); ++place) {
            QChar const c = text[place];
            if (c == u'"') {
                ++place;
                return true;
            }
            if (c < u' ')
                return fail("no control character");
            if (c != u'\\')
                *out += c;
            else if (!escape(out))
                return false;
        }
        return fail("'\"'");
    }

    /// What a backslash begins; leaves the place at its last character.
    bool escape(QString *out)
    {
        static QString const letters = QStringLiteral("\"\\/bfnrt");
        static QString const meanings = QStringLiteral("\"\\/\b\f\n\r\t");
        ++place;
        if (place < text.size() && text[place] == u'u')
            return code_point(out);
        qsizetype const which = place < text.size() ? letters.indexOf(text[place]) : -1;
        if (which < 0)
            return fail("one of \"\\/bfnrtu behind the backslash");
        *out += meanings[which];
        return true;
    }

    /// A code point in one or two units; leaves the place at its last digit.
    bool code_point(QString *out)
    {
        QChar first;
        if (!unit(&first))
            return false;
        if (first.isNull() || first.isLowSurrogate())
            return fail("a character that a message can hold");
        *out += first;
        if (!first.isHighSurrogate())
            return true;
        QChar second;
        if (QStringView(text).mid(place + 1, 2) != u"\\u")
            return fail("the second half of a surrogate pair");
        place += 2;
        if (!unit(&second))
            return false;
        if (!second.isLowSurrogate())
            return fail("the second half of a surrogate pair");
        *out += second;
        return true;
    }

    /// Four digits, from the "u" in front of them.
    bool unit(QChar *out)
    {
        static QString const hexadecimal = QStringLiteral("0123456789abcdefABCDEF");
        QStringView const digits = QStringView(text).mid(place + 1, 4);
        bool const good = std::all_of(
            digits.begin(), digits.end(), [](QChar digit) { return hexadecimal.contains(digit); });
        if (!good || digits.size() != 4)
            return fail("four hexadecimal digits");
        place += 4;
        *out = QChar(digits.toUShort(nullptr, 16));
        return true;
    }

    QString const text;
    qsizetype place = 0;
    QString reason;
};

} // namespace

bool read_json(QString const &text, JsonValue *out, QString *error)
{
    JsonText reader(text);
    JsonValue value;
    if (!reader.read(&value)) {
        *error = reader.error();
        return false;
    }
    *out = value;
    return true;
}

} // namespace TarnCtl
