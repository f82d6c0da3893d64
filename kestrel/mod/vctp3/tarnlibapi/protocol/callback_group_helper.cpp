// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/callback_group_helper.h"

namespace VCTP3 {

namespace {
thread_local unsigned int mutes = 0;
}

CallbackGroupHelper::CallbackGroupHelper(QObject *group)
    : qtcb(group)
{
    A_ASSERT_TEXT(qtcb, "qtcb != 0");
}

CallbackGroupHelper::~CallbackGroupHelper()
{
    A_ASSERT_TEXT(!qtcb, "qtcb == 0");
}

void CallbackGroupHelper::addref()
{
    ++references;
}

void CallbackGroupHelper::detach()
{
    {
        PortableMutexLock lock(mutex);
        if (!A_ASSERT_TEXT(qtcb, "qtcb != 0"))
            return;
        qtcb = nullptr;
    }
    release();
}

void CallbackGroupHelper::release()
{
    if (--references == 0)
        delete this;
}

QObject *CallbackGroupHelper::audience() const
{
    return mutes == 0 ? qtcb : nullptr;
}

CallbackGroupHelper::Mute::Mute()
{
    ++mutes;
}

CallbackGroupHelper::Mute::~Mute()
{
    --mutes;
}

} // namespace VCTP3
