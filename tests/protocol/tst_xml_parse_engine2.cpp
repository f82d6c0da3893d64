// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/atimer.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/semaphores.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/xml_parse_engine2.h"
#include "tests/support/assert_log.h"
#include "tests/support/patience.h"

#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <atomic>
#include <climits>
#include <cstdlib>
#include <functional>
#include <memory>
#include <mutex>
#include <new>
#include <utility>

namespace {

/// Of the calling thread, so that a test can prove where memory is freed.
thread_local unsigned int deletions = 0;

} // namespace

void *operator new(std::size_t size)
{
    void *p = std::malloc(size ? size : 1);
    if (!p)
        std::abort();
    return p;
}

void operator delete(void *p) noexcept
{
    ++deletions;
    std::free(p);
}

void operator delete(void *p, std::size_t) noexcept
{
    ++deletions;
    std::free(p);
}

namespace {

constexpr unsigned long long buffer_size = 65536;

QByteArray message(int number)
{
    return "<a>" + QByteArray::number(number) + "</a>";
}

/// A message of exactly \a size bytes.
QByteArray message_of(qsizetype size)
{
    return "<a>" + QByteArray(size - 7, 'x') + "</a>";
}

QString content(XMLTree const &tree)
{
    return tree.get_content();
}

/// The next tree, waited for; null when none comes.
XMLTree next(XMLParseEngine2 &engine)
{
    XMLTree tree;
    (void)QTest::qWaitFor([&] { return !(tree = engine.get_xml()).is_null(); }, patience_ms);
    return tree;
}

/// An engine for the tags "a" and "b", its results in order, and a gate that stops its worker.
class Rig
{
public:
    explicit Rig(unsigned long long size = buffer_size)
        : engine(size)
    {
        auto *probe = new ATimer(true);
        probe->moveToThread(engine.thread());
        QObject::connect(engine.thread(), &QThread::finished, probe, &QObject::deleteLater);
        QObject::connect(
            probe, &ATimer::timeout, &context, [this] { settled = true; }, Qt::DirectConnection);
        start_probe = [probe] { probe->start(); };
        engine.config_tag("a");
        engine.config_tag("b");
        QObject::connect(&engine, &XMLParseEngine2::parse_result_available, &context, [this] {
            ++wakes;
            if (!keep_trees)
                take();
        });
        QObject::connect(
            &engine, &XMLParseEngine2::input_wanted_again, &context, [this] { ++wanted_again; });
        QObject::connect(
            &engine, &XMLParseEngine2::parse_result_available, &context, [this] { pass_ends(); },
            Qt::DirectConnection);
    }
    ~Rig() { open(); }

    void take()
    {
        for (XMLTree tree = engine.get_xml(); !tree.is_null(); tree = engine.get_xml())
            got.append(content(tree));
    }
    /// Returns when the worker stands still at the end of a pass; it has read "gate" then.
    void close()
    {
        closing = true;
        engine.input_bytes("<a>gate</a>");
        at_gate.semTake();
        closed = true;
    }
    void open()
    {
        if (std::exchange(closed, false))
            gate.semGive();
    }
    /// Waits until the worker has done what it has been woken for so far.
    bool settle()
    {
        settled = false;
        start_probe();
        bool const done = QTest::qWaitFor([this] { return settled.load(); }, patience_ms);
        QCoreApplication::processEvents();
        return done;
    }
    bool got_numbers(int count) const
    {
        for (int i = 0; i < count; ++i) {
            if (i >= got.size() || got.at(i) != QString::number(i))
                return false;
        }
        return got.size() == count;
    }

    QStringList got;
    bool keep_trees = false; // inside, until the test takes them
    int wakes = 0;
    int wanted_again = 0;
    std::atomic<unsigned int> worker_deletions{0}; // at the end of its last pass

private:
    void pass_ends()
    {
        std::lock_guard const here(worker.here);
        worker_deletions = deletions;
        if (closing.exchange(false)) {
            at_gate.semGive();
            gate.semTake();
        }
    }

    /// The order between the worker's last visit and what follows it, which the toolkit gives
    /// too, but not so that the thread sanitizer sees it.
    struct Visit
    {
        std::mutex here;
        ~Visit() { std::lock_guard const last(here); }
    };
    Visit worker;
    QObject context;
    std::function<void()> start_probe;
    std::atomic<bool> settled{false};
    std::atomic<bool> closing{false};
    BinarySemaphore at_gate{false};
    BinarySemaphore gate{false};
    bool closed = false;

public:
    XMLParseEngine2 engine; // ends first, as its worker uses the rest
};

QStringList list(std::initializer_list<char const *> texts)
{
    QStringList result;
    for (char const *text : texts)
        result.append(QString::fromLatin1(text));
    return result;
}

} // namespace

class TestXMLParseEngine2 : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothing_is_there_before_input();
    void two_messages_in_one_read_come_with_one_signal();
    void a_message_split_at_every_byte_comes_whole();
    void many_reads_keep_their_order();
    void reads_before_the_pass_are_worked_through_together();
    void work_is_done_on_another_thread();
    void no_bytes_are_no_input();
    void bytes_by_pointer_are_copied();
    void too_many_bytes_are_an_assertion();
    void configuration_after_input_is_an_assertion();
    void configuration_after_reset_is_an_assertion();
    void what_is_prepared_is_made_on_the_worker_for_each_tree();
    void a_message_is_taken_once_by_either_call();
    void a_message_outlives_a_reset_while_it_is_held();
    void what_is_given_back_is_freed_on_the_worker();
    void preparation_after_input_is_an_assertion();

    void an_error_comes_behind_the_trees_before_it();
    void an_error_at_the_end_of_a_read_comes_at_once();
    void an_error_blocks_until_reset();
    void an_error_is_told_once_data();
    void an_error_is_told_once();
    void a_message_must_fit_the_buffer_data();
    void a_message_must_fit_the_buffer();
    void a_stream_without_root_tag_is_an_error();

    void reset_drops_what_the_worker_has_not_seen();
    void reset_drops_what_the_worker_has_parsed();
    void reset_drops_half_a_message();
    void reset_drops_the_held_result();
    void reset_keeps_the_tags();
    void reset_wakes_nobody();
    void nothing_of_an_older_stream_ever_surfaces();

    void waiting_input_stops_the_reader();
    void waiting_trees_stop_the_reader();
    void more_is_wanted_from_the_low_mark_on();
    void dropped_bytes_do_not_wait_data();
    void dropped_bytes_do_not_wait();
    void reset_makes_room();
    void a_reader_that_waits_loses_nothing();

    void taking_trees_frees_nothing_here();
    void the_worker_frees_spent_trees_in_its_next_pass();
    void an_idle_worker_frees_large_trees();
    void can_be_destroyed_at_any_time();
};

void TestXMLParseEngine2::nothing_is_there_before_input()
{
    XMLParseEngine2 engine(buffer_size);
    QVERIFY(engine.get_xml().is_null());
    QVERIFY(!engine.parse_error());
    QVERIFY(engine.input_wanted());
}

void TestXMLParseEngine2::two_messages_in_one_read_come_with_one_signal()
{
    Rig rig;
    rig.engine.input_bytes("<a>1</a>\r\n<b>2</b>");
    QTRY_COMPARE(rig.got, list({"1", "2"}));
    QCOMPARE(rig.wakes, 1);
    rig.engine.input_bytes("<a>3</a>");
    QTRY_COMPARE(rig.got.size(), 3);
    QCOMPARE(rig.wakes, 2);
}

void TestXMLParseEngine2::a_message_split_at_every_byte_comes_whole()
{
    QByteArray const text("<a><c>\xc3\xa9</c></a>");
    for (qsizetype cut = 1; cut < text.size(); ++cut) {
        Rig rig;
        rig.close();
        rig.engine.input_bytes(text.left(cut));
        rig.engine.input_bytes(text.mid(cut));
        rig.engine.input_bytes("<b>end</b>");
        rig.open();
        QTRY_COMPARE(rig.got, list({"gate", "", "end"}));
    }
    Rig rig;
    for (char const byte : text)
        rig.engine.input_bytes(1, &byte);
    QTRY_COMPARE(rig.got.size(), 1);
}

void TestXMLParseEngine2::many_reads_keep_their_order()
{
    Rig rig;
    QByteArray all;
    for (int i = 0; i < 5000; ++i)
        all += message(i);
    for (qsizetype at = 0; at < all.size(); at += 1024)
        rig.engine.input_bytes(all.mid(at, 1024));
    QTRY_COMPARE(rig.got.size(), 5000);
    QVERIFY(rig.got_numbers(5000));
}

void TestXMLParseEngine2::reads_before_the_pass_are_worked_through_together()
{
    Rig rig;
    QSignalSpy worker_wakes(&rig.engine, &XMLParseEngine2::wake_thread);
    rig.close();
    QCOMPARE(worker_wakes.count(), 1);
    for (int i = 0; i < 10; ++i)
        rig.engine.input_bytes(message(i));
    QCOMPARE(worker_wakes.count(), 2);
    rig.open();
    QTRY_COMPARE(rig.got.size(), 11);
    // What a pass has added may be taken before the signal of it comes.
    QVERIFY(rig.settle());
    QCOMPARE(rig.wakes, 2);
}

void TestXMLParseEngine2::work_is_done_on_another_thread()
{
    std::atomic<QThread *> seen{nullptr};
    Rig rig;
    QVERIFY(rig.engine.thread() != QThread::currentThread());
    connect(
        &rig.engine, &XMLParseEngine2::parse_result_available, this,
        [&] { seen = QThread::currentThread(); }, Qt::DirectConnection);
    rig.engine.input_bytes(message(1));
    QTRY_COMPARE(rig.got.size(), 1);
    QVERIFY(rig.settle());
    QVERIFY(seen == rig.engine.thread());
}

void TestXMLParseEngine2::no_bytes_are_no_input()
{
    AssertLog log;
    Rig rig;
    rig.engine.input_bytes(QByteArray());
    rig.engine.input_bytes(0, nullptr);
    rig.engine.config_tag("c");
    QVERIFY(log.take().isEmpty());
    // An empty array is the mark of a reset on the inside; this one must not act as one.
    rig.engine.input_bytes("<c>wh");
    rig.engine.input_bytes(QByteArray());
    rig.engine.input_bytes("ole</c>");
    QTRY_COMPARE(rig.got, list({"whole"}));
}

void TestXMLParseEngine2::bytes_by_pointer_are_copied()
{
    Rig rig;
    rig.close();
    char text[] = "<a>copy</a>";
    rig.engine.input_bytes(sizeof text - 1, text);
    text[3] = 'X';
    rig.open();
    QTRY_COMPARE(rig.got, list({"gate", "copy"}));
}

void TestXMLParseEngine2::too_many_bytes_are_an_assertion()
{
    AssertLog log;
    Rig rig;
    rig.engine.input_bytes(INT_MAX, "<a>1</a>");
    QCOMPARE(log.take(), list({"byte_count < INT_MAX"}));
    rig.engine.config_tag("c");
    QVERIFY(log.take().isEmpty());
    rig.engine.input_bytes("<c>2</c>");
    QTRY_COMPARE(rig.got, list({"2"}));
}

void TestXMLParseEngine2::configuration_after_input_is_an_assertion()
{
    AssertLog log;
    Rig rig;
    rig.engine.input_bytes("<a>1</a>");
    rig.engine.config_tag("c");
    QCOMPARE(log.take(), list({"!flow_begun"}));
    rig.engine.input_bytes("<c>2</c><a>3</a>");
    QTRY_COMPARE(rig.got, list({"1", "3"}));
}

void TestXMLParseEngine2::configuration_after_reset_is_an_assertion()
{
    AssertLog log;
    Rig rig;
    rig.engine.reset();
    rig.engine.config_tag("c");
    QCOMPARE(log.take(), list({"!flow_begun"}));
}

namespace {

/// The content of a tree and where it was looked at.
struct Content : XMLParseEngine2::Prepared
{
    QString text;
    QThread *thread = nullptr;
};

/// Prepares all trees but those with the content "none".
std::unique_ptr<XMLParseEngine2::Prepared const> prepare(XMLTree const &tree)
{
    auto made = std::make_unique<Content>();
    made->text = content(tree);
    made->thread = QThread::currentThread();
    return made->text == QLatin1String("none") ? nullptr : std::move(made);
}

/// The next message, waited for; none when none comes.
XMLParseEngine2::Message next_message(XMLParseEngine2 &engine)
{
    XMLParseEngine2::Message message;
    (void)QTest::qWaitFor([&] { return engine.take_message(&message); }, patience_ms);
    return message;
}

Content const &prepared(XMLParseEngine2::Message const &message)
{
    return static_cast<Content const &>(*message.prepared);
}

} // namespace

void TestXMLParseEngine2::what_is_prepared_is_made_on_the_worker_for_each_tree()
{
    XMLParseEngine2 engine(buffer_size);
    engine.config_tag("a");
    engine.config_preparation(prepare);
    engine.input_bytes("<a>1</a><a>none</a><a>3</a>");
    XMLParseEngine2::Message const first = next_message(engine);
    QCOMPARE(content(first.tree), QStringLiteral("1"));
    QVERIFY(first.prepared);
    QCOMPARE(prepared(first).text, QStringLiteral("1"));
    QCOMPARE(prepared(first).thread, engine.thread());
    XMLParseEngine2::Message const second = next_message(engine);
    QCOMPARE(content(second.tree), QStringLiteral("none"));
    QVERIFY(!second.prepared);
    XMLParseEngine2::Message const third = next_message(engine);
    QVERIFY(third.prepared);
    QCOMPARE(prepared(third).text, QStringLiteral("3"));
}

void TestXMLParseEngine2::a_message_is_taken_once_by_either_call()
{
    XMLParseEngine2 engine(buffer_size);
    engine.config_tag("a");
    engine.config_preparation(prepare);
    engine.input_bytes("<a>1</a><a>2</a><a>3</a>");
    QCOMPARE(content(next(engine)), QStringLiteral("1"));
    QVERIFY(!engine.parse_error());
    XMLParseEngine2::Message second;
    QVERIFY(engine.take_message(&second));
    QCOMPARE(content(second.tree), QStringLiteral("2"));
    QCOMPARE(prepared(second).text, QStringLiteral("2"));
    QCOMPARE(content(engine.get_xml()), QStringLiteral("3"));
    QVERIFY(!engine.take_message(&second));
    QCOMPARE(content(second.tree), QStringLiteral("2"));
}

void TestXMLParseEngine2::a_message_outlives_a_reset_while_it_is_held()
{
    XMLParseEngine2 engine(buffer_size);
    engine.config_tag("a");
    engine.config_preparation(prepare);
    engine.input_bytes("<a>old</a>");
    XMLParseEngine2::Message held = next_message(engine);
    engine.reset();
    engine.input_bytes("<a>new</a>");
    XMLParseEngine2::Message const after = next_message(engine);
    QCOMPARE(content(held.tree), QStringLiteral("old"));
    QCOMPARE(prepared(held).text, QStringLiteral("old"));
    QCOMPARE(prepared(after).text, QStringLiteral("new"));
    engine.give_back(std::move(held));
}

namespace {

/// Tells on which thread it was freed.
struct Witness : XMLParseEngine2::Prepared
{
    explicit Witness(std::atomic<QThread *> *noted)
        : freed_on(noted)
    {
    }
    ~Witness() override { *freed_on = QThread::currentThread(); }

    std::atomic<QThread *> *const freed_on;
};

} // namespace

void TestXMLParseEngine2::what_is_given_back_is_freed_on_the_worker()
{
    std::atomic<QThread *> freed_on{nullptr};
    Rig rig;
    rig.keep_trees = true;
    rig.engine.config_preparation([&](XMLTree const &tree) {
        return content(tree) == QLatin1String("0") ? std::make_unique<Witness>(&freed_on) : nullptr;
    });
    rig.engine.input_bytes(message(0));
    XMLParseEngine2::Message held = next_message(rig.engine);
    QVERIFY(held.prepared);
    rig.engine.give_back(std::move(held));
    QVERIFY(!rig.engine.take_message(&held));
    QCOMPARE(freed_on.load(), nullptr);
    rig.engine.input_bytes(message(1));
    QVERIFY(rig.settle());
    QCOMPARE(freed_on.load(), rig.engine.thread());
}

void TestXMLParseEngine2::preparation_after_input_is_an_assertion()
{
    AssertLog log;
    XMLParseEngine2 engine(buffer_size);
    engine.config_tag("a");
    engine.input_bytes("<a>1</a>");
    engine.config_preparation(prepare);
    QCOMPARE(log.take(), list({"!flow_begun"}));
    QVERIFY(!next_message(engine).prepared);
}

void TestXMLParseEngine2::an_error_comes_behind_the_trees_before_it()
{
    XMLParseEngine2 engine(buffer_size);
    engine.config_tag("a");
    engine.input_bytes("<a>1</a><a>2</a><a>x<b/>y</a><a>3</a>");
    QCOMPARE(content(next(engine)), QStringLiteral("1"));
    QVERIFY(!engine.parse_error());
    // Looking for an error has not taken the tree.
    QCOMPARE(content(engine.get_xml()), QStringLiteral("2"));
    QVERIFY(engine.parse_error());
    QVERIFY(engine.get_xml().is_null());
}

void TestXMLParseEngine2::an_error_at_the_end_of_a_read_comes_at_once()
{
    Rig rig;
    rig.engine.input_bytes("<a><</a>");
    QTRY_VERIFY(rig.engine.parse_error());
    QVERIFY(rig.got.isEmpty());
}

void TestXMLParseEngine2::an_error_blocks_until_reset()
{
    Rig rig;
    rig.engine.input_bytes("<a><</a>");
    QTRY_VERIFY(rig.engine.parse_error());
    rig.engine.input_bytes("<a>1</a>");
    QVERIFY(rig.engine.get_xml().is_null());
    QVERIFY(rig.engine.parse_error());
    rig.engine.reset();
    QVERIFY(!rig.engine.parse_error());
    rig.engine.input_bytes("<a>2</a>");
    QTRY_COMPARE(rig.got, list({"2"}));
    QVERIFY(!rig.engine.parse_error());
}

void TestXMLParseEngine2::an_error_is_told_once_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("not well-formed") << QByteArray("<a><</a>");
    QTest::newRow("too long") << QByteArray("<a>") + QByteArray(4096, 'x');
}

void TestXMLParseEngine2::an_error_is_told_once()
{
    QFETCH(QByteArray, text);
    Rig rig(4096);
    for (int i = 0; i < 5; ++i) {
        rig.engine.input_bytes(text);
        QVERIFY(rig.settle());
        QVERIFY(rig.engine.parse_error());
        QCOMPARE(rig.wakes, 1);
    }
}

void TestXMLParseEngine2::a_message_must_fit_the_buffer_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("piece");
    QTest::addColumn<bool>("fits");
    for (int piece : {1, 1024, 1000000}) {
        QByteArray const name = QByteArray::number(piece) + " bytes at a time, ";
        QTest::newRow(name + "one less") << 4095 << piece << true;
        QTest::newRow(name + "just") << 4096 << piece << true;
        QTest::newRow(name + "one more") << 4097 << piece << false;
    }
}

void TestXMLParseEngine2::a_message_must_fit_the_buffer()
{
    QFETCH(int, size);
    QFETCH(int, piece);
    QFETCH(bool, fits);
    Rig rig(4096);
    QByteArray const text = message_of(size);
    for (qsizetype at = 0; at < text.size(); at += piece)
        rig.engine.input_bytes(text.mid(at, piece));
    rig.engine.input_bytes("<b>next</b>");
    if (fits) {
        QTRY_COMPARE(rig.got.size(), 2);
        QCOMPARE(rig.got.at(0).size(), size - 7);
        QVERIFY(!rig.engine.parse_error());
    } else {
        QTRY_VERIFY(rig.engine.parse_error());
        QVERIFY(rig.got.isEmpty());
    }
}

void TestXMLParseEngine2::a_stream_without_root_tag_is_an_error()
{
    Rig rig(4096);
    rig.engine.input_bytes(QByteArray(4095, 'x'));
    rig.engine.input_bytes("x");
    rig.engine.input_bytes("<");
    QTRY_VERIFY(rig.engine.parse_error());
}

void TestXMLParseEngine2::reset_drops_what_the_worker_has_not_seen()
{
    Rig rig;
    rig.close();
    rig.engine.input_bytes("<a>old</a>");
    rig.engine.reset();
    rig.engine.input_bytes("<a>new</a>");
    rig.open();
    QTRY_COMPARE(rig.got, list({"new"}));
}

void TestXMLParseEngine2::reset_drops_what_the_worker_has_parsed()
{
    Rig rig;
    rig.engine.input_bytes("<a>old</a><a>older</a>");
    rig.close();
    // The worker has published, and its signal has not been delivered yet.
    rig.engine.reset();
    QVERIFY(rig.engine.get_xml().is_null());
    rig.open();
    rig.engine.input_bytes("<a>new</a>");
    QTRY_COMPARE(rig.got, list({"new"}));
}

void TestXMLParseEngine2::reset_drops_half_a_message()
{
    Rig rig;
    rig.engine.input_bytes("<b>1</b><a>ha");
    QTRY_COMPARE(rig.got, list({"1"}));
    rig.engine.reset();
    rig.engine.input_bytes("lf</a><a>whole</a>");
    QTRY_COMPARE(rig.got, list({"1", "whole"}));
}

void TestXMLParseEngine2::reset_drops_the_held_result()
{
    std::atomic<bool> ready{false};
    XMLParseEngine2 engine(buffer_size);
    engine.config_tag("a");
    connect(
        &engine, &XMLParseEngine2::parse_result_available, this, [&] { ready = true; },
        Qt::DirectConnection);
    engine.input_bytes("<a>old</a>");
    QTRY_VERIFY(ready);
    QVERIFY(!engine.parse_error());
    engine.reset();
    QVERIFY(engine.get_xml().is_null());
}

void TestXMLParseEngine2::reset_keeps_the_tags()
{
    Rig rig;
    rig.engine.reset();
    rig.engine.reset();
    rig.engine.input_bytes("<a>1</a><b>2</b><c>3</c>");
    QTRY_COMPARE(rig.got, list({"1", "2"}));
}

void TestXMLParseEngine2::reset_wakes_nobody()
{
    Rig rig;
    QSignalSpy worker_wakes(&rig.engine, &XMLParseEngine2::wake_thread);
    rig.engine.reset();
    QCOMPARE(worker_wakes.count(), 0);
    rig.engine.input_bytes("<a>1</a>");
    QCOMPARE(worker_wakes.count(), 1);
    QTRY_COMPARE(rig.got, list({"1"}));
}

void TestXMLParseEngine2::nothing_of_an_older_stream_ever_surfaces()
{
    Rig rig;
    for (int stream = 0; stream < 500; ++stream) {
        QByteArray const text = message(stream);
        for (int i = 0; i < 20; ++i)
            rig.engine.input_bytes(text);
        rig.engine.input_bytes(stream % 3 ? "<a>ha" : "<a><</a>");
        // Results of this stream may come now, those of older ones may not.
        for (int turn = 0; turn < stream % 4; ++turn) {
            QCoreApplication::processEvents();
            for (QString const &seen : std::exchange(rig.got, {}))
                QCOMPARE(seen, QString::number(stream));
        }
        rig.engine.reset();
        rig.got.clear();
    }
    rig.engine.input_bytes("<a>last</a>");
    QTRY_COMPARE(rig.got, list({"last"}));
}

void TestXMLParseEngine2::waiting_input_stops_the_reader()
{
    Rig rig;
    rig.close();
    QByteArray const text = message_of(8192);
    unsigned long long given = 0;
    while (rig.engine.input_wanted()) {
        rig.engine.input_bytes(text);
        given += 8192;
    }
    // What is behind the gate waits too, and so may half a message in the engine.
    QVERIFY(given + 8192 > XMLParseEngine2::high_water);
    QVERIFY(given <= XMLParseEngine2::high_water + buffer_size + 8192);
    QCOMPARE(rig.wanted_again, 0);
    rig.open();
    QTRY_COMPARE(rig.wanted_again, 1);
    QVERIFY(rig.engine.input_wanted());
    QTRY_COMPARE(rig.got.size(), qsizetype(1 + given / 8192));
}

void TestXMLParseEngine2::waiting_trees_stop_the_reader()
{
    std::atomic<int> passes{0};
    XMLParseEngine2 engine(buffer_size);
    engine.config_tag("a");
    connect(
        &engine, &XMLParseEngine2::parse_result_available, this, [&] { ++passes; },
        Qt::DirectConnection);
    QByteArray const text = message_of(8192);
    int given = 0;
    while (engine.input_wanted()) {
        int const before = passes;
        engine.input_bytes(text);
        ++given;
        while (passes == before)
            QThread::yieldCurrentThread();
    }
    // All of it is parsed, and still nobody has taken any.
    QVERIFY(given * 8192ull >= XMLParseEngine2::high_water);
    QVERIFY(!engine.get_xml().is_null());
}

void TestXMLParseEngine2::more_is_wanted_from_the_low_mark_on()
{
    Rig rig;
    rig.close();
    unsigned long long const low = XMLParseEngine2::low_water + buffer_size;
    QByteArray const text = message_of(8192);
    unsigned long long waiting = sizeof "<a>gate</a>" - 1;
    while (rig.engine.input_wanted()) {
        rig.engine.input_bytes(text);
        waiting += 8192;
    }
    rig.keep_trees = true;
    rig.open();
    QVERIFY(rig.settle());
    QVERIFY(!rig.engine.input_wanted());
    QCOMPARE(content(rig.engine.get_xml()), QStringLiteral("gate"));
    for (waiting -= sizeof "<a>gate</a>" - 1; waiting - 8192 > low; waiting -= 8192)
        QVERIFY(!rig.engine.get_xml().is_null());
    QVERIFY(rig.engine.input_wanted());
    QVERIFY(rig.settle());
    QCOMPARE(rig.wanted_again, 0);
    QVERIFY(!rig.engine.get_xml().is_null());
    QVERIFY(rig.settle());
    QCOMPARE(rig.wanted_again, 1);
    for (waiting -= 8192; waiting > 0; waiting -= 8192)
        QVERIFY(!rig.engine.get_xml().is_null());
    // Told once, not for each tree.
    QVERIFY(rig.settle());
    QCOMPARE(rig.wanted_again, 1);
}

void TestXMLParseEngine2::dropped_bytes_do_not_wait_data()
{
    QTest::addColumn<QByteArray>("piece");
    QTest::addColumn<bool>("error");
    QTest::newRow("blanks between messages") << QByteArray(8192, ' ') + "<b></b>" << false;
    QTest::newRow("behind an error") << QByteArray("<a><</a>") + QByteArray(8192, 'x') << true;
    QTest::newRow("without a root tag") << QByteArray(8192, 'x') << true;
}

void TestXMLParseEngine2::dropped_bytes_do_not_wait()
{
    QFETCH(QByteArray, piece);
    QFETCH(bool, error);
    Rig rig;
    rig.close();
    int pieces = 0;
    for (; rig.engine.input_wanted(); ++pieces)
        rig.engine.input_bytes(piece);
    rig.open();
    QTRY_COMPARE(rig.wanted_again, 1);
    QVERIFY(rig.engine.input_wanted());
    if (error)
        QTRY_VERIFY(rig.engine.parse_error());
    else
        QTRY_COMPARE(rig.got.size(), 1 + pieces);
}

void TestXMLParseEngine2::reset_makes_room()
{
    Rig rig;
    rig.close();
    while (rig.engine.input_wanted())
        rig.engine.input_bytes(message_of(8192));
    rig.engine.reset();
    QVERIFY(rig.engine.input_wanted());
    rig.open();
    QTRY_COMPARE(rig.wanted_again, 1);
    rig.engine.input_bytes("<a>new</a>");
    QTRY_COMPARE(rig.got, list({"new"}));
}

void TestXMLParseEngine2::a_reader_that_waits_loses_nothing()
{
    // As a transport does: it reads while input is wanted and goes on when it is wanted again.
    Rig rig;
    QByteArray all;
    constexpr int messages = 40000;
    for (int i = 0; i < messages; ++i)
        all += "<a>" + QByteArray::number(i) + "</a>" + QByteArray(400, ' ');
    qsizetype at = 0;
    int stops = 0;
    auto const read_on = [&] {
        for (; at < all.size() && rig.engine.input_wanted(); at += 1024)
            rig.engine.input_bytes(all.mid(at, 1024));
        stops += at < all.size();
    };
    connect(&rig.engine, &XMLParseEngine2::input_wanted_again, this, read_on);
    rig.close();
    read_on();
    QCOMPARE(stops, 1);
    rig.open();
    QTRY_COMPARE(rig.got.size(), messages + 1);
    QCOMPARE(rig.got.takeFirst(), QStringLiteral("gate"));
    QVERIFY(rig.got_numbers(messages));
    disconnect(&rig.engine, nullptr, this, nullptr);
}

void TestXMLParseEngine2::taking_trees_frees_nothing_here()
{
    std::atomic<bool> ready{false};
    XMLParseEngine2 engine(buffer_size);
    engine.config_tag("a");
    connect(
        &engine, &XMLParseEngine2::parse_result_available, this, [&] { ready = true; },
        Qt::DirectConnection);
    QByteArray text;
    for (int i = 0; i < 100; ++i)
        text += "<a><c>" + QByteArray::number(i) + "</c><d>text</d></a>";
    for (int round = 0; round < 5; ++round) {
        ready = false;
        engine.input_bytes(text);
        QTRY_VERIFY(ready);
        int taken = 0;
        unsigned int const before = deletions;
        while (!engine.get_xml().is_null())
            ++taken;
        QCOMPARE(deletions, before);
        QCOMPARE(taken, 100);
    }
}

void TestXMLParseEngine2::the_worker_frees_spent_trees_in_its_next_pass()
{
    Rig rig;
    rig.engine.input_bytes("<a>first</a>");
    QVERIFY(rig.settle());
    unsigned int const before = rig.worker_deletions;
    QByteArray text;
    for (int i = 0; i < 100; ++i)
        text += message(i);
    rig.engine.input_bytes(text);
    QTRY_COMPARE(rig.got.size(), 101);
    // One pass takes them back and frees them behind its signal, which the next one shows.
    for (int i = 0; i < 2; ++i) {
        rig.engine.input_bytes("<a>more</a>");
        QVERIFY(rig.settle());
    }
    QVERIFY(rig.worker_deletions - before >= 200);
}

void TestXMLParseEngine2::an_idle_worker_frees_large_trees()
{
    Rig rig;
    QSignalSpy worker_wakes(&rig.engine, &XMLParseEngine2::wake_thread);
    QByteArray text;
    for (int i = 0; i < 100; ++i)
        text += message_of(8192);
    rig.engine.input_bytes(text);
    QTRY_COMPARE(rig.got.size(), 100);
    // One wake for the input, one for what was left when it was all taken.
    QCOMPARE(worker_wakes.count(), 2);
    rig.engine.input_bytes("<a>few</a>");
    QTRY_COMPARE(rig.got.size(), 101);
    QCOMPARE(worker_wakes.count(), 3);
    QVERIFY(rig.settle());
    rig.engine.input_bytes(text);
    QTRY_COMPARE(rig.got.size(), 201);
    QCOMPARE(worker_wakes.count(), 5);
}

void TestXMLParseEngine2::can_be_destroyed_at_any_time()
{
    for (int i = 0; i < 60; ++i) {
        XMLParseEngine2 engine(buffer_size);
        engine.config_tag("a");
        for (int n = 0; n < i * 10; ++n)
            engine.input_bytes("<a>1</a><a>2");
        if (i % 3 == 0)
            engine.reset();
        if (i % 2 == 0)
            engine.get_xml();
    }
}

QTEST_GUILESS_MAIN(TestXMLParseEngine2)
#include "tst_xml_parse_engine2.moc"
