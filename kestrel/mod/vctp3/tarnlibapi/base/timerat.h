// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aprotect.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/hrtime.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <vector>

/// Where the time goes: a profiling aid for applications.
namespace TimeRat {

/// A named moment: now, when it is made.
/// Thread: a value without a lock.
class TARN_EXPORT Measure
{
public:
    /// \a name: Latin-1; null counts as empty.
    explicit Measure(char const *name);

    AString const &get_name() const { return name; }
    HRTime const &get_start() const { return start; }
    /// How long it has lasted.
    HRTime elapsed() const;

private:
    AString name;
    HRTime start;
};

/// Measures in a row: each lasts until the next begins, the last one until the report.
/// Thread: any.
class TARN_EXPORT MeasureRun
{
public:
    /// Ends the measure before and begins the next.
    void measure(char const *name);
    /// Forgets all measures.
    void clear();
    /// A line for each measure, oldest first, and one for "Total": the time, padded on the left
    /// to one width, a blank, the name, a line feed.
    AString report() const;

private:
    // A thread that ends inside leaves what it has measured, and the next one goes on with that.
    using Measures = AProtect<std::vector<Measure>>;

    Measures measures;
};

} // namespace TimeRat
