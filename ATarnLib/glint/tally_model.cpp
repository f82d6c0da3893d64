// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/tally_model.h"

#include "ATarnLib/glint/us_model.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <QHash>

TallyModel::TallyModel(USModel *model, unsigned int channel, QObject *parent)
    : QObject(parent)
    , item(model ? model->get_item(QStringLiteral("Tally%1").arg(channel)) : nullptr)
    , state(get_tally_from_model())
{
    if (A_ASSERT(model != nullptr))
        connect(item, &USItemModel::changed, this, &TallyModel::update);
}

void TallyModel::update()
{
    TallyState const now = get_tally_from_model();
    if (now == state)
        return;
    state = now;
    Q_EMIT changed();
}

TallyModel::TallyState TallyModel::get_tally_from_model() const
{
    static QHash<QString, TallyState> const states{
        {QStringLiteral("offline"), offline},
        {QStringLiteral("yellow"), yellow},
        {QStringLiteral("red"), red},
        {QStringLiteral("green"), green},
    };
    return item ? states.value(item->get(), none) : none;
}
