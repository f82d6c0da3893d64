// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/glint/glint_worker.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"

#include <memory>

/// The timecodes of one report.
struct TARN_EXPORT GlintTimecodeResult
{
    VCTP3::Channel channel = {};
    unsigned int position = 0;
    VCTP3::Timecode display;
    VCTP3::Timecode input;
};

/// Decodes the reports of timecodes: of the channels, of their auxiliary audio, and of the LTC
/// input. It keeps the newest of each channel, in the order in which the channels got one.
/// Thread: made, asked and deleted on the hub's.
class TARN_EXPORT GlintTimecode final : public GlintWorker
{
    Q_OBJECT

public:
    GlintTimecode();
    ~GlintTimecode() override;

    /// \name The next result of a connection
    /// False when there is none; the next one is signalled then.
    /// @{
    bool take_timecode(unsigned long long connection, GlintTimecodeResult *result);
    /// The channel and the position alone.
    bool take_aux_position(unsigned long long connection, GlintTimecodeResult *result);
    bool take_ltc(unsigned long long connection, VCTP3::Timecode *value);
    /// @}

    /// From any thread: results that were overtaken, and those that wait for being taken.
    unsigned long long overtaken() const;
    unsigned int waiting() const;

Q_SIGNALS:
    /// There are results of channels, after a time when all had been taken. From the worker.
    void timecode_available();
    void ltc_available();

protected:
    bool decode(unsigned long long connection, XMLTree const &report, AString *error) override;
    void publish() override;

private:
    struct Private;
    std::unique_ptr<Private> const d;
};
