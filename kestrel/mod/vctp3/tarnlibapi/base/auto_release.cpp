// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/auto_release.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/areferenced.h"

#include <thread>

class AutoRelease::Holder : public AReferenced
{
public:
    explicit Holder(AFunction const &f)
        : function(f)
    {
        add_reference();
    }

protected:
    void full_release() override
    {
        function();
        AReferenced::full_release();
    }

private:
    AFunction function;
};

namespace {

constexpr std::uintptr_t busy = 1;

/// Stores what \a next makes of the address as soon as no thread is busy with it; returns what
/// was there.
template <typename Next> std::uintptr_t swap_when_free(std::atomic<std::uintptr_t> &word, Next next)
{
    std::uintptr_t seen = word.load(std::memory_order_relaxed) & ~busy;
    while (!word.compare_exchange_weak(seen, next(seen), std::memory_order_acq_rel)) {
        if (seen & busy)
            std::this_thread::yield();
        seen &= ~busy;
    }
    return seen;
}

} // namespace

AutoRelease::AutoRelease(AFunction const &function)
{
    if (!function.is_null())
        held.store(reinterpret_cast<std::uintptr_t>(new Holder(function)));
}

AutoRelease::AutoRelease(AutoRelease const &other)
{
    replace(other.share());
}

AutoRelease &AutoRelease::operator=(AutoRelease const &other)
{
    if (this != &other)
        replace(other.share());
    return *this;
}

AutoRelease::~AutoRelease()
{
    release();
}

void AutoRelease::release()
{
    replace(nullptr);
}

AutoRelease::Holder *AutoRelease::share() const
{
    if (empty())
        return nullptr;
    std::uintptr_t const address
        = swap_when_free(held, [](std::uintptr_t seen) { return seen == 0 ? seen : seen | busy; });
    if (address == 0)
        return nullptr;
    Holder *holder = reinterpret_cast<Holder *>(address);
    holder->add_reference();
    held.store(address, std::memory_order_release);
    return holder;
}

void AutoRelease::replace(Holder *holder)
{
    std::uintptr_t const address = reinterpret_cast<std::uintptr_t>(holder);
    std::uintptr_t const before
        = swap_when_free(held, [address](std::uintptr_t) { return address; });
    if (before != 0)
        reinterpret_cast<Holder *>(before)->release_reference();
}
