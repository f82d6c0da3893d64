// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/client_thread_p.h"
#include "tests/support/thoroughness.h"

#include <QTest>

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

using VCTP3::ClientThread;

namespace {

struct Seen
{
    std::size_t stack = 0;
    int nice = 0;
    bool signals_blocked = false;

    void look()
    {
        pthread_attr_t attributes;
        pthread_getattr_np(pthread_self(), &attributes);
        void *base = nullptr;
        pthread_attr_getstack(&attributes, &base, &stack);
        pthread_attr_destroy(&attributes);
        nice = ::getpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()));
        sigset_t mask;
        pthread_sigmask(SIG_SETMASK, nullptr, &mask);
        signals_blocked = sigismember(&mask, SIGUSR1) == 1 && sigismember(&mask, SIGALRM) == 1;
    }
};

Seen look(int priority)
{
    Seen seen;
    ClientThread thread;
    if (thread.start(priority, AFunction::bind<&Seen::look>(&seen)))
        thread.join();
    return seen;
}

} // namespace

class TestClientThread : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void has_a_stack_of_64_kib();
    void takes_a_lower_priority();
    void ignores_a_priority_without_the_right_to_it();
    void leaves_signals_to_other_threads();
    void can_be_started_again();
    void joins_nothing_if_not_started();
};

void TestClientThread::has_a_stack_of_64_kib()
{
    std::size_t const stack = look(0).stack;
    // The platform's least is larger on machines with wide registers.
    auto const least = std::size_t(qMax(65536L, ::sysconf(_SC_THREAD_STACK_MIN)));
    // A sanitizer adds what it needs itself.
    QVERIFY2(sanitized ? stack >= least : stack == least, QByteArray::number(qint64(stack)));
}

void TestClientThread::takes_a_lower_priority()
{
    int const own = ::getpriority(PRIO_PROCESS, 0);
    QCOMPARE(look(0).nice, own);
    QCOMPARE(look(-7).nice, qMin(own + 7, 19));
    QCOMPARE(look(-100).nice, 19);
}

void TestClientThread::ignores_a_priority_without_the_right_to_it()
{
    int const own = ::getpriority(PRIO_PROCESS, 0);
    int const nice = look(5).nice;
    QVERIFY(nice == own || nice == qMax(own - 5, -20));
}

void TestClientThread::leaves_signals_to_other_threads()
{
    QVERIFY(look(0).signals_blocked);
    sigset_t mask;
    pthread_sigmask(SIG_SETMASK, nullptr, &mask);
    QCOMPARE(sigismember(&mask, SIGUSR1), 0);
}

void TestClientThread::can_be_started_again()
{
    Seen first;
    Seen second;
    ClientThread thread;
    QVERIFY(thread.start(0, AFunction::bind<&Seen::look>(&first)));
    QVERIFY(thread.start(0, AFunction::bind<&Seen::look>(&second)));
    thread.join();
    QVERIFY(first.stack > 0);
    QVERIFY(second.stack > 0);
}

void TestClientThread::joins_nothing_if_not_started()
{
    ClientThread thread;
    thread.join();
}

QTEST_GUILESS_MAIN(TestClientThread)
#include "tst_client_thread.moc"
