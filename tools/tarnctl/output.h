// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/tarnctl/exit_code.h"
#include "tools/tarnctl/json_value.h"

#include <QObject>

class QSocketNotifier;

namespace TarnCtl {

/// Standard output, flushed with each line since scripts read through pipes.
class Output : public QObject
{
    Q_OBJECT

public:
    explicit Output(bool as_json, QObject *parent = nullptr)
        : QObject(parent)
        , json(as_json)
    {
    }

    /// Whether scripts read: one JSON object per line. Otherwise people do.
    bool as_json() const { return json; }
    /// A reply: JSON, or a block for people.
    void reply(JsonValue const &message);
    /// A report: JSON, or a line for people.
    void report(JsonValue const &message);
    void json_line(JsonValue const &value);
    void text(QString const &lines);
    /// From now on it is noticed at once, not with the next line, that nobody reads any more. For
    /// pipes only; that of a terminal ends the program by a signal.
    void follow_reader();

Q_SIGNALS:
    /// Once, when nobody reads any more or the disk is full; what follows is not written. Why has
    /// been said on standard error, unless the reader has gone.
    void sig_failed(TarnCtl::ExitCode code);

private:
    void write_line(QByteArray const &line);
    void fail(int error_number);

    bool const json;
    QSocketNotifier *reader = nullptr;
    bool failed = false;
};

/// Opens standard streams that are closed, so that no connection gets their numbers and with them
/// what is meant for people. Whether standard output was open.
bool hold_streams();

/// A line on standard error, with the program's name in front.
void complain(QString const &text);

} // namespace TarnCtl
