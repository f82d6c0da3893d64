// SPDX-License-Identifier: Apache-2.0
#include "demo/story/sim_process.h"

SimProcess::SimProcess(QString const &program_path, QString const &listen_address, QObject *parent)
    : QObject(parent)
    , program(program_path)
    , address(listen_address)
{
    process.setProcessChannelMode(QProcess::MergedChannels);
    connect(&process, &QProcess::readyRead, this, &SimProcess::read);
}

SimProcess::~SimProcess()
{
    kill();
}

void SimProcess::start()
{
    output.clear();
    process.start(program,
        {QStringLiteral("--address"), address, QStringLiteral("--demo"),
            QStringLiteral("--run-time"), QStringLiteral("300")});
}

void SimProcess::read()
{
    output += process.readAll();
    if (listens || !output.contains("listening on"))
        return;
    listens = true;
    Q_EMIT listening();
}

QString SimProcess::said() const
{
    return process.error() == QProcess::FailedToStart
        ? program + QStringLiteral(": ") + process.errorString()
        : QString::fromLocal8Bit(output).trimmed();
}

void SimProcess::kill()
{
    process.kill();
    process.waitForFinished();
    listens = false;
}
