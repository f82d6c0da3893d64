// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <QMutex>
#include <QStringList>

/// Collects the texts of all assertions while it lives, so that a test can expect and count them.
/// One at a time in a process.
class AssertLog
{
public:
    AssertLog() { previous = AAssert::set_handler(&AssertLog::note); }
    ~AssertLog() { AAssert::set_handler(previous); }
    AssertLog(AssertLog const &) = delete;
    AssertLog &operator=(AssertLog const &) = delete;

    /// The texts so far, and forgets them.
    QStringList take()
    {
        QMutexLocker lock(&mutex());
        QStringList result;
        result.swap(texts());
        return result;
    }

private:
    static void note(char const *text, char const *, int)
    {
        QMutexLocker lock(&mutex());
        texts().append(QString::fromLatin1(text));
    }
    static QMutex &mutex()
    {
        static QMutex m;
        return m;
    }
    static QStringList &texts()
    {
        static QStringList list;
        return list;
    }

    AAssert::AssertHandler previous = nullptr;
};
