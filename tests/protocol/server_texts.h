// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/scripted_server.h"

/// The report of a new clip.
inline QByteArray clip_created(QByteArray const &clip)
{
    return "<report><clip_created><ClipID>" + clip + "</ClipID></clip_created></report>";
}

/// Such a report of exactly that many bytes.
inline QByteArray report_of_size(qsizetype size)
{
    return clip_created(QByteArray(size - clip_created("").size(), 'x'));
}

/// A report of channel B.
inline QByteArray channel_report(QByteArray const &kind, QByteArray const &fields)
{
    return "<report><channel_" + kind + "><Channel>B</Channel>" + fields + "</channel_" + kind
        + "></report>";
}

/// A reply to \a command with a clip of a list.
inline QByteArray clip_listed(QByteArray const &command, QByteArray const &clip)
{
    return ScriptedServer::reply(command, "<clipid><ClipID>" + clip + "</ClipID></clipid>");
}
