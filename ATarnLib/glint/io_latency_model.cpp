// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/io_latency_model.h"

#include "ATarnLib/glint/glint.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

IOLatencyModel::IOLatencyModel(Glint *hub, QObject *parent)
    : QObject(parent)
    , glint(hub)
{
    if (!A_ASSERT(hub != nullptr))
        return;
    connect(glint, &Glint::connected, this, &IOLatencyModel::fetch_value);
    connect(&group, &VCTP3::CallbackGroup_set23::sig_io_latency, this, &IOLatencyModel::update);
    fetch_value();
}

void IOLatencyModel::fetch_value()
{
    if (!glint)
        return;
    qDebug("Fetching value...");
    glint->cmd_get_io_latency(group);
}

void IOLatencyModel::update(unsigned int latency)
{
    qDebug("IO latency: %u", latency);
    if (latency == value)
        return;
    value = latency;
    Q_EMIT changed();
}
