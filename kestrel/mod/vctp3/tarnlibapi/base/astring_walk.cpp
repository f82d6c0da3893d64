// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/astring_p.h"

AStringSegmentPosition AString::cursor_at(unsigned long long i) const
{
    AStringSegmentPosition position;
    position.absolute = start_ + i;
    if (i < length_)
        position.chunk = storage->chunk_at(position.absolute, &position.index);
    return position;
}

void AString::settle(AStringSegmentPosition *position) const
{
    if (!position->chunk) {
        *position = cursor_at(position->absolute - start_);
    } else if (position->index == position->chunk->used) {
        position->chunk = position->chunk->next;
        position->index = 0;
    }
}

AStringSegmentPosition AString::get_first_position() const
{
    return cursor_at(0);
}

AStringSegmentPosition AString::get_last_position() const
{
    return cursor_at(length_ - 1);
}

bool AString::get_next_position(AStringSegmentPosition *position, AChar *out) const
{
    if (!holds(*position))
        return false;
    settle(position);
    if (out)
        *out = position->chunk->text()[position->index];
    ++position->index;
    ++position->absolute;
    return true;
}

bool AString::get_next_position(AStringSegmentPosition *position, unsigned long long n) const
{
    if (!holds(*position))
        return n == 0 && position->absolute == start_ + length_;
    settle(position);
    unsigned long long const left = length_ - (position->absolute - start_);
    unsigned long long const step = std::min(n, left);
    if (step <= position->chunk->used - position->index) {
        position->index += static_cast<std::uint32_t>(step);
        position->absolute += step;
    } else {
        *position = cursor_at(position->absolute - start_ + step);
    }
    return n <= left;
}

bool AString::get_prev_position(AStringSegmentPosition *position, AChar *out) const
{
    if (!holds(*position))
        return false;
    settle(position);
    if (out)
        *out = position->chunk->text()[position->index];
    if (position->index == 0) {
        *position = cursor_at(position->absolute - start_ - 1);
    } else {
        --position->index;
        --position->absolute;
    }
    return true;
}

bool AString::get_position(AStringSegmentPosition *position, AChar *out, unsigned long long i) const
{
    if (i >= length_)
        return false;
    *position = cursor_at(i);
    if (out)
        *out = position->chunk->text()[position->index];
    return true;
}

unsigned long long AString::linear_access(
    AStringSegmentPosition const &position, AChar const **run) const
{
    if (!holds(position))
        return 0;
    AStringSegmentPosition at = position;
    settle(&at);
    *run = at.chunk->text() + at.index;
    return std::min<unsigned long long>(
        at.chunk->used - at.index, length_ - (at.absolute - start_));
}

AString::iterator AString::begin() const
{
    return {this, get_first_position()};
}

AString::iterator AString::end() const
{
    return {this, cursor_at(length_)};
}

void AString::iterator::enter_run()
{
    if (!string->holds(position))
        return;
    string->settle(&position);
    unsigned long long const n = string->linear_access(position, &current);
    run_end = current + n;
}

void AString::send_achars(AFunction2<AChar const *, unsigned long long> const &sink) const
{
    for (AStringRuns run(*this); run.next();)
        sink(run.text, run.size);
}
