// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/timerat.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/astring_list.h"

#include <algorithm>

namespace TimeRat {
namespace {

struct Row
{
    AString time;
    AString name;
};

} // namespace

Measure::Measure(char const *measure_name)
    : name(AString::from_latin1(measure_name))
    , start(HRTime::now())
{
}

HRTime Measure::elapsed() const
{
    return HRTime::now() - start;
}

void MeasureRun::measure(char const *name)
{
    Measures::Lock const lock(measures);
    lock->emplace_back(name);
}

void MeasureRun::clear()
{
    Measures::Lock const lock(measures);
    lock->clear();
}

AString MeasureRun::report() const
{
    Measures::Lock const lock(measures);
    HRTime const end = HRTime::now();
    std::vector<Row> rows;
    for (std::size_t i = 0; i < lock->size(); ++i) {
        HRTime const next = i + 1 < lock->size() ? (*lock)[i + 1].get_start() : end;
        rows.push_back({(next - (*lock)[i].get_start()).to_astring(), (*lock)[i].get_name()});
    }
    HRTime const begin = lock->empty() ? end : lock->front().get_start();
    rows.push_back({(end - begin).to_astring(), AString::from_latin1("Total")});

    unsigned long long width = 0;
    for (Row const &row : rows)
        width = std::max<unsigned long long>(width, row.time.length());
    AStringList text;
    for (Row const &row : rows) {
        text.push_back(row.time.pad(static_cast<long long>(width)));
        text.push_back(AString::from_latin1(" "));
        text.push_back(row.name);
        text.push_back(AString::from_latin1("\n"));
    }
    return AString(text);
}

} // namespace TimeRat
