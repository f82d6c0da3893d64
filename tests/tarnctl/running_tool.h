// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/patience.h"
#include "tests/tarnctl/tool_run.h"

#include <QHostAddress>
#include <QProcess>
#include <QStringList>

/// The program at work, for verbs that run until they have had enough. It is killed with this.
class RunningTool : public QProcess
{
public:
    ~RunningTool() override
    {
        kill();
        waitForFinished();
    }

    void begin(QHostAddress const &server, QStringList const &arguments)
    {
        start(QStringLiteral(TARNCTL_PROGRAM), dialling(server) + arguments);
    }
    /// Waits until it has written so many lines, and takes them.
    QStringList take_lines(int count)
    {
        QByteArray text;
        while (text.count('\n') < count && (canReadLine() || waitForReadyRead(patience_ms)))
            text += readLine();
        return QString::fromUtf8(text).split(u'\n', Qt::SkipEmptyParts);
    }
    /// All that it has complained of so far, as far as that has come.
    QString error_text()
    {
        errors += readAllStandardError();
        return QString::fromUtf8(errors);
    }
    /// Waits for the end; -1 if it does not come.
    int end_code()
    {
        if (state() != QProcess::NotRunning && !waitForFinished(patience_ms))
            return -1;
        return exitStatus() == QProcess::NormalExit ? exitCode() : -1;
    }

private:
    QByteArray errors;
};
