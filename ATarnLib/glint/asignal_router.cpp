// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/asignal_router.h"

#include <QMutexLocker>

#include <algorithm>

namespace {

/// The method behind a name; invalid if the object has none.
QMetaMethod method_of(QObject const *object, QByteArray const &signature)
{
    QMetaObject const *const meta = object->metaObject();
    return meta->method(meta->indexOfSignal(signature.constData() + 1));
}

} // namespace

ASignalRouter::ASignalRouter(QObject *parent)
    : ASignalMonitor(parent)
{
}

bool ASignalRouter::add_route(QObject *source, char const *source_signal, char const *signal)
{
    Route const route{source, norm(source_signal), norm(signal)};
    if (!method_of(source, route.source_signal).isValid()
        || !method_of(proxy(), route.signal).isValid()
        || !QMetaObject::checkConnectArgs(
            route.source_signal.constData() + 1, route.signal.constData() + 1))
        return false;
    bool first = false;
    {
        QMutexLocker const locker(&mutex);
        auto const same = [&route](Route const &other) {
            return other.source == route.source && other.source_signal == route.source_signal
                && other.signal == route.signal;
        };
        if (std::any_of(routes.begin(), routes.end(), same))
            return true;
        first = std::none_of(routes.begin(), routes.end(),
            [&route](Route const &other) { return other.signal == route.signal; });
        routes.push_back(route);
    }
    if (first)
        add_sig_monitor(route.signal.constData(), SLOT(route_attach(QByteArray)),
            SLOT(route_detach(QByteArray)));
    if (is_attached(route.signal))
        link(route, true);
    return true;
}

bool ASignalRouter::remove_route(QObject *source, char const *source_signal, char const *signal)
{
    Route const wanted{source, norm(source_signal), norm(signal)};
    bool last = false;
    {
        QMutexLocker const locker(&mutex);
        auto const found = std::find_if(
            routes.begin(), routes.end(), [&wanted](Route const &route) {
                return route.source == wanted.source && route.source_signal == wanted.source_signal
                    && route.signal == wanted.signal;
            });
        if (found == routes.end())
            return false;
        routes.erase(found);
        last = std::none_of(routes.begin(), routes.end(),
            [&wanted](Route const &other) { return other.signal == wanted.signal; });
    }
    if (last)
        remove_sig_monitor(wanted.signal.constData(), SLOT(route_attach(QByteArray)),
            SLOT(route_detach(QByteArray)));
    link(wanted, false);
    return true;
}

unsigned int ASignalRouter::remove_routes(QObject const *source)
{
    std::vector<Route> of_source;
    {
        QMutexLocker const locker(&mutex);
        std::copy_if(routes.begin(), routes.end(), std::back_inserter(of_source),
            [source](Route const &route) { return route.source == source; });
    }
    unsigned int count = 0;
    for (Route const &route : of_source)
        count += remove_route(
            route.source, route.source_signal.constData(), route.signal.constData());
    return count;
}

void ASignalRouter::route_attach(QByteArray const &signature)
{
    for (Route const &route : routes_to(signature))
        link(route, true);
}

void ASignalRouter::route_detach(QByteArray const &signature)
{
    for (Route const &route : routes_to(signature))
        link(route, false);
}

/// Once, however many listeners there are.
bool ASignalRouter::link(Route const &route, bool on) const
{
    if (!route.source)
        return false;
    QMetaMethod const from = method_of(route.source, route.source_signal);
    QMetaMethod const to = method_of(proxy(), route.signal);
    return on ? bool(connect(route.source, from, proxy(), to, Qt::UniqueConnection))
              : disconnect(route.source, from, proxy(), to);
}

std::vector<ASignalRouter::Route> ASignalRouter::routes_to(QByteArray const &signature) const
{
    QMutexLocker const locker(&mutex);
    std::vector<Route> result;
    std::copy_if(routes.begin(), routes.end(), std::back_inserter(result),
        [&signature](Route const &route) { return route.signal == signature; });
    return result;
}
