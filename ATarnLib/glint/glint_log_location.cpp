// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint_log_location.h"

#include "ATarnLib/glint/glint.h"

#include <QDebug>
#include <cstdio>

GlintLogLocation::GlintLogLocation(
    QString const &source_file, unsigned int source_line, QString const &source_function)
    : file(source_file)
    , line(source_line)
    , function(source_function)
{
}

void GlintLogLocation::send_log_entry(Glint *hub, QString const &message) const
{
    send_entry(hub, message, false);
}

void GlintLogLocation::send_log_entry(Glint *hub, char const *format, ...) const
{
    va_list arguments;
    va_start(arguments, format);
    QString const message = make_string(format, arguments);
    va_end(arguments);
    send_entry(hub, message, false);
}

void GlintLogLocation::send_error_entry(Glint *hub, QString const &message) const
{
    send_entry(hub, message, true);
}

void GlintLogLocation::send_error_entry(Glint *hub, char const *format, ...) const
{
    va_list arguments;
    va_start(arguments, format);
    QString const message = make_string(format, arguments);
    va_end(arguments);
    send_entry(hub, message, true);
}

QString GlintLogLocation::make_string(char const *format, va_list arguments)
{
    char buffer[1024];
    if (std::vsnprintf(buffer, sizeof buffer, format, arguments) < 0)
        return QString();
    return QString::fromUtf8(buffer);
}

void GlintLogLocation::send_entry(Glint *hub, QString const &message, bool error) const
{
    if (hub)
        hub->cmd_log(AString(file), line, AString(function), AString(message), error);
    QString const text
        = error ? QStringLiteral("%1:%2 [%3 error] %4") : QStringLiteral("%1:%2 [%3 log] %4");
    qDebug().noquote() << text.arg(file, QString::number(line), function, message);
}
