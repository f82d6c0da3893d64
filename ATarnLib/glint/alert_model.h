// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/base/athread.h"
#include "ATarnLib/glint/alert_item_model.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aprotect.h"

#include <QRecursiveMutex>

#include <map>
#include <vector>

class Glint;

/// What a server has to say about its health, by name. It takes reports on a thread of its own,
/// so that a burst of alerts does not hold up the main one. The hub makes it on first use and
/// registers for the reports; the last alerts stay while there is no connection.
/// Thread: any for `get`; made and deleted on any thread but its own.
class TARN_EXPORT AlertModel : public QObject
{
    Q_OBJECT

public:
    explicit AlertModel(Glint *hub);
    ~AlertModel() override;

    /// The alert of that name, always the same object, whether or not the server knows it. Null
    /// for an empty name.
    AlertItemModel *get(QString const &name);
    /// The names that were asked for or reported, in order.
    QStringList names() const;

public Q_SLOTS:
    /// On the own thread. An alert without a name is dropped.
    void report_alert(VCTP3::Alert const &alert);

Q_SIGNALS:
    /// An alert of that name has been asked for or reported for the first time. From the thread
    /// of the first call.
    void added(QString const &name);

private:
    friend class AlertItemModel;

    /// What the hub has told, and the own thread has not yet taken.
    struct Inbox
    {
        AlertModel *model = nullptr; // null once it is going
        std::vector<VCTP3::Alert> alerts;
    };

    class Putter;

    void take_reports();

    Glint *const glint;
    AProtect<Inbox> const inbox; // shared with what the hub calls
    QMetaObject::Connection reports;
    mutable QRecursiveMutex mutex; // never held while emitting
    std::map<QString, AlertItemModel *> items; // guarded by mutex
    AThread own_thread;
};
