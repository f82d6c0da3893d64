// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/semaphores.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <chrono>

CountingSemaphore::CountingSemaphore(unsigned int initial, unsigned int maximum_permits)
    : maximum(initial <= maximum_permits ? maximum_permits : 0)
    , permits(maximum ? initial : 0)
{
    A_ASSERT_TEXT(maximum != 0, "sem != INVALID_HANDLE_VALUE");
}

CountingSemaphore::~CountingSemaphore() = default;

bool CountingSemaphore::semGive(unsigned int count)
{
    // Notified under the lock: who takes the permit may destroy the semaphore at once.
    std::lock_guard lock(mutex);
    if (count == 0 || count > maximum - permits)
        return false;
    permits += count;
    if (count == 1)
        given.notify_one();
    else
        given.notify_all();
    return true;
}

bool CountingSemaphore::semTake(unsigned int time)
{
    std::unique_lock lock(mutex);
    if (!wait(lock, time)) {
        A_ASSERT_TEXT(time != infinite, "time != INFINITE");
        return false;
    }
    --permits;
    return true;
}

void CountingSemaphore::semTakeN(unsigned int count)
{
    while (count-- > 0)
        semTake(infinite);
}

bool CountingSemaphore::wait(std::unique_lock<std::mutex> &lock, unsigned int milliseconds)
{
    auto const some = [this] { return permits > 0; };
    // Without a maximum no permit can ever come: a time-out that need not be waited for.
    if (maximum == 0)
        return false;
    if (milliseconds == infinite) {
        given.wait(lock, some);
        return true;
    }
    // An absolute deadline, so that neither wakes nor signals stretch the wait.
    auto const deadline
        = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    return given.wait_until(lock, deadline, some);
}

BinarySemaphore::BinarySemaphore(bool initial)
    : CountingSemaphore(initial ? 1 : 0, 1)
{
}

void BinarySemaphore::semGive()
{
    // Refused only when it is given already, which is what the caller wants.
    CountingSemaphore::semGive(1);
}
