// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/ltc_model.h"

#include "ATarnLib/glint/glint.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

using Corvane::ATimecode;

namespace {

/// Comparison of timecodes looks at the count alone, but what shows one needs the rest too.
bool is_same(ATimecode const &a, ATimecode const &b)
{
    return a == b && a.get_std() == b.get_std() && a.is_df() == b.is_df();
}

} // namespace

LTCModel::LTCModel(Glint *hub, QObject *parent)
    : QObject(parent)
    , glint(hub)
{
    if (!A_ASSERT(hub != nullptr))
        return;
    connect(glint, &Glint::connected, this, &LTCModel::connected);
    connect(glint, &Glint::disconnected, this, &LTCModel::disconnected);
    connect(glint, &Glint::report_ltc_timecode, this, &LTCModel::report_ltc_timecode);
    if (glint->is_connected())
        connected();
}

void LTCModel::connected()
{
    store(ATimecode());
    glint->cmd_report_register(VCTP3::ReportType::ltc_input);
}

void LTCModel::disconnected()
{
    store(ATimecode());
}

void LTCModel::report_ltc_timecode(VCTP3::Timecode const &report)
{
    // One that was still being decoded when the connection went may come behind its end.
    if (glint->is_connected())
        store(ATimecode(report, 1));
}

void LTCModel::store(ATimecode const &now)
{
    if (is_same(now, timecode))
        return;
    timecode = now;
    Q_EMIT changed();
}
