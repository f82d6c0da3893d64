// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from commands.tbl; do not edit.

#pragma once

#include <vector>

/// A command as it is typed, and its element on the wire. Texts are UTF-8.
struct CallSample
{
    char const *title;
    char const *command;
    std::vector<char const *> arguments;
    char const *wire;
};

inline std::vector<CallSample> const call_samples {
    {"stop, everything", "stop", {}, R"~(<stop />)~"},
    {"drive, everything", "drive", {R"~(OtherCar={"Name":"a=\"b\" <ü>","Speed":"-0.5X","Lane":255,"Quiet":true})~", R"~(Offset=-2147483648)~", R"~(Rate=25)~", R"~(Quiet=true)~"}, R"~(<drive><OtherCar><Name>a=&quot;b&quot; &lt;ü&gt;</Name><Speed>-0.5X</Speed><Lane>255</Lane><Quiet /></OtherCar><Offset>-2147483648</Offset><Rate>25</Rate><Quiet /></drive>)~"},
    {"drive, least", "drive", {R"~(OtherCar={"Name":"a=\"b\" <ü>","Speed":"-0.5X","Lane":255,"Quiet":true})~"}, R"~(<drive><OtherCar><Name>a=&quot;b&quot; &lt;ü&gt;</Name><Speed>-0.5X</Speed><Lane>255</Lane><Quiet /></OtherCar></drive>)~"},
    {"cars, everything", "cars", {R"~(Count=4294967295)~"}, R"~(<cars><Count>4294967295</Count></cars>)~"},
    {"get_road, everything", "get_road", {R"~(SideSet=["left","right"])~", R"~(Speed=-0.5X)~"}, R"~(<get_road><SideSet><Side>left</Side><Side>right</Side></SideSet><Speed>-0.5X</Speed></get_road>)~"},
    {"get_road, least", "get_road", {R"~(SideSet=["left","right"])~"}, R"~(<get_road><SideSet><Side>left</Side><Side>right</Side></SideSet></get_road>)~"},
};
