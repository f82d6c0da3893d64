// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/server_link.h"

ServerLink::ServerLink(Glint *server, QObject *parent)
    : QObject(parent)
    , hub(server)
{
    connect(hub, &Glint::connected, this, &ServerLink::connected);
    connect(hub, &Glint::disconnected, this, &ServerLink::disconnected);
    connect(&sync, &VCTP3::CallbackGroup_set1::sig_ok, this, &ServerLink::told_everything);
}

void ServerLink::connected()
{
    returns = connections++;
    // Since when values are stale does not change by a connection alone.
    now = State::catching_up;
    // The hub has sent its registrations by now. A server answers in the order of the commands, so
    // what they brought has come when this is answered.
    hub->cmd_sync(sync);
    Q_EMIT changed();
}

void ServerLink::told_everything()
{
    now = State::live;
    was_live = true;
    changed_at = QDateTime::currentDateTime();
    Q_EMIT changed();
}

void ServerLink::disconnected()
{
    if (now == State::live)
        changed_at = QDateTime::currentDateTime();
    now = State::lost;
    Q_EMIT changed();
}
