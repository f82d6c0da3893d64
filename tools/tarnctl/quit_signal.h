// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

namespace TarnCtl {

/// Turns an interrupt or a request to terminate into a signal of the event loop, while it lives.
/// One at a time in a process.
class QuitSignal : public QObject
{
    Q_OBJECT

public:
    explicit QuitSignal(QObject *parent = nullptr);
    ~QuitSignal() override;

Q_SIGNALS:
    void sig_quit();
};

} // namespace TarnCtl
