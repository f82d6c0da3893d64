// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/computer_name.h"

#include "kestrel/mod/vctp3/tarnlibapi/protocol/computer_name_p.h"

#include <unistd.h>

namespace VCTP3 {

namespace {
constexpr std::size_t longest_name = 1024;
}

AString read_computer_name(HostNameCall platform)
{
    // The last byte is never handed out, since a name that is cut may come without an end.
    char name[longest_name + 1] = {};
    if (platform(name, longest_name) != 0 || name[0] == '\0')
        return AString::l1("windoze");
    return AString::from_utf8z(name, longest_name);
}

AString getcomputername_as()
{
    static AString const name = read_computer_name(&::gethostname);
    return name;
}

QString getcomputername_qs()
{
    static QString const name = getcomputername_as();
    return name;
}

} // namespace VCTP3
