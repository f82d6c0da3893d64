// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/alert_model.h"

#include "ATarnLib/glint/glint.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/sanitizer_order_p.h"

#include <QMutexLocker>

/// What the hub calls with an alert, on its own thread. It knows the inbox alone: of two models,
/// the one that comes too late to be the hub's may be going on another thread meanwhile.
class AlertModel::Putter
{
public:
    explicit Putter(AProtect<Inbox> const &to)
        : inbox(to)
    {
    }
    /// The toolkit keeps a copy, behind locks of its own.
    Putter(Putter const &other)
        : inbox(other.inbox)
    {
        tell_of_give(this);
    }
    /// On whichever thread lets go of the connection last.
    ~Putter() { tell_of_take(this); }
    Putter &operator=(Putter const &) = delete;

    void operator()(VCTP3::Alert const &alert)
    {
        tell_of_take(this);
        AProtect<Inbox>::Lock const lock(inbox);
        if (!lock->model)
            return;
        lock->alerts.push_back(alert);
        if (lock->alerts.size() == 1)
            QMetaObject::invokeMethod(lock->model, &AlertModel::take_reports, Qt::QueuedConnection);
    }

private:
    AProtect<Inbox> inbox;
};

AlertModel::AlertModel(Glint *hub)
    : glint(hub)
{
    AProtect<Inbox>::Lock(inbox)->model = this;
    moveToThread(&own_thread);
    if (A_ASSERT(hub != nullptr))
        reports = connect(glint, &Glint::report_alert, glint, Putter(inbox), Qt::DirectConnection);
    own_thread.start(QThread::InheritPriority);
}

AlertModel::~AlertModel()
{
    disconnect(reports);
    AProtect<Inbox>::Lock(inbox)->model = nullptr;
    own_thread.end();
    for (auto const &[name, item] : items)
        delete item;
}

void AlertModel::take_reports()
{
    std::vector<VCTP3::Alert> alerts;
    AProtect<Inbox>::Lock(inbox)->alerts.swap(alerts);
    for (VCTP3::Alert const &alert : alerts)
        report_alert(alert);
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
