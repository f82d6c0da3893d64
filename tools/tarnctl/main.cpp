// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/help.h"
#include "tools/tarnctl/verb.h"
#include "tools/tarnctl/verbs.h"

#include <QCoreApplication>
#include <QTimer>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <utility>

namespace TarnCtl {
namespace {

int usage_error(CommandLine const &line, QString const &error)
{
    complain(error);
    QString const usage
        = line.verb ? usage_text(*line.verb) : QStringLiteral("usage: tarnctl VERB [WORD ...]");
    std::fprintf(stderr, "%s\n", usage.toUtf8().constData());
    std::fprintf(stderr, "'tarnctl %s--help' tells more\n",
        line.verb ? (std::string(line.verb->name) + ' ').c_str() : "");
    return int(ExitCode::Usage);
}

int tell(QString const &text)
{
    Output(false).text(text);
    return int(ExitCode::Done);
}

int help(CommandLine const &line)
{
    if (!line.verb)
        return tell(help_text());
    if (line.verb->first_word != FirstWord::VerbName || line.has("help"))
        return tell(help_text(line));
    CommandLine about;
    QString error;
    if (!about.read(line.words, &error))
        return usage_error(line, error);
    return tell(about.verb ? help_text(about) : help_text());
}

int work(Settings const &settings, std::unique_ptr<Verb> prepared)
{
    Session session(settings);
    Output output(settings.json);
    QObject::connect(&output, &Output::sig_failed, &session, [&session](int error_number) {
        // That a reader had enough, as `head` does, is no failure.
        if (error_number != EPIPE)
            complain(QStringLiteral("cannot write: ")
                + QString::fromLocal8Bit(std::strerror(error_number)));
        session.finish(error_number == EPIPE ? ExitCode::Done : ExitCode::ServerError);
    });
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
    std::unique_ptr<Verb> verb = line.verb->make(line);
    if (!settings.read(line, &error) || !verb->prepare(line, &error))
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
        return usage_error(line, QStringLiteral("which verb?"));
    if (line.verb->make)
        return run(line);
    if (line.verb->first_word == FirstWord::VerbName)
        return help(line);
    QStringList const words = completions(line.words);
    return words.isEmpty() ? int(ExitCode::Done) : tell(words.join(u'\n'));
}

} // namespace
} // namespace TarnCtl

int main(int argc, char **argv)
{
    // Texts of the protocol are UTF-8 in every locale; without this the toolkit complains in a
    // locale that is not.
    qputenv("LC_ALL", "C.UTF-8");
    QCoreApplication app(argc, argv);
    return TarnCtl::run(QCoreApplication::arguments().mid(1));
}
