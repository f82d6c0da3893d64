// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/tarnctl/json_value.h"

namespace TarnCtl {

/// Reads one JSON text. Stricter than most: a key that stands twice in an object is an error, since
/// one of the two would be lost. At most 32 levels deep. On failure: false, *out untouched, where
/// and why in *error.
bool read_json(QString const &text, JsonValue *out, QString *error);

} // namespace TarnCtl
