// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from commands.tbl; do not edit.

#include "tests/protocol/command_rows.h"
#include "tests/protocol/samples.h"

using namespace VCTP3;

static CommandRow const rows[] = {
    {"stop, short 0", "ok",
        [](APICommand &c) { c.cmd_stop(AString::l1("7")); },
        [](API &c, ReplyNotes &a) { return c.cmd_stop(a.ok(), a.error()); },
        [](API &c) { c.cmd_stop(); },
        "<stop />"
    },
    {"drive, full", "ok",
        [](APICommand &c) { c.cmd_drive(AString::l1("7"), sample_OtherCar(), true, sample_Offset(),
                true, sample_Rate(), true, sample_Quiet()); },
        [](API &c, ReplyNotes &a) { return c.cmd_drive(sample_OtherCar(), true, sample_Offset(),
                true, sample_Rate(), true, sample_Quiet(), a.ok(), a.error()); },
        [](API &c) { c.cmd_drive(sample_OtherCar(), true, sample_Offset(), true, sample_Rate(),
                true, sample_Quiet()); },
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
        [](APICommand &c) { c.cmd_drive(AString::l1("7"), sample_OtherCar(), false,
                sample_Offset(), false, sample_Rate(), false, sample_Quiet()); },
        [](API &c, ReplyNotes &a) { return c.cmd_drive(sample_OtherCar(), false, sample_Offset(),
                false, sample_Rate(), false, sample_Quiet(), a.ok(), a.error()); },
        [](API &c) { c.cmd_drive(sample_OtherCar(), false, sample_Offset(), false, sample_Rate(),
                false, sample_Quiet()); },
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
        [](APICommand &c) { c.cmd_drive(AString::l1("7"), sample_OtherCar(), true, sample_Offset(),
                false, sample_Rate(), false, sample_Quiet()); },
        [](API &c, ReplyNotes &a) { return c.cmd_drive(sample_OtherCar(), true, sample_Offset(),
                false, sample_Rate(), false, sample_Quiet(), a.ok(), a.error()); },
        [](API &c) { c.cmd_drive(sample_OtherCar(), true, sample_Offset(), false, sample_Rate(),
                false, sample_Quiet()); },
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
        [](APICommand &c) { c.cmd_drive(AString::l1("7"), sample_OtherCar(), false,
                sample_Offset(), true, sample_Rate(), false, sample_Quiet()); },
        [](API &c, ReplyNotes &a) { return c.cmd_drive(sample_OtherCar(), false, sample_Offset(),
                true, sample_Rate(), false, sample_Quiet(), a.ok(), a.error()); },
        [](API &c) { c.cmd_drive(sample_OtherCar(), false, sample_Offset(), true, sample_Rate(),
                false, sample_Quiet()); },
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
        [](APICommand &c) { c.cmd_drive(AString::l1("7"), sample_OtherCar(), false,
                sample_Offset(), false, sample_Rate(), true, sample_Quiet()); },
        [](API &c, ReplyNotes &a) { return c.cmd_drive(sample_OtherCar(), false, sample_Offset(),
                false, sample_Rate(), true, sample_Quiet(), a.ok(), a.error()); },
        [](API &c) { c.cmd_drive(sample_OtherCar(), false, sample_Offset(), false, sample_Rate(),
                true, sample_Quiet()); },
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
        [](APICommand &c) { c.cmd_drive(AString::l1("7"), sample_OtherCar()); },
        [](API &c, ReplyNotes &a) { return c.cmd_drive(sample_OtherCar(), a.ok(), a.error()); },
        [](API &c) { c.cmd_drive(sample_OtherCar()); },
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
        [](APICommand &c) { c.cmd_drive(AString::l1("7"), sample_OtherCar(), sample_Offset()); },
        [](API &c, ReplyNotes &a) { return c.cmd_drive(sample_OtherCar(), sample_Offset(), a.ok(),
                a.error()); },
        [](API &c) { c.cmd_drive(sample_OtherCar(), sample_Offset()); },
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
        [](APICommand &c) { c.cmd_drive(AString::l1("7"), sample_OtherCar(), sample_Offset(),
                sample_Rate()); },
        [](API &c, ReplyNotes &a) { return c.cmd_drive(sample_OtherCar(), sample_Offset(),
                sample_Rate(), a.ok(), a.error()); },
        [](API &c) { c.cmd_drive(sample_OtherCar(), sample_Offset(), sample_Rate()); },
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
        [](APICommand &c) { c.cmd_drive(AString::l1("7"), sample_OtherCar(), sample_Offset(),
                sample_Rate(), sample_Quiet()); },
        [](API &c, ReplyNotes &a) { return c.cmd_drive(sample_OtherCar(), sample_Offset(),
                sample_Rate(), sample_Quiet(), a.ok(), a.error()); },
        [](API &c) { c.cmd_drive(sample_OtherCar(), sample_Offset(), sample_Rate(),
                sample_Quiet()); },
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
        [](APICommand &c) { c.cmd_cars(AString::l1("7"), sample_Count()); },
        [](API &c, ReplyNotes &a) { return c.cmd_cars(sample_Count(), a.ok(), a.car(),
                a.error()); },
        [](API &c) { c.cmd_cars(sample_Count()); },
        "<cars>\r\n"
        "<Count>4000000005</Count>\r\n"
        "</cars>"
    },
    {"get_road, full", "road",
        [](APICommand &c) { c.cmd_get_road(AString::l1("7"), sample_SideSet(), true,
                sample_Speed()); },
        [](API &c, ReplyNotes &a) { return c.cmd_get_road(sample_SideSet(), true, sample_Speed(),
                a.road(), a.error()); },
        [](API &c) { c.cmd_get_road(sample_SideSet(), true, sample_Speed()); },
        "<get_road>\r\n"
        "<SideSet>\r\n"
        "<Side>right</Side>\r\n"
        "<Side>left</Side>\r\n"
        "</SideSet>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "</get_road>"
    },
    {"get_road, full, all absent", "road",
        [](APICommand &c) { c.cmd_get_road(AString::l1("7"), sample_SideSet(), false,
                sample_Speed()); },
        [](API &c, ReplyNotes &a) { return c.cmd_get_road(sample_SideSet(), false, sample_Speed(),
                a.road(), a.error()); },
        [](API &c) { c.cmd_get_road(sample_SideSet(), false, sample_Speed()); },
        "<get_road>\r\n"
        "<SideSet>\r\n"
        "<Side>right</Side>\r\n"
        "<Side>left</Side>\r\n"
        "</SideSet>\r\n"
        "</get_road>"
    },
    {"get_road, short 0", "road",
        [](APICommand &c) { c.cmd_get_road(AString::l1("7"), sample_SideSet()); },
        [](API &c, ReplyNotes &a) { return c.cmd_get_road(sample_SideSet(), a.road(), a.error()); },
        [](API &c) { c.cmd_get_road(sample_SideSet()); },
        "<get_road>\r\n"
        "<SideSet>\r\n"
        "<Side>right</Side>\r\n"
        "<Side>left</Side>\r\n"
        "</SideSet>\r\n"
        "</get_road>"
    },
    {"get_road, short 1", "road",
        [](APICommand &c) { c.cmd_get_road(AString::l1("7"), sample_SideSet(), sample_Speed()); },
        [](API &c, ReplyNotes &a) { return c.cmd_get_road(sample_SideSet(), sample_Speed(),
                a.road(), a.error()); },
        [](API &c) { c.cmd_get_road(sample_SideSet(), sample_Speed()); },
        "<get_road>\r\n"
        "<SideSet>\r\n"
        "<Side>right</Side>\r\n"
        "<Side>left</Side>\r\n"
        "</SideSet>\r\n"
        "<Speed>2.5X</Speed>\r\n"
        "</get_road>"
    },
};

std::span<CommandRow const> command_rows()
{
    return rows;
}
