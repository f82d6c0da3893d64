// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/help.h"
#include "tools/tarnctl/usage.h"
#include "tools/tarnctl/verb.h"
#include "tools/tarnctl/verbs.h"

#include <QCoreApplication>
#include <QStringDecoder>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <string>
#include <utility>

namespace TarnCtl {
namespace {

int usage_error(CommandLine const &line, QString const &error)
{
    complain(error);
    std::fprintf(stderr, "%s\n", usage_text(line).toUtf8().constData());
    std::fprintf(stderr, "'tarnctl %s--help' tells more\n",
        line.verb ? (std::string(line.verb->name) + ' ').c_str() : "");
    return int(ExitCode::Usage);
}

int tell(QString const &text)
{
    ExitCode code = ExitCode::Done;
    Output output(false);
    QObject::connect(&output, &Output::sig_failed, &output, [&code](ExitCode end) { code = end; });
    output.text(text);
    return int(code);
}

/// What was asked for by --help, or by the words behind "help".
int help(CommandLine const &line)
{
    CommandLine about = line;
    QString error;
    if (!line.has("help")) {
        about = CommandLine();
        if (!about.read(line.words, &error))
            return usage_error(line, error);
    }
    if (!check_topic(about, &error))
        return usage_error(line, error);
    return tell(about.verb ? help_text(about) : help_text());
}

int work(Settings const &settings, std::unique_ptr<Verb> prepared)
{
    Session session(settings, prepared->wants_hub());
    Output output(settings.json);
    QObject::connect(&output, &Output::sig_failed, &session, &Session::finish);
    // Dies before the session that it works on.
    std::unique_ptr<Verb> const verb = std::move(prepared);
    verb->attach(&session, &output);
    // In the loop, since a connection may fail at once.
    QTimer::singleShot(0, &session, &Session::open);
    return QCoreApplication::exec();
}

int run(CommandLine const &line)
{
    Settings settings;
    QString error;
    if (!settings.read(line, &error) || !check_usage(line, &error))
        return usage_error(line, error);
    std::unique_ptr<Verb> verb = line.verb->make(line);
    if (!verb->prepare(line, &error))
        return usage_error(line, error);
    return work(settings, std::move(verb));
}

int run(QStringList const &arguments)
{
    CommandLine line;
    QString error;
    if (!line.read(arguments, &error))
        return usage_error(line, error);
    if (line.has("version"))
        return tell(QStringLiteral("tarnctl " TARN_VERSION));
    if (line.has("help"))
        return help(line);
    if (!line.verb)
        return usage_error(line,
            QStringLiteral("VERB is missing: expected one of %1")
                .arg(verb_names().join(QStringLiteral(", "))));
    if (line.verb->make)
        return run(line);
    if (line.verb->first_word == FirstWord::VerbName)
        return help(line);
    QStringList const words = completions(line.words);
    return words.isEmpty() ? int(ExitCode::Done) : tell(words.join(u'\n'));
}

/// Texts of the protocol are UTF-8, and what is none would arrive as something else.
bool is_utf8(char const *word)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString const text = decoder(word);
    return !decoder.hasError();
}

/// The words behind the program's name.
int run(char const *const *words)
{
    QStringList arguments;
    for (; *words; ++words) {
        arguments << QString::fromUtf8(*words);
        if (!is_utf8(*words))
            return usage_error(
                CommandLine(), QStringLiteral("'%1' is no UTF-8").arg(arguments.last()));
    }
    return run(arguments);
}

} // namespace
} // namespace TarnCtl

int main(int argc, char **argv)
{
    // Texts of the protocol are UTF-8 in every locale; without this the toolkit complains in a
    // locale that is not.
    qputenv("LC_ALL", "C.UTF-8");
    if (!TarnCtl::hold_streams()) {
        TarnCtl::complain(QStringLiteral("cannot write to standard output: it is closed"));
        return int(TarnCtl::ExitCode::NoOutput);
    }
    // That a reader has gone is told by what is written for it.
    std::signal(SIGPIPE, SIG_IGN);
    QCoreApplication app(argc, argv);
    return TarnCtl::run(argc > 0 ? argv + 1 : argv);
}
