// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/glint/asignal_monitor.h"

#include <QMutex>
#include <QPointer>

#include <functional>
#include <vector>

/// Passes signals of other objects on as signals of this one, or of its proxy, and connects to a
/// source only while its route's signal is listened to. So a source that itself works only for
/// listeners rests while nobody is behind the router.
/// Thread: as `ASignalMonitor`; routes may be added and removed from any.
class TARN_EXPORT ASignalRouter : public ASignalMonitor
{
    Q_OBJECT

public:
    explicit ASignalRouter(QObject *parent = nullptr);

    /// Passes \a source_signal of \a source on as \a signal, both by name. A route that is there
    /// already stays one; those of sources that have gone are forgotten. False if one of the
    /// signals is unknown, or their arguments do not fit.
    bool add_route(QObject *source, char const *source_signal, char const *signal);
    /// False if there was no such route.
    bool remove_route(QObject *source, char const *source_signal, char const *signal);
    /// All routes from \a source; how many there were.
    unsigned int remove_routes(QObject const *source);

private Q_SLOTS:
    void route_attach(QByteArray const &signature);
    void route_detach(QByteArray const &signature);

private:
    struct Route
    {
        QPointer<QObject> source;
        QByteArray source_signal;
        QByteArray signal;

        friend bool operator==(Route const &, Route const &) = default;
    };

    std::vector<Route> take_routes(std::function<bool(Route const &)> const &which);
    unsigned int close(std::vector<Route> const &taken);
    void settle(Route const &route);
    bool is_open(Route const &route);
    void link(Route const &route, bool on) const;
    bool has_route_to(QByteArray const &signature) const;
    std::vector<Route> routes_to(QByteArray const &signature) const;

    mutable QMutex mutex; // before the monitor's lock; held while a signal is begun to be watched
    std::vector<Route> routes; // guarded by mutex
};
