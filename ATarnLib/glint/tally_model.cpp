// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/tally_model.h"

#include "ATarnLib/glint/us_model.h"

#include <QHash>

TallyModel::TallyModel(USModel *model, unsigned int channel, QObject *parent)
    : QObject(parent)
    , item(model->get_item(QStringLiteral("Tally%1").arg(channel)))
    , state(get_tally_from_model())
{
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
    return states.value(item->get(), none);
}
