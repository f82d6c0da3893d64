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

    /// Starts it and waits until it listens, 10 s at most. On failure: false, the reason in *error.
    bool start(QString *error);
    /// Ends it without warning, as a power cut does.
    void kill();

private:
    QString program;
    QString address;
    QProcess process;
};
