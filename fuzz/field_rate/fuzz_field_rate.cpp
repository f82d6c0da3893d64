// SPDX-License-Identifier: Apache-2.0
// The five reports that come at field rate, whatever they hold: their workers tell what the parser
// of all other messages would have told, or count a drop where it finds a fault. An input that is
// no element is taken for the only child of a report.
#include "ATarnLib/glint/glint_audio_levels.h"
#include "ATarnLib/glint/glint_timecode.h"
#include "fuzz/expect.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_parser.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_parse.h"

#include <QCoreApplication>
#include <array>
#include <cstddef>
#include <cstdint>
#include <thread>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size);

namespace {

using namespace VCTP3;

struct Parser : APIParser
{
    void report_channel_timecode(Channel channel, unsigned int position, Timecode const &display,
        Timecode const &input) override
    {
        timecode = {channel, position, display, input};
    }
    void report_channel_aux_audio_timecode(Channel channel, unsigned int position) override
    {
        timecode.channel = channel;
        timecode.position = position;
    }
    void report_ltc_timecode(Timecode const &value) override { timecode.display = value; }
    void report_channel_peak(Channel channel, AString const &text) override
    {
        levels.channel = channel;
        levels.levels = text;
    }
    void report_channel_aux_audio_peak(Channel channel, AString const &text) override
    {
        report_channel_peak(channel, text);
    }
    GlintTimecodeResult timecode;
    GlintAudioLevelsResult levels;
};

/// The numbers between blanks, read as plainly as possible.
std::array<unsigned int, 16> plain_levels(AString const &text)
{
    std::array<unsigned int, 16> levels{};
    std::size_t found = 0;
    AString piece;
    for (unsigned long long at = 0; at <= text.length() && found < levels.size(); ++at) {
        AString const one = text.mid(at, 1);
        if (!one.empty() && one != AString::l1(" ")) {
            piece += one;
            continue;
        }
        found += piece.to_uint32_t(&levels[found]);
        piece = AString();
    }
    return levels;
}

bool same(GlintTimecodeResult const &a, GlintTimecodeResult const &b)
{
    return a.channel == b.channel && a.position == b.position && a.display == b.display
        && a.input == b.input;
}

/// Whether the worker tells a report of that message, by \a take, or counts a drop instead.
template <typename Worker, typename Take>
bool told(Worker *worker, XMLTree const &message, Take take)
{
    unsigned long long const dropped = worker->dropped();
    worker->add_work(1, message);
    while (worker->work_waiting() != 0)
        std::this_thread::yield();
    bool const found = take();
    FUZZ_EXPECT(worker->dropped() == dropped + (found ? 0 : 1));
    FUZZ_EXPECT(!take());
    return found;
}

void check_timecodes(XMLTree const &message, Parser const &parser)
{
    static GlintTimecode worker;
    GlintTimecodeResult result;
    bool const found = told(&worker, message, [&result] {
        return worker.take_timecode(1, &result) || worker.take_aux_position(1, &result)
            || worker.take_ltc(1, &result.display);
    });
    FUZZ_EXPECT(found == parser.parsed_ok());
    FUZZ_EXPECT(!found || same(result, parser.timecode));
}

void check_levels(XMLTree const &message, Parser const &parser)
{
    static GlintAudioLevels worker;
    GlintAudioLevelsResult result;
    bool const found = told(&worker, message,
        [&result] { return worker.take_levels(1, &result) || worker.take_aux_levels(1, &result); });
    FUZZ_EXPECT(found == parser.parsed_ok());
    if (!found)
        return;
    FUZZ_EXPECT(result.channel == parser.levels.channel);
    FUZZ_EXPECT(result.levels == parser.levels.levels);
    FUZZ_EXPECT(result.hold == plain_levels(result.levels));
}

bool is_one_of(XMLTree const &report, std::initializer_list<char const *> tags)
{
    for (char const *tag : tags)
        if (report.has_tag_z(tag))
            return true;
    return false;
}

void be_silent(char const *, char const *, int) { }

/// The workers' threads have event loops, which want an application.
void set_up()
{
    static int count = 0;
    static QCoreApplication const application(count, nullptr);
    AAssert::set_handler(&be_silent);
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    set_up();
    AString const text = AString::from_utf8(reinterpret_cast<char const *>(data), size);
    XMLTree tree = XMLParse(text);
    if (tree.is_null())
        tree = XMLParse(AString::l1("<report>") + text + AString::l1("</report>"));
    if (!tree.has_tag_z("report") || tree.count_subnodes() != 1)
        return 0;
    Parser parser;
    parser.parse(tree);
    XMLTree const &report = *tree.children().begin();
    if (is_one_of(report, {"channel_timecode", "channel_aux_audio_timecode", "ltc_timecode"}))
        check_timecodes(tree, parser);
    if (is_one_of(report, {"channel_peak", "channel_aux_audio_peak"}))
        check_levels(tree, parser);
    return 0;
}
