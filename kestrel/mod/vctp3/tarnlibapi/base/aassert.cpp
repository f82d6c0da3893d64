// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <QDebug>
#include <atomic>

namespace AAssert {
namespace {

void print(char const *text, char const *file, int line)
{
    qDebug("ASSERT: %s (%s:%d)", text, file, line);
}

std::atomic<AssertHandler> current_handler{&print};

} // namespace

AssertHandler set_handler(AssertHandler handler)
{
    return current_handler.exchange(handler ? handler : &print);
}

bool failed(char const *text, char const *file, int line)
{
    current_handler.load()(text, file, line);
    return false;
}

} // namespace AAssert
