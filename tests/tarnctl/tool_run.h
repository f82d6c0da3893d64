// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/patience.h"

#include <QHostAddress>
#include <QProcess>
#include <QStringList>

#include <unistd.h>

/// One run of the program to its end, as a script does it.
struct ToolRun
{
    /// -1 if it did not end by itself.
    int code = -1;
    QString out;
    QString err;

    /// A name that no server can have, which is seen without a question to the network.
    static QString name_of_nobody() { return QString(64, u'x') + QStringLiteral(".invalid"); }

    QStringList lines() const { return out.split(u'\n', Qt::SkipEmptyParts); }
    /// The messages sent or received, without the arrows; from a run with --trace.
    QStringList traced(QLatin1String arrow) const
    {
        QStringList found;
        for (QString const &line : err.split(u'\n')) {
            if (line.startsWith(arrow))
                found << line.mid(arrow.size() + 1);
        }
        return found;
    }
};

inline QStringList words(char const *line)
{
    return QString::fromUtf8(line).split(u' ', Qt::SkipEmptyParts);
}

/// Where the server is, and a time-out that only what hangs meets; one that comes later counts.
inline QStringList dialling(QHostAddress const &server)
{
    return {QStringLiteral("--server"), server.toString(), QStringLiteral("--timeout"),
        QString::number(patience_ms / 1000)};
}

inline ToolRun run_tool(QStringList const &arguments)
{
    QProcess process;
    process.start(QStringLiteral(TARNCTL_PROGRAM), arguments);
    ToolRun run;
    if (process.waitForFinished(2 * patience_ms) && process.exitStatus() == QProcess::NormalExit)
        run.code = process.exitCode();
    run.out = QString::fromUtf8(process.readAllStandardOutput());
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

/// Against a server, with JSON.
inline ToolRun run_json(QHostAddress const &server, QStringList const &arguments)
{
    return run_tool(dialling(server) + QStringList(QStringLiteral("--json")) + arguments);
}

inline ToolRun run_text(QHostAddress const &server, QStringList const &arguments)
{
    return run_tool(dialling(server) + arguments);
}

/// A run with `--for` and a shorter `--timeout`, in seconds from \a shortest up. How long the
/// server takes to answer is up to the machine, so longer ones are tried until it has answered in
/// time.
inline ToolRun run_beyond_timeout(
    QHostAddress const &server, QStringList const &arguments, double shortest)
{
    ToolRun run;
    for (double timeout = shortest; run.code != 0 && timeout < 20; timeout *= 2)
        run = run_json(server,
            arguments
                + QStringList{QStringLiteral("--timeout"), QString::number(timeout),
                    QStringLiteral("--for"), QString::number(timeout + shortest)});
    return run;
}

/// Runs the program with a pipe for its output whose reader has gone; the exit code, -1 if it did
/// not end by itself.
inline int run_unread(QStringList const &arguments)
{
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0)
        return -1;
    ::close(ends[0]);
    QProcess process;
    process.setChildProcessModifier([output = ends[1]] { ::dup2(output, STDOUT_FILENO); });
    process.start(QStringLiteral(TARNCTL_PROGRAM), arguments);
    bool const ended = process.waitForFinished(2 * patience_ms);
    ::close(ends[1]);
    return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

/// Runs a line of a shell, in which "$0" is the program.
inline ToolRun run_shell(QString const &line)
{
    QProcess shell;
    shell.start(
        QStringLiteral("sh"), {QStringLiteral("-c"), line, QStringLiteral(TARNCTL_PROGRAM)});
    ToolRun run;
    if (shell.waitForFinished(2 * patience_ms) && shell.exitStatus() == QProcess::NormalExit)
        run.code = shell.exitCode();
    run.out = QString::fromUtf8(shell.readAllStandardOutput());
    run.err = QString::fromUtf8(shell.readAllStandardError());
    return run;
}

/// Runs the program under a shell that redirects its streams.
inline ToolRun run_redirected(QString const &arguments, QString const &redirection)
{
    return run_shell(QStringLiteral("exec \"$0\" %1 %2").arg(arguments, redirection));
}
