// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/enums.h"

class VeskConfiguration;
class VeskDictionary;

/// Defines the settings that every server has: board, video, panels, router and growing export.
void vesk_define_settings(VeskConfiguration *configuration, VCTP3::VideoStandard standard);
/// Leaves in the dictionary what the server itself tells there: its board and how many channels
/// that has.
void vesk_define_user_settings(VeskDictionary *dictionary);
