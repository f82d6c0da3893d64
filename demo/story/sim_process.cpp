// SPDX-License-Identifier: Apache-2.0
#include "demo/story/sim_process.h"

SimProcess::SimProcess(QString const &program_path, QString const &listen_address, QObject *parent)
    : QObject(parent)
    , program(program_path)
    , address(listen_address)
{
    process.setProcessChannelMode(QProcess::MergedChannels);
}

SimProcess::~SimProcess()
{
    kill();
}

bool SimProcess::start(QString *error)
{
    process.start(program,
        {QStringLiteral("--address"), address, QStringLiteral("--demo"),
            QStringLiteral("--run-time"), QStringLiteral("300")});
    QByteArray output;
    while (!output.contains("listening on")) {
        if (!process.waitForReadyRead(10'000)) {
            *error = QStringLiteral("%1 does not listen: %2 %3")
                         .arg(program, process.errorString(), QString::fromLocal8Bit(output));
            return false;
        }
        output += process.readAll();
    }
    return true;
}

void SimProcess::kill()
{
    process.kill();
    process.waitForFinished();
}
