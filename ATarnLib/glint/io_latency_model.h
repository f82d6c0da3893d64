// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/callback_groups.h"

#include <QObject>

class Glint;

/// How long a picture takes from a server's input to its output. Asked for on each connection;
/// the server does not tell of changes.
/// Thread: the hub's.
class TARN_EXPORT IOLatencyModel : public QObject
{
    Q_OBJECT

public:
    /// \a hub must outlive this object.
    explicit IOLatencyModel(Glint *hub, QObject *parent = nullptr);

    /// Fields; 0 before the first answer. The last answer stays while there is no connection.
    unsigned int get() const { return value; }

public Q_SLOTS:
    /// Asks again.
    void fetch_value();

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void update(unsigned int latency);

private:
    Glint *const glint;
    VCTP3::CallbackGroup_set23 group;
    unsigned int value = 0;
};
