// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProcess>
#include <QString>

/// The simulated server as a process of its own, so that it can be lost as a real one is.
/// Thread: the one that made it.
class SimProcess : public QObject
{
    Q_OBJECT

public:
    /// \a program: the path of vesk-sim. \a address: where it listens; the port is fixed.
    SimProcess(QString const &program, QString const &address, QObject *parent = nullptr);
    ~SimProcess() override;

    /// Starts it; `listening` follows once it listens.
    void start();
    bool is_listening() const { return listens; }
    /// Starting still, or listening.
    bool is_running() const { return process.state() != QProcess::NotRunning; }
    /// What it has said since it was started, and why it does not run if it could not be started.
    QString said() const;
    /// Ends it without warning, as a power cut does.
    void kill();

Q_SIGNALS:
    void listening();

private:
    void read();

    QString program;
    QString address;
    QProcess process;
    QByteArray output;
    bool listens = false;
};
