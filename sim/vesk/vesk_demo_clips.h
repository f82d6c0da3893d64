// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_clips.h"

/// Records a football match into empty clips and directories: four banks of six moments, each
/// seen by twelve cameras, and the programme of both halves as a read-only clip of its own.
///
/// A bank is a directory, "Bank 1" to "Bank 4"; a clip in it is named after bank, register and
/// camera, as in "Bank 2/203-07", and has a title. Moments last from 4 seconds to a minute and a
/// half, their timecodes go on through the match.
void vesk_add_demo_clips(VeskClips *clips, VeskFieldClock const &clock);
