// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/help.h"

#include "tools/tarnctl/monitor_signals.h"
#include "tools/tarnctl/text_form.h"
#include "tools/tarnctl/usage.h"
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

/// The groups of one kind with the reports that each turns on; those of no group for a null.
QString group_table(TypeInfo const *groups, bool per_channel)
{
    TextTable table;
    for (QString const &group : groups ? names_of(*groups) : QStringList{QString()}) {
        QStringList reports;
        for (ReportInfo const &report : all_reports()) {
            if (group == QLatin1String(report.registration)
                && (group.isEmpty() || report.per_channel == per_channel))
                reports << QLatin1String(report.name);
        }
        table.add({group, reports.join(QStringLiteral(", "))});
    }
    return indented(table.text().trimmed());
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

QString command_list()
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
    return QLatin1String("Commands, a question mark behind what may be left out:\n")
        + text.chopped(1);
}

QString report_list()
{
    return QStringLiteral("Groups of the server and their reports:\n%1\n\n"
                          "Groups of channels and their reports:\n%2\n\n"
                          "Reports of no group:\n%3")
        .arg(group_table(&enumeration("ReportType"), false),
            group_table(&enumeration("ChannelReportType"), true), group_table(nullptr, false));
}

QString signal_list()
{
    TextTable table;
    for (ChannelSignal const &signal : channel_signals())
        table.add({QLatin1String(signal.name), QLatin1String(signal.text)});
    return QStringLiteral("Signals:\n") + indented(table.text());
}

QString help_text()
{
    TextTable table;
    for (VerbInfo const &verb : all_verbs())
        table.add({QLatin1String(verb.name), QLatin1String(verb.summary)});
    return usage_text(CommandLine())
        + QStringLiteral(
            "\n\nControls a Vesk replay and clip server from a terminal or a script.\n\n"
            "Verbs:\n%1\n\nOptions, before or after the verb:\n%2\n\n"
            "Exit codes: 0 done, 1 the server answered an error, 2 usage,\n"
            "3 no connection, 4 timed out, 5 the output could not be written.")
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
    QString text = usage_text(line) + QLatin1String("\n\n") + QLatin1String(verb.summary);
    if (*verb.details)
        text += QLatin1String("\n\n") + QLatin1String(verb.details);
    if (!verb.options.empty())
        text += QLatin1String("\n\nOptions:\n") + option_table(verb.options);
    text += QLatin1String("\n\nOptions of every verb:\n") + option_table(global_options());
    text += QLatin1String("\n\nExample:\n") + indented(QLatin1String(verb.example));
    if (verb.list)
        text += QLatin1String("\n\n") + verb.list();
    return text;
}

} // namespace TarnCtl
