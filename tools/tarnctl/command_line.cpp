// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/command_line.h"

#include "tools/tarnctl/json_value.h"
#include "tools/tarnctl/verbs.h"
#include "tools/tarnctl/vocabulary_info.h"

#include <QHostAddress>

#include <algorithm>
#include <cmath>

namespace TarnCtl {
namespace {

constexpr OptionInfo globals[] = {
    {"server", "HOST", "name or address of the server; 127.0.0.1 if not given"},
    {"timeout", "SECONDS", "longest wait for connection and answer; 10 if not given"},
    {"json", nullptr, "one JSON object per line in place of text for people"},
    {"trace", nullptr, "every message both ways on standard error"},
    {"help", nullptr, "what this program or a verb does, with an example"},
    {"version", nullptr, "the version of this program"},
};

/// The most that is still told apart from for ever, in milliseconds within an int.
constexpr double most_seconds = 1e6;

OptionInfo const *find_option(std::span<OptionInfo const> options, QString const &name)
{
    for (OptionInfo const &option : options) {
        if (name == QLatin1String(option.name))
            return &option;
    }
    return nullptr;
}

/// A colon stands in an address of version 6 or announces a port, which nobody can choose.
bool check_server(QString const &server, QString *error)
{
    bool const has_port = server.contains(u':') && QHostAddress(server).isNull();
    if (!server.isEmpty() && !has_port)
        return true;
    *error
        = QStringLiteral("bad value '%1' for --server: expected a name or an address").arg(server)
        + QLatin1String(has_port ? " without a port, which is always 8913" : "");
    return false;
}

} // namespace

std::span<OptionInfo const> global_options()
{
    return globals;
}

QString CommandLine::value(char const *option, QString const &otherwise) const
{
    auto const found = options.find(QLatin1String(option));
    return found == options.end() ? otherwise : found->second;
}

bool CommandLine::read(QStringList const &arguments, QString *error)
{
    QStringList rest = arguments;
    bool options_ended = false;
    while (!rest.isEmpty()) {
        QString const word = rest.takeFirst();
        if (options_ended
            || !(word.startsWith(QLatin1String("--")) || word == QLatin1String("-h"))) {
            if (verb) {
                words << word;
                continue;
            }
            verb = find_verb(word);
            if (!verb) {
                *error = QStringLiteral("no verb '%1': expected one of %2")
                             .arg(word, verb_names().join(QStringLiteral(", ")));
                return false;
            }
        } else if (word.size() == 2 && word != QLatin1String("-h")) {
            options_ended = true;
        } else if (!read_option(word, &rest, error)) {
            return false;
        }
    }
    return true;
}

bool CommandLine::read_option(QString const &word, QStringList *rest, QString *error)
{
    qsizetype const equals = word.indexOf(u'=');
    QString const name
        = word == QLatin1String("-h") ? QStringLiteral("help") : word.mid(2, equals - 2);
    OptionInfo const *option = find_option(global_options(), name);
    if (!option && verb)
        option = find_option(verb->options, name);
    if (!option) {
        *error = verb
            ? QStringLiteral("no option --%1 of '%2'").arg(name, QLatin1String(verb->name))
            : QStringLiteral("no option --%1 before the verb").arg(name);
        return false;
    }
    QString value;
    if (!option->value && equals >= 0) {
        *error = QStringLiteral("--%1 takes no value").arg(name);
        return false;
    }
    if (option->value && equals < 0 && rest->isEmpty()) {
        *error = QStringLiteral("--%1 needs a value: %2").arg(name, QLatin1String(option->value));
        return false;
    }
    if (option->value)
        value = equals >= 0 ? word.mid(equals + 1) : rest->takeFirst();
    if (name == QLatin1String("help") && !has("help"))
        words_before_help = words.size();
    options[name] = value;
    return true;
}

bool Settings::read(CommandLine const &line, QString *error)
{
    server = line.value("server", QStringLiteral("127.0.0.1"));
    json = line.has("json");
    trace = line.has("trace");
    return check_server(server, error)
        && read_seconds("timeout", line.value("timeout", QStringLiteral("10")), &timeout_ms, error);
}

bool read_seconds(char const *option, QString const &text, int *ms, QString *error)
{
    bool is_number = false;
    double const seconds = text.toDouble(&is_number);
    if (!is_number || !(seconds > 0) || seconds > most_seconds) {
        *error = QStringLiteral("bad value '%1' for --%2: expected seconds above 0, at most %3")
                     .arg(text, QLatin1String(option), QString::number(most_seconds, 'f', 0));
        return false;
    }
    *ms = std::max(1, int(std::lround(seconds * 1000)));
    return true;
}

bool read_channels(QString const &text, QStringList *names, QString *error)
{
    QStringList const all = names_of(enumeration("Channel"));
    QStringList result;
    for (QString const &part : text.split(u',')) {
        qsizetype const first = all.indexOf(part.section(u'-', 0, 0));
        qsizetype const last = all.indexOf(part.section(u'-', -1));
        if (first < 0 || last < first || part.count(u'-') > 1) {
            *error = QStringLiteral("bad channels '%1': expected a list such as A-D,F of %2 to %3")
                         .arg(text, all.first(), all.last());
            return false;
        }
        for (qsizetype i = first; i <= last; ++i) {
            if (!result.contains(all[i]))
                result << all[i];
        }
    }
    *names = result;
    return true;
}

QString json_names(QStringList const &names)
{
    JsonValue array = JsonValue::array();
    for (QString const &name : names)
        array.append(JsonValue::text(name));
    return QString::fromUtf8(array.to_json());
}

} // namespace TarnCtl
