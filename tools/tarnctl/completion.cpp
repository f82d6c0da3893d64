// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/help.h"
#include "tools/tarnctl/monitor_signals.h"
#include "tools/tarnctl/usage.h"
#include "tools/tarnctl/verbs.h"
#include "tools/tarnctl/vocabulary_info.h"

#include <algorithm>

namespace TarnCtl {
namespace {

QString start_of(OptionInfo const &option)
{
    return QStringLiteral("--") + QLatin1String(option.name)
        + QLatin1String(option.value ? "=" : "");
}

/// What may begin with a dash behind what was typed.
QStringList for_option(CommandLine const &line)
{
    QStringList list;
    for (OptionInfo const &option : global_options())
        list << start_of(option);
    for (OptionInfo const &option :
        line.verb ? line.verb->options : std::span<OptionInfo const>()) {
        if (takes_option(line, option))
            list << start_of(option);
    }
    return list;
}

/// "Layer=normal" and so on, for values that have names; nothing for others.
QStringList named_values(FieldInfo const &field)
{
    QStringList values = names_of(*field.type);
    if (field.type->kind == TypeKind::Bool || field.type->kind == TypeKind::Flag)
        values = QStringList{QStringLiteral("true"), QStringLiteral("false")};
    for (QString &value : values)
        value.prepend(QLatin1String(field.element) + u'=');
    return values;
}

QStringList for_command(CommandInfo const &command, QStringList const &given, QString const &last)
{
    QString const element = last.section(u'=', 0, 0);
    if (last.contains(u'=')) {
        FieldInfo const *const field = find_field(command.parameters, element);
        return field ? named_values(*field) : QStringList();
    }
    QStringList list;
    for (FieldInfo const &field : command.parameters) {
        QString const start = QLatin1String(field.element) + u'=';
        bool const is_given = std::any_of(given.begin(), given.end(),
            [&start](QString const &word) { return word.startsWith(start); });
        if (!is_given)
            list << start;
    }
    return list;
}

QStringList for_verb(CommandLine const &line, QString const &last);

/// What help may be wanted on, behind a verb.
QStringList for_topic(QStringList const &words, QString const &last)
{
    CommandLine about;
    QString error;
    if (words.size() > 1 || !about.read(words, &error) || !about.verb
        || about.verb->first_word == FirstWord::Channel)
        return {};
    return for_verb(about, last);
}

/// What may stand behind a verb and the words that it has already.
QStringList for_verb(CommandLine const &line, QString const &last)
{
    bool const first = line.words.isEmpty();
    switch (line.verb->first_word) {
    case FirstWord::Command:
        if (first)
            return command_names();
        if (CommandInfo const *const command = find_command(line.words.first()))
            return for_command(*command, line.words.mid(1), last);
        return {};
    case FirstWord::Channel:
        return first ? names_of(enumeration("Channel")) : QStringList();
    case FirstWord::SubVerb:
        return first ? sub_verbs(*line.verb) : QStringList();
    case FirstWord::VerbName:
        return first ? verb_names() : for_topic(line.words, last);
    case FirstWord::None:
        break;
    }
    return {};
}

/// --OPTION=NAME,... one name at a time, behind those that stand there.
QStringList next_names(QString const &last, QStringList const &names)
{
    QString const before = last.left(std::max(last.lastIndexOf(u','), last.indexOf(u'=')) + 1);
    QStringList list;
    for (QString const &name : names)
        list << before + name;
    return list;
}

} // namespace

QStringList completions(QStringList const &words)
{
    QString const last = words.isEmpty() ? QString() : words.last();
    CommandLine line;
    QString error;
    if (!line.read(words.mid(0, words.size() - 1), &error))
        return {};
    QStringList list;
    if (last.startsWith(QLatin1String("--reports=")) && line.verb)
        list = next_names(last, report_names());
    else if (last.startsWith(QLatin1String("--signals=")) && line.verb)
        list = next_names(last, signal_names());
    else if (last.startsWith(u'-'))
        list = for_option(line);
    else
        list = line.verb ? for_verb(line, last) : verb_names();
    list.removeIf([&last](QString const &word) { return !word.startsWith(last); });
    return list;
}

} // namespace TarnCtl
