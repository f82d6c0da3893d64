// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_parse.h"
#include "sim/vesk/vesk_handler.h"
#include "sim/vesk/vesk_session.h"
#include "sim/vesk/vesk_world.h"

#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

/// Gathers the answers to one command.
class CollectedRequest : public VeskRequest
{
public:
    explicit CollectedRequest(quint64 connection)
        : asking(connection)
    {
    }

    void ok() override { end(QStringLiteral("ok")); }
    void error(AString const &text, VCTP3::ErrorCode code) override
    {
        end(QString(VCTP3::ErrorCode_to_string(code)) + QStringLiteral(": ") + QString(text));
    }
    void reply(XMLTree const &element) override { elements.push_back(element); }
    quint64 connection() const override { return asking; }

    /// "ok" or "code: text"; empty when only replies came.
    QString last;
    std::vector<XMLTree> elements;

private:
    void end(QString const &text)
    {
        last = last.isEmpty() ? text : QStringLiteral("answered twice");
    }
    quint64 asking;
};

/// Keeps what the model told, as compact text; not what the house tells by itself all the time.
class ToldReports : public VeskReporter
{
public:
    void report(VCTP3::ReportType group, XMLTree const &element) override
    {
        if (group == VCTP3::ReportType::ltc_input || group == VCTP3::ReportType::temperature)
            return;
        told.append(QString(VCTP3::ReportType_to_string(group)) + QLatin1Char(' ')
            + QString(element.flatten(XMLTree::FlattenCompact)));
    }
    void report_to(quint64, XMLTree const &) override { }
    void report_to_all(XMLTree const &) override { }

    QStringList told;
};

/// A world in virtual time, and connections that ask it without sockets.
class ModelBench
{
public:
    explicit ModelBench(VCTP3::VideoStandard standard = VCTP3::VideoStandard::v1080_50i)
        : world(&reports, standard, VeskBoard::hd)
        , session(&world)
    {
    }

    /// Asks \a name with the elements \a parameters. "ok", "code: text", or the one reply.
    QString ask(char const *name, char const *parameters = "", quint64 connection = 1)
    {
        AString const tag = AString::from_latin1(name);
        AString const text
            = AString::l1("<%1>%2</%3>").arg(tag).arg(AString::l1(parameters)).arg(tag);
        CollectedRequest request(connection);
        AString error;
        if (!vesk_dispatch(XMLParse(text), request, session, &error))
            return QStringLiteral("unread: ") + QString(error);
        replies.clear();
        for (XMLTree const &element : request.elements)
            replies.append(QString(element.flatten(XMLTree::FlattenCompact)));
        return request.last.isEmpty() ? replies.join(QLatin1Char('\n')) : request.last;
    }

    void advance(unsigned int fields)
    {
        for (unsigned int field = 0; field < fields; ++field)
            world.advance_field();
    }
    /// What was told since the last call.
    QStringList told() { return std::exchange(reports.told, {}); }

    /// A clip of so many fields.
    VeskClip *clip(char const *id, unsigned int fields)
    {
        VeskFailure failure;
        return world.clips.create(
            AString::l1(id), VCTP3::TrackSet(VCTP3::TrackType::video), fields, &failure);
    }
    VeskChannel &channel(VCTP3::Channel name) { return world.channels.at(name); }
    VeskLayer const &layer(VCTP3::Channel name = VCTP3::Channel::A)
    {
        return channel(name).normal();
    }
    /// Status, position and speed, as in "play 12 1X".
    QString state(VCTP3::Channel name = VCTP3::Channel::A) { return state_of(layer(name)); }
    QString bed(VCTP3::Channel name = VCTP3::Channel::A)
    {
        return state_of(channel(name).layer(VCTP3::Layer::bed));
    }

    ToldReports reports;
    VeskWorld world;
    VeskSession session;
    /// All that the last command was replied, but for how it ended.
    QStringList replies;

private:
    static QString state_of(VeskLayer const &layer)
    {
        return QStringLiteral("%1 %2 %3")
            .arg(QString(VCTP3::ChannelStatus_to_string(layer.status())))
            .arg(layer.position())
            .arg(QString(AString::from_speed(layer.speed(), 15)));
    }
};
