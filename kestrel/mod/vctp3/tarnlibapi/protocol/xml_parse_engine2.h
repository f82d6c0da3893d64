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

    /// What may be made of a tree on the worker, for whoever takes the tree.
    struct TARN_EXPORT Prepared
    {
        virtual ~Prepared();
    };
    using Preparation = std::function<std::shared_ptr<Prepared const>(XMLTree const &tree)>;

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
    /// What was made of the tree that `get_xml` gave last; null if nothing was. It can be taken
    /// once, until the next call.
    std::shared_ptr<Prepared const> take_prepared() { return std::move(result_prepared); }
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
        XMLTree tree; // null: the stream cannot be parsed
        unsigned long long bytes; // of the message
        std::shared_ptr<Prepared const> prepared;
    };
    using XMLQueue = std::list<XMLQueueEntry>;

    struct InputQueue
    {
        std::list<InputQueueEntry> entries;
        bool wake_sent = false; // since the worker took the entries last
    };
    struct OutputQueue
    {
        XMLQueue entries;
        /// What the consumer is done with, for the worker to free: memory is dear to free where it
        /// was not made.
        XMLQueue spent;
        unsigned long long spent_bytes = 0;
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
    unsigned long long pass_older(OutputQueue &queue);

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
    XMLQueue output_new; // worker: of this pass, published at its end
    XMLQueue output_pending; // consumer: taken from the output queue
    XMLQueue::iterator pending_next = output_pending.end(); // consumer: what is before it is spent
    unsigned long long passed_bytes = 0; // consumer: the messages of the spent ones
    ResultState result_state = NoResult; // consumer
    XMLTree result; // consumer
    std::shared_ptr<Prepared const> result_prepared; // consumer: of the same tree
    bool parse_failed = false; // worker
    std::atomic<unsigned long long> waiting{0}; // bytes from the socket to the consumer
    std::atomic<bool> held_back{false}; // nothing was wanted since it last drained
    ATimer *timer = nullptr; // worker: single shot, interval 0
    QThread *const worker_thread;
};
