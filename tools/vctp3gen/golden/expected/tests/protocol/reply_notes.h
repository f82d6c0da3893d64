// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from replies.tbl; do not edit.

#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api.h"
#include "tests/protocol/samples.h"

#include <QStringList>

namespace VCTP3 {

/// Notes the replies to a command, and whether their values are the samples.
class ReplyNotes
{
public:
    QStringList seen;

    AFunction ok()
    {
        return AFunction::bind<&ReplyNotes::note_ok>(this);
    }
    void note_ok()
    {
        note("ok", true);
    }
    AFunction2<AString, unsigned int> error()
    {
        return AFunction2<AString, unsigned int>::bind<&ReplyNotes::note_error>(this);
    }
    void note_error(AString const &message, unsigned int code)
    {
        note("error", message == sample_Message() && code == sample_Code());
    }
    AFunction1<Car> car()
    {
        return AFunction1<Car>::bind<&ReplyNotes::note_car>(this);
    }
    void note_car(Car const &car)
    {
        note("car", car == sample_Car());
    }
    AFunction2<Road, unsigned long long> road()
    {
        return AFunction2<Road, unsigned long long>::bind<&ReplyNotes::note_road>(this);
    }
    void note_road(Road const &road, unsigned long long serial)
    {
        note("road", road == sample_Road() && serial == sample_Serial());
    }

private:
    void note(char const *name, bool right)
    {
        seen.append(QLatin1String(right ? "" : "wrong ") + QLatin1String(name));
    }
};

} // namespace VCTP3
