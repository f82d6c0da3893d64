// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/config_builder_p.h"
#include "tests/channelcf/config_rows.h"
#include "tests/channelcf/spec_make.h"
#include "tests/support/assert_log.h"

#include <QTest>
#include <type_traits>

using namespace ChannelCF;

namespace {

ConfigChannel channel_on(std::initializer_list<OutputSet> angles)
{
    ConfigChannel channel;
    for (OutputSet const &outputs : angles) {
        channel.angles.emplace_back();
        channel.angles.back().outputs = outputs;
    }
    return channel;
}

/// What the kind of an angle says of it, each cell typed out.
struct KindRow
{
    char const *kind;
    bool first;
    bool shows_primary;
    bool marks_first_angle;
    bool is_3d;
    bool is_4k;
    bool has_phases;
};
constexpr KindRow kinds[] = {
    {"V", true, true, true, false, false, false},
    {"V", false, true, false, false, false, false},
    {"VK", true, true, true, false, false, false},
    {"VK", false, true, false, false, false, false},
    {"3D", true, true, false, true, false, false},
    {"3D", false, true, false, true, false, false},
    {"SSM", true, true, true, false, false, true},
    {"SSM", false, true, false, false, false, true},
    {"4K", true, false, false, false, true, false},
    {"4K", false, false, false, false, true, false},
    {"4KVK", true, false, false, false, true, false},
    {"4KSSM", true, false, false, false, true, true},
};

KindRow const *kind_of(QString const &kind, bool first)
{
    for (KindRow const &row : kinds) {
        if (kind == QLatin1String(row.kind) && row.first == first)
            return &row;
    }
    return nullptr;
}

void compare_angle(ConfigAngle const &angle, ExpectedAngle const &expected, bool first)
{
    KindRow const *kind = kind_of(expected.kind, first);
    QVERIFY(kind);
    Outputs const none;
    Outputs const picture{expected.all[0]};
    QCOMPARE(angle.outputs.list(), expected.outputs());
    QCOMPARE(angle.keys.list(), expected.keys());
    QCOMPARE(angle.video_primary.list(), kind->shows_primary ? picture : none);
    QCOMPARE(angle.first_angle.list(), kind->marks_first_angle ? picture : none);
    QCOMPARE(angle.is_3d, kind->is_3d);
    QCOMPARE(angle.is_4k, kind->is_4k);
    QCOMPARE(angle.phases, kind->has_phases ? std::uint32_t(expected.all.size()) : 1u);
}

void compare_channel(ConfigChannel const &channel, ExpectedChannel const &expected)
{
    Outputs all;
    Outputs keys;
    Outputs primary;
    Outputs primary_keys;
    QCOMPARE(channel.angles.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        compare_angle(channel.angles[i], expected[i], i == 0);
        primary.push_back(expected[i].outputs().front());
        for (std::uint32_t output : expected[i].outputs())
            all.push_back(output);
        for (std::uint32_t key : expected[i].keys()) {
            keys.push_back(key);
            primary_keys.push_back(key);
        }
    }
    QVERIFY(channel.finished);
    QCOMPARE(channel.first_output, expected.empty() ? 0u : expected[0].all[0]);
    QCOMPARE(channel.angle_count, std::uint64_t(expected.size()));
    QCOMPARE(channel.primary_outputs, primary);
    QCOMPARE(channel.primary_keys, primary_keys);
    QCOMPARE(channel.all_outputs, all);
    QCOMPARE(channel.all_keys, keys);
}

bool of_the_class_for(Config const *config, unsigned int width)
{
    switch (width) {
    case 1:
        return dynamic_cast<ConfigTamarind4 const *>(config);
    case 2:
        return dynamic_cast<ConfigTamarind8 const *>(config);
    case 3:
        return dynamic_cast<ConfigTamarind12 const *>(config);
    case 5:
        return dynamic_cast<ConfigTamarind20 const *>(config);
    case 7:
        return dynamic_cast<ConfigTamarind28 const *>(config);
    case 9:
        return dynamic_cast<ConfigTamarind36 const *>(config);
    default:
        return false;
    }
}

} // namespace

class TestBoardConfig : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void output_set_holds_each_once_and_ascending()
    {
        OutputSet outputs{5, 1, 5};
        QCOMPARE(outputs.list(), (Outputs{1, 5}));
        outputs.insert(3);
        outputs.insert(1);
        outputs.insert(0);
        QCOMPARE(outputs.list(), (Outputs{0, 1, 3, 5}));
        QVERIFY(!outputs.empty());
        QVERIFY(OutputSet().empty());
        QVERIFY(outputs == (OutputSet{5, 3, 1, 0}));
        QVERIFY(!(outputs == OutputSet{5}));
    }

    void new_angle_has_one_phase_and_no_flag()
    {
        ConfigAngle const angle;
        QCOMPARE(angle.phases, 1u);
        QVERIFY(!angle.is_3d && !angle.is_4k && angle.outputs.empty() && angle.keys.empty());
    }

    void classes_offer_four_slots_a_quad()
    {
        QVERIFY(std::is_abstract_v<Config>);
        QCOMPARE(ConfigTamarind4().width, 1u);
        QCOMPARE(ConfigTamarind4().slot_count, 4u);
        QCOMPARE(ConfigTamarind8().width, 2u);
        QCOMPARE(ConfigTamarind8().slot_count, 8u);
        QCOMPARE(ConfigTamarind12().width, 3u);
        QCOMPARE(ConfigTamarind12().slot_count, 12u);
        QCOMPARE(ConfigTamarind20().width, 5u);
        QCOMPARE(ConfigTamarind20().slot_count, 20u);
        QCOMPARE(ConfigTamarind28().width, 7u);
        QCOMPARE(ConfigTamarind28().slot_count, 28u);
        QCOMPARE(ConfigTamarind36().width, 9u);
        QCOMPARE(ConfigTamarind36().slot_count, 36u);
        QCOMPARE(ConfigQuince().width, 0u);
        QCOMPARE(ConfigQuince().slot_count, 0u);
        QVERIFY(!ConfigTamarind4().keep_order);
    }

    void finished_channel_lists_angle_after_angle()
    {
        ConfigChannel channel = channel_on({{1, 9}, {2, 3}});
        channel.angles[0].keys = {7, 6};
        channel.finish();
        QVERIFY(channel.finished);
        QCOMPARE(channel.first_output, 1u);
        QCOMPARE(channel.angle_count, std::uint64_t(2));
        QCOMPARE(channel.primary_outputs, (Outputs{1, 2}));
        QCOMPARE(channel.primary_keys, (Outputs{6}));
        QCOMPARE(channel.all_outputs, (Outputs{1, 9, 2, 3}));
        QCOMPARE(channel.all_keys, (Outputs{6, 7}));
    }

    void channel_without_angles_is_finished_and_empty()
    {
        AssertLog log;
        ConfigChannel channel;
        channel.finish();
        QVERIFY(channel.finished);
        QCOMPARE(channel.first_output, 0u);
        QCOMPARE(channel.angle_count, std::uint64_t(0));
        QVERIFY(channel.all_outputs.empty() && channel.all_keys.empty());
        QVERIFY(log.take().isEmpty());
    }

    void channel_cannot_be_finished_twice()
    {
        AssertLog log;
        ConfigChannel channel = channel_on({{1}});
        channel.finish();
        QVERIFY(log.take().isEmpty());
        channel.finish();
        QCOMPARE(log.take(), QStringList(QStringLiteral("!finished")));
        QCOMPARE(channel.all_outputs, (Outputs{1}));
    }

    void first_outputs_must_rise_data()
    {
        QTest::addColumn<unsigned int>("second");
        QTest::addColumn<int>("assertions");
        QTest::newRow("rises") << 6u << 0;
        QTest::newRow("stays") << 5u << 1;
        QTest::newRow("falls") << 4u << 1;
    }
    void first_outputs_must_rise()
    {
        QFETCH(unsigned int, second);
        QFETCH(int, assertions);
        AssertLog log;
        ConfigChannel channel = channel_on({{5}, {second}});
        channel.finish();
        QCOMPARE(log.take().size(), assertions);
        QCOMPARE(channel.all_outputs, (Outputs{5, second}));
        QVERIFY(channel.finished);
    }

    void channels_move_to_the_number_of_their_first_output()
    {
        ConfigTamarind8 config;
        config.channels = {channel_on({{1}}), channel_on({{4}, {6}})};
        config.finish();
        QVERIFY(config.finished);
        QCOMPARE(config.channels.size(), std::size_t(5));
        QCOMPARE(config.channels[1].all_outputs, (Outputs{1}));
        QCOMPARE(config.channels[4].all_outputs, (Outputs{4, 6}));
        for (std::size_t gap : {0, 2, 3}) {
            QVERIFY(config.channels[gap].finished);
            QVERIFY(config.channels[gap].angles.empty());
        }
    }

    void kept_order_leaves_channels_as_built()
    {
        ConfigTamarind8 config;
        config.keep_order = true;
        config.channels = {channel_on({{4}}), ConfigChannel(), channel_on({{1}})};
        config.finish();
        QCOMPARE(config.channels.size(), std::size_t(3));
        QCOMPARE(config.channels[0].all_outputs, (Outputs{4}));
        QVERIFY(config.channels[1].finished);
        QCOMPARE(config.channels[2].all_outputs, (Outputs{1}));
    }

    void channel_behind_its_number_is_an_assertion()
    {
        AssertLog log;
        ConfigTamarind4 config;
        config.channels = {channel_on({{2}}), channel_on({{1}})};
        config.finish();
        QCOMPARE(log.take(), QStringList(QStringLiteral("primary >= order.size()")));
        QCOMPARE(config.channels.size(), std::size_t(4));
        QCOMPARE(config.channels[3].all_outputs, (Outputs{1}));
    }

    void configuration_cannot_be_finished_twice()
    {
        AssertLog log;
        ConfigTamarind4 config;
        config.channels = {channel_on({{2}})};
        config.finish();
        config.finish();
        QCOMPARE(log.take(), QStringList(QStringLiteral("!finished")));
        QCOMPARE(config.channels.size(), std::size_t(3));
    }

    void every_row_is_built_as_written_data()
    {
        QTest::addColumn<int>("value");
        for (auto const &[value, config] : expected_configs())
            QTest::newRow(qPrintable(config.name)) << value;
    }
    void every_row_is_built_as_written()
    {
        QFETCH(int, value);
        AssertLog log;
        ExpectedConfig const &expected = expected_configs().at(value);
        std::unique_ptr<Config> const config = build_tamarind(static_cast<ConfigEnum>(value));
        QVERIFY(config);
        QVERIFY(of_the_class_for(config.get(), expected.width));
        QCOMPARE(config->width, expected.width);
        QCOMPARE(config->slot_count, expected.slots_offered);
        QCOMPARE(config->keep_order, expected.keep_order);
        config->finish();
        QVERIFY(config->channels.size() > expected.channels.rbegin()->first);
        for (unsigned int slot = 0; slot < config->channels.size(); ++slot) {
            auto const there = expected.channels.find(slot);
            compare_channel(config->channels[slot],
                there == expected.channels.end() ? ExpectedChannel() : there->second);
        }
        QVERIFY(log.take().isEmpty());
    }

    /// The digits in three of the names are not the sizes of the groups.
    void groups_of_the_last_rows_are_of_3_6_and_3()
    {
        for (auto const &[value, angles, phases] :
            {std::tuple(ConfigEnum::ZEPHYRX_SSM6_ISO2, 4u, 3u),
                std::tuple(ConfigEnum::ZEPHYRX_SSM3_ISO6, 3u, 6u),
                std::tuple(ConfigEnum::ZEPHYRX_SSM6_ISO3, 6u, 3u)}) {
            std::unique_ptr<Config> const config = build_tamarind(value);
            QCOMPARE(config->channels[0].angles.size(), std::size_t(angles));
            for (ConfigAngle const &angle : config->channels[0].angles) {
                QCOMPARE(angle.phases, phases);
                QCOMPARE(angle.outputs.list().size(), std::size_t(phases));
            }
        }
    }

    void quince_rows_are_one_channel_with_a_key()
    {
        AssertLog log;
        for (int value = 1; value <= 77; ++value) {
            std::unique_ptr<Config> const config = build_quince(static_cast<ConfigEnum>(value));
            bool const there = value <= 35 || (value >= 66 && value <= 68);
            QCOMPARE(bool(config), there);
            if (!there)
                continue;
            QVERIFY(dynamic_cast<ConfigQuince *>(config.get()));
            config->finish();
            QCOMPARE(config->channels.size(), std::size_t(1));
            compare_channel(config->channels[0], {{QStringLiteral("VK"), {0, 1}}});
        }
        QVERIFY(log.take().isEmpty());
    }

    void no_configuration_cannot_be_built_data()
    {
        QTest::addColumn<int>("value");
        QTest::newRow("absent") << 0;
        QTest::newRow("unknown name") << -1;
        QTest::newRow("behind the last") << 78;
    }
    void no_configuration_cannot_be_built()
    {
        QFETCH(int, value);
        AssertLog log;
        QVERIFY(!build_tamarind(static_cast<ConfigEnum>(value)));
        QVERIFY(!build_quince(static_cast<ConfigEnum>(value)));
        QCOMPARE(log.take().size(), 2);
    }
};

QTEST_GUILESS_MAIN(TestBoardConfig)
#include "tst_board_config.moc"
