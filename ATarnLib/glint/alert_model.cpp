// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/alert_model.h"

#include "ATarnLib/glint/glint.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/sanitizer_order_p.h"

#include <QMutexLocker>

AlertModel::AlertModel(Glint *hub)
    : glint(hub)
{
    moveToThread(&own_thread);
    if (A_ASSERT(hub != nullptr))
        connect(glint, &Glint::report_alert, this, &AlertModel::report_alert);
    own_thread.start(QThread::InheritPriority);
}

AlertModel::~AlertModel()
{
    own_thread.end();
    for (auto const &[name, item] : items)
        delete item;
}

AlertItemModel *AlertModel::get(QString const &name)
{
    if (name.isEmpty())
        return nullptr;
    AlertItemModel *made = nullptr;
    {
        QMutexLocker const lock(&mutex);
        TellOfLock const order(&mutex);
        AlertItemModel *&item = items[name];
        if (item)
            return item;
        made = item = new AlertItemModel(name, this);
        made->moveToThread(&own_thread);
    }
    Q_EMIT added(name);
    return made;
}

QStringList AlertModel::names() const
{
    QMutexLocker const lock(&mutex);
    TellOfLock const order(&mutex);
    QStringList result;
    for (auto const &[name, item] : items)
        result.append(name);
    return result;
}

void AlertModel::report_alert(VCTP3::Alert const &alert)
{
    if (AlertItemModel *item = get(alert.alert_name))
        item->report_alert(alert);
}
