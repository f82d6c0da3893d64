// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/config/cf_item.h"

#include <QSpinBox>

/// A spin box for an item that holds a number: a whole one, or in fixed mode one of 16.16, which
/// the box shows in hundredths. A text that is no number leaves the box as it is; a number out of
/// the box's range shows as the nearest in it and stays in the item.
/// Thread: that of its widget, as for every `CFItem`.
class TARN_EXPORT CFSpinBox : public CFItem
{
    Q_OBJECT

public:
    /// The range is that of the box, hundredths in fixed mode. The box stands on its minimum until
    /// the item has a number.
    CFSpinBox(CFModel *cf_model, QString const &name, QSpinBox *spin_box, int minimum, int maximum,
        QObject *parent = nullptr);

    void set_fixed(bool on);
    bool is_fixed() const { return fixed; }

    void cf(QString const &value) override;
    void send_change() override;

private:
    int cf_value(int number) const;
    QString text_value(int shown) const;

    QPointer<QSpinBox> const box;
    bool fixed = false;
};
