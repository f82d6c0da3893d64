// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "sim/vesk/vesk_faults.h"

#include <QByteArray>

#include <deque>
#include <random>
#include <vector>

/// What waits to be written to one connection, in the order that the faults in force make.
/// Thread: the server's.
class VeskOutbox
{
public:
    /// \a faults must outlive this object.
    explicit VeskOutbox(VeskFaults const *faults);

    /// All replies to one command.
    void add_answer(QByteArray const &bytes);
    void add_report(QByteArray const &bytes);
    /// Goes out whatever the faults are.
    void add_raw(QByteArray const &bytes) { ready += bytes; }
    /// Answers that have waited for their fields go on.
    void field_passed();
    /// Nothing is held back any longer.
    void release_all();

    /// What may be written now; it is the caller's from here on.
    QByteArray take();
    /// Bytes kept, those held back too.
    qint64 size() const;

private:
    struct Late
    {
        unsigned int fields;
        QByteArray bytes;
    };
    void pass_on(QByteArray const &bytes);
    void shuffle_out();

    VeskFaults const *present;
    std::deque<Late> late;
    std::vector<QByteArray> window;
    AOption<quint32> seed; // what order was begun with
    std::mt19937 order;
    QByteArray ready;
};
