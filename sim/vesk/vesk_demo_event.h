// SPDX-License-Identifier: Apache-2.0
#pragma once

struct VeskWorld;

/// Puts a football match into an empty world: the banks of clips of `vesk_add_demo_clips`, the
/// playlists "Opening" and "Goals", the chase "Whole match", a metadata database "demo", tally and
/// panel settings. It is the same each time.
void vesk_fill_demo_event(VeskWorld *world);
