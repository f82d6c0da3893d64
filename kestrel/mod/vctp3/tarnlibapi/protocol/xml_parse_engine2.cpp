// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/xml_parse_engine2.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/atimer.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_document_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_parse_engine.h"

#include <QThread>
#include <algorithm>
#include <climits>
#include <utility>

namespace {

/// Message bytes whose spent trees are worth a wake of an idle worker. While messages come in, the
/// next pass frees them anyway.
constexpr unsigned long long spent_wake_bytes = 256 * 1024;
/// Messages that are given back in one piece.
constexpr std::size_t messages_in_piece = 64;

/// Begins to bring a message here, while the one before it is handled: it lies with the worker's
/// processor, and waiting for it costs more than most reports do.
void fetch_early(XMLParseEngine2::Message const &message)
{
    constexpr std::ptrdiff_t line = 64;
    if (message.prepared) {
        auto const *at = reinterpret_cast<char const *>(message.prepared.get());
        for (int i = 0; i < 3; ++i)
            __builtin_prefetch(at + i * line);
    } else if (void const *memory = XMLAccess::memory(message.tree)) {
        // A tree that is kept is counted in the first line.
        auto const *at = static_cast<char const *>(memory);
        __builtin_prefetch(at, 1);
        __builtin_prefetch(at + line);
        __builtin_prefetch(at + 2 * line);
    }
}

} // namespace

XMLParseEngine2::Prepared::~Prepared() = default;

XMLParseEngine2::XMLParseEngine2(unsigned long long buffer_size)
    : engine(std::make_unique<XMLParseEngine>(buffer_size))
    , engine_size(engine->available_buffer_space())
    , worker_thread(new QThread)
{
    moveToThread(worker_thread);
    worker_thread->start(QThread::InheritPriority);
    connect(this, &XMLParseEngine2::wake_thread, this, &XMLParseEngine2::wake_thread_action);
    connect(this, &XMLParseEngine2::drained, this, &XMLParseEngine2::input_wanted_again,
        Qt::QueuedConnection);
}

XMLParseEngine2::~XMLParseEngine2()
{
    worker_thread->quit();
    worker_thread->wait();
    worker_thread->deleteLater();
    // The end of each pass gives this lock back: from here on the worker's members are ours.
    AProtect<OutputQueue>::Lock(output_queue)->batches.clear();
}

void XMLParseEngine2::config_tag(char const *tag)
{
    if (A_ASSERT(!flow_begun))
        engine->config_tag(tag);
}

void XMLParseEngine2::config_preparation(Preparation const &make)
{
    if (A_ASSERT(!flow_begun))
        preparation = make;
}

void XMLParseEngine2::input_bytes(QByteArray const &bytes)
{
    if (bytes.isEmpty())
        return;
    flow_begun = true;
    auto const count = static_cast<unsigned long long>(bytes.size());
    waiting += count;

    std::list<InputQueueEntry> entry;
    entry.push_back({generation, bytes});
    bool wake = false;
    {
        AProtect<InputQueue>::Lock queue(input_queue);
        queue->entries.splice(queue->entries.end(), entry);
        wake = !std::exchange(queue->wake_sent, true);
    }
    if (wake)
        Q_EMIT wake_thread(QPrivateSignal());
}

void XMLParseEngine2::input_bytes(unsigned long long byte_count, void const *data)
{
    if (A_ASSERT(byte_count < INT_MAX))
        input_bytes(
            QByteArray(static_cast<char const *>(data), static_cast<qsizetype>(byte_count)));
}

bool XMLParseEngine2::input_wanted() const
{
    if (waiting < high_water + engine_size)
        return true;
    // Whoever takes enough sees the mark, or has taken it before the mark was made.
    held_back = true;
    return waiting <= low_water + engine_size;
}

XMLTree XMLParseEngine2::get_xml()
{
    Message message;
    if (!take_message(&message))
        return {};
    XMLTree tree = message.tree;
    give_back(std::move(message));
    return tree;
}

bool XMLParseEngine2::take_message(Message *message)
{
    look_for_result();
    if (result_state != HoldsResult)
        return false;
    result_state = NoResult;
    *message = std::move(result);
    return true;
}

void XMLParseEngine2::give_back(Message &&message)
{
    if (spent.messages.empty() || spent.messages.back().size() == messages_in_piece)
        spent.messages.emplace_back().reserve(messages_in_piece);
    spent.messages.back().push_back(std::move(message));
}

bool XMLParseEngine2::parse_error()
{
    look_for_result();
    return result_state == ParseError;
}

void XMLParseEngine2::reset()
{
    flow_begun = true;
    ++generation;
    std::list<InputQueueEntry> older;
    std::list<InputQueueEntry> marker;
    marker.push_back({generation, QByteArray()});
    {
        AProtect<InputQueue>::Lock queue(input_queue);
        auto const first = std::find_if(queue->entries.begin(), queue->entries.end(),
            [this](InputQueueEntry const &entry) { return is_current(entry.generation); });
        older.splice(older.end(), queue->entries, queue->entries.begin(), first);
        queue->entries.splice(queue->entries.end(), marker);
    }
    unsigned long long dropped = 0;
    for (InputQueueEntry const &entry : older)
        dropped += static_cast<unsigned long long>(entry.bytes.size());
    no_longer_waits(dropped);

    take_output();
    if (std::exchange(result_state, NoResult) == HoldsResult)
        give_back(std::move(result));
}

void XMLParseEngine2::wake_thread_action()
{
    if (!timer) {
        timer = new ATimer(true);
        connect(timer, &ATimer::timeout, this, qOverload<>(&XMLParseEngine2::process_input));
        // It must end here, where it lives, and this is the last chance.
        connect(worker_thread, &QThread::finished, timer, &QObject::deleteLater);
    }
    if (AProtect<InputQueue>::Lock(input_queue)->entries.empty())
        publish();
    else
        timer->start();
}

void XMLParseEngine2::process_input()
{
    std::list<InputQueueEntry> entries;
    {
        AProtect<InputQueue>::Lock queue(input_queue);
        entries.swap(queue->entries);
        queue->wake_sent = false;
    }
    for (InputQueueEntry const &entry : entries)
        process_input(entry);
    publish();
}

void XMLParseEngine2::process_input(InputQueueEntry const &entry)
{
    unsigned long long const before
        = static_cast<unsigned long long>(entry.bytes.size()) + engine_bytes();
    unsigned long long messages = 0;
    if (is_current(entry.generation)) {
        if (entry.bytes.isEmpty()) {
            parse_failed = false;
            engine->reset();
        } else if (!parse_failed) {
            messages = parse(entry);
        }
    }
    // What is neither in a message nor in the engine is gone.
    no_longer_waits(before - messages - engine_bytes());
}

/// Returns the bytes of the messages that it found.
unsigned long long XMLParseEngine2::parse(InputQueueEntry const &entry)
{
    char const *data = entry.bytes.constData();
    auto left = static_cast<unsigned long long>(entry.bytes.size());
    unsigned long long messages = 0;
    for (;;) {
        XMLTree tree = engine->get_xml();
        if (!tree.is_null()) {
            unsigned long long const bytes = engine->last_message_bytes();
            auto prepared = preparation ? preparation(tree) : nullptr;
            output_new.push_back({entry.generation, bytes, {std::move(tree), std::move(prepared)}});
            messages += bytes;
            continue;
        }
        if (engine->has_error())
            break;
        if (left == 0)
            return messages;
        unsigned long long const taken
            = engine->input_bytes(std::min(left, engine->available_buffer_space()), data);
        if (taken == 0)
            break;
        data += taken;
        left -= taken;
    }
    send_output_error(entry.generation);
    return messages;
}

void XMLParseEngine2::send_output_error(unsigned int of_generation)
{
    // Nothing behind it can be parsed, so it is said once and the rest of the stream is dropped.
    parse_failed = true;
    output_new.push_back({of_generation, 0, {}, true});
}

void XMLParseEngine2::publish()
{
    bool const any = !output_new.empty();
    std::list<Batch> found;
    if (any)
        found.push_back(std::exchange(output_new, Batch()));
    Spent done;
    {
        AProtect<OutputQueue>::Lock queue(output_queue);
        queue->batches.splice(queue->batches.end(), found);
        std::swap(done, queue->spent);
    }
    // The consumer can be at work before the spent ones are freed.
    if (any)
        Q_EMIT parse_result_available();
}

unsigned long long XMLParseEngine2::engine_bytes() const
{
    return engine_size - engine->available_buffer_space();
}

void XMLParseEngine2::look_for_result()
{
    if (result_state != NoResult)
        return;
    XMLQueueEntry *entry = next_entry();
    if (!entry || !is_current(entry->generation)) {
        take_output();
        entry = next_entry();
    }
    if (!entry)
        return;
    result = std::move(entry->message);
    result_state = entry->is_end ? ParseError : HoldsResult;
    pass_entry(*entry);
    if (XMLQueueEntry const *next = next_entry())
        fetch_early(next->message);
}

/// The first that was not passed; null if there is none.
XMLParseEngine2::XMLQueueEntry *XMLParseEngine2::next_entry()
{
    for (; !output_pending.empty(); pending_next = 0) {
        Batch &batch = output_pending.front();
        if (pending_next < batch.size())
            return &batch[pending_next];
        spent.batches.splice(spent.batches.end(), output_pending, output_pending.begin());
    }
    return nullptr;
}

void XMLParseEngine2::pass_entry(XMLQueueEntry const &entry)
{
    ++pending_next;
    spent.bytes += entry.bytes;
    no_longer_waits(entry.bytes);
}

/// Takes what the worker has added, passes what is of an older stream and gives back what is spent.
void XMLParseEngine2::take_output()
{
    pass_older();
    bool wake = false;
    {
        AProtect<OutputQueue>::Lock queue(output_queue);
        output_pending.splice(output_pending.end(), queue->batches);
        Spent &all = queue->spent;
        wake = all.bytes < spent_wake_bytes && all.bytes + spent.bytes >= spent_wake_bytes;
        all.batches.splice(all.batches.end(), spent.batches);
        all.messages.splice(all.messages.end(), spent.messages);
        all.bytes += std::exchange(spent.bytes, 0);
    }
    pass_older();
    if (wake)
        Q_EMIT wake_thread(QPrivateSignal());
}

void XMLParseEngine2::pass_older()
{
    for (XMLQueueEntry const *entry = next_entry(); entry && !is_current(entry->generation);
         entry = next_entry())
        pass_entry(*entry);
}

void XMLParseEngine2::no_longer_waits(unsigned long long bytes)
{
    if (bytes == 0)
        return;
    bool const low = waiting.fetch_sub(bytes) - bytes <= low_water + engine_size;
    if (low && held_back && held_back.exchange(false))
        Q_EMIT drained(QPrivateSignal());
}
