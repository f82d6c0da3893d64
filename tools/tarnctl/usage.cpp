// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/usage.h"

#include "tools/tarnctl/verbs.h"
#include "tools/tarnctl/vocabulary_info.h"

#include <algorithm>
#include <limits>

namespace TarnCtl {
namespace {

/// One line of a verb's forms, taken apart.
class Form
{
public:
    explicit Form(QString const &form)
        : text(form)
    {
        QString const words = form.left(form.indexOf(QLatin1String("[--")));
        for (QString const &word : words.split(u' ', Qt::SkipEmptyParts)) {
            if (word.startsWith(QLatin1String("...")))
                most = std::numeric_limits<qsizetype>::max();
            else
                add(word);
        }
    }

    bool has_option(char const *name) const
    {
        QString const option = QLatin1String("[--") + QLatin1String(name);
        return text.contains(option + u' ') || text.contains(option + u']');
    }

    bool check_words(QStringList const &words, QString *error) const
    {
        if (words.size() < required.size())
            *error = QStringLiteral("%1 is missing").arg(required[words.size()]);
        else if (words.size() > most)
            *error = QStringLiteral("'%1' is too much").arg(words[most]);
        return words.size() >= required.size() && words.size() <= most;
    }

private:
    void add(QString const &word)
    {
        if (!word.startsWith(u'['))
            required << word;
        if (most < std::numeric_limits<qsizetype>::max())
            ++most;
    }

    QString const text;
    QStringList required;
    qsizetype most = 0;
};

QStringList forms(VerbInfo const &verb)
{
    return QString(QLatin1String(verb.forms)).split(u'\n');
}

/// Whether \a line names one of its verb's sub-verbs; the known ones in *error if not.
bool check_sub_verb(CommandLine const &line, QString *error)
{
    QString const verb = QLatin1String(line.verb->name);
    QStringList const known = sub_verbs(*line.verb);
    if (known.contains(line.words.value(0)))
        return true;
    QString const one_of = QStringLiteral("one of %1").arg(known.join(QStringLiteral(", ")));
    *error = line.words.isEmpty()
        ? QStringLiteral("%1 is missing behind '%2'").arg(one_of, verb)
        : QStringLiteral("no '%1 %2': expected %3").arg(verb, line.words[0], one_of);
    return false;
}

/// The form that is meant; the only one of a verb without sub-verbs.
Form meant_form(CommandLine const &line)
{
    QStringList const all = forms(*line.verb);
    auto const found = std::find_if(all.begin(), all.end(),
        [&line](QString const &form) { return form.section(u' ', 0, 0) == line.words.value(0); });
    return Form(
        line.verb->first_word == FirstWord::SubVerb && found != all.end() ? *found : all.first());
}

/// The words that help may be wanted on, behind the verb.
qsizetype topic_words(VerbInfo const &verb)
{
    bool const has_topics
        = verb.first_word == FirstWord::Command || verb.first_word == FirstWord::SubVerb;
    return has_topics ? 1 : 0;
}

} // namespace

QString usage_text(CommandLine const &line)
{
    if (!line.verb)
        return QStringLiteral("usage: tarnctl [OPTION ...] VERB [WORD ...]");
    QStringList lines;
    for (QString const &form : forms(*line.verb)) {
        QString const start = QLatin1String(lines.isEmpty() ? "usage: " : "       ");
        lines << start + QLatin1String("tarnctl ") + QLatin1String(line.verb->name)
                + (form.isEmpty() ? form : u' ' + form);
    }
    return lines.join(u'\n');
}

bool check_usage(CommandLine const &line, QString *error)
{
    bool const parted = line.verb->first_word == FirstWord::SubVerb;
    if (parted && !check_sub_verb(line, error))
        return false;
    for (OptionInfo const &option : line.verb->options) {
        // What is typed has an effect or is refused.
        if (line.has(option.name) && !takes_option(line, option)) {
            *error = QStringLiteral("no option --%1 of '%2 %3'")
                         .arg(QLatin1String(option.name), QLatin1String(line.verb->name),
                             line.words.value(0));
            return false;
        }
    }
    return meant_form(line).check_words(line.words, error);
}

bool takes_option(CommandLine const &line, OptionInfo const &option)
{
    bool const open = line.verb->first_word == FirstWord::SubVerb && line.words.isEmpty();
    return open || meant_form(line).has_option(option.name);
}

bool check_topic(CommandLine const &line, QString *error)
{
    if (!line.verb)
        return true;
    qsizetype const most = std::max(topic_words(*line.verb), line.words_before_help);
    if (line.words.size() > most) {
        *error = QStringLiteral("'%1' is too much").arg(line.words[most]);
        return false;
    }
    if (line.words.isEmpty())
        return true;
    if (line.verb->first_word == FirstWord::SubVerb)
        return check_sub_verb(line, error);
    return line.verb->first_word != FirstWord::Command || known_command(line.words[0], error);
}

} // namespace TarnCtl
