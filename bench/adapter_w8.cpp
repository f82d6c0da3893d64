// SPDX-License-Identifier: Apache-2.0
// Command to answer over the loopback, through the whole client: `APIQt`, its parser thread and a
// callback group. The far end is a blocking thread on raw sockets, as it is for the peers.
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt.h"
#include "message_stream.hpp"

#include <QCoreApplication>
#include <QHostAddress>

#include <arpa/inet.h>
#include <benchmark/benchmark.h>
#include <ctime>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <pthread.h>
#include <sched.h>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace {

// An address of its own, since the protocol's port is fixed.
constexpr char const *far_end = "127.98.0.1";

void place(pthread_t thread, bool same)
{
    cpu_set_t set;
    CPU_ZERO(&set);
    CPU_SET(0, &set);
    if (!same)
        CPU_SET(1, &set);
    pthread_setaffinity_np(thread, sizeof set, &set);
}

double thread_cpu()
{
    timespec t;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return double(t.tv_sec) + double(t.tv_nsec) * 1e-9;
}

/// Answers each command with "ok" or a clip record under its id, one send for all that one
/// receive brought.
class FarEnd
{
public:
    explicit FarEnd(bool clip)
    {
        if (clip) {
            wl::Stream const stream = wl::kind_stream(wl::Kind::ClipInfo, 4096);
            std::string const whole(stream.view(0));
            tail = whole.substr(whole.find("</xid>"));
        }
        listener = ::socket(AF_INET, SOCK_STREAM, 0);
        int const one = 1;
        ::setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(8913);
        ::inet_pton(AF_INET, far_end, &address.sin_addr);
        if (::bind(listener, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0)
            std::abort();
        ::listen(listener, 1);
        thread = std::thread([this] { serve(); });
    }
    ~FarEnd()
    {
        thread.join();
        ::close(listener);
    }
    pthread_t handle() { return thread.native_handle(); }

private:
    void serve()
    {
        int const socket = ::accept(listener, nullptr, nullptr);
        int const one = 1;
        ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
        std::string held;
        std::string out;
        char block[65536];
        for (ssize_t n = 0; (n = ::recv(socket, block, sizeof block, 0)) > 0;) {
            held.append(block, std::size_t(n));
            out.clear();
            std::size_t done = 0;
            for (std::size_t end = 0; (end = held.find("</cmd>", done)) != held.npos;) {
                std::size_t const id = held.find("<xid>", done) + 5;
                out += "<reply><xid>";
                out.append(held, id, held.find('<', id) - id);
                out += tail;
                done = end + 6;
            }
            held.erase(0, done);
            for (std::size_t sent = 0; sent < out.size();) {
                ssize_t const w
                    = ::send(socket, out.data() + sent, out.size() - sent, MSG_NOSIGNAL);
                if (w <= 0)
                    break;
                sent += std::size_t(w);
            }
        }
        ::close(socket);
    }

    int listener = -1;
    std::string tail = "</xid><ok/></reply>";
    std::thread thread;
};

/// Rounds of 5000 commands with a number of them in flight.
void tarn_command(benchmark::State &state)
{
    bool const clip = state.range(1) != 0;
    bool const same = state.range(2) != 0;
    // Threads started from here on inherit the place, the parser's among them.
    place(pthread_self(), same);
    FarEnd server(clip);
    place(server.handle(), same);
    VCTP3::APIQt client;
    QObject::connect(&client, &VCTP3::APIQt::connected, [] { QCoreApplication::exit(); });
    client.connect_to_server(QHostAddress(QString::fromLatin1(far_end)));
    QCoreApplication::exec();

    int const window = int(state.range(0));
    int const want = 5000;
    int got = 0;
    int sent = 0;
    VCTP3::CallbackGroup_set1 ok;
    VCTP3::CallbackGroup_set4 info;
    auto const send = [&] {
        ++sent;
        if (clip)
            client.cmd_get_clip_info(AString::l1("Cam1_0001"), info);
        else
            client.cmd_sync(ok);
    };
    auto const answered = [&] {
        ++got;
        if (sent < want)
            send();
        if (got == want)
            QCoreApplication::exit();
    };
    QObject::connect(&ok, &VCTP3::CallbackGroup_set1::sig_ok, answered);
    QObject::connect(&info, &VCTP3::CallbackGroup_set4::sig_clipinfo, answered);

    double cpu = 0;
    std::int64_t total = 0;
    for (auto _ : state) {
        got = sent = 0;
        double const before = thread_cpu();
        for (int i = 0; i < window; ++i)
            send();
        QCoreApplication::exec();
        cpu += thread_cpu() - before;
        total += want;
    }
    state.counters["client_cpu_us"] = cpu * 1e6 / double(total);
    state.SetItemsProcessed(total);
    client.disconnect_from_server();
    while (client.is_connected())
        QCoreApplication::processEvents();
    place(pthread_self(), false);
}

} // namespace

BENCHMARK(tarn_command)
    ->Args({1, 0, 1})
    ->Args({6, 0, 1})
    ->Args({64, 0, 1})
    ->Args({6, 1, 1})
    ->Args({1, 0, 0})
    ->Args({64, 0, 0})
    ->Args({6, 1, 0})
    ->ArgNames({"inflight", "clip", "same"})
    ->UseRealTime();
