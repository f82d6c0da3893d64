// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_parser.h"

#include <memory>

class XMLParseEngine;

namespace VCTP3 {

/// Feeds the bytes of a stream into `parse`, a message at a time.
/// Thread: that of `parse`.
class TARN_EXPORT APIParser2 : public APIParser
{
public:
    /// A message can have at most this many bytes.
    static constexpr unsigned int input_buffer_size = 32768;

    APIParser2();
    ~APIParser2() override;

    /// Takes all \a count bytes and calls `parse` for each message that they complete. After a
    /// malformed message, or one that is too long, it takes nothing until `reset_input`.
    void input_bytes(unsigned long long count, void const *data);
    bool input_failed() const { return failed; }
    /// Begins a new stream: what is held is forgotten. From within a callback it also drops the
    /// rest of the bytes that are being read.
    void reset_input();

private:
    /// False when that stream cannot go on, or another has begun.
    bool parse_available(unsigned int begun_in);

    std::unique_ptr<XMLParseEngine> engine;
    bool failed = false;
    unsigned int stream = 0; // a number of each, as whom a message calls may begin and feed another
};

} // namespace VCTP3
