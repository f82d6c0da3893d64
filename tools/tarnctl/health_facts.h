// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/tarnctl/exposition.h"
#include "tools/tarnctl/json_value.h"

#include <span>

class GlintHealth;

namespace TarnCtl {

/// A property of a hub's health, and what a metrics collector calls it.
struct HealthFact
{
    char const *property;
    char const *metric;
    Exposition::Type type;
    char const *help;
    /// The metric's unit in a unit of the property.
    double per_unit;
};

std::span<HealthFact const> health_facts();

/// All facts, with the names of the properties as keys. A number without a value is null.
JsonValue health_json(GlintHealth const &health);
/// All facts; a text as a label, unless it is empty, and no number without a value.
void write_health(GlintHealth const &health, Exposition *metrics);

} // namespace TarnCtl
