// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/asignal_monitor.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/sanitizer_order_p.h"

#include <QReadLocker>
#include <QWriteLocker>

#include <vector>

ASignalMonitor::ASignalMonitor(QObject *parent)
    : QObject(parent)
{
}

ASignalMonitor::~ASignalMonitor() = default;

bool ASignalMonitor::add_sig_monitor(
    char const *signal, char const *attach_slot, char const *detach_slot)
{
    return add_sig_monitor(signal, this, attach_slot, this, detach_slot);
}

bool ASignalMonitor::add_sig_monitor(char const *signal, QObject const *attach_receiver,
    char const *attach_slot, QObject const *detach_receiver, char const *detach_slot)
{
    bool const attach_done = add_sigattach_monitor(signal, attach_receiver, attach_slot);
    return add_sigdetach_monitor(signal, detach_receiver, detach_slot) && attach_done;
}

bool ASignalMonitor::remove_sig_monitor(
    char const *signal, char const *attach_slot, char const *detach_slot)
{
    return remove_sig_monitor(signal, this, attach_slot, this, detach_slot);
}

bool ASignalMonitor::remove_sig_monitor(char const *signal, QObject const *attach_receiver,
    char const *attach_slot, QObject const *detach_receiver, char const *detach_slot)
{
    bool const attach_done = remove_sigattach_monitor(signal, attach_receiver, attach_slot);
    return remove_sigdetach_monitor(signal, detach_receiver, detach_slot) && attach_done;
}

// The slots are known by name alone, so these are connected by text.

bool ASignalMonitor::add_sigattach_monitor(
    char const *signal, QObject const *receiver, char const *attach_slot)
{
    return connect(get_sigentry(norm(signal)), SIGNAL(attached(QByteArray)), receiver, attach_slot);
}

bool ASignalMonitor::add_sigdetach_monitor(
    char const *signal, QObject const *receiver, char const *detach_slot)
{
    return connect(get_sigentry(norm(signal)), SIGNAL(detached(QByteArray)), receiver, detach_slot);
}

bool ASignalMonitor::remove_sigattach_monitor(
    char const *signal, QObject const *receiver, char const *attach_slot)
{
    return disconnect(
        get_sigentry(norm(signal)), SIGNAL(attached(QByteArray)), receiver, attach_slot);
}

bool ASignalMonitor::remove_sigdetach_monitor(
    char const *signal, QObject const *receiver, char const *detach_slot)
{
    return disconnect(
        get_sigentry(norm(signal)), SIGNAL(detached(QByteArray)), receiver, detach_slot);
}

void ASignalMonitor::set_proxy(QObject *object)
{
    front = object ? object : this;
    is_own_proxy = front == this;
}

void ASignalMonitor::proxy_connect_notify(bool is_change, QByteArray const &signature)
{
    if (is_change)
        attach(norm(signature.constData()));
}

void ASignalMonitor::proxy_disconnect_notify(bool is_change, QByteArray const &signature)
{
    if (is_change)
        detach(norm(signature.constData()));
}

QByteArray ASignalMonitor::norm(char const *signal)
{
    QByteArray const name(signal);
    return '2' + QMetaObject::normalizedSignature(name.startsWith('2') ? signal + 1 : signal);
}

QByteArray ASignalMonitor::norm(QMetaMethod const &signal)
{
    return '2' + signal.methodSignature();
}

ASignalMonitorInternal *ASignalMonitor::get_sigentry(QByteArray const &signature)
{
    {
        QReadLocker const reading(&lock);
        TellOfLock const order(&lock);
        auto const found = entries.find(signature);
        if (found != entries.end())
            return found->second.get();
    }
    QWriteLocker const writing(&lock);
    TellOfLock const order(&lock);
    std::unique_ptr<ASignalMonitorInternal> &entry = entries[signature];
    if (!entry)
        entry = std::make_unique<ASignalMonitorInternal>();
    return entry.get();
}

void ASignalMonitor::connectNotify(QMetaMethod const &signal)
{
    if (is_own_proxy && isSignalConnected(signal))
        attach(norm(signal));
}

/// Comes on any thread, and at times while the connection is still there and the toolkit's locks
/// are held.
void ASignalMonitor::disconnectNotify(QMetaMethod const &)
{
    if (is_own_proxy && !look_posted.exchange(true))
        QMetaObject::invokeMethod(this, &ASignalMonitor::look_for_detached, Qt::QueuedConnection);
}

void ASignalMonitor::attach(QByteArray const &signature)
{
    ASignalMonitorInternal *const entry = get_sigentry(signature);
    entry->listened = true;
    Q_EMIT entry->attached(signature);
}

void ASignalMonitor::detach(QByteArray const &signature)
{
    ASignalMonitorInternal *const entry = get_sigentry(signature);
    entry->listened = false;
    Q_EMIT entry->detached(signature);
}

void ASignalMonitor::look_for_detached()
{
    look_posted = false;
    std::vector<QByteArray> gone;
    {
        QReadLocker const reading(&lock);
        TellOfLock const order(&lock);
        for (auto const &[signature, entry] : entries)
            if (entry->listened && !is_listened(signature))
                gone.push_back(signature);
    }
    for (QByteArray const &signature : gone) {
        // A listener may have come again: from another thread, or with the end of another signal.
        ASignalMonitorInternal *const entry = get_sigentry(signature);
        entry->listened = false;
        if (is_listened(signature))
            entry->listened = true;
        else
            Q_EMIT entry->detached(signature);
    }
}

bool ASignalMonitor::is_listened(QByteArray const &signature) const
{
    int const index = metaObject()->indexOfSignal(signature.constData() + 1);
    return index >= 0 && isSignalConnected(metaObject()->method(index));
}
