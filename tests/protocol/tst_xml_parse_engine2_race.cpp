// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/xml_parse_engine2.h"
#include "tests/support/patience.h"

#include <QDeadlineTimer>
#include <QTest>
#include <atomic>

#include <sched.h>

namespace {

constexpr unsigned long long buffer_size = 65536;

/// Keeps the calling thread on one of the processors that it may run on, the one of that number.
/// False, and nothing is done, if there are not so many.
bool take_processor(int number)
{
    cpu_set_t allowed;
    if (::sched_getaffinity(0, sizeof allowed, &allowed) != 0)
        return false;
    for (int i = 0; i < CPU_SETSIZE; ++i) {
        if (!CPU_ISSET(i, &allowed) || number-- > 0)
            continue;
        cpu_set_t own;
        CPU_ZERO(&own);
        CPU_SET(i, &own);
        return ::sched_setaffinity(0, sizeof own, &own) == 0;
    }
    return false;
}

/// Spins, as to be woken takes longer than what is waited for; false if it does not come.
template <typename Predicate> bool spin_until(Predicate const &there)
{
    QDeadlineTimer const deadline(patience_ms);
    for (unsigned int spins = 1; !there(); ++spins) {
        if (spins % 65536 == 0 && deadline.hasExpired())
            return false;
    }
    return true;
}

/// A reader that asks whether more is wanted at the very time when the worker goes from above the
/// high mark to below the low one. Behind an error the worker drops what comes, so that it does
/// that in one step, and nothing follows that could make good for it.
class MarkRace
{
public:
    MarkRace()
    {
        engine.config_tag("a");
        engine.config_preparation([this](XMLTree const &) {
            if (!placed)
                placed = take_processor(1);
            at_gate = true;
            (void)spin_until([this] { return !at_gate; });
            return nullptr;
        });
        QObject::connect(
            &engine, &XMLParseEngine2::input_wanted_again, &engine, [this] { ++told; },
            Qt::DirectConnection);
    }
    /// False if the two threads cannot run at the same time.
    bool take_processors()
    {
        engine.input_bytes("<a>1</a>");
        if (!spin_until([this] { return at_gate.load(); }))
            return false;
        at_gate = false;
        return placed && take_processor(0);
    }
    /// The reader asks when the worker has that many pieces, fewer than `pieces`, to go before the
    /// step. False if it has been stopped for good.
    bool run(unsigned int early)
    {
        engine.reset();
        engine.input_bytes("<a>1</a><a><</a>");
        // Behind the gate both threads are running.
        if (!spin_until([this] { return at_gate.load(); }))
            return false;
        unsigned int const before = told;
        unsigned long long const kept = engine.waiting_bytes();
        for (unsigned int i = 0; i < pieces; ++i)
            engine.input_bytes(piece);
        engine.input_bytes(flood);
        at_gate = false;
        unsigned long long const there = kept + flood_size + early;
        if (!spin_until([&] { return engine.waiting_bytes() <= there; }))
            return false;
        return engine.input_wanted() || is_told(before, kept);
    }

    static constexpr unsigned int pieces = 32;

private:
    bool is_told(unsigned int before, unsigned long long kept)
    {
        if (!spin_until([&] { return told != before || engine.waiting_bytes() <= kept; }))
            return false;
        // The first returns behind the worker's pass, the second behind what that has queued.
        for (int i = 0; i < 2; ++i)
            QMetaObject::invokeMethod(
                &engine, [] {}, Qt::BlockingQueuedConnection);
        return told != before;
    }

    static constexpr unsigned long long flood_size = XMLParseEngine2::high_water + buffer_size;

    std::atomic<bool> at_gate{false};
    std::atomic<bool> placed{false}; // the worker, on a processor of its own
    std::atomic<unsigned int> told{0};
    QByteArray const piece = QByteArray(1, 'x');
    QByteArray const flood = QByteArray(qsizetype(flood_size), 'x');
    XMLParseEngine2 engine{buffer_size}; // ends first, as its worker uses what is above
};

} // namespace

class TestXMLParseEngine2Race : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void a_reader_that_is_stopped_is_always_told_to_go_on();
};

void TestXMLParseEngine2Race::a_reader_that_is_stopped_is_always_told_to_go_on()
{
    MarkRace race;
    if (!race.take_processors())
        QSKIP("There is one processor alone, on which two threads do not race");
    // On a busy machine the two seldom run at the same time, and fewer rounds have to do.
    QDeadlineTimer const enough(5000);
    for (int round = 0; round < 1000 && (round < 8 || !enough.hasExpired()); ++round)
        QVERIFY2(race.run(unsigned(round) % 8),
            qPrintable(QStringLiteral("Stopped for good in round %1").arg(round)));
}

QTEST_GUILESS_MAIN(TestXMLParseEngine2Race)
#include "tst_xml_parse_engine2_race.moc"
