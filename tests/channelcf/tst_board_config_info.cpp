// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/board_config_info.h"
#include "tests/channelcf/config_rows.h"
#include "tests/support/assert_log.h"

#include <QTest>

using namespace ChannelCF;

namespace {

std::unique_ptr<Config> config_of(std::initializer_list<std::pair<OutputSet, OutputSet>> channels)
{
    auto config = std::make_unique<ConfigTamarind4>();
    for (auto const &[outputs, keys] : channels) {
        config->channels.emplace_back();
        config->channels.back().angles.emplace_back();
        config->channels.back().angles.back().outputs = outputs;
        config->channels.back().angles.back().keys = keys;
    }
    return config;
}

/// A board on which a test can set up what the tables never hold.
class OddBoard : public TamarindConfigInfo
{
public:
    using BoardConfigInfo::add;
};

/// A free value for what a test adds.
constexpr ConfigEnum odd = ConfigEnum::absent;

} // namespace

class TestBoardConfigInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void boards_are_built_without_a_complaint()
    {
        AssertLog log;
        TamarindConfigInfo const tamarind;
        QuinceConfigInfo1 const quince;
        for (int value = -1; value <= 78; ++value) {
            Config const *config = tamarind.find_config(static_cast<ConfigEnum>(value));
            QCOMPARE(config != nullptr, value >= 1 && value <= 77);
            QVERIFY(!config || config->finished);
            QCOMPARE(quince.find_config(static_cast<ConfigEnum>(value)) != nullptr,
                (value >= 1 && value <= 35) || (value >= 66 && value <= 68));
        }
        QVERIFY(log.take().isEmpty());
    }

    void every_output_of_every_configuration_has_its_source()
    {
        TamarindConfigInfo const board;
        std::size_t found = 0;
        for (auto const &[value, config] : expected_configs()) {
            for (auto const &[number, channel] : config.channels) {
                unsigned int position[2] = {0, 0};
                for (ExpectedAngle const &angle : channel) {
                    for (std::uint32_t output : angle.all) {
                        bool const key = angle.has_key() && output == angle.all[1];
                        QCOMPARE(*board.find_source(static_cast<ConfigEnum>(value), output),
                            OutputSource(number, position[key]++, key));
                        ++found;
                    }
                }
            }
        }
        std::size_t known = 0;
        for (int value = 0; value <= 77; ++value) {
            for (unsigned int output = 0; output < 50; ++output)
                known += board.find_source(static_cast<ConfigEnum>(value), output).has_value();
        }
        QCOMPARE(known, found);
    }

    void unknown_configuration_and_output_have_no_source()
    {
        TamarindConfigInfo const board;
        QVERIFY(!board.find_source(static_cast<ConfigEnum>(-1), 0));
        QVERIFY(!board.find_source(static_cast<ConfigEnum>(78), 0));
        QVERIFY(!board.find_source(ConfigEnum::ZEPHYRX_SSM6_ISO3, 36));
        QVERIFY(!board.find_source(ConfigEnum::VVVV, UINT_MAX));
    }

    void repeated_output_keeps_its_first_source()
    {
        AssertLog log;
        OddBoard board;
        board.add(odd, config_of({{{0, 1}, {2}}, {{1, 2, 3}, {}}}), 4);
        QCOMPARE(log.take(),
            QStringList(2, QStringLiteral("output_source.find(k) == output_source.cend()")));
        QCOMPARE(*board.find_source(odd, 1), OutputSource(0, 1, false));
        QCOMPARE(*board.find_source(odd, 2), OutputSource(0, 0, true));
        QCOMPARE(*board.find_source(odd, 3), OutputSource(1, 2, false));
    }

    void only_the_slots_that_are_walked_have_sources()
    {
        OddBoard board;
        board.add(odd, config_of({{{0}, {}}, {{1}, {}}, {{2}, {}}, {{3}, {}}}), 3);
        QVERIFY(board.find_source(odd, 2));
        QVERIFY(!board.find_source(odd, 3));
    }

    void output_beyond_the_board_is_left_out()
    {
        AssertLog log;
        OddBoard board;
        board.add(odd, config_of({{{0, 36}, {}}}), 4);
        QCOMPARE(log.take().size(), 1);
        QVERIFY(board.find_source(odd, 0));
        QVERIFY(!board.find_source(odd, 36));
    }

    void nothing_and_no_value_are_left_out()
    {
        AssertLog log;
        OddBoard board;
        board.add(odd, nullptr, 4);
        board.add(static_cast<ConfigEnum>(78), config_of({{{0}, {}}}), 4);
        QCOMPARE(log.take().size(), 2);
        QVERIFY(!board.find_config(odd));
    }

    void configuration_without_slots_gives_no_user_channels()
    {
        AssertLog log;
        OddBoard board;
        std::unique_ptr<Config> config = config_of({{{0}, {}}});
        config->slot_count = 0;
        board.add(odd, std::move(config), 4);
        QCOMPARE(board.GetMaxUserChannels({BoardType::Tamarind, {ConfigEnum::VVVV, odd}}), 0u);
        QCOMPARE(log.take(), QStringList(QStringLiteral("num_channels != 0")));
    }

    void unfinished_slot_has_no_angles()
    {
        struct Unfinished : public ConfigTamarind4
        {
            void finish() override { }
        };
        AssertLog log;
        OddBoard board;
        auto config = std::make_unique<Unfinished>();
        config->channels.emplace_back();
        board.add(odd, std::move(config), 4);
        QCOMPARE(board.AngleCount({BoardType::Tamarind, {odd}}, 0), std::uint64_t(0));
        QCOMPARE(log.take(), QStringList(QStringLiteral("finished")));
    }

    void default_source_is_all_zero()
    {
        QVERIFY(OutputSource() == OutputSource(0, 0, false));
        QVERIFY(OutputSource(1, 2, true) == OutputSource(1, 2, true));
        QVERIFY(OutputSource(1, 2, true) != OutputSource(0, 2, true));
        QVERIFY(OutputSource(1, 2, true) != OutputSource(1, 0, true));
        QVERIFY(OutputSource(1, 2, true) != OutputSource(1, 2, false));
    }
};

QTEST_GUILESS_MAIN(TestBoardConfigInfo)
#include "tst_board_config_info.moc"
