// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from replies.tbl, reports.tbl and groups.tbl; do not edit.

#include "tools/tarnctl/json_messages.h"

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt.h"

namespace TarnCtl {

namespace {

JsonValue start_message(char const *kind, char const *name)
{
    JsonValue out = JsonValue::object();
    out.add(kind, JsonValue::text(QLatin1String(name)));
    return out;
}

} // namespace

JsonValue reply_ok()
{
    JsonValue out = start_message("reply", "ok");
    return out;
}

JsonValue reply_error(AString const &message, unsigned int code)
{
    JsonValue out = start_message("reply", "error");
    out.add("Message", json_of(message));
    out.add("Code", json_of(code));
    return out;
}

JsonValue reply_car(VCTP3::Car const &car)
{
    JsonValue out = start_message("reply", "car");
    out.add("Car", json_of(car));
    return out;
}

JsonValue reply_road(VCTP3::Road const &road, unsigned long long serial)
{
    JsonValue out = start_message("reply", "road");
    out.add("Road", json_of(road));
    out.add("Serial", json_of(serial));
    return out;
}

JsonValue report_passed(VCTP3::Side side, AString const &name, AOption<int> const &speed)
{
    JsonValue out = start_message("report", "passed");
    out.add("Side", json_of(side));
    out.add("Name", json_of(name));
    if (speed)
        out.add("Speed", json_of_speed(*speed));
    return out;
}

JsonValue report_lamp(VCTP3::Side side, bool open)
{
    JsonValue out = start_message("report", "lamp");
    out.add("Side", json_of(side));
    out.add("Open", json_of(open));
    return out;
}

JsonValue report_names(std::list<AString> const &names)
{
    JsonValue out = start_message("report", "names");
    out.add("Names", json_of(names));
    return out;
}

void hear(VCTP3::CallbackGroup_set1 const *group, Answer *answer)
{
    QObject::connect(group, &VCTP3::CallbackGroup_set1::sig_ok, answer,
        [answer]() {
            answer->last(reply_ok());
        });
    QObject::connect(group, &VCTP3::CallbackGroup_set1::sig_error, answer,
        [answer](AString const &message, unsigned int code) {
            answer->failed(reply_error(message, code));
        });
}

void hear(VCTP3::CallbackGroup_set2 const *group, Answer *answer)
{
    QObject::connect(group, &VCTP3::CallbackGroup_set2::sig_car, answer,
        [answer](VCTP3::Car const &car) {
            answer->more(reply_car(car));
        });
    QObject::connect(group, &VCTP3::CallbackGroup_set2::sig_ok, answer,
        [answer]() {
            answer->last(reply_ok());
        });
    QObject::connect(group, &VCTP3::CallbackGroup_set2::sig_error, answer,
        [answer](AString const &message, unsigned int code) {
            answer->failed(reply_error(message, code));
        });
}

void hear(VCTP3::CallbackGroup_set3 const *group, Answer *answer)
{
    QObject::connect(group, &VCTP3::CallbackGroup_set3::sig_road, answer,
        [answer](VCTP3::Road const &road, unsigned long long serial) {
            answer->last(reply_road(road, serial));
        });
    QObject::connect(group, &VCTP3::CallbackGroup_set3::sig_error, answer,
        [answer](AString const &message, unsigned int code) {
            answer->failed(reply_error(message, code));
        });
}

void hear_reports(VCTP3::APIQt const *api, QObject *context,
    std::function<void(JsonValue const &)> const &report)
{
    QObject::connect(api, &VCTP3::APIQt::report_passed, context,
        [report](VCTP3::Side side, AString const &name, AOption<int> const &speed) {
            report(report_passed(side, name, speed));
        });
    QObject::connect(api, &VCTP3::APIQt::report_lamp, context,
        [report](VCTP3::Side side, bool open) {
            report(report_lamp(side, open));
        });
    QObject::connect(api, &VCTP3::APIQt::report_names, context,
        [report](std::list<AString> const &names) {
            report(report_names(names));
        });
}

} // namespace TarnCtl
