// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/channel_config_spec.h"
#include "tests/channelcf/config_rows.h"
#include "tests/support/astring_make.h"
#include "tests/support/astring_print.h"

#include <QTest>
#include <climits>

using namespace ChannelCF;

class TestConfigEnum : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void every_name_reads_back()
    {
        QCOMPARE(expected_configs().size(), std::size_t(77));
        for (auto const &[value, config] : expected_configs()) {
            QVERIFY(isValid(static_cast<ConfigEnum>(value)));
            QCOMPARE(ConfigEnumStr(static_cast<ConfigEnum>(value)), AString(config.name));
            QCOMPARE(static_cast<int>(vctp3_to_config(AString(config.name))), value);
        }
    }

    void enumerators_are_named_as_on_the_wire()
    {
        QCOMPARE(vctp3_to_config("V2V2"_a), ConfigEnum::V2V2);
        QCOMPARE(vctp3_to_config("3D_ISO3"_a), ConfigEnum::v3D_ISO3);
        QCOMPARE(vctp3_to_config("SSM3v2"_a), ConfigEnum::SSM3v2);
        QCOMPARE(vctp3_to_config("ZEPHYRX_SSM6_ISO3"_a), ConfigEnum::ZEPHYRX_SSM6_ISO3);
    }

    void absent_is_a_name()
    {
        QCOMPARE(ConfigEnumStr(ConfigEnum::absent), "absent"_a);
        QCOMPARE(vctp3_to_config("absent"_a), ConfigEnum::absent);
    }

    /// Their rows stand twice in the table of names.
    void the_repeated_names_read_as_ever()
    {
        QCOMPARE(static_cast<int>(vctp3_to_config("ISO1_2P"_a)), 15);
        QCOMPARE(static_cast<int>(vctp3_to_config("ISO2_2P"_a)), 16);
        QCOMPARE(static_cast<int>(vctp3_to_config("ISO3_2P"_a)), 17);
    }

    void unknown_value_is_four_question_marks()
    {
        for (int value : {-1, 78, 79, 1000, INT_MAX, INT_MIN}) {
            QVERIFY(!isValid(static_cast<ConfigEnum>(value)));
            QCOMPARE(ConfigEnumStr(static_cast<ConfigEnum>(value)), "????"_a);
        }
    }

    void unknown_name_is_no_configuration()
    {
        for (char const *name : {"", "vvvv", "VVVV ", " VVVV", "????", "v3D_ISO3", "36"})
            QCOMPARE(static_cast<int>(vctp3_to_config(AString::l1(name))), -1);
    }

    void spec_takes_names()
    {
        ChannelConfigSpec const spec(BoardType::Tamarind, {"VKVV"_a, "no such"_a, "ISO8"_a});
        QCOMPARE(spec.board(), BoardType::Tamarind);
        QCOMPARE(spec.get_cf(0), ConfigEnum::VKVV);
        QCOMPARE(static_cast<int>(spec.get_cf(1)), -1);
        QCOMPARE(spec.get_cf(2), ConfigEnum::ISO8);
        QCOMPARE(spec.get_cf(3), ConfigEnum::absent);
    }

    void spec_takes_values()
    {
        ChannelConfigSpec const spec(
            BoardType::QuinceConfigInfo2, {ConfigEnum::VVVV, ConfigEnum::VK});
        QCOMPARE(spec.board(), BoardType::QuinceConfigInfo2);
        QCOMPARE(spec.get_cf(0), ConfigEnum::VVVV);
        QCOMPARE(spec.get_cf(1), ConfigEnum::VK);
        QCOMPARE(spec.get_cf(2), ConfigEnum::absent);
    }

    /// Short ones are held another way than long ones.
    void spec_of_any_length_keeps_every_entry()
    {
        for (unsigned int length : {0u, 1u, 11u, 12u, 13u, 40u}) {
            std::vector<ConfigEnum> configs;
            for (unsigned int i = 0; i < length; ++i)
                configs.push_back(static_cast<ConfigEnum>(1 + i % 77));
            ChannelConfigSpec const made(BoardType::Tamarind, configs);
            ChannelConfigSpec copy = made;
            ChannelConfigSpec const moved = std::move(copy);
            for (unsigned int i = 0; i < length; ++i)
                QCOMPARE(moved.get_cf(i), configs[i]);
            for (unsigned int beyond : {length, length + 1, length + 12, UINT_MAX})
                QCOMPARE(moved.get_cf(beyond), ConfigEnum::absent);
        }
    }

    void spec_may_be_assigned()
    {
        ChannelConfigSpec spec(BoardType::Tamarind, std::vector<ConfigEnum>(20, ConfigEnum::VVVV));
        spec = ChannelConfigSpec(BoardType::QuinceConfigInfo1, {ConfigEnum::VK});
        QCOMPARE(spec.board(), BoardType::QuinceConfigInfo1);
        QCOMPARE(spec.get_cf(0), ConfigEnum::VK);
        QCOMPARE(spec.get_cf(1), ConfigEnum::absent);
        QCOMPARE(spec.get_cf(15), ConfigEnum::absent);
    }
};

QTEST_GUILESS_MAIN(TestConfigEnum)
#include "tst_config_enum.moc"
