// SPDX-License-Identifier: Apache-2.0
// What a client sends, whatever it is: the simulated server answers it, lets some fields pass, and
// says the same however the stream was cut.
#include "fuzz/expect.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/clock.h"
#include "sim/vesk/vesk_station.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size);

namespace {

/// Time stands still, so that two servers that do the same say the same.
class StoppedClock : public AClock::Source
{
public:
    long long monotonic_ms() override { return 0; }
    long long wall_ms() override { return 0; }
};

/// What a server with one client says to a stream of bytes that comes in pieces of \a piece bytes,
/// and whether it could read on to the end.
QByteArray answer(char const *data, std::size_t size, std::size_t piece, bool *read_on)
{
    VeskStation station(VCTP3::VideoStandard::v1080_50i, VeskBoard::hd);
    quint64 const connection = station.open();
    *read_on = true;
    for (std::size_t at = 0; at < size && *read_on; at += piece)
        *read_on = station.feed(connection, data + at, std::min(piece, size - at));
    for (int field = 0; field < 3; ++field)
        station.advance_field();
    QByteArray const said = station.take_output(connection);
    station.close(connection);
    return said;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    static StoppedClock clock;
    AClock::set_source(&clock);
    auto const *bytes = reinterpret_cast<char const *>(data);
    bool whole_read_on = false;
    bool split_read_on = false;
    QByteArray const whole = answer(bytes, size, size, &whole_read_on);
    QByteArray const split = answer(bytes, size, 7, &split_read_on);
    FUZZ_EXPECT(whole_read_on == split_read_on);
    FUZZ_EXPECT(whole == split);
    return 0;
}
