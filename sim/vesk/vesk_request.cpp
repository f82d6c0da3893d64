// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_request.h"

VeskRequest::~VeskRequest() = default;
