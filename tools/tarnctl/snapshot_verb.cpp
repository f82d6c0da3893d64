// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/snapshot_verb.h"

namespace TarnCtl {

void SnapshotVerb::told()
{
    if (output().as_json()) {
        print_json();
    } else {
        Exposition metrics(session().server());
        write(&metrics);
        output().text(metrics.text());
    }
    Verb::done();
}

} // namespace TarnCtl
