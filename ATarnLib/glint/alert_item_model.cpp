// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/alert_item_model.h"

#include "ATarnLib/glint/alert_model.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/sanitizer_order_p.h"

#include <QMutexLocker>
#include <QThread>

AlertItemModel::AlertItemModel(QString const &alert_name, AlertModel *parent_model)
    : name(alert_name)
    , model(parent_model)
{
}

AOption<VCTP3::Alert> AlertItemModel::get() const
{
    QMutexLocker const lock(&model->mutex);
    TellOfLock const order(&model->mutex);
    return alert;
}

void AlertItemModel::report_alert(VCTP3::Alert const &report)
{
    if (!A_ASSERT(QThread::currentThread() == thread())
        || !A_ASSERT_TEXT(QString(report.alert_name) == name, "alert.name == name"))
        return;
    {
        QMutexLocker const lock(&model->mutex);
        TellOfLock const order(&model->mutex);
        if (alert.has_value() && *alert == report)
            return;
        alert = report;
    }
    Q_EMIT changed(name);
}
