// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from groups.tbl, replies.tbl and reports.tbl; do not edit.

#pragma once

#include <vector>

/// A report with every field it can have, or with the least, and what scripts read of it.
struct ReportSample
{
    char const *name;
    char const *wire;
    char const *line;
};

inline std::vector<ReportSample> const report_samples {
    {"passed", R"~(<report><passed><Side>right</Side><Name>a=&quot;b&quot; &lt;ü&gt;</Name><Speed>-0.5X</Speed></passed></report>)~", R"~({"report":"passed","Side":"right","Name":"a=\"b\" <ü>","Speed":"-0.5X"})~"},
    {"passed", R"~(<report><passed><Side>right</Side><Name>a=&quot;b&quot; &lt;ü&gt;</Name></passed></report>)~", R"~({"report":"passed","Side":"right","Name":"a=\"b\" <ü>"})~"},
    {"lamp", R"~(<report><lamp><Side>right</Side><Open>true</Open></lamp></report>)~", R"~({"report":"lamp","Side":"right","Open":true})~"},
    {"names", R"~(<report><names><Names><Name>a=&quot;b&quot; &lt;ü&gt;</Name><Name>a=&quot;b&quot; &lt;ü&gt;</Name></Names></names></report>)~", R"~({"report":"names","Names":["a=\"b\" <ü>","a=\"b\" <ü>"]})~"},
};

/// A command as it is typed, its replies under the id 1, and what scripts read of them.
struct AnswerSample
{
    char const *command;
    std::vector<char const *> arguments;
    char const *wire;
    std::vector<char const *> lines;
};

inline std::vector<AnswerSample> const answer_samples {
    {"stop", {}, R"~(<reply><xid>1</xid><ok /></reply>)~", {R"~({"reply":"ok"})~"}},
    {"cars", {R"~(Count=4294967295)~"}, R"~(<reply><xid>1</xid><car><Car><Name>a=&quot;b&quot; &lt;ü&gt;</Name><Speed>-0.5X</Speed><Lane>255</Lane><Quiet /></Car></car></reply><reply><xid>1</xid><ok /></reply>)~", {R"~({"reply":"car","Car":{"Name":"a=\"b\" <ü>","Speed":"-0.5X","Lane":255,"Quiet":true}})~", R"~({"reply":"ok"})~"}},
    {"get_road", {R"~(SideSet=["left","right"])~", R"~(Speed=-0.5X)~"}, R"~(<reply><xid>1</xid><road><Road><Side>right</Side><Cars><Car><Name>a=&quot;b&quot; &lt;ü&gt;</Name><Speed>-0.5X</Speed><Lane>255</Lane><Quiet /></Car><Car><Name>a=&quot;b&quot; &lt;ü&gt;</Name><Speed>-0.5X</Speed><Lane>255</Lane><Quiet /></Car></Cars><SideSet><Side>left</Side><Side>right</Side></SideSet></Road><Serial>18446744073709551615</Serial></road></reply>)~", {R"~({"reply":"road","Road":{"Side":"right","Cars":[{"Name":"a=\"b\" <ü>","Speed":"-0.5X","Lane":255,"Quiet":true},{"Name":"a=\"b\" <ü>","Speed":"-0.5X","Lane":255,"Quiet":true}],"SideSet":["left","right"]},"Serial":"18446744073709551615"})~"}},
};
