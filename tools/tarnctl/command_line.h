// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

#include <map>
#include <span>

namespace TarnCtl {

struct OptionInfo
{
    char const *name;
    /// What its value is, for people; null for a switch.
    char const *value;
    char const *text;
};

struct VerbInfo;

/// What was typed. Options stand anywhere before a "--"; a verb's own ones behind the verb. A
/// word with one dash is no option but a word, so that a speed of -1X needs no "--".
struct CommandLine
{
    /// Null when none was typed.
    VerbInfo const *verb = nullptr;
    QStringList words;
    /// How many of the words stand in front of --help.
    qsizetype words_before_help = 0;

    bool has(char const *option) const { return options.count(QLatin1String(option)) > 0; }
    /// Its value; of one that was given twice the last. \a otherwise if it was not given.
    QString value(char const *option, QString const &otherwise = QString()) const;

    /// On failure: false, the reason in *error.
    bool read(QStringList const &arguments, QString *error);

private:
    bool read_option(QString const &name, QStringList *rest, QString *error);

    std::map<QString, QString> options;
};

std::span<OptionInfo const> global_options();

/// The global options, checked.
struct Settings
{
    QString server;
    int timeout_ms = 0;
    bool json = false;
    bool trace = false;

    bool read(CommandLine const &line, QString *error);
};

/// The value of an option in seconds: more than 0 and at most 1000000, with decimals. On failure:
/// false, *ms untouched, what would be accepted in *error.
bool read_seconds(char const *option, QString const &text, int *ms, QString *error);

/// Channels such as "A-D,F", in the order given, each once. On failure: false, what is wrong and
/// what would be accepted in *error.
bool read_channels(QString const &text, QStringList *names, QString *error);

/// Names as the JSON array that sets are given in.
QString json_names(QStringList const &names);

} // namespace TarnCtl
