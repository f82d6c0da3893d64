// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/quit_signal.h"

#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace TarnCtl {
namespace {

/// What a signal handler may do is little: write to a pipe that the event loop reads.
int quit_pipe[2] = {-1, -1};

void write_to_pipe(int)
{
    char const byte = 0;
    [[maybe_unused]] ssize_t const written = ::write(quit_pipe[1], &byte, 1);
}

void handle(void (*handler)(int))
{
    for (int const number : {SIGINT, SIGTERM}) {
        struct sigaction action = {};
        action.sa_handler = handler;
        action.sa_flags = SA_RESTART;
        ::sigaction(number, &action, nullptr);
    }
}

} // namespace

QuitSignal::QuitSignal(QObject *parent)
    : QObject(parent)
{
    if (::pipe2(quit_pipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto *const notifier = new QSocketNotifier(quit_pipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        Q_EMIT sig_quit();
    });
    handle(&write_to_pipe);
}

QuitSignal::~QuitSignal()
{
    handle(SIG_DFL);
    for (int &end : quit_pipe) {
        if (end >= 0)
            ::close(end);
        end = -1;
    }
}

} // namespace TarnCtl
