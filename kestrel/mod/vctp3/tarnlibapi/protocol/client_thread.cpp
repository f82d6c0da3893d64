// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/client_thread_p.h"

#include <climits>
#include <csignal>
#include <memory>
#include <poll.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>

namespace VCTP3 {

namespace {

constexpr std::size_t stack_size = 65536;

/// The platform's least is larger on machines with wide registers.
std::size_t usable_stack_size()
{
    long const least = ::sysconf(_SC_THREAD_STACK_MIN);
    return std::max(stack_size, least > 0 ? static_cast<std::size_t>(least) : 0);
}

void try_priority(int priority)
{
    if (priority == 0)
        return;
    // On this platform a thread's own urgency is its niceness, which counts the other way.
    auto const self = static_cast<id_t>(::gettid());
    int const nice = ::getpriority(PRIO_PROCESS, self) - std::clamp(priority, -39, 39);
    ::setpriority(PRIO_PROCESS, self, nice);
}

} // namespace

struct ClientThread::Start
{
    int priority;
    AFunction run;
};

bool ClientThread::start(int priority, AFunction const &run)
{
    join();
    auto handed = std::make_unique<Start>(Start{priority, run});
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, usable_stack_size());
    // The program's signal handlers would find too little stack here.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    started = pthread_create(&thread, &attributes, &ClientThread::entry, handed.get()) == 0;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    pthread_attr_destroy(&attributes);
    if (started)
        static_cast<void>(handed.release());
    return started;
}

void *ClientThread::entry(void *start)
{
    std::unique_ptr<Start> const handed(static_cast<Start *>(start));
    pthread_setname_np(pthread_self(), "VCTP3Client");
    try_priority(handed->priority);
    handed->run();
    return nullptr;
}

void ClientThread::join()
{
    if (started)
        pthread_join(thread, nullptr);
    started = false;
}

void ClientThread::pause_ms(int milliseconds)
{
    ::poll(nullptr, 0, milliseconds);
}

} // namespace VCTP3
