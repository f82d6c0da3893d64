// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_outbox.h"

#include <numeric>
#include <utility>

VeskOutbox::VeskOutbox(VeskFaults const *faults)
    : present(faults)
{
}

void VeskOutbox::add_answer(QByteArray const &bytes)
{
    if (present->silent)
        return;
    if (present->reply_delay > 0)
        late.push_back({present->reply_delay, bytes});
    else
        pass_on(bytes);
}

void VeskOutbox::add_report(QByteArray const &bytes)
{
    if (!present->silent)
        ready += bytes;
}

void VeskOutbox::pass_on(QByteArray const &bytes)
{
    if (present->reorder_window < 2) {
        ready += bytes;
        return;
    }
    window.push_back(bytes);
    if (window.size() >= present->reorder_window)
        shuffle_out();
}

void VeskOutbox::shuffle_out()
{
    if (!(seed == AOption<quint32>(present->reorder_seed))) {
        seed = present->reorder_seed;
        order.seed(*seed);
    }
    // By hand: what the library's shuffle draws differs between platforms, and a seed is there to
    // give the same order everywhere.
    for (std::size_t left = window.size(); left > 1; --left)
        std::swap(window[left - 1], window[order() % left]);
    for (QByteArray const &bytes : window)
        ready += bytes;
    window.clear();
}

void VeskOutbox::field_passed()
{
    for (Late &answer : late)
        if (answer.fields > 0)
            --answer.fields;
    while (!late.empty() && late.front().fields == 0) {
        pass_on(late.front().bytes);
        late.pop_front();
    }
    shuffle_out();
}

void VeskOutbox::release_all()
{
    for (Late const &answer : std::exchange(late, {}))
        pass_on(answer.bytes);
    shuffle_out();
}

QByteArray VeskOutbox::take()
{
    return std::exchange(ready, {});
}

qint64 VeskOutbox::size() const
{
    qint64 bytes = ready.size();
    for (Late const &answer : late)
        bytes += answer.bytes.size();
    for (QByteArray const &answer : window)
        bytes += answer.size();
    return bytes;
}
