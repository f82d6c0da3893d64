// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QObject>
#include <QRecursiveMutex>
#include <QString>

class Glint;
class USModel;

/// One key of a server's user dictionary. It shows the server's value until the application sets
/// one: from then on the application is the authority, sends its value on each connection and
/// pays no heed to what others set, unless the item is told to take both directions. Made by a
/// `USModel`.
/// Thread: any; `changed` comes from the thread of the change.
class TARN_EXPORT USItemModel : public QObject
{
    Q_OBJECT

public:
    USItemModel(QString const &key, USModel *parent_model);

    QString get_name() const { return name; }
    /// The last value that was set here or came from the server; empty before either.
    QString get() const;
    /// Sets the value, here and on the server: at once, or on the next connection. Without a
    /// model, or before the model has its connection, that is an assertion, and the value stays
    /// here.
    void set(QString const &value);
    /// The same for a key that is to go when this client does, which \a owner is told to the
    /// server for. An item that takes both directions has no owner.
    void set(QString const &value, QString const &owner);
    /// Whether the item takes what others set, also after it was set here.
    void set_read_write(bool on);

Q_SIGNALS:
    /// The value has changed, or was set here for the first time.
    void changed(QString const &value);

private:
    friend class USModel;

    // These are called with mutex held, so that what was set last is sent last.
    Glint *connected_hub() const;
    void watch(Glint *hub);
    bool take_owner(QString const &new_owner);
    bool take_value(QString const &new_value);
    void tell(bool with_owner);

    /// A connection has come.
    void renew(Glint *hub);
    void userdict_change(QString const &new_value);

    QString const name;
    USModel *const parent;
    mutable QRecursiveMutex mutex; // held while sending, never while emitting
    // All of this is guarded by mutex.
    QString value;
    bool owner_set = false;
    QString owner;
    bool value_set = false;
    bool read_write = false;
    bool watched = false; // on this connection
};
