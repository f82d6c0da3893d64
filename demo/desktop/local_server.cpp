// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/local_server.h"

#include <QCoreApplication>
#include <QRandomGenerator>

#include <csignal>
#include <sys/prctl.h>

namespace {

constexpr int most_attempts = 10;
constexpr int cannot_listen = 3; // an exit code of vesk-sim

/// The port is fixed, so each server on a machine has an address of its own.
QHostAddress some_loopback_address()
{
    auto const byte = [] { return quint32(QRandomGenerator::global()->bounded(1, 255)); };
    return QHostAddress(0x7F000000U | byte() << 16 | byte() << 8 | byte());
}

} // namespace

LocalServer::LocalServer(QObject *parent)
    : QObject(parent)
{
    // A program that is killed takes its server with it.
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    process.setProcessChannelMode(QProcess::MergedChannels);
    connect(&process, &QProcess::readyRead, this, &LocalServer::read);
    connect(&process, &QProcess::finished, this, &LocalServer::ended);
    connect(&process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            Q_EMIT failed(process.program() + QStringLiteral(": ") + process.errorString());
    });
}

LocalServer::~LocalServer()
{
    process.disconnect(this);
    process.terminate();
    if (process.state() != QProcess::NotRunning && !process.waitForFinished(3000)) {
        process.kill();
        process.waitForFinished(3000);
    }
}

void LocalServer::start()
{
    attempts = 0;
    try_address();
}

void LocalServer::try_address()
{
    ++attempts;
    output.clear();
    listen_address = some_loopback_address();
    process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/vesk-sim"),
        {QStringLiteral("--address"), listen_address.toString(), QStringLiteral("--demo")});
}

void LocalServer::read()
{
    QByteArray const said = process.readAll();
    if (is_listening)
        return;
    output += said;
    if (output.contains("listening on")) {
        is_listening = true;
        Q_EMIT listening(listen_address);
    }
}

void LocalServer::ended(int exit_code)
{
    if (exit_code == cannot_listen && !is_listening && attempts < most_attempts) {
        try_address();
        return;
    }
    Q_EMIT failed(QStringLiteral("vesk-sim has ended with exit code %1").arg(exit_code));
}
