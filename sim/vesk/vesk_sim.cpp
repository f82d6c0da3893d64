// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_sim.h"

#include "sim/vesk/vesk_channel_reports.h"
#include "sim/vesk/vesk_server_thread.h"

struct VeskSim::Private
{
    Private(QHostAddress const &address, VeskSimOptions const &options)
        : thread(address, options)
    {
    }
    VeskServerThread thread;
};

VeskSim::VeskSim(QHostAddress const &address, VeskSimOptions const &options)
    : d(std::make_unique<Private>(address, options))
{
}

VeskSim::~VeskSim() = default;

void VeskSim::run(std::function<void(VeskServer &)> const &function) const
{
    d->thread.call(function);
}

bool VeskSim::is_listening() const
{
    bool result = false;
    run([&](VeskServer &server) { result = server.is_listening(); });
    return result;
}

QString VeskSim::listen_error() const
{
    return d->thread.error();
}

QHostAddress VeskSim::address() const
{
    return d->thread.address();
}

quint16 VeskSim::port() const
{
    return VeskServer::port;
}

void VeskSim::advance(unsigned int fields)
{
    run([=](VeskServer &server) { server.advance(fields); });
}

void VeskSim::set_real_time(bool on)
{
    run([=](VeskServer &server) { server.set_real_time(on); });
}

void VeskSim::refuse_connections(bool on)
{
    run([=](VeskServer &server) {
        QString error;
        if (on)
            server.stop_listening();
        else
            server.listen(&error);
    });
}

void VeskSim::stay_silent(bool on)
{
    run([=](VeskServer &server) { server.station().faults().silent = on; });
}

void VeskSim::close_after(quint64 bytes)
{
    run([=](VeskServer &server) { server.close_after(bytes); });
}

void VeskSim::split_writes(bool on)
{
    run([=](VeskServer &server) { server.station().faults().split_writes = on; });
}

void VeskSim::delay_replies(unsigned int fields)
{
    run([=](VeskServer &server) { server.station().faults().reply_delay = fields; });
}

void VeskSim::reorder_replies(unsigned int window, quint32 seed)
{
    run([=](VeskServer &server) {
        server.station().faults().reorder_window = window;
        server.station().faults().reorder_seed = seed;
    });
}

void VeskSim::fail_command(char const *name, char const *text, VCTP3::ErrorCode code)
{
    VeskFailure const failure{AString::l1(text), code};
    run([&](VeskServer &server) {
        server.station().faults().failing[AString::l1(name)] = failure;
    });
}

void VeskSim::clear_faults()
{
    run([](VeskServer &server) {
        QString error;
        server.listen(&error);
        server.station().faults() = VeskFaults();
        server.station().release_all();
        server.close_after({});
    });
}

void VeskSim::say(QByteArray const &bytes)
{
    run([&](VeskServer &server) { server.station().say(bytes); });
}

void VeskSim::report(VCTP3::ReportType group, XMLTree const &report)
{
    with_world([&](VeskWorld &world) { world.reporter->report(group, report); });
}

void VeskSim::drop_connections()
{
    run([](VeskServer &server) { server.drop_connections(); });
}

void VeskSim::stop()
{
    run([](VeskServer &server) {
        server.stop_listening();
        server.drop_connections();
    });
}

void VeskSim::restart(VeskState state)
{
    run([=](VeskServer &server) {
        QString error;
        server.stop_listening();
        server.restart(state);
        server.listen(&error);
    });
}

VeskCounters VeskSim::counters() const
{
    VeskCounters result;
    run([&](VeskServer &server) { result = server.station().counters(); });
    return result;
}

void VeskSim::with_world(std::function<void(VeskWorld &)> const &function)
{
    run([&](VeskServer &server) {
        function(server.station().world());
        server.station().send_reports();
    });
}

namespace {

/// The present value under \a key, by value; none if there is none.
template <typename Map>
AOption<typename Map::mapped_type> value_of(Map const &map, AString const &key)
{
    auto found = map.find(key);
    if (found == map.end())
        return {};
    return found->second;
}

} // namespace

quint64 VeskSim::fields() const
{
    quint64 result = 0;
    run([&](VeskServer &server) { result = server.station().world().clock.now(); });
    return result;
}

VeskChannelState VeskSim::channel_state(VCTP3::Channel channel, VCTP3::Layer layer) const
{
    VeskChannelState state;
    run([&](VeskServer &server) {
        VeskChannel const &read = server.station().world().channels.at(channel);
        VeskLayer const &transport = read.layer(layer);
        state.status = transport.status();
        if (transport.clip())
            state.clip = transport.clip()->id();
        state.position = transport.position();
        state.speed = transport.speed();
        state.information = VeskChannelReports::information(read, layer);
    });
    return state;
}

AOption<VCTP3::ClipInfo> VeskSim::clip(AString const &id) const
{
    AOption<VCTP3::ClipInfo> result;
    run([&](VeskServer &server) {
        AOption<VeskClip> const clip = value_of(server.station().world().clips.all(), id);
        if (clip)
            result = clip->info;
    });
    return result;
}

std::vector<AString> VeskSim::clip_ids() const
{
    std::vector<AString> result;
    run([&](VeskServer &server) {
        for (auto const &[id, clip] : server.station().world().clips.all())
            result.push_back(id);
    });
    return result;
}

AOption<VeskSetting> VeskSim::setting(AString const &name) const
{
    AOption<VeskSetting> result;
    run([&](VeskServer &server) {
        result = value_of(server.station().world().configuration.settings(), name);
    });
    return result;
}

AOption<AString> VeskSim::dictionary_value(AString const &key) const
{
    AOption<AString> result;
    run([&](VeskServer &server) { result = server.station().world().dictionary.value(key); });
    return result;
}

AOption<AString> VeskSim::metadata_value(AString const &database, AString const &key) const
{
    AOption<AString> result;
    run([&](VeskServer &server) {
        result = server.station().world().metadata.value(database, key);
    });
    return result;
}

AOption<std::vector<VCTP3::ListElement>> VeskSim::list(AString const &id) const
{
    AOption<std::vector<VCTP3::ListElement>> result;
    run([&](VeskServer &server) { result = value_of(server.station().world().lists.all(), id); });
    return result;
}

AOption<std::vector<VCTP3::ChaseElement>> VeskSim::chase(AString const &id) const
{
    AOption<std::vector<VCTP3::ChaseElement>> result;
    run([&](VeskServer &server) { result = value_of(server.station().world().chases.all(), id); });
    return result;
}

std::vector<AString> VeskSim::log() const
{
    std::vector<AString> result;
    run([&](VeskServer &server) {
        auto const &lines = server.station().world().log.lines();
        result.assign(lines.begin(), lines.end());
    });
    return result;
}
