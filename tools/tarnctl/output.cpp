// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/output.h"

#include "tools/tarnctl/text_form.h"

#include <cerrno>
#include <cstdio>

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

void Output::write_line(QByteArray const &line)
{
    if (failed)
        return;
    std::size_t const size = std::size_t(line.size());
    bool const written = std::fwrite(line.constData(), 1, size, stdout) == size
        && std::fputc('\n', stdout) != EOF && std::fflush(stdout) == 0;
    if (written)
        return;
    failed = true;
    Q_EMIT sig_failed(errno);
}

void complain(QString const &text)
{
    std::fprintf(stderr, "tarnctl: %s\n", text.toUtf8().constData());
}

} // namespace TarnCtl
