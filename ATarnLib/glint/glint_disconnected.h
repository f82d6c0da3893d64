// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aprotect.h"

#include <algorithm>
#include <list>

/// The update methods of a monitor's signals that have lost a listener and wait for being looked
/// at. At the moment of the loss the toolkit cannot say whether another listener is left, and may
/// hold its locks.
/// Thread: any.
template <typename UpdateMethod> class GlintDisconnected
{
public:
    /// One that waits already stays where it is.
    void add(UpdateMethod method)
    {
        Lock lock(waiting);
        if (std::find(lock->begin(), lock->end(), method) == lock->end())
            lock->push_back(method);
    }
    /// All that wait, in the order in which they came, and forgets them.
    std::list<UpdateMethod> take()
    {
        std::list<UpdateMethod> taken;
        Lock(waiting)->swap(taken);
        return taken;
    }

private:
    using Lock = typename AProtect<std::list<UpdateMethod>>::Lock;

    AProtect<std::list<UpdateMethod>> waiting;
};
