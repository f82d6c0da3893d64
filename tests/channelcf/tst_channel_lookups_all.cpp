// SPDX-License-Identifier: Apache-2.0
#include "tests/channelcf/reference_lookups.h"
#include "tests/channelcf/spec_make.h"
#include "tests/support/assert_log.h"
#include "tests/support/thoroughness.h"

#include <QTest>
#include <algorithm>
#include <random>

using namespace ChannelCF;
using Entries = ReferenceLookups::Entries;

namespace {

constexpr unsigned int beyond = 64; // more user channels and outputs than any spec here has

ChannelConfigSpec spec_with(Entries const &entries)
{
    std::vector<ConfigEnum> configs;
    for (int entry : entries)
        configs.push_back(static_cast<ConfigEnum>(entry));
    return {BoardType::Tamarind, configs};
}

QString text_of(Entries const &entries)
{
    QStringList names;
    for (int entry : entries)
        names.append(QString(ConfigEnumStr(static_cast<ConfigEnum>(entry))));
    return names.join(QLatin1Char(' '));
}

/// All specs of one and of two entries, and many of up to fourteen.
std::vector<Entries> const &all_specs()
{
    static std::vector<Entries> const specs = [] {
        std::vector<Entries> made;
        for (int first = 0; first <= 77; ++first) {
            made.push_back({first});
            for (int second = first % int(one_in); second <= 77; second += one_in)
                made.push_back({first, second});
        }
        std::mt19937 random(61);
        for (unsigned int i = 0; i < 2000 / one_in; ++i) {
            Entries entries(3 + random() % 12);
            for (int &entry : entries)
                entry = random() % 3 == 0 ? 0 : int(random() % 80) - 1;
            made.push_back(entries);
        }
        return made;
    }();
    return specs;
}

Outputs all_of(ExpectedChannel const &channel, bool key)
{
    Outputs outputs;
    for (ExpectedAngle const &angle : channel) {
        Outputs const more = key ? angle.keys() : angle.outputs();
        outputs.insert(outputs.end(), more.begin(), more.end());
    }
    return outputs;
}

Outputs primary_of(ExpectedChannel const &channel, bool key)
{
    Outputs outputs;
    for (ExpectedAngle const &angle : channel) {
        Outputs const more = key ? angle.keys() : angle.outputs();
        if (!more.empty())
            outputs.push_back(more.front());
    }
    return outputs;
}

bool same_channel(ChannelConfigSpec const &spec, unsigned int c, ExpectedChannel const &expected)
{
    bool same = AngleCount(spec, c) == expected.size()
        && IsUserChannel(spec, c) == !expected.empty()
        && Is4K(spec, c) == (!expected.empty() && expected[0].is_4k());
    for (bool key : {false, true}) {
        same = same && FindAllOutputs(spec, c, key) == all_of(expected, key)
            && FindPrimaryAngleOutputs(spec, c, key) == primary_of(expected, key);
    }
    for (unsigned int angle = 0; angle < expected.size(); ++angle)
        same = same && LocateAngle(spec, c, angle) == expected[angle].outputs().front();
    return same;
}

} // namespace

class TestChannelLookupsAll : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void every_channel_is_as_the_rows_say()
    {
        AssertLog log;
        for (Entries const &entries : all_specs()) {
            ChannelConfigSpec const spec = spec_with(entries);
            for (unsigned int c = 0; c < beyond; ++c)
                QVERIFY2(same_channel(spec, c, ReferenceLookups::channel(entries, c)),
                    qPrintable(QStringLiteral("%1 at %2").arg(text_of(entries)).arg(c)));
        }
        QVERIFY(log.take().isEmpty());
    }

    void every_output_is_as_the_rows_say()
    {
        ReferenceLookups const reference;
        for (Entries const &entries : all_specs()) {
            ChannelConfigSpec const spec = spec_with(entries);
            for (unsigned int output = 0; output < beyond; ++output) {
                auto const expected = reference.source(entries, output);
                AOption<OutputSource> const source = GetOutputSource(spec, output);
                QVERIFY2(source.has_value() == expected.has_value()
                        && (!source
                            || std::tuple(source->channel, source->angle, source->key)
                                == *expected),
                    qPrintable(QStringLiteral("%1 at %2").arg(text_of(entries)).arg(output)));
            }
        }
    }

    void every_walk_over_user_channels_is_as_the_rows_say()
    {
        for (Entries const &entries : all_specs())
            QVERIFY2(GetMaxUserChannels(spec_with(entries))
                    == ReferenceLookups::max_user_channels(entries),
                qPrintable(text_of(entries)));
    }

    /// Of one configuration that the lookups reach as a whole.
    void sources_lead_back_to_their_outputs()
    {
        for (auto const &[value, config] : expected_configs()) {
            if (config.width > 3)
                continue;
            ChannelConfigSpec const spec = spec_with({value});
            for (unsigned int output = 0; output < beyond; ++output) {
                AOption<OutputSource> const source = GetOutputSource(spec, output);
                if (!source)
                    continue;
                Outputs const outputs = FindAllOutputs(spec, source->channel, source->key);
                QVERIFY(source->angle < outputs.size());
                QCOMPARE(outputs[source->angle], output);
            }
        }
    }

    void outputs_lead_back_to_their_channel()
    {
        for (auto const &[value, config] : expected_configs()) {
            if (config.width > 3)
                continue;
            ChannelConfigSpec const spec = spec_with({value});
            std::size_t sources = 0;
            for (unsigned int c = 0; c < beyond; ++c) {
                for (bool key : {false, true}) {
                    Outputs const outputs = FindAllOutputs(spec, c, key);
                    for (unsigned int position = 0; position < outputs.size(); ++position)
                        QCOMPARE(*GetOutputSource(spec, outputs[position]),
                            OutputSource(c, position, key));
                    sources += outputs.size();
                }
            }
            for (unsigned int output = 0; output < beyond; ++output)
                sources -= GetOutputSource(spec, output).has_value();
            QCOMPARE(sources, std::size_t(0));
        }
    }

    void located_angles_are_the_primary_outputs()
    {
        for (Entries const &entries : all_specs()) {
            ChannelConfigSpec const spec = spec_with(entries);
            for (unsigned int c = 0; c < beyond; c += 1 + c % 3) {
                Outputs const primary = FindPrimaryAngleOutputs(spec, c, false);
                QCOMPARE(std::uint64_t(primary.size()), AngleCount(spec, c));
                for (unsigned int angle = 0; angle < primary.size(); ++angle)
                    QCOMPARE(LocateAngle(spec, c, angle), primary[angle]);
            }
        }
    }

    /// A configuration of one quad means the same in each.
    void every_quad_counts_from_its_own_base()
    {
        for (auto const &[value, config] : expected_configs()) {
            if (config.width != 1)
                continue;
            ChannelConfigSpec const spec = spec_with(Entries(16, value));
            for (unsigned int c = 4; c < beyond; ++c) {
                Outputs outputs = FindAllOutputs(spec, c % 4, false);
                for (std::uint32_t &output : outputs)
                    output += c / 4 * 4;
                QCOMPARE(FindAllOutputs(spec, c, false), outputs);
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestChannelLookupsAll)
#include "tst_channel_lookups_all.moc"
