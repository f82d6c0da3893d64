// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt.h"
#include "tests/protocol/link_up.h"
#include "tests/protocol/server_texts.h"
#include "tests/support/patience.h"
#include "tests/support/scripted_server.h"
#include "tests/support/socket_probe.h"

#include <QCoreApplication>
#include <QTcpSocket>
#include <QTest>

#include <map>
#include <memory>
#include <random>
#include <vector>

using namespace VCTP3;

namespace {

constexpr qint64 mib = 1024 * 1024;

/// Report number \a n, in about 8 KiB.
QByteArray report(int n)
{
    return "<report><userdict_change><Key>" + QByteArray::number(n) + "</Key><Value>"
        + QByteArray("some text &amp; ").repeated(550) + "</Value></userdict_change></report>";
}

/// Bytes of messages that have left the kernel and have not come out as a report.
qint64 held_by_client(ScriptedServer const &server, int descriptor, qint64 handled)
{
    // In this order: what is delivered in between is not held by the client, but unread.
    qint64 const delivered = server.bytes_delivered();
    return delivered - SocketProbe::unread_bytes(descriptor) - handled;
}

/// Has \a api, which is delivering its first message, read on as if the parser were slower.
void read_all_that_is_wanted(APIQt *api)
{
    auto *const socket = api->findChild<QTcpSocket *>();
    while (api->input_waiting() < 4 * mib && socket->waitForReadyRead(patience_ms)) { }
}

/// A group and how many answers it owes and has given.
struct Asked
{
    Asked()
    {
        QObject::connect(&group, &CallbackGroup_set2::sig_ok, &group, [this] { ++answered; });
        QObject::connect(&group, &CallbackGroup_set2::sig_error, &group, [this] { ++answered; });
    }

    CallbackGroup_set2 group;
    int asked = 0;
    int answered = 0;
};

} // namespace

class TestAPIQtLoad : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void a_blocked_owner_does_not_grow_memory();
    void groups_and_connections_may_go_at_any_time_data();
    void groups_and_connections_may_go_at_any_time();
    void commands_and_reports_pass_each_other_under_load();
};

void TestAPIQtLoad::a_blocked_owner_does_not_grow_memory()
{
    ScriptedServer server;
    APIQt api;
    QVERIFY(link_up(&api, server));
    int const descriptor = SocketProbe::descriptor_to(server.address(), ScriptedServer::port);

    int next = 0;
    bool in_order = true;
    qint64 handled = 0;
    qint64 most_held = 0;
    connect(&api, &APIQt::report_userdict_change, this, [&](AString const &key) {
        in_order = in_order && QString(key).toInt() == next;
        handled += report(next).size();
        if (++next == 1)
            read_all_that_is_wanted(&api);
        most_held = qMax(most_held, held_by_client(server, descriptor, handled));
        // Blocked a second time, with messages in every queue.
        if (next == 300)
            QVERIFY(server.wait_until_stalled());
    });

    QByteArray flood;
    int reports = 0;
    while (flood.size() < 64 * mib)
        flood += report(reports++);
    server.say(flood);
    QVERIFY(server.wait_until_stalled());
    QVERIFY(server.bytes_sent() < flood.size());
    QCOMPARE(next, 0);

    QTRY_COMPARE_WITH_TIMEOUT(next, reports, 100000);
    QVERIFY(in_order);
    QCOMPARE(handled, flood.size());
    // 4 MiB in the parser's queues, beside what the socket and the engine hold.
    QVERIFY2(most_held < 5 * mib, qPrintable(QString::number(most_held)));
    QVERIFY2(most_held > 3 * mib, "The load was too light to prove anything");
}

void TestAPIQtLoad::groups_and_connections_may_go_at_any_time_data()
{
    QTest::addColumn<unsigned int>("seed");
    for (unsigned int seed = 1; seed <= 10; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestAPIQtLoad::groups_and_connections_may_go_at_any_time()
{
    QFETCH(unsigned int, seed);
    std::mt19937 random(seed);
    auto const below = [&](unsigned int limit) { return random() % limit; };

    ScriptedServer server;
    QByteArray const small_report = clip_created("x");
    server.answer_with([&](QByteArray const &command) {
        return clip_listed(command, "a") + small_report + ScriptedServer::ok_to(command);
    });
    std::unique_ptr<APIQt> api;
    std::vector<std::unique_ptr<Asked>> groups;
    auto const begin = [&] {
        api = std::make_unique<APIQt>();
        connect(api.get(), &APIQt::disconnected, api.get(), &APIQt::reconnect);
        api->connect_to_server(server.address());
    };
    begin();
    for (int step = 0; step < 300; ++step) {
        switch (below(12)) {
        case 0: {
            // Commands in flight go with their connection, and so do their answers.
            api.reset();
            groups.clear();
            begin();
            break;
        }
        case 1:
            server.hang_up();
            break;
        case 2:
            if (!groups.empty())
                groups.erase(groups.begin() + below(unsigned(groups.size())));
            break;
        case 3:
            server.say(small_report.repeated(20));
            break;
        case 4:
        case 5:
        case 6:
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            break;
        default:
            if (groups.size() < 20)
                groups.push_back(std::make_unique<Asked>());
            Asked &one = *groups[below(unsigned(groups.size()))];
            ++one.asked;
            api->cmd_download_clipids(one.group);
        }
    }
    // Who lives on has heard one last answer to each command.
    for (auto const &one : groups)
        QTRY_COMPARE(one->answered, one->asked);
}

void TestAPIQtLoad::commands_and_reports_pass_each_other_under_load()
{
    constexpr int commands = 2000;
    ScriptedServer server;
    server.answer_with([](QByteArray const &command) {
        return clip_created(ScriptedServer::xid(command)) + ScriptedServer::ok_to(command);
    });
    APIQt api;
    QVERIFY(link_up(&api, server));
    int reports = 0;
    int oks = 0;
    bool in_order = true;
    connect(&api, &APIQt::report_clip_created, this, [&] { ++reports; });
    CallbackGroup_set1 group;
    connect(&group, &CallbackGroup_set1::sig_ok, this, [&] {
        ++oks;
        in_order = in_order && reports == oks;
    });
    for (int i = 0; i < commands; ++i)
        api.cmd_sync(group);
    QTRY_COMPARE(oks, commands);
    QVERIFY(in_order);
}

QTEST_GUILESS_MAIN(TestAPIQtLoad)
#include "tst_api_qt_load.moc"
