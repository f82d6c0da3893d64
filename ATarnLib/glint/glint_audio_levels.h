// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/glint/glint_worker.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/enums.h"

#include <array>
#include <memory>

/// The audio levels of one report, and the highest since the one that was taken before.
struct TARN_EXPORT GlintAudioLevelsResult
{
    VCTP3::Channel channel = {};
    /// As the report told them.
    AString levels;
    /// The highest of each track, of this report and of those that it has overtaken.
    std::array<unsigned int, 16> hold{};
};

/// Decodes the reports of audio levels, of the channels and of their auxiliary audio. It keeps the
/// newest of each channel, in the order in which the channels got one.
/// Thread: made, asked and deleted on the hub's.
class TARN_EXPORT GlintAudioLevels final : public GlintWorker
{
    Q_OBJECT

public:
    GlintAudioLevels();
    ~GlintAudioLevels() override;

    /// \name The next result of a connection
    /// False when there is none; the next one is signalled then.
    /// @{
    bool take_levels(unsigned long long connection, GlintAudioLevelsResult *result);
    bool take_aux_levels(unsigned long long connection, GlintAudioLevelsResult *result);
    /// @}

    /// From any thread: results that were overtaken, and channels that have one waiting.
    unsigned long long overtaken() const;
    unsigned int waiting() const;

Q_SIGNALS:
    /// There are results, after a time when all had been taken. From the worker.
    void audio_levels_available();

protected:
    bool decode(unsigned long long connection, XMLTree const &report, AString *error) override;
    void publish() override;

private:
    struct Private;
    std::unique_ptr<Private> const d;
};
