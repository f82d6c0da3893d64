// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/afunction.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/enums.h"

#include <QMutex>
#include <QStringList>

/// What came of the commands that were given its callables.
/// Thread: any.
class Answers
{
public:
    AFunction ok() { return AFunction::bind<&Answers::got_ok>(this); }
    AFunction2<AString, VCTP3::ErrorCode> error()
    {
        return AFunction2<AString, VCTP3::ErrorCode>::bind<&Answers::got_error>(this);
    }
    AFunction1<AString> text() { return AFunction1<AString>::bind<&Answers::got_text>(this); }

    int oks() const
    {
        QMutexLocker lock(&mutex);
        return ok_count;
    }
    /// Each as "text (code)".
    QStringList errors() const
    {
        QMutexLocker lock(&mutex);
        return error_texts;
    }
    QStringList texts() const
    {
        QMutexLocker lock(&mutex);
        return data_texts;
    }

    /// What each command in flight gets when its connection goes.
    static QString failing_all()
    {
        return QStringLiteral("Failing all outstanding commands (general)");
    }

private:
    void got_ok()
    {
        QMutexLocker lock(&mutex);
        ++ok_count;
    }
    void got_error(AString const &text, VCTP3::ErrorCode code)
    {
        QMutexLocker lock(&mutex);
        error_texts.append(QStringLiteral("%1 (%2)").arg(
            QString(text), QString(VCTP3::ErrorCode_to_string(code))));
    }
    void got_text(AString const &text)
    {
        QMutexLocker lock(&mutex);
        data_texts.append(QString(text));
    }

    mutable QMutex mutex;
    int ok_count = 0;
    QStringList error_texts;
    QStringList data_texts;
};
