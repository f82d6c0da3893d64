// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHostAddress>
#include <QProcess>

/// A simulated server of the program's own, as a process beside it that ends with it.
class LocalServer : public QObject
{
    Q_OBJECT

public:
    explicit LocalServer(QObject *parent = nullptr);
    ~LocalServer() override;

    /// Starts vesk-sim from the folder of this program, on a loopback address that is free. Either
    /// signal follows.
    void start();
    QHostAddress address() const { return listen_address; }

Q_SIGNALS:
    void listening(QHostAddress const &address);
    /// It could not be started, or has ended.
    void failed(QString const &text);

private:
    void try_address();
    void read();
    void ended(int exit_code);

    QProcess process;
    QHostAddress listen_address;
    QByteArray output; // until it listens
    int attempts = 0;
    bool is_listening = false;
};
