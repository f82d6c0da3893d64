// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_board.h"
#include "sim/vesk/vesk_configuration.h"

class VeskDictionary;

/// The settings that every server has, with the values of its first start: board, video, panels,
/// router and growing export.
VeskSettings vesk_settings(VCTP3::VideoStandard standard, VeskBoard board);
/// Leaves in the dictionary what the server itself tells there: its board and how many channels
/// that has.
void vesk_define_user_settings(VeskDictionary *dictionary, VeskBoard board);
