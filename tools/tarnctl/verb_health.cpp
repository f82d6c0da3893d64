// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint.h"
#include "ATarnLib/glint/glint_health.h"
#include "tools/tarnctl/health_facts.h"
#include "tools/tarnctl/snapshot_verb.h"
#include "tools/tarnctl/verbs.h"

namespace TarnCtl {
namespace {

constexpr int probe_interval_ms = 20;

/// Waits for the answer to a probe, since how long the server took is what most people ask for.
class HealthVerb : public SnapshotVerb
{
protected:
    void begin() override { health().set_probe_interval(probe_interval_ms); }

    bool is_told() override { return SnapshotVerb::is_told() && health().round_trip_us() >= 0; }

    void print_json() override { output().json_line(health_json(health())); }
    void write(Exposition *metrics) override { write_health(health(), metrics); }

private:
    GlintHealth &health() { return *hub().get_health(); }
};

} // namespace

std::unique_ptr<Verb> make_health(CommandLine const &)
{
    return std::make_unique<HealthVerb>();
}

} // namespace TarnCtl
