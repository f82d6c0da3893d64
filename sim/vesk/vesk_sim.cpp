// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_sim.h"

#include "sim/vesk/vesk_channel_reports.h"
#include "sim/vesk/vesk_server.h"

#include <QCoreApplication>
#include <QEvent>
#include <QThread>

#include <condition_variable>
#include <deque>
#include <mutex>

namespace {

using Function = std::function<void(VeskServer &)>;

/// Runs a server and, one after another, the functions that others want to run beside it. What
/// passes between the threads is guarded by a mutex of our own, so that whoever checks our
/// locking need not know the toolkit's.
class ServerThread : public QThread
{
public:
    ServerThread(QHostAddress const &address, VeskSimOptions const &options)
        : listened(address)
        , wanted(options)
    {
        start();
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return server != nullptr; });
    }
    ~ServerThread() override
    {
        call([this](VeskServer &) { quit(); });
        {
            std::unique_lock lock(mutex);
            changed.wait(lock, [this] { return ended; });
        }
        wait();
    }

    void call(Function const &function)
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

    QHostAddress const &address() const { return listened; }
    /// As it was at the start.
    QString const &error() const { return listen_error; }

private:
    struct Task
    {
        Function const *function;
        bool done;
    };

    /// Runs the tasks in the server's thread, whatever the event holds.
    struct Waker : QObject
    {
        explicit Waker(ServerThread *of)
            : thread(of)
        {
        }
        void customEvent(QEvent *) override { thread->run_tasks(); }
        ServerThread *thread;
    };

    void run() override
    {
        serve();
        std::lock_guard const lock(mutex);
        ended = true;
        changed.notify_all();
    }

    void serve()
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

    void run_tasks()
    {
        std::unique_lock lock(mutex);
        while (!tasks.empty()) {
            Task *task = tasks.front();
            tasks.pop_front();
            lock.unlock();
            (*task->function)(*server);
            server->write_waiting();
            lock.lock();
            task->done = true;
            changed.notify_all();
        }
    }

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

} // namespace

struct VeskSim::Private
{
    Private(QHostAddress const &address, VeskSimOptions const &options)
        : thread(address, options)
    {
    }
    ServerThread thread;
};

VeskSim::VeskSim(QHostAddress const &address, VeskSimOptions const &options)
    : d(std::make_unique<Private>(address, options))
{
}

VeskSim::~VeskSim() = default;

void VeskSim::run(Function const &function) const
{
    d->thread.call(function);
}

bool VeskSim::is_listening() const
{
    bool result = false;
    run([&](VeskServer &server) { result = server.is_listening(); });
    return result;
}

QString VeskSim::listen_error() const
{
    return d->thread.error();
}

QHostAddress VeskSim::address() const
{
    return d->thread.address();
}

quint16 VeskSim::port() const
{
    return VeskServer::port;
}

void VeskSim::advance(unsigned int fields)
{
    run([=](VeskServer &server) { server.advance(fields); });
}

void VeskSim::set_real_time(bool on)
{
    run([=](VeskServer &server) { server.set_real_time(on); });
}

void VeskSim::refuse_connections(bool on)
{
    run([=](VeskServer &server) {
        QString error;
        if (on)
            server.stop_listening();
        else
            server.listen(&error);
    });
}

void VeskSim::stay_silent(bool on)
{
    run([=](VeskServer &server) { server.station().faults().silent = on; });
}

void VeskSim::close_after(quint64 bytes)
{
    run([=](VeskServer &server) { server.close_after(bytes); });
}

void VeskSim::split_writes(bool on)
{
    run([=](VeskServer &server) { server.station().faults().split_writes = on; });
}

void VeskSim::delay_replies(unsigned int fields)
{
    run([=](VeskServer &server) { server.station().faults().reply_delay = fields; });
}

void VeskSim::reorder_replies(unsigned int window, quint32 seed)
{
    run([=](VeskServer &server) {
        server.station().faults().reorder_window = window;
        server.station().faults().reorder_seed = seed;
    });
}

void VeskSim::fail_command(char const *name, char const *text, VCTP3::ErrorCode code)
{
    VeskFailure const failure{AString::l1(text), code};
    run([&](VeskServer &server) {
        server.station().faults().failing[AString::l1(name)] = failure;
    });
}

void VeskSim::clear_faults()
{
    run([](VeskServer &server) {
        QString error;
        server.listen(&error);
        server.station().faults() = VeskFaults();
        server.station().release_all();
        server.close_after({});
    });
}

void VeskSim::say(QByteArray const &bytes)
{
    run([&](VeskServer &server) { server.station().say(bytes); });
}

void VeskSim::report(VCTP3::ReportType group, XMLTree const &report)
{
    with_world([&](VeskWorld &world) { world.reporter->report(group, report); });
}

void VeskSim::drop_connections()
{
    run([](VeskServer &server) { server.drop_connections(); });
}

void VeskSim::stop()
{
    run([](VeskServer &server) {
        server.stop_listening();
        server.drop_connections();
    });
}

void VeskSim::restart(VeskState state)
{
    run([=](VeskServer &server) {
        QString error;
        server.stop_listening();
        server.restart(state);
        server.listen(&error);
    });
}

VeskCounters VeskSim::counters() const
{
    VeskCounters result;
    run([&](VeskServer &server) { result = server.station().counters(); });
    return result;
}

void VeskSim::with_world(std::function<void(VeskWorld &)> const &function)
{
    run([&](VeskServer &server) {
        function(server.station().world());
        server.station().send_reports();
    });
}

namespace {

/// The present value under \a key, by value; none if there is none.
template <typename Map>
AOption<typename Map::mapped_type> value_of(Map const &map, AString const &key)
{
    auto found = map.find(key);
    if (found == map.end())
        return {};
    return found->second;
}

} // namespace

quint64 VeskSim::fields() const
{
    quint64 result = 0;
    run([&](VeskServer &server) { result = server.station().world().clock.now(); });
    return result;
}

VeskChannelState VeskSim::channel_state(VCTP3::Channel channel, VCTP3::Layer layer) const
{
    VeskChannelState state;
    run([&](VeskServer &server) {
        VeskChannel const &read = server.station().world().channels.at(channel);
        VeskLayer const &transport = read.layer(layer);
        state.status = transport.status();
        if (transport.clip())
            state.clip = transport.clip()->id();
        state.position = transport.position();
        state.speed = transport.speed();
        state.information = VeskChannelReports::information(read, layer);
    });
    return state;
}

AOption<VCTP3::ClipInfo> VeskSim::clip(AString const &id) const
{
    AOption<VCTP3::ClipInfo> result;
    run([&](VeskServer &server) {
        AOption<VeskClip> const clip = value_of(server.station().world().clips.all(), id);
        if (clip)
            result = clip->info;
    });
    return result;
}

std::vector<AString> VeskSim::clip_ids() const
{
    std::vector<AString> result;
    run([&](VeskServer &server) {
        for (auto const &[id, clip] : server.station().world().clips.all())
            result.push_back(id);
    });
    return result;
}

AOption<VeskSetting> VeskSim::setting(AString const &name) const
{
    AOption<VeskSetting> result;
    run([&](VeskServer &server) {
        result = value_of(server.station().world().configuration.settings(), name);
    });
    return result;
}

AOption<AString> VeskSim::dictionary_value(AString const &key) const
{
    AOption<AString> result;
    run([&](VeskServer &server) { result = server.station().world().dictionary.value(key); });
    return result;
}

AOption<AString> VeskSim::metadata_value(AString const &database, AString const &key) const
{
    AOption<AString> result;
    run([&](VeskServer &server) {
        result = server.station().world().metadata.value(database, key);
    });
    return result;
}

AOption<std::vector<VCTP3::ListElement>> VeskSim::list(AString const &id) const
{
    AOption<std::vector<VCTP3::ListElement>> result;
    run([&](VeskServer &server) { result = value_of(server.station().world().lists.all(), id); });
    return result;
}

AOption<std::vector<VCTP3::ChaseElement>> VeskSim::chase(AString const &id) const
{
    AOption<std::vector<VCTP3::ChaseElement>> result;
    run([&](VeskServer &server) { result = value_of(server.station().world().chases.all(), id); });
    return result;
}

std::vector<AString> VeskSim::log() const
{
    std::vector<AString> result;
    run([&](VeskServer &server) {
        auto const &lines = server.station().world().log.lines();
        result.assign(lines.begin(), lines.end());
    });
    return result;
}
