// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/config/cf_item.h"

#include <QComboBox>
#include <QList>

/// A combo box for the values of an item. It offers what the server takes, in the server's order,
/// or those of the options given that the server takes; what the item reads is there in any case,
/// last if it is none of them. The data of each entry is its value.
/// Thread: that of its widget, as for every `CFItem`.
class TARN_EXPORT CFComboBox : public CFItem
{
    Q_OBJECT

public:
    CFComboBox(
        CFModel *cf_model, QString const &name, QComboBox *combo_box, QObject *parent = nullptr);

    /// Offers \a value, shown as \a text, behind the options given before.
    void add_option(QString const &value, QString const &text);

    void cf(QString const &value) override;
    void send_change() override;

private:
    struct Option
    {
        QString value;
        QString text;

        bool operator==(Option const &other) const = default;
    };

    QList<Option> wanted_options(QString const &present) const;
    void fill(QList<Option> const &wanted);

    QPointer<QComboBox> const box;
    QList<Option> options; // given
    QList<Option> shown;
};
