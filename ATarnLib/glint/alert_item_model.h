// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"

#include <QObject>
#include <QString>

class AlertModel;

/// The last alert of one name. Made by an `AlertModel`, and lives as long as that.
/// Thread: any; `changed` comes from the model's thread.
class TARN_EXPORT AlertItemModel : public QObject
{
    Q_OBJECT

public:
    QString get_name() const { return name; }
    /// None until the server has told of it.
    AOption<VCTP3::Alert> get() const;

    /// Takes what the server tells; an equal alert changes nothing. Another name, or another
    /// thread than the model's, is an assertion and changes nothing.
    void report_alert(VCTP3::Alert const &report);

Q_SIGNALS:
    void changed(QString const &name);

private:
    friend class AlertModel;

    AlertItemModel(QString const &alert_name, AlertModel *parent_model);

    QString const name;
    AlertModel *const model;
    AOption<VCTP3::Alert> alert; // guarded by the model's mutex
};
