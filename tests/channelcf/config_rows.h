// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>
#include <cstdint>
#include <map>
#include <vector>

// The configurations of the Tamarind boards, typed by hand for the tests, and what follows from
// them, worked out from the text alone.

/// Number, name, width, slots, "K" where the order of the channels is kept, channels in building
/// order. "V 4-6" is three channels of one angle each, "ISO 4-6" one channel of three; " + " stands
/// between the angles of a channel, "-" for a channel without any.
inline constexpr char const config_rows_text[] = R"(
1 VVVV 1 4 - V 0-3
2 VKVV 1 4 - VK 0,2; V 1,3
3 VVVK 1 4 - V 0; VK 1,3; V 2
4 VKVK 1 4 - VK 0,2; VK 1,3
5 SSM4 1 4 - SSM 0-3
6 SSM3 1 4 - SSM 0-2; V 3
7 SSM2 1 4 - SSM 0-1; V 2-3
8 SSM6 2 8 - SSM 0-5
9 SSM8 2 8 - SSM 0-7
10 ISO2 1 4 - ISO 0-1; V 2-3
11 ISO3 1 4 - ISO 0-2; V 3
12 ISO4 1 4 - ISO 0-3
13 ISO4_2P_VK 2 8 - ISO 0-3; VK 4,5
14 ISO4_2P_VK_2 2 8 - VK 0,1; V 2-3; ISO 4-7
15 ISO1_2P 2 6 - V 0,4-5
16 ISO2_2P 2 6 - ISO 0-1; V 4-5
17 ISO3_2P 2 6 - ISO 0-2; V 4-5
18 ISO4_2P 2 6 - ISO 0-3; V 4-5
19 V2V2 1 4 - 3D 0,2; 3D 1,3
20 ISO5 2 8 - ISO 0-4; V 5
21 ISO6 2 8 - ISO 0-5
22 ISO7 2 8 - ISO 0-6; V 7
23 ISO8 2 8 - ISO 0-7
24 C444_ISO_9 3 12 - ISO 0-8; V 9-11
25 C444_ISO_10 3 12 - ISO 0-9; V 10-11
26 C444_ISO_11 3 12 - ISO 0-10; V 11
27 C444_ISO_12 3 12 - ISO 0-11
28 3D_ISO3 2 8 - 3D 0,2 + 3D 1,3 + 3D 4,6; 3D 5,7
29 3D_ISO2 2 8 - 3D 0,2 + 3D 1,3; 3D 4,6; 3D 5,7
30 DUAL_SSM3 2 8 - SSM 0-2 + SSM 3-5
31 TRI_SSM2 2 8 - SSM 0-1 + SSM 2-3 + SSM 4-5
32 DUAL_VK 1 4 - VK 0,2 + VK 1,3
33 TRIPLE_VK_VV 2 8 - VK 0,2 + VK 1,3 + VK 4,6; V 5,7
34 TRIPLE_VK_VK 2 8 - VK 0,2 + VK 1,3 + VK 4,6; VK 5,7
35 QUAD_VK 2 8 - VK 0,2 + VK 1,3 + VK 4,6 + VK 5,7
36 V 1 4 - 4K 0
37 V_V 2 8 K 4K 0; 4K 1
38 VK 2 8 - 4KVK 0,1
39 VV 2 8 - 4K 0 + 4K 1
40 V_V_V 3 12 K 4K 0; 4K 1; 4K 2
41 VK_V 3 12 K 4KVK 0,1; -; 4K 2
42 VV_V 3 12 K 4K 0 + 4K 1; -; 4K 2
43 VVV 3 12 K 4K 0 + 4K 1 + 4K 2; -
44 SSM2_V 3 12 K 4KSSM 0-1; -; 4K 2
45 SSM3v2 3 12 K 4KSSM 0-2; -
46 C2_VV 1 2 - V 0-1
47 C2_VK 1 2 - VK 0,1
48 C2_ISO2 1 2 - ISO 0-1
49 C4_VK_VV 1 4 - VK 0,1; V 2-3
50 C4_VK_VK 1 4 - VK 0,1; VK 2,3
51 C4_V_V_VK 1 4 - V 0-1; VK 2,3
52 C4_ISO2_ISO2 1 4 - ISO 0,2; ISO 1,3
53 C4_ISO2_ISO2_2 1 4 - ISO 0-1; ISO 2-3
54 C4_ISO2_VK 1 4 - ISO 0-1; VK 2,3
55 C4_V_V_ISO2 1 4 - V 0-1; ISO 2-3
56 C4_VK_ISO2 1 4 - VK 0,1; ISO 2-3
57 C42_ISO_5 2 6 - ISO 0-4; V 5
58 C42_ISO_6 2 6 - ISO 0-5
59 C42_3VK 2 6 - VK 0,2 + VK 1,3 + VK 4,5
60 C44_4SSM2 2 8 - SSM 0-1 + SSM 2-3 + SSM 4-5 + SSM 6-7
61 C444_5VK_VV 3 12 - VK 0,2 + VK 1,3 + VK 4,6 + VK 5,7 + VK 8,10; V 9,11
62 C444_5VK_VK 3 12 - VK 0,2 + VK 1,3 + VK 4,6 + VK 5,7 + VK 8,10; VK 9,11
63 C444_6VK 3 12 - VK 0,2 + VK 1,3 + VK 4,6 + VK 5,7 + VK 8,10 + VK 9,11
64 C444_5SSM2_VV 3 12 - SSM 0-1 + SSM 2-3 + SSM 4-5 + SSM 6-7 + SSM 8-9; V 10-11
65 C444_3SSM3_VVV 3 12 - SSM 0-2 + SSM 3-5 + SSM 6-8; V 9-11
66 M2_V_V 1 2 K 4K 0; 4K 1
67 M2_VK 1 2 K 4KVK 0,1; -
68 M2_ISO2 1 2 K ISO 0-1; -
69 ZEPHYRX_VVVV_IN 1 4 - V 0-3
70 ZEPHYRX_VV_QUAD 1 4 K V 0-1; -
71 ZEPHYRX_8IN_4OUT 3 12 - ISO 0-3,8-11; V 4-7
72 ZEPHYRX_12IN 5 20 - ISO 0-3,8-11,16-19; V 4-7,12-15
73 ZEPHYRX_16IN 7 28 - ISO 0-3,8-11,16-19,24-27; V 4-7,12-15,20-23
74 ZEPHYRX_SSM3_ISO5 7 28 - SSM 0-2 + SSM 3,8-9 + SSM 10-11,16 + SSM 17-19 + SSM 24-26; V 4-7,12-15,20-23,27
75 ZEPHYRX_SSM6_ISO2 5 20 - SSM 0-2 + SSM 3,8-9 + SSM 10-11,16 + SSM 17-19; V 4-7,12-15
76 ZEPHYRX_SSM3_ISO6 9 36 - SSM 0-3,8-9 + SSM 10-11,16-19 + SSM 24-27,32-33; V 4-7,12-15,20-23,28-31,34-35
77 ZEPHYRX_SSM6_ISO3 9 36 - SSM 0-2 + SSM 3,8-9 + SSM 10-11,16 + SSM 17-19 + SSM 24-26 + SSM 27,32-33; V 4-7,12-15,20-23,28-31,34-35
)";

/// "1-3,7" to 1, 2, 3, 7.
inline std::vector<std::uint32_t> expected_outputs(QString const &text)
{
    std::vector<std::uint32_t> outputs;
    for (QString const &part : text.split(QLatin1Char(','))) {
        QStringList const ends = part.split(QLatin1Char('-'));
        for (uint output = ends.first().toUInt(); output <= ends.last().toUInt(); ++output)
            outputs.push_back(output);
    }
    return outputs;
}

struct ExpectedAngle
{
    QString kind;
    std::vector<std::uint32_t> all; ///< pictures and keys, in the order of the text

    bool has_key() const { return kind.endsWith(QLatin1String("VK")); }
    std::vector<std::uint32_t> outputs() const
    {
        return has_key() ? std::vector<std::uint32_t>{all[0]} : all;
    }
    std::vector<std::uint32_t> keys() const
    {
        return has_key() ? std::vector<std::uint32_t>{all[1]} : std::vector<std::uint32_t>();
    }
    bool is_4k() const { return kind.startsWith(QLatin1String("4K")); }
};

using ExpectedChannel = std::vector<ExpectedAngle>;

struct ExpectedConfig
{
    int value = 0;
    QString name;
    unsigned int width = 0;
    unsigned int slots_offered = 0;
    bool keep_order = false;
    /// By user channel within the configuration; one that is not here is empty.
    std::map<unsigned int, ExpectedChannel> channels;
};

/// One channel, or one for each output of "V 4-6".
inline std::vector<ExpectedChannel> expected_channels(QString const &text)
{
    if (text == QLatin1String("-"))
        return {ExpectedChannel()};
    std::vector<ExpectedChannel> channels;
    ExpectedChannel one;
    for (QString const &angle : text.split(QStringLiteral(" + "))) {
        QString const kind = angle.section(QLatin1Char(' '), 0, 0);
        std::vector<std::uint32_t> const outputs
            = expected_outputs(angle.section(QLatin1Char(' '), 1));
        if (kind != QLatin1String("V") && kind != QLatin1String("ISO")) {
            one.push_back({kind, outputs});
            continue;
        }
        for (std::uint32_t output : outputs) {
            one.push_back({QStringLiteral("V"), {output}});
            if (kind == QLatin1String("V"))
                channels.push_back(std::exchange(one, {}));
        }
    }
    if (!one.empty())
        channels.push_back(one);
    return channels;
}

inline ExpectedConfig expected_config(QString const &line)
{
    ExpectedConfig config;
    config.value = line.section(QLatin1Char(' '), 0, 0).toInt();
    config.name = line.section(QLatin1Char(' '), 1, 1);
    config.width = line.section(QLatin1Char(' '), 2, 2).toUInt();
    config.slots_offered = line.section(QLatin1Char(' '), 3, 3).toUInt();
    config.keep_order = line.section(QLatin1Char(' '), 4, 4) == QLatin1String("K");
    unsigned int place = 0;
    for (QString const &text : line.section(QLatin1Char(' '), 5).split(QStringLiteral("; "))) {
        for (ExpectedChannel const &channel : expected_channels(text)) {
            unsigned int const number = config.keep_order ? place++ : channel[0].all[0];
            if (!channel.empty())
                config.channels[number] = channel;
        }
    }
    return config;
}

/// By number.
inline std::map<int, ExpectedConfig> const &expected_configs()
{
    static std::map<int, ExpectedConfig> const configs = [] {
        std::map<int, ExpectedConfig> made;
        QString const text = QString::fromLatin1(config_rows_text);
        for (QString const &line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
            ExpectedConfig const config = expected_config(line);
            made[config.value] = config;
        }
        return made;
    }();
    return configs;
}
