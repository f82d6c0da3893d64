// SPDX-License-Identifier: Apache-2.0
#include "tests/glint/monitor_signals.h"
#include "tests/glint/random_listeners.h"

#include <QTest>
#include <set>

namespace {

/// Those who listen, and what must be registered for them.
class Listeners : RandomListeners
{
public:
    using RandomListeners::RandomListeners;

    void step()
    {
        switch (below(12)) {
        case 0:
        case 1:
        case 2:
            listen_to_channel();
            break;
        case 3:
        case 4:
        case 5:
            listen_to_output();
            break;
        case 6:
        case 7:
        case 8:
            leave();
            break;
        case 9:
            settle();
            bench->ten_seconds_pass();
            forget_the_gone();
            break;
        case 10:
            reached = change_board();
            break;
        default:
            if (below(4) == 0)
                reached = bench->reconnect();
        }
        settle();
    }
    /// Whether all waits of the last step have come to their end.
    bool is_sound() const { return reached; }
    /// What the last steps must have left registered: what is listened to, and what has been since
    /// the last pass.
    QSet<QString> const &must_be_registered() const { return expected; }

private:
    void listen_to_channel()
    {
        auto const &signal = any_of(MonitorSignals::of_channel());
        unsigned int const number = below(5);
        add({signal.connect(bench->hub->get_channel_monitor(number), &receiver, [] {}),
            {false, number, QString::fromLatin1(signal.report)}});
    }
    void listen_to_output()
    {
        auto const &signal = any_of(MonitorSignals::of_output());
        unsigned int const number = below(5);
        add({signal.connect(bench->hub->get_output_monitor(number), &receiver, [] {}),
            {true, number, QString::fromLatin1(signal.report)}});
    }
    void add(Listener const &listener)
    {
        listeners.push_back(listener);
        wishes.insert(listener.wish);
    }
    /// The event loop and the wire have come to rest.
    void settle()
    {
        reached = reached && bench->settle();
        for (ReportWish const &wish : wishes)
            add_registration(wish, &expected);
    }
    /// A pass sees who has left.
    void forget_the_gone()
    {
        wishes.clear();
        expected.clear();
        for (Listener const &listener : listeners)
            wishes.insert(listener.wish);
    }

    std::set<ReportWish> wishes; // of those who listen, or did since the last pass
    QSet<QString> expected;
    bool reached = true;
};

} // namespace

/// What is registered on the wire is what is listened to, whatever happens.
class TestGlintRegistrations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void what_is_registered_is_what_is_listened_to_data();
    void what_is_registered_is_what_is_listened_to();
};

void TestGlintRegistrations::what_is_registered_is_what_is_listened_to_data()
{
    QTest::addColumn<unsigned int>("seed");
    for (unsigned int seed = 1; seed <= 8; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestGlintRegistrations::what_is_registered_is_what_is_listened_to()
{
    QFETCH(unsigned int, seed);
    HubBench bench;
    QVERIFY(bench.connect());
    QVERIFY(bench.set_board("VVVV"));
    Listeners listeners(&bench, seed);
    for (int step = 0; step < 120; ++step) {
        listeners.step();
        QVERIFY(listeners.is_sound());
        QTRY_COMPARE(bench.log.channels_registered(), listeners.must_be_registered());
    }
    QVERIFY(!bench.log.commands(QStringLiteral("channel_report_unregister")).isEmpty());
}

QTEST_GUILESS_MAIN(TestGlintRegistrations)
#include "tst_glint_registrations.moc"
