// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QByteArray>
#include <QObject>

// clang-format off
// The toolkit wants each signal and slot declared. These go through the numbers from 0 to 100.
#define TARN_RELAY_TEN(DO, ten) \
    DO(ten##0) DO(ten##1) DO(ten##2) DO(ten##3) DO(ten##4) \
    DO(ten##5) DO(ten##6) DO(ten##7) DO(ten##8) DO(ten##9)
#define TARN_RELAY_ALL(DO) \
    TARN_RELAY_TEN(DO, ) TARN_RELAY_TEN(DO, 1) TARN_RELAY_TEN(DO, 2) TARN_RELAY_TEN(DO, 3) \
    TARN_RELAY_TEN(DO, 4) TARN_RELAY_TEN(DO, 5) TARN_RELAY_TEN(DO, 6) TARN_RELAY_TEN(DO, 7) \
    TARN_RELAY_TEN(DO, 8) TARN_RELAY_TEN(DO, 9) DO(100)
#define TARN_RELAY_SIGNAL(n) void sig##n();
#define TARN_RELAY_SLOT(n) void slot##n();
// clang-format on

/// Passes signals on by numbers that are known only at run time: its slot n emits its signal n,
/// and both can be connected by name. The signals are `sig0` to `sig100`, the slots `slot0` to
/// `slot100`, all without arguments.
/// Thread: as `QObject`.
class TARN_EXPORT AObjectRelay : public QObject
{
    Q_OBJECT

public:
    static constexpr unsigned int count = 101;
    using Slot = void (AObjectRelay::*)();

    explicit AObjectRelay(QObject *parent = nullptr)
        : QObject(parent)
    {
    }

    /// \name The texts by which the toolkit connects a numbered signal or slot: "2sig7()",
    /// "1slot7()"
    /// @{
    static QByteArray sig_name(unsigned int n);
    static QByteArray slot_name(unsigned int n);
    /// @}
    /// The numbered slot; null from `count` on.
    static Slot slot_method(unsigned int n);

Q_SIGNALS:
    TARN_RELAY_ALL(TARN_RELAY_SIGNAL)
    /// For those who emit by number; nothing here does.
    void sig(unsigned int n);

public Q_SLOTS:
    TARN_RELAY_ALL(TARN_RELAY_SLOT)
    /// Emits signal \a n; nothing from `count` on.
    void slot(unsigned int n);
};

#undef TARN_RELAY_SIGNAL
#undef TARN_RELAY_SLOT
