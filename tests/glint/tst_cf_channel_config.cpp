// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_model.h"
#include "ATarnLib/glint/cf_channel_config.h"
#include "ATarnLib/glint/us_model.h"
#include "sim/vesk/vesk_world.h"
#include "tests/channelcf/config_rows.h"
#include "tests/glint/hub_bench.h"
#include "tests/support/assert_log.h"
#include "tests/support/astring_make.h"
#include "tests/support/latin1_text.h"
#include "tests/support/patience.h"

#include <QSignalSpy>
#include <QTest>

#include <climits>
#include <thread>

using namespace ChannelCF;
using Outputs = CFChannelConfig::Outputs;

/// The board of a server, from its configuration items.
class TestCFChannelConfig : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void means_nothing_before_the_items_have_arrived();
    void reads_the_eight_items();
    void what_was_typed_counts_already();
    void an_item_that_requires_a_reboot_counts_as_after_it();
    void a_quad_is_absent_while_its_item_allows_nothing();
    void an_unknown_text_is_no_configuration();
    void a_ninth_quad_is_an_assertion();
    void has_the_configuration_when_all_eight_have_arrived();
    void a_configuration_is_present_unless_absent_or_unknown();
    void counts_the_channels_of_a_configuration_data();
    void counts_the_channels_of_a_configuration();
    void the_channels_of_an_unknown_configuration_are_not_known();
    void counts_the_channels_that_the_server_tells();
    void counts_its_own_channels_where_the_server_tells_no_number_data();
    void counts_its_own_channels_where_the_server_tells_no_number();
    void three_configurations_are_3d();
    void counts_angles_of_two_eyes();
    void quads_that_are_covered_have_no_tracks();
    void configurations_of_several_plain_angles_are_iso();
    void answers_for_user_channels_and_outputs();
    void knows_4k_channels();
    void lists_all_user_channels();
    void finds_the_key_of_a_user_channel();
    void a_change_of_any_quad_is_told_data();
    void a_change_of_any_quad_is_told();
    void a_change_of_another_item_is_not_told();
    void a_change_of_the_channel_count_is_told();
    void a_change_of_the_board_type_is_told_apart();
    void a_change_is_told_on_the_thread_of_the_change();
    void writes_the_texts_to_the_debug_output();
    void follows_a_server();
    void may_be_asked_from_another_thread();
    void a_missing_model_is_an_assertion();
    void items_of_models_that_have_gone_have_not_arrived();
};

namespace {

QString item_name(unsigned int quad)
{
    return QStringLiteral("ChannelConfigurationSet%1").arg(quad);
}

VCTP3::ConfigurationItem item(unsigned int quad, AString const &value)
{
    VCTP3::ConfigurationItem result;
    result.configuration_item_name = item_name(quad);
    result.configuration_item_effective_value = value;
    result.configuration_item_boot_value = value;
    result.configuration_item_saved_value = value;
    result.configuration_item_allowed_values.push_back("absent"_a);
    result.configuration_item_allowed_values.push_back(value);
    return result;
}

/// Models without a server, whose items a test feeds by hand.
struct Board
{
    Glint hub{false};
    CFModel *cf_model = CFModel::create(false, &hub);
    USModel *us_model = USModel::create(false, &hub);
    CFChannelConfig config{cf_model, us_model, nullptr};
    QSignalSpy changed{&config, &CFChannelConfig::changed};

    Board() = default;
    /// Blanks between the names; "-" for a quad whose item does not arrive.
    explicit Board(char const *names)
    {
        unsigned int quad = 0;
        for (QString const &name : text(names).split(QLatin1Char(' ')))
            arrive(quad++, name);
        changed.clear();
    }

    void arrive(unsigned int quad, QString const &value)
    {
        if (value != QLatin1String("-"))
            quad_item(quad)->config(item(quad, value));
    }
    CFItemModel *quad_item(unsigned int quad) { return cf_model->get_item(item_name(quad)); }
    void tell(char const *key, char const *value)
    {
        us_model->userdict_change(AString::l1(key), AString::l1(value));
    }
};

int number(ConfigEnum cf)
{
    return static_cast<int>(cf);
}

} // namespace

void TestCFChannelConfig::means_nothing_before_the_items_have_arrived()
{
    Board b;
    QCOMPARE(b.config.cf_value_list(), QStringList(8, QString()));
    for (unsigned int quad = 0; quad < 8; ++quad) {
        QCOMPARE(b.config.get(quad), ConfigEnum::absent);
        QVERIFY(!b.config.present(quad));
        QVERIFY(!b.config.have_cf(quad));
    }
    QVERIFY(!b.config.have_cf());
    QVERIFY(!b.config.have_3D());
    QCOMPARE(b.config.channel_count(), 0u);
    QVERIFY(b.config.AllUserChannels().empty());
    QVERIFY(!b.config.GetOutputSource(0));
    QVERIFY(!b.config.find_key(0));
}

void TestCFChannelConfig::reads_the_eight_items()
{
    Board b("VKVV VVVV ISO8 absent VVVK VKVK SSM4 ISO4");
    QCOMPARE(b.config.cf_value_list(),
        text("VKVV VVVV ISO8 absent VVVK VKVK SSM4 ISO4").split(QLatin1Char(' ')));
    ChannelConfigSpec const spec = b.config.spec();
    QCOMPARE(spec.board(), BoardType::Tamarind);
    QCOMPARE(spec.get_cf(0), ConfigEnum::VKVV);
    QCOMPARE(spec.get_cf(2), ConfigEnum::ISO8);
    QCOMPARE(spec.get_cf(3), ConfigEnum::absent);
    QCOMPARE(spec.get_cf(7), ConfigEnum::ISO4);
    QCOMPARE(spec.get_cf(8), ConfigEnum::absent);
    for (unsigned int quad = 0; quad < 8; ++quad)
        QCOMPARE(b.config.get(quad), spec.get_cf(quad));
}

void TestCFChannelConfig::what_was_typed_counts_already()
{
    Board b("VVVV");
    b.quad_item(0)->set(text("ISO4"));
    QCOMPARE(b.config.get(0), ConfigEnum::ISO4);
    QCOMPARE(b.config.get_angle_count(0), std::uint64_t(4));
    b.quad_item(0)->revert_item();
    QCOMPARE(b.config.get_angle_count(0), std::uint64_t(1));
}

void TestCFChannelConfig::an_item_that_requires_a_reboot_counts_as_after_it()
{
    Board b;
    VCTP3::ConfigurationItem waiting = item(0, "VVVV"_a);
    waiting.configuration_item_boot_value = "ISO2"_a;
    waiting.configuration_item_requires_reboot = true;
    b.quad_item(0)->config(waiting);
    QCOMPARE(b.config.get(0), ConfigEnum::ISO2);
    QCOMPARE(b.config.spec().get_cf(0), ConfigEnum::ISO2);
}

/// The text counts for the board all the same.
void TestCFChannelConfig::a_quad_is_absent_while_its_item_allows_nothing()
{
    Board b;
    VCTP3::ConfigurationItem none = item(0, "VVVV"_a);
    none.configuration_item_allowed_values.clear_all();
    b.quad_item(0)->config(none);
    QCOMPARE(b.config.get(0), ConfigEnum::absent);
    QVERIFY(!b.config.present(0u));
    QVERIFY(b.config.have_cf(0));
    QCOMPARE(b.config.spec().get_cf(0), ConfigEnum::VVVV);
}

void TestCFChannelConfig::an_unknown_text_is_no_configuration()
{
    Board b("VXVX VVVV");
    QCOMPARE(number(b.config.get(0)), -1);
    QVERIFY(!b.config.present(0u));
    QVERIFY(!b.config.isUserChannel(0));
    QVERIFY(b.config.isUserChannel(4));
}

void TestCFChannelConfig::a_ninth_quad_is_an_assertion()
{
    Board b("VVVV VVVV VVVV VVVV VVVV VVVV VVVV VVVV");
    AssertLog log;
    for (unsigned int icf : {8u, 9u, UINT_MAX}) {
        QCOMPARE(b.config.get(icf), ConfigEnum::absent);
        QVERIFY(!b.config.have_cf(icf));
        QVERIFY(!b.config.present(icf));
    }
    QCOMPARE(log.take(), QStringList(9, text("icf < cf_list.size()")));
}

void TestCFChannelConfig::has_the_configuration_when_all_eight_have_arrived()
{
    Board b("VVVV - VVVV absent absent absent absent absent");
    QVERIFY(b.config.have_cf(0));
    QVERIFY(!b.config.have_cf(1));
    QVERIFY(!b.config.have_cf());
    b.arrive(1, text("ISO2"));
    QVERIFY(b.config.have_cf(1));
    QVERIFY(b.config.have_cf());
}

void TestCFChannelConfig::a_configuration_is_present_unless_absent_or_unknown()
{
    for (int value = -2; value <= 80; ++value)
        QCOMPARE(
            CFChannelConfig::present(static_cast<ConfigEnum>(value)), value >= 1 && value <= 77);
    Board b("VVVV absent");
    QVERIFY(b.config.present(0u));
    QVERIFY(!b.config.present(1u));
}

void TestCFChannelConfig::counts_the_channels_of_a_configuration_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<unsigned int>("count"); // 0: the number of quads
    QTest::newRow("up to ISO4_2P_VK_2") << 1 << 14 << 0u;
    QTest::newRow("ISO1_2P to ISO4_2P") << 15 << 18 << 6u;
    QTest::newRow("V2V2 to SSM3v2") << 19 << 45 << 0u;
    QTest::newRow("C2") << 46 << 48 << 2u;
    QTest::newRow("C4") << 49 << 56 << 0u;
    QTest::newRow("C42") << 57 << 59 << 6u;
    QTest::newRow("C44, C444") << 60 << 65 << 0u;
    QTest::newRow("M2") << 66 << 68 << 2u;
    QTest::newRow("ZEPHYRX up to 8IN_4OUT") << 69 << 71 << 0u;
    QTest::newRow("ZEPHYRX_12IN") << 72 << 72 << 20u;
    QTest::newRow("ZEPHYRX_16IN, SSM3_ISO5") << 73 << 74 << 28u;
    QTest::newRow("ZEPHYRX_SSM6_ISO2") << 75 << 75 << 20u;
    QTest::newRow("ZEPHYRX_SSM3_ISO6, SSM6_ISO3") << 76 << 77 << 32u;
}

void TestCFChannelConfig::counts_the_channels_of_a_configuration()
{
    QFETCH(int, first);
    QFETCH(int, last);
    QFETCH(unsigned int, count);
    for (int value = first; value <= last; ++value)
        QCOMPARE(CFChannelConfig::channel_count(static_cast<ConfigEnum>(value)),
            count ? count : expected_configs().at(value).width);
}

void TestCFChannelConfig::the_channels_of_an_unknown_configuration_are_not_known()
{
    QCOMPARE(CFChannelConfig::channel_count(ConfigEnum::absent), 0u);
    for (int value : {-1, 78, INT_MAX, INT_MIN})
        QCOMPARE(CFChannelConfig::channel_count(static_cast<ConfigEnum>(value)), UINT_MAX);
}

void TestCFChannelConfig::counts_the_channels_that_the_server_tells()
{
    Board b("VVVV");
    b.tell("cf.orchard.0.channel_count", "12");
    QCOMPARE(b.config.channel_count(), 12u);
    b.tell("cf.orchard.0.channel_count", "0");
    QCOMPARE(b.config.channel_count(), 0u);
    b.tell("cf.orchard.0.channel_count", "40");
    QCOMPARE(b.config.channel_count(), 40u);
}

void TestCFChannelConfig::counts_its_own_channels_where_the_server_tells_no_number_data()
{
    QTest::addColumn<QString>("told");
    QTest::newRow("empty") << QString();
    QTest::newRow("words") << text("many");
    QTest::newRow("negative") << text("-1");
    QTest::newRow("more than there can be") << text("41");
    QTest::newRow("the greatest") << text("4294967295");
    QTest::newRow("too large") << text("4294967296");
}

void TestCFChannelConfig::counts_its_own_channels_where_the_server_tells_no_number()
{
    QFETCH(QString, told);
    Board b("VVVV VKVV");
    b.tell("cf.orchard.0.channel_count", told.toLatin1().constData());
    QCOMPARE(b.config.channel_count(), 8u);
}

void TestCFChannelConfig::three_configurations_are_3d()
{
    for (int value = -1; value <= 78; ++value)
        QCOMPARE(CFChannelConfig::is3D(static_cast<ConfigEnum>(value)),
            value == 19 || value == 28 || value == 29);
}

void TestCFChannelConfig::counts_angles_of_two_eyes()
{
    QCOMPARE(CFChannelConfig::track_count_3D(ConfigEnum::V2V2), 2u);
    QCOMPARE(CFChannelConfig::track_count_3D(ConfigEnum::v3D_ISO3), 4u);
    QCOMPARE(CFChannelConfig::track_count_3D(ConfigEnum::v3D_ISO2), 4u);
    QCOMPARE(CFChannelConfig::track_count_3D(ConfigEnum::ISO8), 0u);
    QCOMPARE(CFChannelConfig::track_count_3D(static_cast<ConfigEnum>(-1)), 0u);
    Board b("V2V2 VVVV 3D_ISO3 absent V2V2");
    QVERIFY(b.config.have_3D());
    QCOMPARE(b.config.track_count_3D(), 8u);
    QVERIFY(!Board("VVVV ISO8").config.have_3D());
}

void TestCFChannelConfig::quads_that_are_covered_have_no_tracks()
{
    QCOMPARE(Board("3D_ISO3 V2V2 V2V2").config.track_count_3D(), 6u);
    QCOMPARE(Board("C444_ISO_9 V2V2 V2V2 VVVV").config.track_count_3D(), 0u);
    QVERIFY(!Board("ISO8 V2V2").config.have_3D());
}

void TestCFChannelConfig::configurations_of_several_plain_angles_are_iso()
{
    for (auto const &[value, config] : expected_configs()) {
        QString const line = text(config_rows_text)
                                 .section(QStringLiteral("\n%1 ").arg(value), 1)
                                 .section(QLatin1Char('\n'), 0, 0);
        QVERIFY2(CFChannelConfig::isISO(static_cast<ConfigEnum>(value))
                == line.contains(QLatin1String("ISO ")),
            qPrintable(config.name));
    }
    for (int value : {-1, 0, 78})
        QVERIFY(!CFChannelConfig::isISO(static_cast<ConfigEnum>(value)));
}

void TestCFChannelConfig::answers_for_user_channels_and_outputs()
{
    Board b("VVVV DUAL_VK SSM4");
    QVERIFY(b.config.isUserChannel(4));
    QVERIFY(!b.config.isUserChannel(5));
    QCOMPARE(b.config.get_angle_count(4), std::uint64_t(2));
    QCOMPARE(b.config.AllOutputs(4, false), (Outputs{4, 5}));
    QCOMPARE(b.config.AllOutputs(4, true), (Outputs{6, 7}));
    QCOMPARE(b.config.PrimaryAngleOutputs(4, true), (Outputs{6, 7}));
    QCOMPARE(b.config.AllOutputs(8, false), (Outputs{8, 9, 10, 11}));
    QCOMPARE(b.config.PrimaryAngleOutputs(8, false), (Outputs{8}));
    QCOMPARE(*b.config.GetOutputSource(7), OutputSource(4, 1, true));
    QVERIFY(!b.config.GetOutputSource(12));
}

void TestCFChannelConfig::knows_4k_channels()
{
    Board b("V VVVV");
    QVERIFY(b.config.is4K(0));
    QVERIFY(!b.config.is4K(1));
    QVERIFY(!b.config.is4K(4));
    QVERIFY(!b.config.is4K(UINT_MAX));
}

void TestCFChannelConfig::lists_all_user_channels()
{
    QCOMPARE(Board("VKVV absent ISO7").config.AllUserChannels(),
        (std::vector<unsigned int>{0, 1, 3, 8, 15}));
    Board full("VVVV VVVV VVVV VVVV VVVV VVVV VVVV VVVV");
    QCOMPARE(full.config.AllUserChannels().size(), std::size_t(32));
    QCOMPARE(full.config.AllUserChannels().back(), 31u);
}

void TestCFChannelConfig::finds_the_key_of_a_user_channel()
{
    Board b("VKVV VVVK DUAL_VK");
    QCOMPARE(*b.config.find_key(0), 2u);
    QCOMPARE(*b.config.find_key(5), 7u);
    QCOMPARE(*b.config.find_key(8), 10u);
    for (unsigned int user_channel : {1u, 2u, 4u, 12u, UINT_MAX})
        QVERIFY(!b.config.find_key(user_channel));
}

void TestCFChannelConfig::a_change_of_any_quad_is_told_data()
{
    QTest::addColumn<unsigned int>("quad");
    for (unsigned int quad = 0; quad < 8; ++quad)
        QTest::addRow("%u", quad) << quad;
}

void TestCFChannelConfig::a_change_of_any_quad_is_told()
{
    QFETCH(unsigned int, quad);
    Board b;
    QSignalSpy type(&b.config, &CFChannelConfig::board_type_changed);
    b.arrive(quad, text("VVVV"));
    QCOMPARE(b.changed.count(), 1);
    b.arrive(quad, text("VVVV"));
    QCOMPARE(b.changed.count(), 1);
    b.quad_item(quad)->set(text("ISO2"));
    QCOMPARE(b.changed.count(), 2);
    b.quad_item(quad)->revert_item();
    QCOMPARE(b.changed.count(), 3);
    QCOMPARE(type.count(), 0);
}

void TestCFChannelConfig::a_change_of_another_item_is_not_told()
{
    Board b("VVVV");
    b.arrive(8, text("VVVV"));
    b.cf_model->get_item(text("VideoStandard"))->set(text("720_50p"));
    b.us_model->get_item(text("cf.orchard.1.channel_count"));
    b.tell("cf.orchard.1.channel_count", "4");
    QCOMPARE(b.changed.count(), 0);
}

void TestCFChannelConfig::a_change_of_the_channel_count_is_told()
{
    Board b("VVVV");
    QSignalSpy type(&b.config, &CFChannelConfig::board_type_changed);
    b.tell("cf.orchard.0.channel_count", "12");
    QCOMPARE(b.changed.count(), 1);
    b.tell("cf.orchard.0.channel_count", "12");
    QCOMPARE(b.changed.count(), 1);
    QCOMPARE(type.count(), 0);
}

void TestCFChannelConfig::a_change_of_the_board_type_is_told_apart()
{
    Board b("VVVV");
    QSignalSpy type(&b.config, &CFChannelConfig::board_type_changed);
    b.tell("cf.orchard.type", "tamarind");
    QCOMPARE(type.count(), 1);
    QCOMPARE(type[0][0].toString(), text("tamarind"));
    QCOMPARE(b.changed.count(), 0);
}

void TestCFChannelConfig::a_change_is_told_on_the_thread_of_the_change()
{
    Board b("VVVV");
    QSignalSpy type(&b.config, &CFChannelConfig::board_type_changed);
    CFItemModel *const quad = b.quad_item(0);
    USItemModel *const count = b.us_model->get_item(text("cf.orchard.0.channel_count"));
    USItemModel *const board = b.us_model->get_item(text("cf.orchard.type"));
    std::thread([&] {
        quad->set(text("ISO4"));
        count->set(text("12"));
        board->set(text("tamarind"));
    }).join();
    QCOMPARE(b.changed.count(), 2);
    QCOMPARE(type.count(), 1);
}

void TestCFChannelConfig::writes_the_texts_to_the_debug_output()
{
    Board b("VKVV");
    QTest::ignoreMessage(QtDebugMsg, "ChannelConfigurationSet0: VKVV");
    for (unsigned int quad = 1; quad < 8; ++quad)
        QTest::ignoreMessage(QtDebugMsg, qPrintable(item_name(quad) + text(": ")));
    b.config.debug_out();
}

void TestCFChannelConfig::follows_a_server()
{
    HubBench b;
    CFModel *cf_model = CFModel::create(false, b.hub.get());
    USModel *us_model = USModel::create(false, b.hub.get());
    CFChannelConfig config(cf_model, us_model, nullptr);
    QSignalSpy type(&config, &CFChannelConfig::board_type_changed);
    QVERIFY(b.connect());
    QTRY_VERIFY(config.have_cf());
    QCOMPARE(config.AllUserChannels().size(), std::size_t(8));
    QTRY_COMPARE(config.channel_count(), 8u);
    QTRY_COMPARE(type.count(), 1);

    QSignalSpy changed(&config, &CFChannelConfig::changed);
    b.server.with_world(
        [](VeskWorld &world) { world.configuration.set("ChannelConfigurationSet1"_a, "ISO4"_a); });
    QTRY_COMPARE(config.get_angle_count(4), std::uint64_t(4));
    QVERIFY(changed.count() > 0);

    cf_model->get_item(item_name(0))->set(text("VKVV"));
    cf_model->commit_changes();
    QTRY_VERIFY(!cf_model->have_changes());
    QCOMPARE(b.server.setting("ChannelConfigurationSet0"_a)->boot, "VKVV"_a);
    QCOMPARE(*config.find_key(0), 2u);
}

void TestCFChannelConfig::may_be_asked_from_another_thread()
{
    Board b("VVVV VVVV");
    std::atomic<bool> sound{true};
    std::thread asker([&] {
        for (int i = 0; i < 2000; ++i) {
            std::uint64_t const angles = b.config.get_angle_count(0);
            sound = sound && (angles == 1 || angles == 4) && b.config.have_cf(0)
                && b.config.AllOutputs(4, false) == Outputs{4} && b.config.channel_count() == 8;
        }
    });
    for (int i = 0; i < 2000; ++i)
        b.arrive(0, text(i % 2 ? "VVVV" : "ISO4"));
    asker.join();
    QVERIFY(sound);
}

void TestCFChannelConfig::a_missing_model_is_an_assertion()
{
    AssertLog asserts;
    CFChannelConfig const config(nullptr, nullptr, nullptr);
    QCOMPARE(
        asserts.take(), (QStringList{text("cf_model != nullptr"), text("us_model != nullptr")}));
    QCOMPARE(config.cf_value_list(), QStringList(8, QString()));
    QCOMPARE(config.channel_count(), 0U);
    QVERIFY(!config.have_cf());
    QVERIFY(!config.present(0U));
}

void TestCFChannelConfig::items_of_models_that_have_gone_have_not_arrived()
{
    auto hub = std::make_unique<Glint>(false);
    CFModel *cf_model = CFModel::create(false, hub.get());
    USModel *us_model = USModel::create(false, hub.get());
    CFChannelConfig const config(cf_model, us_model, nullptr);
    cf_model->get_item(item_name(0))->config(item(0, "VVVV"_a));
    us_model->userdict_change("cf.orchard.0.channel_count"_a, "12"_a);
    QCOMPARE(config.get(0), ConfigEnum::VVVV);
    QCOMPARE(config.channel_count(), 12U);
    hub.reset();
    QCOMPARE(config.get(0), ConfigEnum::absent);
    QVERIFY(!config.have_cf(0));
    QCOMPARE(config.cf_value_list(), QStringList(8, QString()));
    QCOMPARE(config.channel_count(), 0U);
    config.debug_out();
}

QTEST_GUILESS_MAIN(TestCFChannelConfig)
#include "tst_cf_channel_config.moc"
