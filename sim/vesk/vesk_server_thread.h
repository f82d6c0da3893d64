// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_server.h"

#include <QThread>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

/// Runs a server and, one after another, the functions that others want to run beside it. What
/// passes between the threads is guarded by a mutex of our own, so that whoever checks our
/// locking need not know the toolkit's.
/// Thread: made and destroyed on any one thread; `call` from any but its own.
class VeskServerThread : public QThread
{
public:
    using Function = std::function<void(VeskServer &)>;

    /// Returns when the server is there, whether it listens or not.
    VeskServerThread(QHostAddress const &address, VeskSimOptions const &options);
    ~VeskServerThread() override;

    /// Runs \a function in this thread and returns when it is done.
    void call(Function const &function);

    QHostAddress const &address() const { return listened; }
    /// As it was at the start.
    QString const &error() const { return listen_error; }

private:
    struct Task
    {
        Function const *function;
        bool done;
    };
    struct Waker;

    void run() override;
    void serve();
    void run_tasks();

    QHostAddress const listened;
    VeskSimOptions const wanted;
    std::mutex mutex;
    std::condition_variable changed;
    VeskServer *server = nullptr; // guarded by mutex; stays once it is set
    Waker *waker = nullptr; // as server
    bool ended = false; // guarded by mutex
    QString listen_error; // written before server
    std::deque<Task *> tasks; // guarded by mutex, as is what they point to
};
