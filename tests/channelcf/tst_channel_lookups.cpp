// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/channel_lookups.h"
#include "tests/channelcf/spec_make.h"
#include "tests/support/assert_log.h"
#include "tests/support/astring_make.h"
#include "tests/support/astring_print.h"
#include "tests/support/two_threads.h"

#include <QTest>
#include <array>
#include <climits>

using namespace ChannelCF;

class TestChannelLookups : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// Stands first, so that the tables are made under it.
    void two_threads_may_look_up_at_once_also_for_the_first_time()
    {
        std::array<std::vector<std::uint32_t>, 2> outputs;
        std::array<std::uint32_t, 2> channels{};
        in_two_threads([&](int which) {
            ChannelConfigSpec const spec = spec_of(QStringLiteral("ISO4 VVVV"));
            auto const at = static_cast<std::size_t>(which);
            for (int round = 0; round < 100; ++round) {
                outputs[at] = FindAllOutputs(spec, 0, false);
                channels[at] = GetMaxUserChannels(spec);
            }
        });
        QCOMPARE(outputs[0], (std::vector<std::uint32_t>{0, 1, 2, 3}));
        QCOMPARE(outputs[1], outputs[0]);
        QCOMPARE(channels[0], 8U);
        QCOMPARE(channels[1], channels[0]);
    }

    void empty_spec_has_nothing()
    {
        AssertLog log;
        ChannelConfigSpec const spec = spec_of({});
        QCOMPARE(GetMaxUserChannels(spec), 0u);
        for (unsigned int n : {0u, 4u, 8u, 12u, UINT_MAX}) {
            QVERIFY(FindAllOutputs(spec, n, false).empty());
            QVERIFY(FindPrimaryAngleOutputs(spec, n, true).empty());
            QVERIFY(!IsUserChannel(spec, n));
            QVERIFY(!Is4K(spec, n));
            QCOMPARE(AngleCount(spec, n), std::uint64_t(0));
            QVERIFY(!GetOutputSource(spec, n));
        }
        QVERIFY(log.take().isEmpty());
    }

    void unknown_board_has_nothing()
    {
        AssertLog log;
        for (int board : {-1, 0, 5, INT_MAX, INT_MIN}) {
            ChannelConfigSpec const spec
                = spec_of(QStringLiteral("VKVV"), static_cast<BoardType>(board));
            QCOMPARE(AngleCount(spec, 0), std::uint64_t(0));
            QCOMPARE(LocateAngle(spec, 0, 0), 0u);
            QVERIFY(FindPrimaryAngleOutputs(spec, 0, false).empty());
            QVERIFY(FindAllOutputs(spec, 0, false).empty());
            QVERIFY(!Is4K(spec, 0));
            QVERIFY(!GetOutputSource(spec, 0));
            QCOMPARE(GetMaxUserChannels(spec), 0u);
            QVERIFY(!IsUserChannel(spec, 0));
        }
        QVERIFY(log.take().isEmpty());
    }

    void unknown_configuration_is_none()
    {
        ChannelConfigSpec const spec(BoardType::Tamarind,
            {static_cast<ConfigEnum>(-1), static_cast<ConfigEnum>(78), ConfigEnum::VVVV});
        QVERIFY(!IsUserChannel(spec, 0));
        QVERIFY(!IsUserChannel(spec, 4));
        QVERIFY(IsUserChannel(spec, 8));
        QVERIFY(!GetOutputSource(spec, 0));
        QCOMPARE(GetMaxUserChannels(spec), 0u);
    }

    void output_of_a_key_is_no_user_channel()
    {
        ChannelConfigSpec const spec = spec_of(QStringLiteral("VKVV"));
        QVERIFY(!IsUserChannel(spec, 2));
        QCOMPARE(AngleCount(spec, 2), std::uint64_t(0));
        QCOMPARE(FindAllOutputs(spec, 3, false), (Outputs{3}));
        QVERIFY(FindAllOutputs(spec, 3, true).empty());
        QCOMPARE(FindAllOutputs(spec, 0, false), (Outputs{0}));
        QCOMPARE(FindAllOutputs(spec, 0, true), (Outputs{2}));
        QCOMPARE(*GetOutputSource(spec, 2), OutputSource(0, 0, true));
    }

    void second_quad_counts_from_its_own_base()
    {
        ChannelConfigSpec const spec = spec_of(QStringLiteral("VVVV VVVV"));
        QCOMPARE(FindAllOutputs(spec, 5, false), (Outputs{5}));
        QCOMPARE(LocateAngle(spec, 5, 0), 5u);
        QCOMPARE(*GetOutputSource(spec, 6), OutputSource(6, 0, false));
        QCOMPARE(GetMaxUserChannels(spec), 8u);
    }

    void angles_are_located_by_number()
    {
        ChannelConfigSpec const spec = spec_of(QStringLiteral("ISO3"));
        QCOMPARE(AngleCount(spec, 0), std::uint64_t(3));
        for (unsigned int angle : {0u, 1u, 2u})
            QCOMPARE(LocateAngle(spec, 0, angle), angle);
        QCOMPARE(*GetOutputSource(spec, 2), OutputSource(0, 2, false));
    }

    void angle_beyond_the_count_is_an_assertion()
    {
        AssertLog log;
        ChannelConfigSpec const spec = spec_of(QStringLiteral("VVVV ISO3"));
        QCOMPARE(LocateAngle(spec, 4, 2), 6u);
        QVERIFY(log.take().isEmpty());
        QCOMPARE(LocateAngle(spec, 4, 3), 0u);
        QCOMPARE(LocateAngle(spec, 4, UINT_MAX), 0u);
        QCOMPARE(LocateAngle(spec, 5, 0), 0u); // between two channels
        QCOMPARE(log.take().size(), 3);
    }

    void angle_without_a_configuration_is_an_assertion()
    {
        AssertLog log;
        QCOMPARE(LocateAngle(spec_of({}), 0, 0), 0u);
        QCOMPARE(LocateAngle(spec_of(QStringLiteral("VVVV")), 4, 0), 0u);
        QCOMPARE(LocateAngle(spec_of({}, BoardType::QuinceConfigInfo1), 0, 0), 0u);
        QCOMPARE(log.take(), QStringList(3, QStringLiteral("config != nullptr")));
    }

    void phases_are_outputs_of_one_angle()
    {
        ChannelConfigSpec const spec = spec_of(QStringLiteral("SSM4"));
        QCOMPARE(AngleCount(spec, 0), std::uint64_t(1));
        QCOMPARE(FindPrimaryAngleOutputs(spec, 0, false), (Outputs{0}));
        QCOMPARE(FindAllOutputs(spec, 0, false), (Outputs{0, 1, 2, 3}));
        QCOMPARE(*GetOutputSource(spec, 3), OutputSource(0, 3, false));
    }

    void primary_keys_stand_beside_primary_outputs()
    {
        ChannelConfigSpec const spec = spec_of(QStringLiteral("VVVV DUAL_VK"));
        QCOMPARE(FindPrimaryAngleOutputs(spec, 4, false), (Outputs{4, 5}));
        QCOMPARE(FindPrimaryAngleOutputs(spec, 4, true), (Outputs{6, 7}));
        QCOMPARE(*GetOutputSource(spec, 7), OutputSource(4, 1, true));
    }

    void four_k_channel_has_its_output()
    {
        ChannelConfigSpec const spec = spec_of(QStringLiteral("V"));
        QVERIFY(Is4K(spec, 0));
        QVERIFY(!Is4K(spec, 1));
        QCOMPARE(FindPrimaryAngleOutputs(spec, 0, false), (Outputs{0}));
        QVERIFY(!Is4K(spec_of(QStringLiteral("VVVV")), 0));
    }

    void empty_slot_keeps_the_number_of_the_next()
    {
        ChannelConfigSpec const spec = spec_of(QStringLiteral("VV_V"));
        QVERIFY(IsUserChannel(spec, 0));
        QVERIFY(!IsUserChannel(spec, 1));
        QVERIFY(IsUserChannel(spec, 2));
        QVERIFY(!Is4K(spec, 1));
        QCOMPARE(FindAllOutputs(spec, 0, false), (Outputs{0, 1}));
        QCOMPARE(FindAllOutputs(spec, 2, false), (Outputs{2}));
        QCOMPARE(*GetOutputSource(spec, 1), OutputSource(0, 1, false));
    }

    void two_and_six_slots_end_a_spec_data()
    {
        QTest::addColumn<QString>("names");
        QTest::addColumn<unsigned int>("most");
        QTest::newRow("six") << QStringLiteral("ISO2_2P") << 6u;
        QTest::newRow("six, more") << QStringLiteral("ISO2_2P absent VVVV VVVV") << 6u;
        QTest::newRow("six second") << QStringLiteral("VVVV VVVV C42_3VK absent VVVV") << 14u;
        QTest::newRow("two") << QStringLiteral("C2_VV VVVV") << 2u;
        QTest::newRow("two second") << QStringLiteral("VVVV M2_VK VVVV") << 6u;
        QTest::newRow("wide ones") << QStringLiteral("ISO8 absent VVVV") << 12u;
        QTest::newRow("three quads") << QStringLiteral("C444_ISO_9 absent absent VVVV") << 16u;
        QTest::newRow("five quads")
            << QStringLiteral("ZEPHYRX_12IN absent absent absent absent VVVV") << 24u;
        QTest::newRow("gap") << QStringLiteral("VVVV absent VVVV") << 4u;
        QTest::newRow("nine quads") << QStringLiteral("ZEPHYRX_SSM3_ISO6") << 36u;
    }
    void two_and_six_slots_end_a_spec()
    {
        QFETCH(QString, names);
        QFETCH(unsigned int, most);
        QCOMPARE(GetMaxUserChannels(spec_of(names)), most);
    }

    void second_quad_of_a_wide_one_is_found_through_the_first()
    {
        AssertLog log;
        ChannelConfigSpec const two = spec_of(QStringLiteral("ISO7"));
        QCOMPARE(FindAllOutputs(two, 7, false), (Outputs{7}));
        ChannelConfigSpec const three = spec_of(QStringLiteral("absent absent absent C444_5VK_VK"));
        QCOMPARE(FindAllOutputs(three, 21, false), (Outputs{21}));
        QCOMPARE(FindAllOutputs(three, 21, true), (Outputs{23}));
        QCOMPARE(LocateAngle(three, 12, 4), 20u);
        QVERIFY(log.take().isEmpty());
    }

    /// A wide one is looked for only where its width divides the board.
    void second_quad_of_a_shifted_wide_one_is_not_found()
    {
        ChannelConfigSpec const spec = spec_of(QStringLiteral("VVVV ISO7"));
        QVERIFY(IsUserChannel(spec, 4));
        QCOMPARE(AngleCount(spec, 4), std::uint64_t(7));
        QVERIFY(!IsUserChannel(spec, 11));
        QVERIFY(!GetOutputSource(spec, 11));
        QCOMPARE(*GetOutputSource(spec, 5), OutputSource(4, 1, false));
    }

    void upper_channels_of_the_widest_are_not_found()
    {
        ChannelConfigSpec const spec = spec_of(QStringLiteral("ZEPHYRX_12IN"));
        QCOMPARE(AngleCount(spec, 0), std::uint64_t(12));
        QVERIFY(!IsUserChannel(spec, 4));
        QVERIFY(!IsUserChannel(spec, 12));
        // Outputs are looked up block by block, so those of the first three quads are known.
        QCOMPARE(*GetOutputSource(spec, 11), OutputSource(0, 7, false));
        QCOMPARE(*GetOutputSource(spec, 4), OutputSource(4, 0, false));
        QVERIFY(!GetOutputSource(spec, 12));
    }

    void entry_of_a_covered_quad_answers_where_the_wide_one_is_not_found()
    {
        ChannelConfigSpec const spec = spec_of(QStringLiteral("ZEPHYRX_12IN VVVV"));
        QCOMPARE(FindAllOutputs(spec, 4, false), (Outputs{4}));
        QCOMPARE(AngleCount(spec, 0), std::uint64_t(12));
    }

    void first_angle_of_the_widest_has_its_phases()
    {
        ChannelConfigSpec const spec = spec_of(QStringLiteral("ZEPHYRX_SSM6_ISO3"));
        QCOMPARE(AngleCount(spec, 0), std::uint64_t(6));
        QCOMPARE(FindAllOutputs(spec, 0, false).size(), std::size_t(18));
        QCOMPARE(LocateAngle(spec, 0, 1), 3u);
        QCOMPARE(FindPrimaryAngleOutputs(spec, 0, false), (Outputs{0, 3, 10, 17, 24, 27}));
    }

    void quince_boards_look_at_the_first_entry_alone_data()
    {
        QTest::addColumn<int>("board");
        QTest::addColumn<unsigned int>("most");
        QTest::newRow("one channel") << 2 << 1u;
        QTest::newRow("two channels") << 3 << 2u;
        QTest::newRow("three channels") << 4 << 3u;
    }
    void quince_boards_look_at_the_first_entry_alone()
    {
        QFETCH(int, board);
        QFETCH(unsigned int, most);
        AssertLog log;
        auto const type = static_cast<BoardType>(board);
        ChannelConfigSpec const spec = spec_of(QStringLiteral("ISO4 VVVV VVVV"), type);
        QCOMPARE(GetMaxUserChannels(spec), most);
        QCOMPARE(GetMaxUserChannels(spec_of({}, type)), most);
        QCOMPARE(AngleCount(spec, 0), std::uint64_t(1));
        QCOMPARE(LocateAngle(spec, 0, 0), 0u);
        QCOMPARE(FindAllOutputs(spec, 0, false), (Outputs{0}));
        QCOMPARE(FindAllOutputs(spec, 0, true), (Outputs{1}));
        QCOMPARE(FindPrimaryAngleOutputs(spec, 0, false), (Outputs{0}));
        QCOMPARE(FindPrimaryAngleOutputs(spec, 0, true), (Outputs{1}));
        QCOMPARE(*GetOutputSource(spec, 0), OutputSource(0, 0, false));
        QCOMPARE(*GetOutputSource(spec, 1), OutputSource(0, 0, true));
        QVERIFY(IsUserChannel(spec, 0));
        for (unsigned int n : {1u, 2u, 4u, 36u, UINT_MAX}) {
            QVERIFY(!IsUserChannel(spec, n));
            QCOMPARE(AngleCount(spec, n), std::uint64_t(0));
            QVERIFY(n == 1 || !GetOutputSource(spec, n));
        }
        QVERIFY(log.take().isEmpty());
    }

    void quince_boards_lack_some_configurations()
    {
        for (char const *name : {"absent", "V", "C444_3SSM3_VVV", "ZEPHYRX_VVVV_IN", "no such"}) {
            ChannelConfigSpec const spec
                = spec_of(QString::fromLatin1(name), BoardType::QuinceConfigInfo3);
            QVERIFY(!IsUserChannel(spec, 0));
            QVERIFY(!GetOutputSource(spec, 0));
            QCOMPARE(GetMaxUserChannels(spec), 3u);
        }
    }

    void quince_boards_are_never_4k()
    {
        for (int value = 0; value <= 77; ++value) {
            ChannelConfigSpec const spec(
                BoardType::QuinceConfigInfo1, {static_cast<ConfigEnum>(value)});
            QVERIFY(!Is4K(spec, 0));
        }
    }

    void configurations_are_found_by_name()
    {
        Config const *config = FindConfig(BoardType::Tamarind, ConfigEnum::ISO3);
        QVERIFY(config && config->finished);
        QCOMPARE(config->channels[0].angle_count, std::uint64_t(3));
        QVERIFY(FindConfig(BoardType::QuinceConfigInfo2, ConfigEnum::ISO3));
        QVERIFY(!FindConfig(BoardType::QuinceConfigInfo2, ConfigEnum::V));
        QVERIFY(!FindConfig(BoardType::Tamarind, ConfigEnum::absent));
        QVERIFY(!FindConfig(BoardType::Tamarind, static_cast<ConfigEnum>(-1)));
        QVERIFY(!FindConfig(static_cast<BoardType>(0), ConfigEnum::ISO3));
    }

    void channels_have_names()
    {
        AssertLog log;
        QCOMPARE(ChannelName(0), "A"_a);
        QCOMPARE(ChannelName(25), "Z"_a);
        QCOMPARE(ChannelName(26), "AA"_a);
        QCOMPARE(ChannelName(39), "AN"_a);
        QVERIFY(log.take().isEmpty());
        QCOMPARE(ChannelName(40), "????"_a);
        QCOMPARE(ChannelName(UINT_MAX), "????"_a);
        QCOMPARE(log.take().size(), 2);
    }
};

QTEST_GUILESS_MAIN(TestChannelLookups)
#include "tst_channel_lookups.moc"
