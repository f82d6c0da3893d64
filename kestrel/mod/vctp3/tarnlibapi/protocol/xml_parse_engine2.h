// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aprotect.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/atomic.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"

#include <QByteArray>
#include <QObject>
#include <atomic>
#include <functional>
#include <list>
#include <memory>
#include <utility>
#include <vector>

class ATimer;
class QThread;
class XMLParseEngine;

/// An `XMLParseEngine` on a thread of its own: bytes go in and trees come out on the consumer's
/// thread, and all work between is done on the worker's, down to freeing the trees. Bytes belong
/// to a stream; `reset` begins the next one, and nothing of an older stream surfaces after it.
///
/// What waits is not limited here, as bytes must not be lost: the owner of the socket asks
/// `input_wanted` before it reads, and leaves the bytes in the socket while nothing is wanted.
/// Thread: one consumer, which may be another than the thread that made it. It has no parent, as
/// it lives on the worker's thread.
class TARN_EXPORT XMLParseEngine2 : public QObject
{
    Q_OBJECT

public:
    /// Message bytes that may wait, as read or as trees, before no more are wanted; what the
    /// engine's buffer may hold comes on top.
    static constexpr unsigned long long high_water = 4 * 1024 * 1024;
    /// What still waits when more is wanted again.
    static constexpr unsigned long long low_water = high_water / 2;

    /// \a buffer_size in bytes, the longest possible message. Starts the thread.
    explicit XMLParseEngine2(unsigned long long buffer_size);
    /// Waits, without a limit, until the worker has done what it is doing.
    ~XMLParseEngine2() override;

    /// What may be made of a tree on the worker, for whoever takes the message.
    struct TARN_EXPORT Prepared
    {
        virtual ~Prepared();
    };
    using Preparation = std::function<std::unique_ptr<Prepared const>(XMLTree const &tree)>;

    /// What the worker makes of the bytes of one message.
    struct Message
    {
        XMLTree tree;
        std::unique_ptr<Prepared const> prepared; // null: nothing was made of the tree
    };

    /// Adds the name of a root tag. After the first `input_bytes` or `reset`: an assertion, and
    /// nothing is added.
    void config_tag(char const *tag);

    /// Has \a make called on the worker for each tree. After the first `input_bytes` or `reset`: an
    /// assertion, and nothing is made.
    void config_preparation(Preparation const &make);

    /// Bytes of the current stream, in order. No bytes are no input.
    void input_bytes(QByteArray const &bytes);
    /// The same with a copy; \a byte_count from INT_MAX up is an assertion and no input.
    void input_bytes(unsigned long long byte_count, void const *data);
    /// Whether what waits is below `high_water`. Once it is not, `input_wanted_again` will follow.
    bool input_wanted() const;
    /// Message bytes that wait, as read or as trees. From any thread.
    unsigned long long waiting_bytes() const { return waiting; }

    /// The next tree; null when there is none yet, and from an error on.
    XMLTree get_xml();
    /// The same with what was made of it; false, and *\a message as it was, when there is none.
    /// Whoever is done with the message gives it back.
    bool take_message(Message *message);
    /// Has the worker free a message, or what is left of it: memory is dear to free where it was
    /// not made.
    void give_back(Message &&message);
    /// Whether the next item is not a tree but the end of all: a message that cannot be parsed or
    /// is longer than the buffer. It stays so until `reset`.
    bool parse_error();
    /// Begins the next stream.
    void reset();

Q_SIGNALS:
    /// Items have been added, at most once for each pass of the worker over what has come in. The
    /// consumer takes items until there are none. From the worker.
    void parse_result_available();
    /// So much has been taken that more is wanted again, after a time when it was not. From the
    /// worker.
    void input_wanted_again();

    void wake_thread(QPrivateSignal);
    void drained(QPrivateSignal);

private Q_SLOTS:
    void wake_thread_action();
    void process_input();

private:
    struct InputQueueEntry
    {
        unsigned int generation;
        QByteArray bytes; // none: the stream begins
    };
    struct XMLQueueEntry
    {
        unsigned int generation;
        unsigned long long bytes; // of the message
        Message message;
        bool is_end = false; // no message: the stream cannot be parsed
    };
    /// What one pass of the worker has found, in one piece.
    using Batch = std::vector<XMLQueueEntry>;

    struct InputQueue
    {
        std::list<InputQueueEntry> entries;
        bool wake_sent = false; // since the worker took the entries last
    };
    struct Spent
    {
        std::list<Batch> batches; // whose messages were taken
        std::list<std::vector<Message>> messages;
        unsigned long long bytes = 0; // of the messages
    };
    struct OutputQueue
    {
        std::list<Batch> batches;
        /// What the consumer is done with, for the worker to free.
        Spent spent;
    };
    enum ResultState
    {
        NoResult = 0,
        HoldsResult = 1,
        ParseError = 2
    };

    // Worker
    void process_input(InputQueueEntry const &entry);
    unsigned long long parse(InputQueueEntry const &entry);
    void send_output_error(unsigned int of_generation);
    void publish();
    unsigned long long engine_bytes() const;

    // Consumer
    void look_for_result();
    void take_output();
    XMLQueueEntry *next_entry();
    void pass_entry(XMLQueueEntry const &entry);
    void pass_older();

    // Both
    bool is_current(unsigned int of_generation) const { return of_generation == generation.get(); }
    void no_longer_waits(unsigned long long bytes);

    std::unique_ptr<XMLParseEngine> const engine; // worker, once the flow has begun
    unsigned long long const engine_size;
    Preparation preparation; // worker, once the flow has begun
    bool flow_begun = false; // consumer
    AtomicUnsigned generation;
    AProtect<InputQueue> input_queue;
    AProtect<OutputQueue> output_queue;
    Batch output_new; // worker: of this pass, published at its end
    std::list<Batch> output_pending; // consumer: taken from the output queue
    std::size_t pending_next = 0; // consumer: of the first batch; what is before it was taken
    Spent spent; // consumer: until it takes from the output queue again
    ResultState result_state = NoResult; // consumer
    Message result; // consumer
    bool parse_failed = false; // worker
    std::atomic<unsigned long long> waiting{0}; // bytes from the socket to the consumer
    mutable std::atomic<bool> held_back{false}; // nothing was wanted since it last drained
    ATimer *timer = nullptr; // worker: single shot, interval 0
    QThread *const worker_thread;
};
