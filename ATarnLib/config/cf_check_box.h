// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/config/cf_item.h"

#include <QCheckBox>

/// A check box for an item of two values. It is enabled only while the server takes both.
/// Thread: that of its widget, as for every `CFItem`.
class TARN_EXPORT CFCheckBox : public CFItem
{
    Q_OBJECT

public:
    /// Checked means \a on_text; any other value than that shows as unchecked.
    CFCheckBox(CFModel *cf_model, QString const &name, QString const &on_text,
        QString const &off_text, QCheckBox *check_box, QObject *parent = nullptr);

    void cf(QString const &value) override;
    /// Does nothing while the box is disabled, so that disabling one does not write.
    void send_change() override;

private:
    void update_enables();

    QString const on_value;
    QString const off_value;
    QPointer<QCheckBox> const box;
};

/// A check box for an item that is "Enabled" while it is checked, else "Disabled".
class TARN_EXPORT CFEnableCheckBox : public CFCheckBox
{
    Q_OBJECT

public:
    CFEnableCheckBox(
        CFModel *cf_model, QString const &name, QCheckBox *check_box, QObject *parent = nullptr);
};

/// A check box for an item that is "Disabled" while it is checked, else "Enabled".
class TARN_EXPORT CFDisableCheckBox : public CFCheckBox
{
    Q_OBJECT

public:
    CFDisableCheckBox(
        CFModel *cf_model, QString const &name, QCheckBox *check_box, QObject *parent = nullptr);
};
