// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"
#include "sim/vesk/vesk_reporter.h"

#include <map>
#include <vector>

/// What the server finds wrong with itself, by name. An alert that goes is told once more, as ok.
/// Thread: the server's.
class VeskAlerts
{
public:
    explicit VeskAlerts(VeskReporter *reporter);

    /// Tells what is new; one that was never raised is not there to be ok.
    void set(VCTP3::Alert const &alert);
    /// What those who register are told: all that were ever raised, in the order of the names.
    std::vector<XMLTree> reports() const;

    /// Warns from 41.5 degrees Celsius on. Tenths of a degree.
    void watch_temperature(unsigned int tenths);
    /// Warns of less than a tenth of free space, and of less than a fiftieth as an error. Bytes.
    void watch_disk(quint64 total, quint64 available);

private:
    VeskReporter *told;
    std::map<AString, VCTP3::Alert> raised;
    unsigned int temperature = 0;
    quint64 available_bytes = ~quint64(0);
};
