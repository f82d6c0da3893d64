// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/verb.h"

#include "tools/tarnctl/answer.h"
#include "tools/tarnctl/quit_signal.h"
#include "tools/tarnctl/verbs.h"

#include <QTimer>

namespace TarnCtl {

void Verb::attach(Session *session, Output *output)
{
    own_session = session;
    own_output = output;
    connect(session, &Session::sig_connected, this, [this] { connected(); });
}

bool Verb::add_call(char const *command, QStringList const &arguments, QString *error)
{
    CommandInfo const *const found = find_command(QLatin1String(command));
    return A_ASSERT(found) && add_call(*found, arguments, error);
}

bool Verb::add_call(CommandInfo const &command, QStringList const &arguments, QString *error)
{
    Call call{&command, {}};
    if (!call.parameters.read(command, arguments, error))
        return false;
    calls.push_back(call);
    return true;
}

void Verb::connected()
{
    next = 0;
    send_next();
}

void Verb::send_next()
{
    if (session().is_over())
        return;
    if (next == calls.size()) {
        done();
        return;
    }
    Call const &call = calls[next++];
    auto *const answer = new Answer(this);
    connect(answer, &Answer::sig_reply, this, [this](JsonValue const &reply) {
        if (!session().is_over())
            got_reply(reply);
    });
    connect(answer, &Answer::sig_failed, this, &Verb::failed);
    connect(answer, &Answer::sig_done, this, &Verb::send_next);
    connect(answer, &Answer::sig_done, answer, &QObject::deleteLater);
    connect(answer, &Answer::sig_failed, answer, &QObject::deleteLater);
    call.command->call(call.parameters, session().api(), answer);
}

void Verb::got_reply(JsonValue const &reply)
{
    bool const is_ok = reply.scalar_of(QStringLiteral("reply")) == QLatin1String("ok");
    if (output().as_json() || !is_ok || next == calls.size())
        output().reply(reply);
}

void Verb::done()
{
    session().finish(ExitCode::Done);
}

void Verb::end_when_unwanted()
{
    output().follow_reader();
    auto *const interrupt = new QuitSignal(this);
    connect(interrupt, &QuitSignal::sig_quit, this, [this] { session().finish(ExitCode::Done); });
}

void Verb::end_after(int ms)
{
    if (ms > 0)
        QTimer::singleShot(ms, this, [this] { session().finish(ExitCode::Done); });
}

void Verb::failed(JsonValue const &error)
{
    // For a lost connection the library fails all commands; the session tells of that.
    if (session().is_over() || !session().is_server_error())
        return;
    if (output().as_json())
        output().json_line(error);
    else
        complain(QStringLiteral("the server answered: %1 (%2)")
                     .arg(visible(error.scalar_of(QStringLiteral("ErrorMessage"))),
                         error.scalar_of(QStringLiteral("ErrorCode"))));
    session().finish(ExitCode::ServerError);
}

QString argument(char const *element, QString const &value)
{
    return QLatin1String(element) + u'=' + value;
}

} // namespace TarnCtl
