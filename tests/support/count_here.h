// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

/// Counts the signals of an object of another thread on this one, where a QSignalSpy would be
/// written to by that thread while this one reads it.
class CountHere : public QObject
{
public:
    template <typename Sender, typename Signal> CountHere(Sender const *sender, Signal signal)
    {
        connect(
            sender, signal, this, [this] { ++counted; }, Qt::QueuedConnection);
    }

    int count() const { return counted; }

private:
    int counted = 0;
};
