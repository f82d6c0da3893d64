// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/base/aobject_relay.h"
#include "ATarnLib/glint/asignal_router.h"
#include "tests/support/event_loop.h"
#include "tests/support/patience.h"

#include <QSignalSpy>
#include <QTest>
#include <thread>

/// Notes what it is told of its signals.
class Watched : public ASignalMonitor
{
    Q_OBJECT

public:
    QStringList told;

    using ASignalMonitor::ASignalMonitor;

Q_SIGNALS:
    void sig_number(unsigned int number);
    void sig_text(QString const &text, int more);

public Q_SLOTS:
    void note_attach(QByteArray const &signature)
    {
        told.append(QStringLiteral("+") + QString::fromLatin1(signature));
    }
    void note_detach(QByteArray const &signature)
    {
        told.append(QStringLiteral("-") + QString::fromLatin1(signature));
    }
    void note_plain() { told.append(QStringLiteral("plain")); }
};

/// A router with a signal of its own.
class Exit : public ASignalRouter
{
    Q_OBJECT

Q_SIGNALS:
    void sig_out();
    void sig_other();
    void sig_number(int number);
};

/// An object whose listeners are told of by another.
class Front : public QObject
{
    Q_OBJECT

public:
    explicit Front(ASignalMonitor *told)
        : monitor(told)
    {
        monitor->set_proxy(this);
    }

Q_SIGNALS:
    void sig_front();

protected:
    void connectNotify(QMetaMethod const &signal) override
    {
        monitor->proxy_connect_notify(isSignalConnected(signal), signal.methodSignature());
    }

private:
    ASignalMonitor *const monitor;
};

namespace {

QString const attached_number = QStringLiteral("+2sig_number(uint)");
QString const detached_number = QStringLiteral("-2sig_number(uint)");

} // namespace

/// Signals that know whether they are listened to, and routes between them.
class TestASignalMonitor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void names_are_normalized_data();
    void names_are_normalized();
    void an_entry_is_made_once();
    void entries_may_be_asked_for_by_many_threads();
    void each_listener_is_told_and_the_end_of_the_last();
    void slots_may_take_no_argument_and_belong_to_others();
    void a_removed_monitor_hears_nothing();
    void unknown_slots_are_refused();
    void every_way_of_leaving_is_seen_data();
    void every_way_of_leaving_is_seen();
    void coming_back_at_once_is_no_end();
    void a_listener_that_comes_with_the_end_of_another_signal_stays();
    void a_proxy_forwards_what_it_hears();
    void without_a_change_a_proxy_tells_nothing();
    void a_route_is_open_while_it_is_listened_to();
    void a_route_emits_once_however_many_listen();
    void a_route_added_to_a_listener_opens_at_once();
    void routes_meet_in_one_signal();
    void a_removed_route_is_closed();
    void a_route_that_does_not_fit_is_refused();
    void a_source_may_go_first();
    void a_route_may_lead_to_a_proxy();
    void no_proxy_is_the_object_itself();
    void a_proxy_may_go_first();
    void a_route_from_nothing_is_refused();
    void routes_of_a_source_that_has_gone_are_forgotten();
    void routes_may_be_added_and_removed_by_several_threads();
};

void TestASignalMonitor::names_are_normalized_data()
{
    QTest::addColumn<QByteArray>("given");
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("normalized") << QByteArray("2sig_number(uint)")
                                << QByteArray("2sig_number(uint)");
    QTest::newRow("without the code")
        << QByteArray("sig_number(uint)") << QByteArray("2sig_number(uint)");
    QTest::newRow("as it is written")
        << QByteArray("2sig_text( const QString & , int )") << QByteArray("2sig_text(QString,int)");
    QTest::newRow("a long name") << QByteArray("2sig_status(VCTP3::ChannelStatus)")
                                 << QByteArray("2sig_status(VCTP3::ChannelStatus)");
}

void TestASignalMonitor::names_are_normalized()
{
    QFETCH(QByteArray, given);
    QFETCH(QByteArray, name);
    QCOMPARE(ASignalMonitor::norm(given.constData()), name);
    QCOMPARE(ASignalMonitor::norm(QMetaMethod::fromSignal(&Watched::sig_number)),
        QByteArray("2sig_number(uint)"));
}

void TestASignalMonitor::an_entry_is_made_once()
{
    Watched watched;
    ASignalMonitorInternal *entry = watched.get_sigentry("2sig_number(uint)");
    QVERIFY(entry);
    QCOMPARE(watched.get_sigentry("2sig_number(uint)"), entry);
    QVERIFY(watched.get_sigentry("2sig_text(QString,int)") != entry);
}

void TestASignalMonitor::entries_may_be_asked_for_by_many_threads()
{
    Watched watched;
    std::vector<ASignalMonitorInternal *> found(8);
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < found.size(); ++t)
        threads.emplace_back([&, t] {
            for (int i = 0; i < 200; ++i)
                found[t] = watched.get_sigentry("2sig_" + QByteArray::number(i) + "()");
        });
    for (std::thread &thread : threads)
        thread.join();
    for (ASignalMonitorInternal *entry : found)
        QCOMPARE(entry, found[0]);
}

void TestASignalMonitor::each_listener_is_told_and_the_end_of_the_last()
{
    Watched watched;
    QVERIFY(watched.add_sig_monitor(
        "2sig_number(unsigned int)", "1note_attach(QByteArray)", "1note_detach(QByteArray)"));
    auto const first = connect(&watched, &Watched::sig_number, this, [] {});
    auto const second = connect(&watched, &Watched::sig_number, this, [] {});
    connect(&watched, &Watched::sig_text, this, [] {});
    QCOMPARE(watched.told, QStringList({attached_number, attached_number}));
    disconnect(first);
    EventLoop::turn();
    QCOMPARE(watched.told.size(), 2);
    disconnect(second);
    QTRY_COMPARE(watched.told, QStringList({attached_number, attached_number, detached_number}));
    EventLoop::turn();
    QCOMPARE(watched.told.size(), 3);
}

void TestASignalMonitor::slots_may_take_no_argument_and_belong_to_others()
{
    Watched watched;
    Watched first;
    Watched second;
    QVERIFY(watched.add_sig_monitor(
        "2sig_number(uint)", &first, "1note_plain()", &second, "1note_detach(QByteArray)"));
    disconnect(connect(&watched, &Watched::sig_number, this, [] {}));
    QTRY_COMPARE(second.told, QStringList(detached_number));
    QCOMPARE(first.told, QStringList(QStringLiteral("plain")));
    QCOMPARE(watched.told, QStringList());
}

void TestASignalMonitor::a_removed_monitor_hears_nothing()
{
    Watched watched;
    QVERIFY(watched.add_sig_monitor(
        "2sig_number(uint)", "1note_attach(QByteArray)", "1note_detach(QByteArray)"));
    QVERIFY(watched.remove_sig_monitor(
        "2sig_number(uint)", "1note_attach(QByteArray)", "1note_detach(QByteArray)"));
    QVERIFY(!watched.remove_sig_monitor(
        "2sig_number(uint)", "1note_attach(QByteArray)", "1note_detach(QByteArray)"));
    disconnect(connect(&watched, &Watched::sig_number, this, [] {}));
    EventLoop::turn();
    QCOMPARE(watched.told, QStringList());
}

void TestASignalMonitor::unknown_slots_are_refused()
{
    Watched watched;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("No such slot")));
    QVERIFY(
        !watched.add_sig_monitor("2sig_number(uint)", "1no_slot()", "1note_detach(QByteArray)"));
}

void TestASignalMonitor::every_way_of_leaving_is_seen_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("by its connection") << 0;
    QTest::newRow("by its signal") << 1;
    QTest::newRow("with all signals") << 2;
    QTest::newRow("by its end") << 3;
    QTest::newRow("from another thread") << 4;
}

void TestASignalMonitor::every_way_of_leaving_is_seen()
{
    QFETCH(int, way);
    Watched watched;
    watched.add_sig_monitor(
        "2sig_number(uint)", "1note_attach(QByteArray)", "1note_detach(QByteArray)");
    auto listener = std::make_unique<QObject>();
    auto const connection = connect(&watched, &Watched::sig_number, listener.get(), [] {});
    switch (way) {
    case 0:
        disconnect(connection);
        break;
    case 1:
        disconnect(&watched, &Watched::sig_number, listener.get(), nullptr);
        break;
    case 2:
        disconnect(&watched, nullptr, listener.get(), nullptr);
        break;
    case 3:
        listener.reset();
        break;
    default:
        std::thread([&connection] { QObject::disconnect(connection); }).join();
    }
    QTRY_COMPARE(watched.told, QStringList({attached_number, detached_number}));
}

void TestASignalMonitor::coming_back_at_once_is_no_end()
{
    Watched watched;
    watched.add_sig_monitor(
        "2sig_number(uint)", "1note_attach(QByteArray)", "1note_detach(QByteArray)");
    disconnect(connect(&watched, &Watched::sig_number, this, [] {}));
    connect(&watched, &Watched::sig_number, this, [] {});
    EventLoop::turn();
    QCOMPARE(watched.told, QStringList({attached_number, attached_number}));
}

void TestASignalMonitor::a_listener_that_comes_with_the_end_of_another_signal_stays()
{
    Watched watched;
    for (char const *signal : {"2sig_number(uint)", "2sig_text(QString,int)"})
        watched.add_sig_monitor(signal, "1note_attach(QByteArray)", "1note_detach(QByteArray)");
    // Whoever is told of the first end listens to what the second is about to be told of.
    QObject::connect(watched.get_sigentry("2sig_number(uint)"), &ASignalMonitorInternal::detached,
        &watched, [&] { QObject::connect(&watched, &Watched::sig_text, this, [] {}); });
    disconnect(connect(&watched, &Watched::sig_text, this, [] {}));
    disconnect(connect(&watched, &Watched::sig_number, this, [] {}));
    watched.told.clear();
    EventLoop::turn();
    QCOMPARE(
        watched.told, QStringList({detached_number, QStringLiteral("+2sig_text(QString,int)")}));
    // And its own end is told later.
    watched.told.clear();
    disconnect(&watched, &Watched::sig_text, this, nullptr);
    EventLoop::turn();
    QCOMPARE(watched.told, QStringList(QStringLiteral("-2sig_text(QString,int)")));
}

void TestASignalMonitor::a_proxy_forwards_what_it_hears()
{
    Watched watched;
    QCOMPARE(watched.proxy(), &watched);
    Front front(&watched);
    QCOMPARE(watched.proxy(), &front);
    watched.add_sig_monitor("2sig_front()", "1note_attach(QByteArray)", "1note_detach(QByteArray)");
    watched.add_sig_monitor(
        "2sig_number(uint)", "1note_attach(QByteArray)", "1note_detach(QByteArray)");
    connect(&watched, &Watched::sig_number, this, [] {});
    QCOMPARE(watched.told, QStringList());
    connect(&front, &Front::sig_front, this, [] {});
    QCOMPARE(watched.told, QStringList(QStringLiteral("+2sig_front()")));
}

void TestASignalMonitor::without_a_change_a_proxy_tells_nothing()
{
    Watched watched;
    watched.add_sig_monitor("2sig_front()", "1note_attach(QByteArray)", "1note_detach(QByteArray)");
    watched.proxy_connect_notify(false, "2sig_front()");
    watched.proxy_disconnect_notify(false, "2sig_front()");
    QCOMPARE(watched.told, QStringList());
    watched.proxy_connect_notify(true, "2sig_front()");
    watched.proxy_disconnect_notify(true, "2sig_front()");
    QCOMPARE(watched.told,
        QStringList({QStringLiteral("+2sig_front()"), QStringLiteral("-2sig_front()")}));
}

void TestASignalMonitor::a_route_is_open_while_it_is_listened_to()
{
    Watched source;
    source.add_sig_monitor(
        "2sig_number(uint)", "1note_attach(QByteArray)", "1note_detach(QByteArray)");
    Exit router;
    QVERIFY(router.add_route(&source, "2sig_number(uint)", "2sig_out()"));
    QCOMPARE(source.told, QStringList());
    int heard = 0;
    auto const connection = connect(&router, &Exit::sig_out, this, [&heard] { ++heard; });
    QCOMPARE(source.told, QStringList(attached_number));
    Q_EMIT source.sig_number(1);
    QCOMPARE(heard, 1);
    disconnect(connection);
    QTRY_COMPARE(source.told, QStringList({attached_number, detached_number}));
}

void TestASignalMonitor::a_route_emits_once_however_many_listen()
{
    AObjectRelay source;
    Exit router;
    router.add_route(&source, AObjectRelay::sig_name(7).constData(), "2sig_out()");
    router.add_route(&source, AObjectRelay::sig_name(7).constData(), "2sig_out()");
    int first = 0;
    int second = 0;
    connect(&router, &Exit::sig_out, this, [&first] { ++first; });
    connect(&router, &Exit::sig_out, this, [&second] { ++second; });
    source.slot(7);
    source.slot(8);
    QCOMPARE(first, 1);
    QCOMPARE(second, 1);
}

void TestASignalMonitor::a_route_added_to_a_listener_opens_at_once()
{
    AObjectRelay source;
    Exit router;
    int heard = 0;
    connect(&router, &Exit::sig_out, this, [&heard] { ++heard; });
    QVERIFY(router.add_route(&source, "2sig7()", "2sig_out()"));
    source.slot7();
    QCOMPARE(heard, 1);
}

void TestASignalMonitor::routes_meet_in_one_signal()
{
    AObjectRelay first;
    AObjectRelay second;
    Exit router;
    router.add_route(&first, "2sig1()", "2sig_out()");
    router.add_route(&second, "2sig2()", "2sig_out()");
    router.add_route(&second, "2sig2()", "2sig_other()");
    int out = 0;
    int other = 0;
    connect(&router, &Exit::sig_out, this, [&out] { ++out; });
    connect(&router, &Exit::sig_other, this, [&other] { ++other; });
    first.slot1();
    second.slot2();
    QCOMPARE(out, 2);
    QCOMPARE(other, 1);
}

void TestASignalMonitor::a_removed_route_is_closed()
{
    AObjectRelay first;
    AObjectRelay second;
    Exit router;
    router.add_route(&first, "2sig1()", "2sig_out()");
    router.add_route(&first, "2sig2()", "2sig_other()");
    router.add_route(&second, "2sig1()", "2sig_out()");
    int heard = 0;
    connect(&router, &Exit::sig_out, this, [&heard] { ++heard; });
    connect(&router, &Exit::sig_other, this, [&heard] { ++heard; });
    QVERIFY(router.remove_route(&second, "2sig1()", "2sig_out()"));
    QVERIFY(!router.remove_route(&second, "2sig1()", "2sig_out()"));
    second.slot1();
    QCOMPARE(heard, 0);
    first.slot1();
    QCOMPARE(heard, 1);
    QCOMPARE(router.remove_routes(&first), 2u);
    QCOMPARE(router.remove_routes(&first), 0u);
    first.slot1();
    first.slot2();
    QCOMPARE(heard, 1);
    connect(&router, &Exit::sig_out, this, [] {});
    first.slot1();
    QCOMPARE(heard, 1);
}

void TestASignalMonitor::a_route_that_does_not_fit_is_refused()
{
    Watched source;
    Exit router;
    QVERIFY(!router.add_route(&source, "2no_signal()", "2sig_out()"));
    QVERIFY(!router.add_route(&source, "2sig_number(uint)", "2no_signal()"));
    QVERIFY(!router.add_route(&source, "2sig_number(uint)", "2sig_number(int)"));
}

void TestASignalMonitor::a_source_may_go_first()
{
    Exit router;
    auto source = std::make_unique<AObjectRelay>();
    router.add_route(source.get(), "2sig1()", "2sig_out()");
    source.reset();
    int heard = 0;
    disconnect(connect(&router, &Exit::sig_out, this, [&heard] { ++heard; }));
    EventLoop::turn();
    QCOMPARE(heard, 0);
}

void TestASignalMonitor::a_route_may_lead_to_a_proxy()
{
    AObjectRelay source;
    Exit router;
    Front front(&router);
    QVERIFY(router.add_route(&source, "2sig1()", "2sig_front()"));
    int heard = 0;
    connect(&front, &Front::sig_front, this, [&heard] { ++heard; });
    source.slot1();
    QCOMPARE(heard, 1);
}

void TestASignalMonitor::no_proxy_is_the_object_itself()
{
    Watched watched;
    Front front(&watched);
    watched.add_sig_monitor(
        "2sig_number(uint)", "1note_attach(QByteArray)", "1note_detach(QByteArray)");
    watched.set_proxy(nullptr);
    QCOMPARE(watched.proxy(), &watched);
    connect(&watched, &Watched::sig_number, this, [] {});
    QCOMPARE(watched.told, QStringList(attached_number));
}

void TestASignalMonitor::a_proxy_may_go_first()
{
    AObjectRelay source;
    Exit router;
    auto front = std::make_unique<Front>(&router);
    QVERIFY(router.add_route(&source, "2sig1()", "2sig_front()"));
    connect(front.get(), &Front::sig_front, this, [] {});
    front.reset();
    QVERIFY(!router.proxy());
    source.slot1();
    router.proxy_disconnect_notify(true, "2sig_front()");
    router.proxy_connect_notify(true, "2sig_front()");
    QVERIFY(!router.add_route(&source, "2sig2()", "2sig_front()"));
    QVERIFY(router.remove_route(&source, "2sig1()", "2sig_front()"));
}

void TestASignalMonitor::a_route_from_nothing_is_refused()
{
    Exit router;
    QVERIFY(!router.add_route(nullptr, "2sig1()", "2sig_out()"));
    QVERIFY(!router.remove_route(nullptr, "2sig1()", "2sig_out()"));
    QCOMPARE(router.remove_routes(nullptr), 0u);
}

void TestASignalMonitor::routes_of_a_source_that_has_gone_are_forgotten()
{
    Exit router;
    int heard = 0;
    connect(&router, &Exit::sig_out, this, [&heard] { ++heard; });
    auto gone = std::make_unique<AObjectRelay>();
    QVERIFY(router.add_route(gone.get(), "2sig1()", "2sig_out()"));
    QVERIFY(router.add_route(gone.get(), "2sig2()", "2sig_other()"));
    gone.reset();
    AObjectRelay source;
    QVERIFY(router.add_route(&source, "2sig3()", "2sig_out()"));
    QCOMPARE(router.remove_routes(nullptr), 0u);
    source.slot3();
    QCOMPARE(heard, 1);
}

void TestASignalMonitor::routes_may_be_added_and_removed_by_several_threads()
{
    AObjectRelay source;
    Exit router;
    router.add_route(&source, "2sig0()", "2sig_out()");
    for (unsigned int round = 0; round < 200; ++round) {
        // One route goes while the next one comes; a third of them come to a listener.
        QByteArray const old = AObjectRelay::sig_name(round % 2);
        QByteArray const fresh = AObjectRelay::sig_name((round + 1) % 2);
        int heard = 0;
        QObject listener;
        if (round % 3 == 0)
            connect(&router, &Exit::sig_out, &listener, [&heard] { ++heard; });
        std::atomic<int> ready{0};
        auto const together = [&ready](auto change) {
            for (++ready; ready < 2;) { }
            change();
        };
        std::thread other([&] {
            together([&] { router.remove_route(&source, old.constData(), "2sig_out()"); });
        });
        together([&] { router.add_route(&source, fresh.constData(), "2sig_out()"); });
        other.join();
        if (round % 3 != 0)
            connect(&router, &Exit::sig_out, &listener, [&heard] { ++heard; });
        source.slot(round % 2);
        QCOMPARE(heard, 0);
        source.slot((round + 1) % 2);
        QCOMPARE(heard, 1);
        disconnect(&router, nullptr, &listener, nullptr);
        EventLoop::turn();
    }
}

QTEST_GUILESS_MAIN(TestASignalMonitor)
#include "tst_asignal_monitor.moc"
