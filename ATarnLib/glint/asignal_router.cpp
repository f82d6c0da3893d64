// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/asignal_router.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/sanitizer_order_p.h"

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
    {
        QMutexLocker const locker(&mutex);
        TellOfLock const order(&mutex);
        if (std::find(routes.begin(), routes.end(), route) != routes.end())
            return true;
        if (!has_route_to(route.signal))
            add_sig_monitor(route.signal.constData(), SLOT(route_attach(QByteArray)),
                SLOT(route_detach(QByteArray)));
        routes.push_back(route);
    }
    settle(route);
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
    QMutexLocker const locker(&mutex);
    TellOfLock const order(&mutex);
    auto const rest = std::stable_partition(routes.begin(), routes.end(), std::not_fn(which));
    std::move(rest, routes.end(), std::back_inserter(taken));
    routes.erase(rest, routes.end());
    for (Route const &route : taken)
        if (!has_route_to(route.signal))
            remove_sig_monitor(route.signal.constData(), SLOT(route_attach(QByteArray)),
                SLOT(route_detach(QByteArray)));
    return taken;
}

unsigned int ASignalRouter::close(std::vector<Route> const &taken)
{
    for (Route const &route : taken)
        settle(route);
    return static_cast<unsigned int>(taken.size());
}

void ASignalRouter::route_attach(QByteArray const &signature)
{
    for (Route const &route : routes_to(signature))
        settle(route);
}

void ASignalRouter::route_detach(QByteArray const &signature)
{
    route_attach(signature);
}

/// Connects a route that is there and listened to, and disconnects any other. Of several threads
/// the one that comes to it last sees what the others have done.
void ASignalRouter::settle(Route const &route)
{
    bool open = false;
    do {
        open = is_open(route);
        link(route, open);
    } while (open != is_open(route));
}

bool ASignalRouter::is_open(Route const &route)
{
    if (!is_attached(route.signal))
        return false;
    QMutexLocker const locker(&mutex);
    TellOfLock const order(&mutex);
    return std::find(routes.begin(), routes.end(), route) != routes.end();
}

/// Once, however many listeners there are.
void ASignalRouter::link(Route const &route, bool on) const
{
    QObject *const target = proxy();
    if (!route.source || !target)
        return;
    QMetaMethod const from = method_of(route.source, route.source_signal);
    QMetaMethod const to = method_of(target, route.signal);
    if (on)
        connect(route.source, from, target, to, Qt::UniqueConnection);
    else
        disconnect(route.source, from, target, to);
}

/// Called with the mutex held.
bool ASignalRouter::has_route_to(QByteArray const &signature) const
{
    return std::any_of(routes.begin(), routes.end(),
        [&signature](Route const &route) { return route.signal == signature; });
}

std::vector<ASignalRouter::Route> ASignalRouter::routes_to(QByteArray const &signature) const
{
    QMutexLocker const locker(&mutex);
    TellOfLock const order(&mutex);
    std::vector<Route> result;
    std::copy_if(routes.begin(), routes.end(), std::back_inserter(result),
        [&signature](Route const &route) { return route.signal == signature; });
    return result;
}
