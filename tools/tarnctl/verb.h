// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/tarnctl/command_line.h"
#include "tools/tarnctl/output.h"
#include "tools/tarnctl/parameters.h"
#include "tools/tarnctl/session.h"

#include <QObject>

#include <vector>

namespace TarnCtl {

/// A verb at work: a row of commands, each sent when the one before is answered. What an answer
/// means to people is what verbs differ in.
/// Thread: that of the session.
class Verb : public QObject
{
    Q_OBJECT

public:
    /// Checks the values of words and options that suit the verb's usage, before anything is sent.
    /// On failure: false, the reason in *error.
    virtual bool prepare(CommandLine const &line, QString *error) = 0;
    /// Whether it works on a hub.
    virtual bool wants_hub() const { return false; }

    /// Runs on \a session once that is connected; both must outlive this object.
    void attach(Session *session, Output *output);

protected:
    /// Adds a command. \a arguments as ELEMENT=VALUE.
    bool add_call(char const *command, QStringList const &arguments, QString *error);
    bool add_call(CommandInfo const &command, QStringList const &arguments, QString *error);

    /// The connection is up, for the first time or again. Sends the commands from the first one.
    virtual void connected();
    /// Each reply but `error`. Prints it; for people not the "ok" of a command that others follow.
    virtual void got_reply(JsonValue const &reply);
    /// The last command is answered. Ends the program.
    virtual void done();

    /// Ends the program when a person or a script has had enough: by an interrupt, or by reading no
    /// more.
    void end_when_unwanted();
    /// Ends the program after that time; never for 0.
    void end_after(int ms);

    Session &session() { return *own_session; }
    Output &output() { return *own_output; }

private:
    struct Call
    {
        CommandInfo const *command;
        Parameters parameters;
    };

    void send_next();
    void failed(JsonValue const &error);

    Session *own_session = nullptr;
    Output *own_output = nullptr;
    std::vector<Call> calls;
    /// The command to send next.
    std::size_t next = 0;
};

/// "ELEMENT=VALUE"
QString argument(char const *element, QString const &value);

} // namespace TarnCtl
