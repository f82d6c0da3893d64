// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/timecode/atimecode.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QObject>

class Glint;

/// The timecode at a server's timecode input.
/// Thread: the hub's.
class TARN_EXPORT LTCModel : public QObject
{
    Q_OBJECT

public:
    /// \a hub must outlive this object.
    explicit LTCModel(Glint *hub, QObject *parent = nullptr);

    /// Undefined while there is no connection, before the first report of one, and while the
    /// input has none.
    Corvane::ATimecode get() const { return timecode; }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void connected();
    void disconnected();
    void report_ltc_timecode(VCTP3::Timecode const &report);

private:
    void store(Corvane::ATimecode const &now);

    Glint *const glint;
    Corvane::ATimecode timecode;
};
