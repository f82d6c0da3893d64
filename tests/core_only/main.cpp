// SPDX-License-Identifier: Apache-2.0
// A program on the core alone: a command goes out as bytes, its reply comes back.
#include "kestrel/mod/vctp3/tarnlibapi/protocol/client.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_parse.h"

#include <cstdio>
#include <string>

namespace {

struct Loop : VCTP3::API
{
    std::string sent;
    bool answered = false;

    using VCTP3::API::send;
    void send(void const *data, unsigned long long size) override
    {
        sent.append(static_cast<char const *>(data), size);
    }
    static void ok(void *self) { static_cast<Loop *>(self)->answered = true; }
};

} // namespace

int main()
{
    Loop loop;
    AString const xid = loop.cmd_sync(AFunction(&Loop::ok, &loop), {});
    bool error = false;
    loop.parse(XMLParse(
        AString::from_string("<reply><xid>" + xid.to_string() + "</xid><ok/></reply>"), &error));
    VCTP3::Client client;
    bool const right = !error && loop.answered && loop.outstanding_commands() == 0
        && loop.sent == "<cmd>\r\n<xid>1</xid>\r\n<sync />\r\n</cmd>" && !client.isConnected();
    std::printf("%s\n", right ? "core works alone" : loop.sent.c_str());
    return right ? 0 : 1;
}
