// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QByteArray>
#include <QMetaMethod>
#include <QObject>
#include <QPointer>
#include <QReadWriteLock>

#include <atomic>
#include <map>
#include <memory>

/// One signal of an `ASignalMonitor`: tells when it is listened to.
/// Thread: any.
class TARN_EXPORT ASignalMonitorInternal : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void attached(QByteArray const &signature);
    void detached(QByteArray const &signature);

private:
    friend class ASignalMonitor;

    std::atomic<bool> listened{false}; // attached has been emitted, and not yet detached
};

/// An object that hears whether its own signals are listened to, signal by signal and by name. A
/// signal's name is its signature as the toolkit normalizes it, with the code letter "2" in front:
/// "2sig_status(VCTP3::ChannelStatus)"; a slot's has a "1".
///
/// Each listener that comes is told at once, on its thread. That the last one has gone is told
/// from the event loop of this object, since the toolkit cannot say for sure while it is removing
/// a connection.
/// Thread: that of the object; listeners come and go on any.
class TARN_EXPORT ASignalMonitor : public QObject
{
    Q_OBJECT

public:
    explicit ASignalMonitor(QObject *parent = nullptr);
    ~ASignalMonitor() override;

    /// \name Hearing of a signal's listeners
    /// Connects what tells of a listener of \a signal to \a attach_slot and of the end of the last
    /// one to \a detach_slot, slots of this object or of the receivers, with the signature as
    /// argument or none. False if one of the two could not be connected.
    /// @{
    bool add_sig_monitor(char const *signal, char const *attach_slot, char const *detach_slot);
    bool add_sig_monitor(char const *signal, QObject const *attach_receiver,
        char const *attach_slot, QObject const *detach_receiver, char const *detach_slot);
    bool remove_sig_monitor(char const *signal, char const *attach_slot, char const *detach_slot);
    bool remove_sig_monitor(char const *signal, QObject const *attach_receiver,
        char const *attach_slot, QObject const *detach_receiver, char const *detach_slot);
    bool add_sigattach_monitor(
        char const *signal, QObject const *receiver, char const *attach_slot);
    bool add_sigdetach_monitor(
        char const *signal, QObject const *receiver, char const *detach_slot);
    bool remove_sigattach_monitor(
        char const *signal, QObject const *receiver, char const *attach_slot);
    bool remove_sigdetach_monitor(
        char const *signal, QObject const *receiver, char const *detach_slot);
    /// @}

    /// The object whose signals these are, this one at first. Another one forwards what it hears
    /// of its listeners by the two functions below, and the own signals no longer count. Null means
    /// this one again. To be set before other threads use this object.
    void set_proxy(QObject *object);
    /// Null once it has gone.
    QObject *proxy() const { return front; }
    /// \name What a proxy forwards
    /// Tells of a listener, or of the end of the last one, of the signal with that signature.
    /// Without \a is_change nothing is told.
    /// @{
    void proxy_connect_notify(bool is_change, QByteArray const &signature);
    void proxy_disconnect_notify(bool is_change, QByteArray const &signature);
    /// @}

    /// The name of a signal: normalized, with the "2" in front whether it was there or not.
    static QByteArray norm(char const *signal);
    static QByteArray norm(QMetaMethod const &signal);
    /// What tells of that signal; made at the first call.
    ASignalMonitorInternal *get_sigentry(QByteArray const &signature);
    /// Whether that signal has been told to be listened to.
    bool is_attached(QByteArray const &signature) { return get_sigentry(signature)->listened; }

protected:
    void connectNotify(QMetaMethod const &signal) override;
    void disconnectNotify(QMetaMethod const &signal) override;

private:
    void attach(QByteArray const &signature);
    void detach(QByteArray const &signature);
    void look_for_detached();
    bool is_listened(QByteArray const &signature) const;

    mutable QReadWriteLock lock;
    std::map<QByteArray, std::unique_ptr<ASignalMonitorInternal>> entries; // guarded by lock
    std::atomic<bool> is_own_proxy{true};
    QPointer<QObject> front{this};
    std::atomic<bool> look_posted{false};
};
