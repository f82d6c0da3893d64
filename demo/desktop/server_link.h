// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Tarn/CallbackGroup_set1>
#include <Tarn/Glint>

#include <QDateTime>

/// Whether what is shown is what the server says now. A hub keeps the last values while there is no
/// connection, and gets new ones after the next connect; only then are they true again.
class ServerLink : public QObject
{
    Q_OBJECT

public:
    enum class State
    {
        waiting, ///< never connected so far
        catching_up, ///< connected, but not told everything yet
        live,
        lost
    };

    ServerLink(Glint *hub, QObject *parent);

    State state() const { return now; }
    bool is_live() const { return now == State::live; }
    /// Whether there are values at all, live or not.
    bool has_values() const { return was_live; }
    /// Since when the values are live; since when they are not, otherwise.
    QDateTime since() const { return changed_at; }
    /// How often a connection came after one was lost.
    int reconnections() const { return returns; }

Q_SIGNALS:
    void changed();

private:
    void connected();
    void disconnected();
    void told_everything();

    Glint *const hub;
    VCTP3::CallbackGroup_set1 sync;
    State now = State::waiting;
    bool was_live = false;
    QDateTime changed_at = QDateTime::currentDateTime();
    int connections = 0;
    int returns = 0;
};
