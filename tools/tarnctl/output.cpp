// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/output.h"

#include "tools/tarnctl/text_form.h"

#include <QSocketNotifier>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TarnCtl {

void Output::reply(JsonValue const &message)
{
    if (json)
        json_line(message);
    else
        text(message_block(message));
}

void Output::report(JsonValue const &message)
{
    if (json)
        json_line(message);
    else
        text(message_line(message));
}

void Output::json_line(JsonValue const &value)
{
    write_line(value.to_json());
}

void Output::text(QString const &lines)
{
    write_line(lines.toUtf8());
}

void Output::follow_reader()
{
    struct stat about = {};
    if (reader || ::fstat(STDOUT_FILENO, &about) != 0 || !S_ISFIFO(about.st_mode))
        return;
    // What a pipe tells its writer besides that there is room is that it has no reader.
    reader = new QSocketNotifier(STDOUT_FILENO, QSocketNotifier::Exception, this);
    connect(reader, &QSocketNotifier::activated, this, [this] {
        reader->setEnabled(false);
        if (!failed)
            fail(EPIPE);
    });
}

void Output::write_line(QByteArray const &line)
{
    if (failed)
        return;
    std::size_t const size = std::size_t(line.size());
    bool const written = std::fwrite(line.constData(), 1, size, stdout) == size
        && std::fputc('\n', stdout) != EOF && std::fflush(stdout) == 0;
    if (!written)
        fail(errno);
}

void Output::fail(int error_number)
{
    failed = true;
    // That a reader had enough, as `head` does, is no failure.
    bool const reader_gone = error_number == EPIPE;
    if (!reader_gone)
        complain(QStringLiteral("cannot write to standard output: ")
            + QString::fromLocal8Bit(std::strerror(error_number)));
    Q_EMIT sig_failed(reader_gone ? ExitCode::Done : ExitCode::NoOutput);
}

bool hold_streams()
{
    bool const has_output = ::fcntl(STDOUT_FILENO, F_GETFD) >= 0;
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        // The lowest free number is given, so this one.
        if (::fcntl(stream, F_GETFD) < 0) [[maybe_unused]]
            int const held = ::open("/dev/null", O_RDWR);
    }
    return has_output;
}

void complain(QString const &text)
{
    std::fprintf(stderr, "tarnctl: %s\n", text.toUtf8().constData());
}

} // namespace TarnCtl
