// SPDX-License-Identifier: Apache-2.0
// Any tree given to the reader of messages: it calls what it understands and drops the rest, and a
// command in flight ends at most once. An input that is no element is taken for the children of a
// reply to that command.
#include "fuzz/expect.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_parse.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size);

namespace {

struct Reader : VCTP3::API
{
    void send(void const *, unsigned long long) override { }
    static void ok(void *self) { ++static_cast<Reader *>(self)->ended; }
    static void clip_id(void *, AString const &) { }
    static void error(void *self, AString const &, VCTP3::ErrorCode)
    {
        ++static_cast<Reader *>(self)->ended;
    }
    unsigned int ended = 0;
};

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    Reader reader;
    AString const xid = reader.cmd_download_clipids(
        {&Reader::ok, &reader}, {&Reader::clip_id, &reader}, {&Reader::error, &reader});
    AString const text = AString::from_utf8(reinterpret_cast<char const *>(data), size);
    XMLTree tree = XMLParse(text);
    if (tree.is_null())
        tree = XMLParse(AString::l1("<reply><xid>") + xid + AString::l1("</xid>") + text
            + AString::l1("</reply>"));
    if (tree.is_null())
        return 0;
    reader.parse(tree);
    FUZZ_EXPECT(reader.parsed_ok() == reader.parse_error_text().empty());
    FUZZ_EXPECT(reader.ended + reader.outstanding_commands() <= 1);
    reader.fail_all_pending_commands();
    FUZZ_EXPECT(reader.ended <= 1 && reader.outstanding_commands() == 0);
    return 0;
}
