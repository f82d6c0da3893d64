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
    PortableMutexLock const lock(mutex);
    measures.emplace_back(name);
}

void MeasureRun::clear()
{
    PortableMutexLock const lock(mutex);
    measures.clear();
}

AString MeasureRun::report() const
{
    PortableMutexLock const lock(mutex);
    HRTime const end = HRTime::now();
    std::vector<Row> rows;
    for (std::size_t i = 0; i < measures.size(); ++i) {
        HRTime const next = i + 1 < measures.size() ? measures[i + 1].get_start() : end;
        rows.push_back({(next - measures[i].get_start()).to_astring(), measures[i].get_name()});
    }
    HRTime const begin = measures.empty() ? end : measures.front().get_start();
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
