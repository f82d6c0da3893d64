// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/config/cf_item.h"

#include <QLineEdit>

/// A line edit for an item. Every letter counts as typed.
/// Thread: that of its widget, as for every `CFItem`.
class TARN_EXPORT CFLineEdit : public CFItem
{
    Q_OBJECT

public:
    CFLineEdit(
        CFModel *cf_model, QString const &name, QLineEdit *line_edit, QObject *parent = nullptr);

    void cf(QString const &value) override;
    void send_change() override;

private:
    QPointer<QLineEdit> const edit;
};
