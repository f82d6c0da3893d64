// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/config/cf_item.h"

#include <QRadioButton>

#include <map>

/// Radio buttons for the values of an item. For a value without a button none is checked.
/// Thread: that of its widget, as for every `CFItem`.
class TARN_EXPORT CFRadioButtons : public CFItem
{
    Q_OBJECT

public:
    CFRadioButtons(CFModel *cf_model, QString const &name, QObject *parent = nullptr);

    /// Gives \a value a button, in the place of the one that it had.
    void insert(QString const &value, QRadioButton *button);

    void cf(QString const &value) override;
    void send_change() override;

private:
    std::map<QString, QPointer<QRadioButton>> buttons;
};
