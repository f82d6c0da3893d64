// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_server_thread.h"

#include <QCoreApplication>
#include <QEvent>

/// Runs the tasks in the server's thread, whatever the event holds.
struct VeskServerThread::Waker : QObject
{
    explicit Waker(VeskServerThread *of)
        : thread(of)
    {
    }
    void customEvent(QEvent *) override { thread->run_tasks(); }
    VeskServerThread *thread;
};

VeskServerThread::VeskServerThread(QHostAddress const &address, VeskSimOptions const &options)
    : listened(address)
    , wanted(options)
{
    start();
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return server != nullptr; });
}

VeskServerThread::~VeskServerThread()
{
    call([this](VeskServer &) { quit(); });
    {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return ended; });
    }
    wait();
}

void VeskServerThread::call(Function const &function)
{
    Task task{&function, false};
    {
        std::lock_guard const lock(mutex);
        tasks.push_back(&task);
    }
    QCoreApplication::postEvent(waker, new QEvent(QEvent::User));
    std::unique_lock lock(mutex);
    changed.wait(lock, [&task] { return task.done; });
}

void VeskServerThread::run()
{
    serve();
    std::lock_guard const lock(mutex);
    ended = true;
    changed.notify_all();
}

void VeskServerThread::serve()
{
    VeskServer here(listened, wanted);
    here.listen(&listen_error);
    Waker here_too(this);
    {
        std::lock_guard const lock(mutex);
        server = &here;
        waker = &here_too;
    }
    changed.notify_all();
    exec();
}

void VeskServerThread::run_tasks()
{
    std::unique_lock lock(mutex);
    while (!tasks.empty()) {
        Task *task = tasks.front();
        tasks.pop_front();
        lock.unlock();
        server->accept_waiting();
        (*task->function)(*server);
        server->write_waiting();
        lock.lock();
        task->done = true;
        changed.notify_all();
    }
}
