// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"

#include <QList>
#include <QObject>
#include <QString>

#include <memory>

/// One item of a server's configuration: what the server holds, and what has been typed here and
/// not been committed yet. Made by a `CFModel`, and lives as long as that.
/// Thread: any; signals come from the thread of the change.
class TARN_EXPORT CFItemModel : public QObject
{
    Q_OBJECT

public:
    /// \a parent: as any object's; a model makes its items without one.
    explicit CFItemModel(QString const &item_name, QObject *parent = nullptr);
    ~CFItemModel() override;

    QString get_name() const { return name; }
    /// What was typed, else `cf_get`.
    QString get() const;
    /// What the server holds: for an item that requires a reboot, what will hold after it. Empty
    /// before the item has arrived.
    QString cf_get() const;
    /// Whether the item has arrived. It is false for a name that the server does not know, also
    /// where the server before knew it.
    bool have_cf() const;

    /// Types a value; the present one changes nothing. A hot item sends it at once, any other
    /// with the next commit.
    void set(QString const &value);
    void set(int value);
    void set(unsigned int value);
    /// Takes back what was typed.
    void revert_item();
    /// Whether a commit would tell the server anything new.
    bool have_changes() const;
    /// Forgets what was typed where the server holds just that by now; `edit_ended` tells.
    void fixup_set_value();

    /// The values that the server takes. Empty: any text will do, or the item has not arrived.
    QList<QString> allowed_values() const;
    /// Whether the server takes \a value; false before the item has arrived.
    bool is_allowed(QString const &value) const;
    /// The item waits for a reboot: what `get` reads is not what is in force now.
    bool need_reboot() const;
    /// Nothing is typed, or the server has saved it already.
    bool commit_done() const;

    /// A hot item sends every change at once. What was typed before, or while not connected, waits
    /// for the next change.
    void setHot(bool on);
    bool hot() const;

    /// The item as the server has it now. An equal one changes nothing but what
    /// `fixup_set_value` does. Another item's is an assertion, and nothing else happens.
    void config(VCTP3::ConfigurationItem const &cf);

Q_SIGNALS:
    /// \name The value that `get` reads, or anything else about the item, has changed
    /// All five come together. A value that is no number is 0 as one.
    /// @{
    void changed();
    void changed(QString const &value);
    void changed(int value);
    void changed(unsigned int value);
    void changed(QString const &name, QString const &newval);
    /// @}
    /// Behind `changed`, for a hot item.
    void hot_change();
    /// What was typed is an edit no more, and nothing else about the item has changed.
    void edit_ended();

private:
    friend class CFModel;
    struct Private;

    /// The value to send if there are changes; it counts as sent. False if there are none.
    bool take_change(QString *value);
    /// The server has no such item. What was typed stays.
    void forget();
    void signal_change();

    QString const name;
    std::unique_ptr<Private> const d;
};
