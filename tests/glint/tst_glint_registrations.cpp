// SPDX-License-Identifier: Apache-2.0
#include "tests/glint/monitor_signals.h"
#include "tests/glint/random_listeners.h"

#include <QTest>
#include <set>

namespace {

/// Those who listen, and what must be registered for them.
class HubListeners : public RandomListeners
{
public:
    using RandomListeners::RandomListeners;

    QSet<QString> must_be_registered() const override { return expected; }

private:
    void listen_to_channel() override
    {
        auto const &signal = any_of(MonitorSignals::of_channel());
        unsigned int const number = below(5);
        add({signal.connect(bench->hub->get_channel_monitor(number), &receiver, [] {}),
            {false, number, QString::fromLatin1(signal.report)}});
    }
    void listen_to_output() override
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
    void has_settled() override
    {
        for (ReportWish const &wish : wishes)
            add_registration(wish, &expected);
    }
    void forget_the_gone() override
    {
        wishes.clear();
        expected.clear();
        for (Listener const &listener : listeners)
            wishes.insert(listener.wish);
    }

    std::set<ReportWish> wishes; // of those who listen, or did since the last pass
    QSet<QString> expected; // of these, since the last pass
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
    compare_registrations<HubListeners>(seed, 120);
}

QTEST_GUILESS_MAIN(TestGlintRegistrations)
#include "tst_glint_registrations.moc"
