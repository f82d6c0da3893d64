// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/config/cf_item.h"

#include <QLabel>

/// A label for an item that the user sets by other means, as a folder by a dialog: the
/// application puts the text into the label and saves it. The label shows plain text from then on.
/// Thread: that of its widget, as for every `CFItem`.
class TARN_EXPORT CFLabel : public CFItem
{
    Q_OBJECT

public:
    CFLabel(CFModel *cf_model, QString const &name, QLabel *text_label, QObject *parent = nullptr);

    void cf(QString const &value) override;
    void send_change() override;

public Q_SLOTS:
    /// Types the label's text into the item.
    void save();

private:
    QPointer<QLabel> const label;
};
