// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/config/cf_item.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"

#include <QList>
#include <QSet>

/// Shows widgets only where a server has what they are for: while an item can be set to one of
/// some values, or is there at all.
/// Thread: that of its widgets, as for every `CFItem`.
class TARN_EXPORT CFShow : public CFItem
{
    Q_OBJECT

public:
    /// Widgets that show while the server has the item.
    CFShow(CFModel *cf_model, QString const &name, QObject *parent = nullptr);
    /// Widgets that show while the item's allowed values hold one of \a accepted_values.
    CFShow(CFModel *cf_model, QString const &name, QSet<QString> const &accepted_values,
        QObject *parent = nullptr);

    void add(QWidget *widget);

    void cf(QString const &value) override;

private:
    bool is_visible() const;
    void update_visibility();

    QList<QPointer<QWidget>> widgets;
    AOption<QSet<QString>> accepted;
};
