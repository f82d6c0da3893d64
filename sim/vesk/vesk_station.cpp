// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_station.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_format.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_name.h"
#include "sim/vesk/vesk_answer.h"
#include "sim/vesk/vesk_storm.h"

#include <utility>

namespace {

/// The element beside the id; null, and the reason, when there is not exactly one.
XMLTree command_of(XMLTree const &message, AString const &xid_tag, AString *error)
{
    XMLTree command;
    for (XMLTree const &child : message.children()) {
        if (child.has_tag(xid_tag))
            continue;
        if (!command.is_null()) {
            *error = AString::l1("The message holds more than one command");
            return {};
        }
        command = child;
    }
    if (command.is_null())
        *error = AString::l1("The message holds no command");
    return command;
}

} // namespace

VeskStation::Client::Client(VeskWorld *world, VeskFaults const *faults)
    : session(world)
    , outbox(faults)
{
}

VeskStation::VeskStation(VCTP3::VideoStandard standard, VeskBoard board)
    : kept(std::make_unique<VeskWorld>(reporter(), standard, board))
{
}

VeskStation::~VeskStation() = default;

quint64 VeskStation::open()
{
    ++counted.connections;
    ++counted.open_connections;
    quint64 const number = ++last_connection;
    clients.emplace(number, std::make_unique<Client>(kept.get(), &present_faults));
    return number;
}

bool VeskStation::feed(quint64 connection, char const *data, std::size_t size)
{
    auto found = clients.find(connection);
    if (found == clients.end())
        return false;
    counted.bytes_received += size;
    Client &client = *found->second;
    return client.reader.feed(
        data, size, [&](XMLTree const &message) { receive(connection, client, message); });
}

void VeskStation::receive(quint64 connection, Client &client, XMLTree const &message)
{
    static XMLName const xid_tag("xid");
    if (trace)
        trace(connection, '<', vesk_bytes(message));
    XMLTree xid;
    if (message.count_subnodes(xid_tag, &xid) != 1) {
        ++counted.bad_messages;
        note(connection, "passed over, since there is not one id");
        return;
    }
    VeskAnswer answer(xid.get_content(), connection);
    AString error;
    XMLTree const command = command_of(message, xid_tag, &error);
    if (command.is_null() || !do_command(client.session, answer, command, &error)) {
        ++counted.bad_messages;
        answer.error(error, VCTP3::ErrorCode::general);
    }
    send_answer(connection, client, answer);
    send_reports();
}

bool VeskStation::do_command(
    VeskSession &session, VeskAnswer &answer, XMLTree const &command, AString *error)
{
    AString const name = command.get_tag();
    if (!vesk_knows_command(name)) {
        *error = AString::l1("There is no command \"%1\"").arg(name);
        return false;
    }
    ++counted.commands[name.deep_copy(32)];
    auto failing = present_faults.failing.find(name);
    if (failing == present_faults.failing.end())
        return vesk_dispatch(command, answer, session, error);
    answer.error(failing->second.text, failing->second.code);
    return true;
}

void VeskStation::send_answer(quint64 connection, Client &client, VeskAnswer const &answer)
{
    A_ASSERT_TEXT(!answer.replies().empty(), "every command is answered");
    QByteArray together;
    for (QByteArray const &reply : answer.replies()) {
        together += reply;
        if (trace && !present_faults.silent)
            trace(connection, '>', reply);
    }
    client.outbox.add_answer(together);
}

void VeskStation::close(quint64 connection)
{
    if (clients.erase(connection) == 0)
        return;
    --counted.open_connections;
    kept->connection_ended(connection);
    send_reports();
}

QByteArray VeskStation::take_output(quint64 connection)
{
    auto found = clients.find(connection);
    return found == clients.end() ? QByteArray() : found->second->outbox.take();
}

qint64 VeskStation::output_size(quint64 connection) const
{
    auto found = clients.find(connection);
    return found == clients.end() ? 0 : found->second->outbox.size();
}

void VeskStation::say(QByteArray const &bytes)
{
    for (auto const &[connection, client] : clients) {
        client->outbox.add_raw(bytes);
        if (trace)
            trace(connection, '>', bytes);
    }
}

void VeskStation::release_all()
{
    for (auto const &[connection, client] : clients)
        client->outbox.release_all();
}

void VeskStation::advance_field()
{
    kept->advance_field();
    for (auto const &[connection, client] : clients)
        client->outbox.field_passed();
    send_reports();
}

void VeskStation::send_storm(unsigned int part, unsigned int parts)
{
    unsigned int const end = VeskChannels::count * (part + 1) / parts;
    for (unsigned int channel = VeskChannels::count * part / parts; channel < end; ++channel)
        for (VCTP3::ChannelReportType group : VeskStorm::groups)
            send_channel_report(static_cast<VCTP3::Channel>(channel), group);
}

void VeskStation::restart()
{
    close_all();
    kept->restart();
    send_reports();
}

void VeskStation::begin_anew(VCTP3::VideoStandard standard, VeskBoard board)
{
    close_all();
    kept = std::make_unique<VeskWorld>(reporter(), standard, board);
}

void VeskStation::close_all()
{
    while (!clients.empty())
        close(clients.begin()->first);
}

void VeskStation::report(VCTP3::ReportType group, XMLTree const &report)
{
    pending.push_back({Told::To::group, group, 0, report});
}

void VeskStation::report_to(quint64 connection, XMLTree const &report)
{
    pending.push_back({Told::To::one, {}, connection, report});
}

void VeskStation::report_to_all(XMLTree const &report)
{
    pending.push_back({Told::To::all, {}, 0, report});
}

void VeskStation::note(quint64 connection, char const *line) const
{
    if (trace)
        trace(connection, ' ', line);
}

void VeskStation::send_reports()
{
    for (Told const &told : std::exchange(pending, {}))
        send_told(told);
    for (VeskChannel &channel : kept->channels.all()) {
        unsigned int const changes = channel.take_changes();
        // A storm tells everything in its own time, and something else.
        if (kept->storm)
            continue;
        for (int group = 0; VCTP3::valid_ChannelReportType(group); ++group)
            if (changes & (1U << group))
                send_channel_report(channel.name(), static_cast<VCTP3::ChannelReportType>(group));
    }
}

template <typename Wants> void VeskStation::send_to(Wants const &wants, XMLTree const &report)
{
    QByteArray bytes;
    for (auto const &[connection, client] : clients) {
        if (!wants(connection, client->session.registrations()))
            continue;
        if (bytes.isEmpty())
            bytes = vesk_report_bytes(report);
        client->outbox.add_report(bytes);
        if (trace && !present_faults.silent)
            trace(connection, '>', bytes);
    }
}

void VeskStation::send_told(Told const &told)
{
    auto const wants = [&told](quint64 connection, VeskRegistrations const &registered) {
        switch (told.to) {
        case Told::To::group:
            return registered.has(told.group);
        case Told::To::one:
            return connection == told.connection;
        case Told::To::all:
            break;
        }
        return true;
    };
    send_to(wants, told.report);
}

void VeskStation::send_channel_report(VCTP3::Channel channel, VCTP3::ChannelReportType group)
{
    // Made only if somebody wants it: 40 moving channels make thousands of these in a second.
    XMLTree report;
    auto const wants = [&](quint64, VeskRegistrations const &registered) {
        if (!registered.has(channel, group))
            return false;
        if (report.is_null())
            report = kept->channel_report(channel, group);
        return true;
    };
    send_to(wants, report);
}
