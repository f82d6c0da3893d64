// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint_timecode.h"

#include "ATarnLib/glint/glint_results_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/field_reader_p.h"

using VCTP3::Channel;
using VCTP3::FieldReader;
using VCTP3::Timecode;
using VCTP3::Word;
using VCTP3::word;

namespace {

struct Timecodes
{
    unsigned int position = 0;
    Timecode display;
    Timecode input;
};

struct LTCResult
{
    bool pending = false;
    Timecode value;
    unsigned long long connection = 0;
};

} // namespace

struct GlintTimecode::Private
{
    bool decode_timecode(unsigned long long connection, FieldReader &fields);
    bool decode_aux(unsigned long long connection, FieldReader &fields);
    bool decode_ltc(unsigned long long connection, FieldReader &fields);

    GlintResults<Timecodes> timecodes;
    GlintResults<unsigned int> aux_positions;
    AProtect<LTCResult> ltc;
    std::atomic<bool> ltc_flagged{false};
    std::atomic<unsigned long long> ltc_overtaken{0};

    // Worker: results since the last signals that make one due
    bool timecode_due = false;
    bool aux_due = false;
    bool ltc_due = false;
};

bool GlintTimecode::Private::decode_timecode(unsigned long long connection, FieldReader &fields)
{
    Channel channel = {};
    Timecodes values;
    fields.need(Word::Channel, &channel);
    fields.need(Word::ClipPosition, &values.position);
    fields.need(Word::DisplayTimecode, &values.display);
    fields.need(Word::InputTimecode, &values.input);
    if (fields.ok())
        timecode_due |= timecodes.store(static_cast<unsigned int>(channel), connection, values);
    return fields.ok();
}

bool GlintTimecode::Private::decode_aux(unsigned long long connection, FieldReader &fields)
{
    Channel channel = {};
    unsigned int position = 0;
    fields.need(Word::Channel, &channel);
    fields.need(Word::ClipPosition, &position);
    if (fields.ok())
        aux_due |= aux_positions.store(static_cast<unsigned int>(channel), connection, position);
    return fields.ok();
}

bool GlintTimecode::Private::decode_ltc(unsigned long long connection, FieldReader &fields)
{
    Timecode value;
    fields.need(Word::Timecode, &value);
    if (!fields.ok())
        return false;
    AProtect<LTCResult>::Lock lock(ltc);
    lock->value = value;
    lock->connection = connection;
    if (std::exchange(lock->pending, true))
        ltc_overtaken.fetch_add(1, std::memory_order_relaxed);
    else
        ltc_due = true;
    return true;
}

GlintTimecode::GlintTimecode()
    : d(std::make_unique<Private>())
{
    thread()->setObjectName(QStringLiteral("GlintTimecode"));
    start_thread();
}

GlintTimecode::~GlintTimecode()
{
    end_thread();
}

bool GlintTimecode::take_timecode(unsigned long long connection, GlintTimecodeResult *result)
{
    unsigned int channel = 0;
    Timecodes values;
    if (!d->timecodes.take(connection, &channel, &values))
        return false;
    *result = {static_cast<Channel>(channel), values.position, values.display, values.input};
    return true;
}

bool GlintTimecode::take_aux_position(unsigned long long connection, GlintTimecodeResult *result)
{
    unsigned int channel = 0;
    if (!d->aux_positions.take(connection, &channel, &result->position))
        return false;
    result->channel = static_cast<Channel>(channel);
    return true;
}

bool GlintTimecode::take_ltc(unsigned long long connection, Timecode *value)
{
    AProtect<LTCResult>::Lock lock(d->ltc);
    d->ltc_flagged.exchange(false);
    if (!std::exchange(lock->pending, false) || lock->connection != connection)
        return false;
    *value = lock->value;
    return true;
}

unsigned long long GlintTimecode::overtaken() const
{
    return d->timecodes.overtaken() + d->aux_positions.overtaken()
        + d->ltc_overtaken.load(std::memory_order_relaxed);
}

unsigned int GlintTimecode::waiting() const
{
    unsigned int const ltc = AProtect<LTCResult>::Lock(d->ltc)->pending ? 1 : 0;
    return d->timecodes.waiting() + d->aux_positions.waiting() + ltc;
}

bool GlintTimecode::decode(unsigned long long connection, XMLTree const &report, AString *error)
{
    FieldReader fields(report, error);
    if (report.has_tag(word(Word::channel_timecode)))
        return d->decode_timecode(connection, fields);
    if (report.has_tag(word(Word::channel_aux_audio_timecode)))
        return d->decode_aux(connection, fields);
    if (report.has_tag(word(Word::ltc_timecode)))
        return d->decode_ltc(connection, fields);
    *error = AString::l1("This report has no timecode");
    return false;
}

void GlintTimecode::publish()
{
    if (std::exchange(d->timecode_due, false) && d->timecodes.raise())
        Q_EMIT timecode_available();
    if (std::exchange(d->aux_due, false) && d->aux_positions.raise())
        Q_EMIT timecode_available();
    if (std::exchange(d->ltc_due, false) && !d->ltc_flagged.exchange(true))
        Q_EMIT ltc_available();
}
