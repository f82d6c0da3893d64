// SPDX-License-Identifier: Apache-2.0
// The toolkit starts programs in a child that shares our memory until it executes them. The thread
// sanitizer of GCC 12 takes that child for a forked one and, in the memory they share, switches
// itself off for the thread that started it: from then on what this thread writes under a mutex
// looks like a race to the others. Here the child gets memory of its own, as a forked one has.
#if defined(__SANITIZE_THREAD__)

#include <cstdarg>
#include <dlfcn.h>
#include <sched.h>

extern "C" [[gnu::visibility("default")]] int clone(
    int (*body)(void *), void *stack, int flags, void *argument, ...) noexcept
{
    using Clone = int (*)(int (*)(void *), void *, int, void *, ...);
    static auto const next = reinterpret_cast<Clone>(dlsym(RTLD_NEXT, "clone"));

    // Behind the argument stand, as far as the flags ask for them: parent_tid, tls, child_tid.
    constexpr int with_parent = CLONE_PIDFD | CLONE_PARENT_SETTID;
    constexpr int with_child = CLONE_CHILD_SETTID | CLONE_CHILD_CLEARTID;
    va_list rest;
    va_start(rest, argument);
    bool const has_child = flags & with_child;
    bool const has_tls = has_child || (flags & CLONE_SETTLS);
    void *const parent = has_tls || (flags & with_parent) ? va_arg(rest, void *) : nullptr;
    void *const tls = has_tls ? va_arg(rest, void *) : nullptr;
    void *const child = has_child ? va_arg(rest, void *) : nullptr;
    va_end(rest);
    return next(body, stack, flags & ~CLONE_VM, argument, parent, tls, child);
}

#endif
