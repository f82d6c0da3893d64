// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_reporter.h"

VeskReporter::~VeskReporter() = default;
