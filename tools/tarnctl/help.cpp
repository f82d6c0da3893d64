// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/help.h"

#include "tools/tarnctl/text_form.h"
#include "tools/tarnctl/verbs.h"
#include "tools/tarnctl/vocabulary_info.h"

namespace TarnCtl {
namespace {

QString indented(QString const &lines)
{
    return QStringLiteral("  ")
        + QString(lines)
              .replace(u'\n', QLatin1String("\n  "))
              .replace(QLatin1String("\n  \n"), QLatin1String("\n\n"));
}

QString option_table(std::span<OptionInfo const> options)
{
    TextTable table;
    for (OptionInfo const &option : options) {
        QString form = QStringLiteral("--") + QLatin1String(option.name);
        if (option.value)
            form += u' ' + QLatin1String(option.value);
        table.add({form, QLatin1String(option.text)});
    }
    return indented(table.text());
}

QString command_table()
{
    QString text;
    QString family;
    for (CommandInfo const &command : all_commands()) {
        if (family != QLatin1String(command.family)) {
            family = QLatin1String(command.family);
            text += u'\n' + family + u'\n';
        }
        text += QStringLiteral("  %1 %2").arg(
            QLatin1String(command.name), field_list(command.parameters, QStringLiteral(" ")));
        while (text.endsWith(u' '))
            text.chop(1);
        text += u'\n';
    }
    return text;
}

QString parameter_table(CommandInfo const &command)
{
    if (command.parameters.empty())
        return QStringLiteral("  no parameters");
    TextTable table;
    for (FieldInfo const &field : command.parameters)
        table.add({QLatin1String(field.element) + QLatin1String(field.optional ? "?" : ""),
            accepted(*field.type)});
    return indented(table.text());
}

} // namespace

QString help_text()
{
    TextTable table;
    for (VerbInfo const &verb : all_verbs())
        table.add({QLatin1String(verb.name), QLatin1String(verb.summary)});
    return QStringLiteral("usage: tarnctl [OPTION ...] VERB [WORD ...]\n\n"
                          "Controls a Vesk replay and clip server from a terminal or a script.\n\n"
                          "Verbs:\n%1\n\nOptions, before or after the verb:\n%2\n\n"
                          "Exit codes: 0 done, 1 the server answered an error, 2 usage,\n"
                          "3 no connection, 4 timed out.")
        .arg(indented(table.text()), option_table(global_options()));
}

QString help_text(CommandLine const &line)
{
    VerbInfo const &verb = *line.verb;
    CommandInfo const *const command
        = verb.first_word == FirstWord::Command ? find_command(line.words.value(0)) : nullptr;
    if (command)
        return QStringLiteral("usage: tarnctl call %1 [ELEMENT=VALUE ...]\n\n"
                              "Elements; a question mark stands behind what may be left out:\n%2")
            .arg(QLatin1String(command->name), parameter_table(*command));
    QString text = usage_text(verb) + QLatin1String("\n\n") + QLatin1String(verb.summary);
    if (*verb.details)
        text += QLatin1String("\n\n") + QLatin1String(verb.details);
    if (!verb.options.empty())
        text += QLatin1String("\n\nOptions:\n") + option_table(verb.options);
    text += QLatin1String("\n\nExample:\n") + indented(QLatin1String(verb.example));
    if (verb.first_word == FirstWord::Command)
        text += QLatin1String("\n\nCommands, a question mark behind what may be left out:\n")
            + command_table().chopped(1);
    return text;
}

QString usage_text(VerbInfo const &verb)
{
    QStringList lines;
    for (QString const &form : QString(QLatin1String(verb.forms)).split(u'\n')) {
        QString const start = QLatin1String(lines.isEmpty() ? "usage: " : "       ");
        lines << start + QLatin1String("tarnctl ") + QLatin1String(verb.name)
                + (form.isEmpty() ? form : u' ' + form);
    }
    return lines.join(u'\n');
}

} // namespace TarnCtl
