// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/base/aobject_relay.h"

QByteArray AObjectRelay::sig_name(unsigned int n)
{
    return QByteArray("2sigXXXXX()").replace("XXXXX", QByteArray::number(n));
}

QByteArray AObjectRelay::slot_name(unsigned int n)
{
    return QByteArray("1slotXXXXX()").replace("XXXXX", QByteArray::number(n));
}

AObjectRelay::Slot AObjectRelay::slot_method(unsigned int n)
{
#define TARN_RELAY_ENTRY(number) &AObjectRelay::slot##number,
    static constexpr Slot all[] = {TARN_RELAY_ALL(TARN_RELAY_ENTRY)};
#undef TARN_RELAY_ENTRY
    static_assert(std::size(all) == count);
    return n < count ? all[n] : nullptr;
}

void AObjectRelay::slot(unsigned int n)
{
    if (Slot const numbered = slot_method(n))
        (this->*numbered)();
}

// clang-format off
#define TARN_RELAY_PASS_ON(n) void AObjectRelay::slot##n() { Q_EMIT sig##n(); }
TARN_RELAY_ALL(TARN_RELAY_PASS_ON)
