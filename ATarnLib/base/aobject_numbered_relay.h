// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QObject>

/// Adds its number to a signal without one, and takes it off again: so one signal with a number
/// fans out to the relay that carries it.
/// Thread: as `QObject`.
class TARN_EXPORT AObjectNumberedRelay : public QObject
{
    Q_OBJECT

public:
    explicit AObjectNumberedRelay(unsigned int carried, QObject *parent = nullptr)
        : QObject(parent)
        , number(carried)
    {
    }

Q_SIGNALS:
    void sig(unsigned int n);
    void sig();

public Q_SLOTS:
    /// Emits `sig` with the number.
    void slot();
    /// Emits `sig` without one, if \a n is the number.
    void slot(unsigned int n);

private:
    unsigned int const number;
};
