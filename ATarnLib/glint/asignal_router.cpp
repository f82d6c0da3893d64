// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/asignal_router.h"

#include <QMutexLocker>

#include <algorithm>
#include <iterator>

namespace {

/// The method behind a name; invalid if the object has none, or is none.
QMetaMethod method_of(QObject const *object, QByteArray const &signature)
{
    if (!object)
        return {};
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
    take_routes([](Route const &other) { return other.source.isNull(); });
    bool first = false;
    {
        QMutexLocker const locker(&mutex);
        if (std::find(routes.begin(), routes.end(), route) != routes.end())
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
    return close(take_routes([&wanted](Route const &route) { return route == wanted; })) > 0;
}

unsigned int ASignalRouter::remove_routes(QObject const *source)
{
    return close(take_routes([source](Route const &route) { return route.source == source; }));
}

/// Takes out the routes that \a which picks. Signals that have none left are no longer watched.
std::vector<ASignalRouter::Route> ASignalRouter::take_routes(
    std::function<bool(Route const &)> const &which)
{
    std::vector<Route> taken;
    std::vector<QByteArray> unused;
    {
        QMutexLocker const locker(&mutex);
        auto const rest = std::stable_partition(routes.begin(), routes.end(), std::not_fn(which));
        std::move(rest, routes.end(), std::back_inserter(taken));
        routes.erase(rest, routes.end());
        for (Route const &route : taken)
            if (std::none_of(routes.begin(), routes.end(),
                    [&route](Route const &other) { return other.signal == route.signal; }))
                unused.push_back(route.signal);
    }
    for (QByteArray const &signal : unused)
        remove_sig_monitor(
            signal.constData(), SLOT(route_attach(QByteArray)), SLOT(route_detach(QByteArray)));
    return taken;
}

unsigned int ASignalRouter::close(std::vector<Route> const &taken) const
{
    for (Route const &route : taken)
        link(route, false);
    return static_cast<unsigned int>(taken.size());
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
    QObject *const target = proxy();
    if (!route.source || !target)
        return false;
    QMetaMethod const from = method_of(route.source, route.source_signal);
    QMetaMethod const to = method_of(target, route.signal);
    return on ? bool(connect(route.source, from, target, to, Qt::UniqueConnection))
              : disconnect(route.source, from, target, to);
}

std::vector<ASignalRouter::Route> ASignalRouter::routes_to(QByteArray const &signature) const
{
    QMutexLocker const locker(&mutex);
    std::vector<Route> result;
    std::copy_if(routes.begin(), routes.end(), std::back_inserter(result),
        [&signature](Route const &route) { return route.signal == signature; });
    return result;
}
