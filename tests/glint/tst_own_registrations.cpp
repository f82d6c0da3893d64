// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/channel_monitor.h"
#include "ATarnLib/glint/output_monitor.h"
#include "tests/glint/own_signals.h"
#include "tests/glint/random_listeners.h"

#include <QTest>

namespace {

/// Those who listen to an application's own objects, and what must be registered for them.
class OwnListeners : public RandomListeners
{
public:
    OwnListeners(HubBench *of, unsigned int seed)
        : RandomListeners(of, seed)
    {
        std::array<ChannelMonitor *, 12> all{};
        for (unsigned int i = 0; i < all.size(); ++i) {
            all[i] = &channels[i];
            channels[i].config(bench->hub.get(), static_cast<VCTP3::Channel>(i));
        }
        for (unsigned int i = 0; i < outputs.size(); ++i)
            outputs[i] = std::make_unique<OutputMonitor>(
                i, bench->hub->get_channel_config(), all.data(), 12);
    }

    QSet<QString> must_be_registered() const override
    {
        QSet<QString> result;
        for (Listener const &listener : listeners)
            add_registration(listener.wish, &result);
        for (ReportWish const &wish : guest_wishes)
            add_registration(wish, &result);
        return result;
    }

private:
    void listen_to_channel() override
    {
        unsigned int const number = below(6);
        if (number == 5)
            return change_guest();
        auto const &signal = any_of(OwnSignals<ChannelMonitor>::all());
        listeners.push_back({signal.connect(&channels[number], &receiver),
            {false, number, QString::fromLatin1(signal.report)}});
    }
    void listen_to_output() override
    {
        auto const &signal = any_of(OwnSignals<OutputMonitor>::all());
        unsigned int const number = below(outputs.size());
        listeners.push_back({signal.connect(outputs[number].get(), &receiver),
            {true, number, QString::fromLatin1(signal.report)}});
    }

    /// Destroys the object that came last while it is listened to. Another one may come.
    void change_guest()
    {
        guest.reset();
        guest_wishes.clear();
        if (below(3) == 0)
            return;
        guest = std::make_unique<ChannelMonitor>();
        unsigned int const number = 12 + below(3);
        guest->config(bench->hub.get(), static_cast<VCTP3::Channel>(number));
        for (int listener = 0; listener < 3; ++listener) {
            auto const &signal = any_of(OwnSignals<ChannelMonitor>::all());
            signal.connect(guest.get(), &receiver);
            guest_wishes.push_back({false, number, QString::fromLatin1(signal.report)});
        }
    }

    std::array<ChannelMonitor, 12> channels;
    std::unique_ptr<ChannelMonitor> guest;
    std::vector<ReportWish> guest_wishes;
    std::array<std::unique_ptr<OutputMonitor>, 4> outputs;
};

} // namespace

/// What is registered on the wire is what an application's own objects are listened to for.
class TestOwnRegistrations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void what_is_registered_is_what_is_listened_to_data();
    void what_is_registered_is_what_is_listened_to();
};

void TestOwnRegistrations::what_is_registered_is_what_is_listened_to_data()
{
    QTest::addColumn<unsigned int>("seed");
    for (unsigned int seed = 1; seed <= 4; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestOwnRegistrations::what_is_registered_is_what_is_listened_to()
{
    QFETCH(unsigned int, seed);
    compare_registrations<OwnListeners>(seed, 100);
}

QTEST_GUILESS_MAIN(TestOwnRegistrations)
#include "tst_own_registrations.moc"
