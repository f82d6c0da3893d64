// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint_audio_levels.h"

#include "ATarnLib/glint/glint_levels_p.h"
#include "ATarnLib/glint/glint_results_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/field_reader_p.h"

#include <algorithm>

using VCTP3::Channel;
using VCTP3::FieldReader;
using VCTP3::Word;
using VCTP3::word;

namespace {

struct Levels
{
    AString text;
    std::array<unsigned int, GlintLevels::count> hold{};

    /// A peak is seen however slowly the levels are taken.
    friend void overtake(Levels *value, Levels const &before)
    {
        std::transform(value->hold.begin(), value->hold.end(), before.hold.begin(),
            value->hold.begin(), [](unsigned int a, unsigned int b) { return std::max(a, b); });
    }
};

bool take(
    GlintResults<Levels> *results, unsigned long long connection, GlintAudioLevelsResult *result)
{
    unsigned int channel = 0;
    Levels levels;
    if (!results->take(connection, &channel, &levels))
        return false;
    *result = {static_cast<Channel>(channel), levels.text, levels.hold};
    return true;
}

} // namespace

struct GlintAudioLevels::Private
{
    GlintResults<Levels> peaks;
    GlintResults<Levels> aux_peaks;

    // Worker: results since the last signal that make one due
    bool peaks_due = false;
    bool aux_due = false;
};

GlintAudioLevels::GlintAudioLevels()
    : d(std::make_unique<Private>())
{
    thread()->setObjectName(QStringLiteral("GlintAudioLevels"));
    start_thread();
}

GlintAudioLevels::~GlintAudioLevels()
{
    end_thread();
}

bool GlintAudioLevels::take_levels(unsigned long long connection, GlintAudioLevelsResult *result)
{
    return take(&d->peaks, connection, result);
}

bool GlintAudioLevels::take_aux_levels(
    unsigned long long connection, GlintAudioLevelsResult *result)
{
    return take(&d->aux_peaks, connection, result);
}

unsigned long long GlintAudioLevels::overtaken() const
{
    return d->peaks.overtaken() + d->aux_peaks.overtaken();
}

unsigned int GlintAudioLevels::waiting() const
{
    return d->peaks.waiting() + d->aux_peaks.waiting();
}

bool GlintAudioLevels::decode(unsigned long long connection, XMLTree const &report, AString *error)
{
    bool const normal = report.has_tag(word(Word::channel_peak));
    if (!normal && !report.has_tag(word(Word::channel_aux_audio_peak))) {
        *error = AString::l1("This report has no levels");
        return false;
    }
    FieldReader fields(report, error);
    Channel channel = {};
    Levels levels;
    fields.need(Word::Channel, &channel);
    fields.need(Word::LevelsString, &levels.text);
    if (!fields.ok())
        return false;
    levels.hold = GlintLevels::parse(levels.text);
    auto const number = static_cast<unsigned int>(channel);
    if (normal)
        d->peaks_due |= d->peaks.store(number, connection, std::move(levels));
    else
        d->aux_due |= d->aux_peaks.store(number, connection, std::move(levels));
    return true;
}

void GlintAudioLevels::publish()
{
    if (std::exchange(d->peaks_due, false) && d->peaks.raise())
        Q_EMIT audio_levels_available();
    if (std::exchange(d->aux_due, false) && d->aux_peaks.raise())
        Q_EMIT audio_levels_available();
}
