// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from commands.tbl and groups.tbl; do not edit.

#include "tests/protocol/qt_rows.h"
#include "tests/protocol/samples.h"

using namespace VCTP3;

struct Groups
{
    CallbackGroup_set1 group1;
    CallbackGroup_set2 group2;
    CallbackGroup_set3 group3;
    QObject context;
};

std::shared_ptr<Groups> make_groups(std::vector<QObject *> *list, ReplyNotes *notes)
{
    auto groups = std::make_shared<Groups>();
    list->push_back(&groups->group1);
    list->push_back(&groups->group2);
    list->push_back(&groups->group3);
    QObject::connect(&groups->group1, &CallbackGroup_set1::sig_ok, &groups->context,
        [notes](auto const &...values) { notes->note_ok(values...); });
    QObject::connect(&groups->group1, &CallbackGroup_set1::sig_error, &groups->context,
        [notes](auto const &...values) { notes->note_error(values...); });
    QObject::connect(&groups->group2, &CallbackGroup_set2::sig_car, &groups->context,
        [notes](auto const &...values) { notes->note_car(values...); });
    QObject::connect(&groups->group2, &CallbackGroup_set2::sig_ok, &groups->context,
        [notes](auto const &...values) { notes->note_ok(values...); });
    QObject::connect(&groups->group2, &CallbackGroup_set2::sig_error, &groups->context,
        [notes](auto const &...values) { notes->note_error(values...); });
    QObject::connect(&groups->group3, &CallbackGroup_set3::sig_road, &groups->context,
        [notes](auto const &...values) { notes->note_road(values...); });
    QObject::connect(&groups->group3, &CallbackGroup_set3::sig_error, &groups->context,
        [notes](auto const &...values) { notes->note_error(values...); });
    return groups;
}

static QtRow const rows[] = {
    {"stop, short 0", "ok",
        [](APIQt &c, Groups &g) { c.cmd_stop(g.group1); },
        [](APIQt &c) { c.cmd_stop(); },
        1,
        "<stop />"
    },
    {"drive, full", "ok",
        [](APIQt &c, Groups &g) { c.cmd_drive(sample_OtherCar(), true, sample_Offset(), true,
                sample_Rate(), true, sample_Quiet(), g.group1); },
        [](APIQt &c) { c.cmd_drive(sample_OtherCar(), true, sample_Offset(), true, sample_Rate(),
                true, sample_Quiet()); },
        1,
        "<drive>\r\n"
        "<OtherCar>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</OtherCar>\r\n"
        "<Offset>-10</Offset>\r\n"
        "<Rate>auto</Rate>\r\n"
        "<Quiet />\r\n"
        "</drive>"
    },
    {"drive, full, all absent", "ok",
        [](APIQt &c, Groups &g) { c.cmd_drive(sample_OtherCar(), false, sample_Offset(), false,
                sample_Rate(), false, sample_Quiet(), g.group1); },
        [](APIQt &c) { c.cmd_drive(sample_OtherCar(), false, sample_Offset(), false, sample_Rate(),
                false, sample_Quiet()); },
        1,
        "<drive>\r\n"
        "<OtherCar>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</OtherCar>\r\n"
        "</drive>"
    },
    {"drive, full, only Offset", "ok",
        [](APIQt &c, Groups &g) { c.cmd_drive(sample_OtherCar(), true, sample_Offset(), false,
                sample_Rate(), false, sample_Quiet(), g.group1); },
        [](APIQt &c) { c.cmd_drive(sample_OtherCar(), true, sample_Offset(), false, sample_Rate(),
                false, sample_Quiet()); },
        1,
        "<drive>\r\n"
        "<OtherCar>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</OtherCar>\r\n"
        "<Offset>-10</Offset>\r\n"
        "</drive>"
    },
    {"drive, full, only Rate", "ok",
        [](APIQt &c, Groups &g) { c.cmd_drive(sample_OtherCar(), false, sample_Offset(), true,
                sample_Rate(), false, sample_Quiet(), g.group1); },
        [](APIQt &c) { c.cmd_drive(sample_OtherCar(), false, sample_Offset(), true, sample_Rate(),
                false, sample_Quiet()); },
        1,
        "<drive>\r\n"
        "<OtherCar>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</OtherCar>\r\n"
        "<Rate>auto</Rate>\r\n"
        "</drive>"
    },
    {"drive, full, only Quiet", "ok",
        [](APIQt &c, Groups &g) { c.cmd_drive(sample_OtherCar(), false, sample_Offset(), false,
                sample_Rate(), true, sample_Quiet(), g.group1); },
        [](APIQt &c) { c.cmd_drive(sample_OtherCar(), false, sample_Offset(), false, sample_Rate(),
                true, sample_Quiet()); },
        1,
        "<drive>\r\n"
        "<OtherCar>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</OtherCar>\r\n"
        "<Quiet />\r\n"
        "</drive>"
    },
    {"drive, short 0", "ok",
        [](APIQt &c, Groups &g) { c.cmd_drive(sample_OtherCar(), g.group1); },
        [](APIQt &c) { c.cmd_drive(sample_OtherCar()); },
        1,
        "<drive>\r\n"
        "<OtherCar>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</OtherCar>\r\n"
        "</drive>"
    },
    {"drive, short 1", "ok",
        [](APIQt &c, Groups &g) { c.cmd_drive(sample_OtherCar(), sample_Offset(), g.group1); },
        [](APIQt &c) { c.cmd_drive(sample_OtherCar(), sample_Offset()); },
        1,
        "<drive>\r\n"
        "<OtherCar>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</OtherCar>\r\n"
        "<Offset>-10</Offset>\r\n"
        "</drive>"
    },
    {"drive, short 2", "ok",
        [](APIQt &c, Groups &g) { c.cmd_drive(sample_OtherCar(), sample_Offset(), sample_Rate(),
                g.group1); },
        [](APIQt &c) { c.cmd_drive(sample_OtherCar(), sample_Offset(), sample_Rate()); },
        1,
        "<drive>\r\n"
        "<OtherCar>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</OtherCar>\r\n"
        "<Offset>-10</Offset>\r\n"
        "<Rate>auto</Rate>\r\n"
        "</drive>"
    },
    {"drive, short 3", "ok",
        [](APIQt &c, Groups &g) { c.cmd_drive(sample_OtherCar(), sample_Offset(), sample_Rate(),
                sample_Quiet(), g.group1); },
        [](APIQt &c) { c.cmd_drive(sample_OtherCar(), sample_Offset(), sample_Rate(),
                sample_Quiet()); },
        1,
        "<drive>\r\n"
        "<OtherCar>\r\n"
        "<Name>Name &lt;8&gt; &amp; é</Name>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "<Lane>7</Lane>\r\n"
        "<Quiet />\r\n"
        "</OtherCar>\r\n"
        "<Offset>-10</Offset>\r\n"
        "<Rate>auto</Rate>\r\n"
        "<Quiet />\r\n"
        "</drive>"
    },
    {"cars, short 0", "car ok",
        [](APIQt &c, Groups &g) { c.cmd_cars(sample_Count(), g.group2); },
        [](APIQt &c) { c.cmd_cars(sample_Count()); },
        2,
        "<cars>\r\n"
        "<Count>4000000005</Count>\r\n"
        "</cars>"
    },
    {"get_road, full", "road",
        [](APIQt &c, Groups &g) { c.cmd_get_road(sample_SideSet(), true, sample_Speed(),
                g.group3); },
        [](APIQt &c) { c.cmd_get_road(sample_SideSet(), true, sample_Speed()); },
        3,
        "<get_road>\r\n"
        "<SideSet>\r\n"
        "<Side>right</Side>\r\n"
        "<Side>left</Side>\r\n"
        "</SideSet>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "</get_road>"
    },
    {"get_road, full, all absent", "road",
        [](APIQt &c, Groups &g) { c.cmd_get_road(sample_SideSet(), false, sample_Speed(),
                g.group3); },
        [](APIQt &c) { c.cmd_get_road(sample_SideSet(), false, sample_Speed()); },
        3,
        "<get_road>\r\n"
        "<SideSet>\r\n"
        "<Side>right</Side>\r\n"
        "<Side>left</Side>\r\n"
        "</SideSet>\r\n"
        "</get_road>"
    },
    {"get_road, short 0", "road",
        [](APIQt &c, Groups &g) { c.cmd_get_road(sample_SideSet(), g.group3); },
        [](APIQt &c) { c.cmd_get_road(sample_SideSet()); },
        3,
        "<get_road>\r\n"
        "<SideSet>\r\n"
        "<Side>right</Side>\r\n"
        "<Side>left</Side>\r\n"
        "</SideSet>\r\n"
        "</get_road>"
    },
    {"get_road, short 1", "road",
        [](APIQt &c, Groups &g) { c.cmd_get_road(sample_SideSet(), sample_Speed(), g.group3); },
        [](APIQt &c) { c.cmd_get_road(sample_SideSet(), sample_Speed()); },
        3,
        "<get_road>\r\n"
        "<SideSet>\r\n"
        "<Side>right</Side>\r\n"
        "<Side>left</Side>\r\n"
        "</SideSet>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "</get_road>"
    },
};

std::span<QtRow const> qt_rows()
{
    return rows;
}
