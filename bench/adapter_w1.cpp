// SPDX-License-Identifier: Apache-2.0
// The message stream: cutting, parsing, reading into a record, writing a command.
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_command.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_boundary_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_name.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_parse_engine.h"
#include "message_stream.hpp"

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>

namespace {

constexpr std::size_t stream_bytes = 8 << 20;
constexpr std::size_t buffer_bytes = 65536;

wl::Stream const &stream_of(std::int64_t kind)
{
    static std::array<wl::Stream, 5> const streams{wl::mixed_stream(stream_bytes),
        wl::kind_stream(wl::Kind::Report, stream_bytes),
        wl::kind_stream(wl::Kind::ClipInfo, stream_bytes),
        wl::kind_stream(wl::Kind::Metadata, stream_bytes),
        wl::kind_stream(wl::Kind::Config, stream_bytes)};
    return streams[static_cast<std::size_t>(kind)];
}

/// The words of the workload, registered as the protocol does with its own.
void learn_names()
{
    static bool const done = [] {
        for (int kind = 0; kind < 5; ++kind) {
            std::string_view bytes = stream_of(kind).bytes;
            for (std::size_t at = bytes.find('<'); at != bytes.npos; at = bytes.find('<', at + 1)) {
                std::size_t const end = bytes.find_first_of(" />", at + 1);
                if (end != at + 1)
                    XMLName{std::string(bytes.substr(at + 1, end - at - 1)).c_str()};
            }
        }
        return true;
    }();
    static_cast<void>(done);
}

void finish(benchmark::State &state, wl::Stream const &stream, std::size_t seen)
{
    if (seen != stream.messages.size())
        state.SkipWithError("message count differs");
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * stream.bytes.size()));
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * stream.messages.size()));
}

/// Runs the stream through an engine in pieces and calls \a use for each tree.
template <typename Use>
void through_engine(benchmark::State &state, wl::Stream const &stream, std::size_t piece, Use use)
{
    learn_names();
    std::size_t seen = 0;
    for (auto _ : state) {
        XMLParseEngine engine(buffer_bytes);
        engine.config_tag("reply");
        engine.config_tag("report");
        seen = 0;
        for (std::size_t at = 0; at < stream.bytes.size();) {
            at += engine.input_bytes(
                std::min(piece, stream.bytes.size() - at), stream.bytes.data() + at);
            for (XMLTree tree = engine.get_xml(); !tree.is_null(); tree = engine.get_xml()) {
                use(std::move(tree));
                ++seen;
            }
        }
    }
    finish(state, stream, seen);
}

/// As many trees stay alive as a hand-off to another thread would keep.
struct Kept
{
    void operator()(XMLTree &&tree) { trees[next++ % trees.size()] = std::move(tree); }
    std::array<XMLTree, 64> trees;
    std::size_t next = 0;
};

void tarn_stream(benchmark::State &state)
{
    Kept kept;
    through_engine(state, stream_of(state.range(0)), buffer_bytes, std::ref(kept));
}
BENCHMARK(tarn_stream)->DenseRange(0, 4)->ArgName("kind");

void tarn_stream_names_unknown(benchmark::State &state)
{
    // Only meaningful alone in a process: names stay known.
    wl::Stream const &stream = stream_of(0);
    std::size_t seen = 0;
    for (auto _ : state) {
        XMLParseEngine engine(buffer_bytes);
        engine.config_tag("reply");
        engine.config_tag("report");
        Kept kept;
        seen = 0;
        for (std::size_t at = 0; at < stream.bytes.size();) {
            at += engine.input_bytes(
                std::min(buffer_bytes, stream.bytes.size() - at), stream.bytes.data() + at);
            for (XMLTree tree = engine.get_xml(); !tree.is_null(); tree = engine.get_xml()) {
                kept(std::move(tree));
                ++seen;
            }
        }
    }
    finish(state, stream, seen);
}
BENCHMARK(tarn_stream_names_unknown);

void tarn_engine(benchmark::State &state)
{
    through_engine(state, stream_of(state.range(0)), 1024,
        [](XMLTree &&tree) { benchmark::DoNotOptimize(tree); });
}
BENCHMARK(tarn_engine)->DenseRange(0, 4)->ArgName("kind");

void tarn_cut(benchmark::State &state)
{
    wl::Stream const &stream = stream_of(state.range(0));
    std::size_t seen = 0;
    for (auto _ : state) {
        XMLBoundary boundary;
        boundary.add_tag("reply");
        boundary.add_tag("report");
        char const *p = stream.bytes.data();
        char const *const end = p + stream.bytes.size();
        for (seen = 0; boundary.find(p, static_cast<std::size_t>(end - p)); ++seen) {
            p += boundary.end();
            boundary.restart();
        }
    }
    finish(state, stream, seen);
}
BENCHMARK(tarn_cut)->DenseRange(0, 4)->ArgName("kind");

/// One message of the buffer's size that arrives a byte at a time; the time is for all of it.
void tarn_byte_by_byte(benchmark::State &state)
{
    std::string message = "<reply>";
    while (message.size() < buffer_bytes - 60)
        message += "\r\n<Metadata>\r\n<Key>a.b</Key>\r\n</Metadata>";
    message += "\r\n</reply>";
    for (auto _ : state) {
        XMLParseEngine engine(buffer_bytes);
        engine.config_tag("reply");
        engine.config_tag("report");
        XMLTree tree;
        for (char const &byte : message) {
            engine.input_bytes(1, &byte);
            tree = engine.get_xml();
        }
        if (tree.is_null())
            state.SkipWithError("no message");
    }
}
BENCHMARK(tarn_byte_by_byte)->Unit(benchmark::kMillisecond);

// --- high-rate reports to a record ---

struct Timecode
{
    bool valid = false;
    std::array<bool, 4> has{};
    bool known_standard = false;
    unsigned int field = 0;
    bool no_drop = false;
    unsigned int ssm = 0;
};

struct Record
{
    int channel = -1;
    unsigned int position = 0;
    Timecode display;
    Timecode input;
    AString levels;
};

struct Words
{
    XMLName channel{"Channel"}, levels{"LevelsString"}, position{"ClipPosition"};
    XMLName display{"DisplayTimecode"}, input{"InputTimecode"}, timecode{"channel_timecode"};
    XMLName peak{"channel_peak"}, aux_peak{"channel_aux_audio_peak"};
    XMLName valid{"Valid"}, standard{"VideoStandard"}, field{"FieldNumber"}, drop{"DropFrameFlag"},
        ssm{"SSMSpeed"};
    AString yes = AString::l1("true"), ndf = AString::l1("ndf");
    std::map<AString, int> standards{{AString::l1("1080_60i"), 17},
        {AString::l1("1080_59_94i"), 18}, {AString::l1("1080_50i"), 19},
        {AString::l1("720_60p"), 22}, {AString::l1("720_59_94p"), 23},
        {AString::l1("720_50p"), 24}};
};

int channel_of(AString const &text)
{
    if (text.length() == 1)
        return static_cast<int>(text.firstchar().ord() - 'A');
    return text.length() == 2 ? 26 + static_cast<int>(text.lastchar().ord() - 'A') : -1;
}

void read_timecode(Words const &words, XMLTree const &tree, Timecode &to)
{
    for (XMLTree const &child : tree.children()) {
        if (child.has_tag(words.valid)) {
            to.valid = child.get_content() == words.yes;
        } else if (child.has_tag(words.standard)) {
            to.has[0] = words.standards.count(child.get_content()) != 0;
        } else if (child.has_tag(words.field)) {
            to.has[1] = child.get_content().to_unsigned(&to.field);
        } else if (child.has_tag(words.drop)) {
            to.has[2] = true;
            to.no_drop = child.get_content() == words.ndf;
        } else if (child.has_tag(words.ssm)) {
            to.has[3] = child.get_content().to_unsigned(&to.ssm);
        }
    }
}

bool read_record(Words const &words, XMLTree const &root, Record &to)
{
    XMLTree const &report = *root.children().begin();
    to.channel = channel_of(report.get_subnode(words.channel).get_content());
    if (report.has_tag(words.peak) || report.has_tag(words.aux_peak)) {
        to.levels = report.get_subnode(words.levels).get_content().deep_copy(32);
        return !to.levels.empty();
    }
    report.get_subnode(words.position).get_content().to_unsigned(&to.position);
    if (report.has_tag(words.timecode)) {
        read_timecode(words, report.get_subnode(words.display), to.display);
        read_timecode(words, report.get_subnode(words.input), to.input);
        return to.display.valid;
    }
    return to.channel >= 0;
}

void tarn_high_rate_record(benchmark::State &state)
{
    static wl::Stream const stream = wl::high_rate_stream(100);
    Words const words;
    std::vector<Record> latest(40);
    through_engine(state, stream, buffer_bytes, [&](XMLTree &&tree) {
        Record record;
        if (!read_record(words, tree, record))
            state.SkipWithError("read failed");
        latest[static_cast<std::size_t>(record.channel)] = std::move(record);
    });
}
BENCHMARK(tarn_high_rate_record);

// --- one command of six elements ---

/// Takes the blocks that a command is written in.
class Sink : public VCTP3::APICommand
{
protected:
    void send(void const *data, unsigned long long size) override
    {
        benchmark::DoNotOptimize(data);
        benchmark::DoNotOptimize(size);
    }
};

void tarn_write_command(benchmark::State &state)
{
    Sink sink;
    unsigned int id = 0;
    for (auto _ : state)
        sink.cmd_play(
            AString::from_uint32_t(++id), VCTP3::Channel::AB, true, 32768, false, {}, true, true);
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}
BENCHMARK(tarn_write_command);

} // namespace
