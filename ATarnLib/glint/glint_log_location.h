// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QString>
#include <cstdarg>

class Glint;

/// A place in an application's source from which it logs: to the server, which keeps the log, and
/// to the toolkit's debug output, as "file:line [function log] message".
/// Thread: any.
class TARN_EXPORT GlintLogLocation
{
public:
    GlintLogLocation(QString const &file, unsigned int line, QString const &function);

    /// \name A line of the log
    /// Without a hub it goes to the debug output alone. The narrow forms take a format as `printf`
    /// does; the text is UTF-8 and is cut off at 1023 bytes.
    /// @{
    void send_log_entry(Glint *hub, QString const &message) const;
    void send_log_entry(Glint *hub, char const *format, ...) const
        __attribute__((format(printf, 3, 4)));
    /// @}
    /// \name The same, marked as an error
    /// @{
    void send_error_entry(Glint *hub, QString const &message) const;
    void send_error_entry(Glint *hub, char const *format, ...) const
        __attribute__((format(printf, 3, 4)));
    /// @}

private:
    static QString make_string(char const *format, va_list arguments)
        __attribute__((format(printf, 1, 0)));
    void send_entry(Glint *hub, QString const &message, bool error) const;

    QString file;
    unsigned int line;
    QString function;
};
