// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/config_enum.h"
#include "sim/vesk/vesk_sim.h"
#include "tests/support/loopback_address.h"
#include "tests/support/wire_peer.h"

#include <QTest>

/// Settings: what is told of them, what may be set, and what a restart does.
class TestVeskConfigurationCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tells_every_item_in_the_order_of_the_names();
    void tells_one_item_with_all_its_fields();
    void knows_the_items_that_models_look_for_data();
    void knows_the_items_that_models_look_for();
    void has_the_configurations_of_its_board_data();
    void has_the_configurations_of_its_board();
    void has_every_configuration_on_one_board();
    void refuses_an_unknown_name();
    void refuses_a_value_that_is_not_allowed();
    void takes_any_text_where_nothing_is_listed();
    void puts_a_value_into_effect_at_once();
    void saves_a_value_that_waits_for_the_restart();
    void tells_the_item_to_those_registered();
    void tells_nothing_of_an_equal_value();
    void tells_of_a_value_that_goes_back_to_what_holds();
    void runs_at_the_saved_video_standard_after_a_restart();
    void forgets_what_was_saved_when_the_state_is_lost();
};

namespace {

QByteArray const ok = "<ok />";

QByteArray get(QByteArray const &name)
{
    return "<get_one_configuration><ConfigurationItemName>" + name
        + "</ConfigurationItemName></get_one_configuration>";
}

QByteArray set(QByteArray const &name, QByteArray const &value)
{
    return "<set_configuration><ConfigurationItemName>" + name
        + "</ConfigurationItemName><ConfigurationItemValue>" + value
        + "</ConfigurationItemValue></set_configuration>";
}

QByteArray aspect_item(QByteArray const &effective, QByteArray const &saved)
{
    return "<ConfigurationItem><ConfigurationItemName>VideoAspectRatio</ConfigurationItemName>"
           "<ConfigurationItemAccess>user</ConfigurationItemAccess>"
           "<ConfigurationItemEffectiveValue>"
        + effective
        + "</ConfigurationItemEffectiveValue>"
          "<ConfigurationItemBootValue>"
        + saved + "</ConfigurationItemBootValue><ConfigurationItemSavedValue>" + saved
        + "</ConfigurationItemSavedValue><ConfigurationItemAllowedValues>"
          "<ConfigurationItemValue>16x9</ConfigurationItemValue>"
          "<ConfigurationItemValue>4x3</ConfigurationItemValue>"
          "</ConfigurationItemAllowedValues></ConfigurationItem>";
}

QByteArray error_reply(QByteArray const &text, QByteArray const &code)
{
    return "<error><ErrorMessage>" + text + "</ErrorMessage><ErrorCode>" + code
        + "</ErrorCode></error>";
}

} // namespace

void TestVeskConfigurationCommands::tells_every_item_in_the_order_of_the_names()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QByteArrayList replies = peer.call("<get_configuration/>");
    QCOMPARE(replies.takeLast(), ok);
    QByteArrayList names;
    for (QByteArray const &reply : replies) {
        QVERIFY2(reply.startsWith("<configuration_item><ConfigurationItem>"
                                  "<ConfigurationItemName>"),
            reply);
        qsizetype const at = reply.indexOf("Name>") + 5;
        names += reply.mid(at, reply.indexOf("</", at) - at);
    }
    QByteArrayList sorted = names;
    std::sort(sorted.begin(), sorted.end());
    QCOMPARE(names, sorted);
    QVERIFY(names.size() > 100);
    QVERIFY(names.contains("VideoStandard"));
}

void TestVeskConfigurationCommands::tells_one_item_with_all_its_fields()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QCOMPARE(peer.call(get("VideoAspectRatio")),
        QByteArrayList{"<one_configuration_item>" + aspect_item("16x9", "16x9")
            + "</one_configuration_item>"});
    QByteArray const standard = peer.call(get("VideoStandard")).value(0);
    QVERIFY(standard.contains("<ConfigurationItemAccess>eng</ConfigurationItemAccess>"));
    QVERIFY(standard.contains("<ConfigurationItemRequiresReboot />"));
}

void TestVeskConfigurationCommands::knows_the_items_that_models_look_for_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("allowed");
    static char const *const rows[][2] = {
        {"VideoStandard", "1080_50i"},
        {"VideoAspectRatio", "4x3"},
        {"ReferenceSource", "freerun"},
        {"ChannelConfigurationSet0", "VKVV"},
        {"ChannelConfigurationSet7", "ISO8"},
        {"ControlPanelCount", "4"},
        {"ControlPanel_ID3", "12345"},
        {"ControlPanel_Channels0", "A,B"},
        {"RouterControlInputIpaddr", "10.0.0.1"},
        {"RouterControlInputPortnum", "23"},
        {"RouterControlInputProtocolType", "Probel"},
        {"RouterControlInputLevels", "3"},
        {"RouterControlInput_Channel7", "17"},
        {"Channel_GrowingMxfExportEnable0", "Enabled"},
        {"Channel_GrowingMxfExportPath3", "/media/export"},
        {"Channel_GrowingMxfAngleB3", "Enabled"},
    };
    for (auto const &row : rows)
        QTest::newRow(row[0]) << QByteArray(row[0]) << QByteArray(row[1]);
}

void TestVeskConfigurationCommands::knows_the_items_that_models_look_for()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, allowed);
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QCOMPARE(peer.call(set(name, allowed)), QByteArrayList{ok});
    QCOMPARE(server.setting(AString::from_utf8(name.constData())).value().saved,
        AString::from_utf8(allowed.constData()));
}

void TestVeskConfigurationCommands::has_the_configurations_of_its_board_data()
{
    QTest::addColumn<int>("board");
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("last");
    QTest::addColumn<QByteArray>("other");
    QTest::addColumn<QByteArray>("type");
    QTest::newRow("hd") << int(VeskBoard::hd) << QByteArray("VVVV") << QByteArray("C444_3SSM3_VVV")
                        << QByteArray("V_V") << QByteArray("tamarind");
    QTest::newRow("uhd") << int(VeskBoard::uhd) << QByteArray("V_V") << QByteArray("M2_ISO2")
                         << QByteArray("VVVV") << QByteArray("tamarind4k");
    QTest::newRow("zephyrx") << int(VeskBoard::zephyrx) << QByteArray("ZEPHYRX_VVVV_IN")
                             << QByteArray("ZEPHYRX_SSM6_ISO3") << QByteArray("VVVV")
                             << QByteArray("zephyrx");
}

void TestVeskConfigurationCommands::has_the_configurations_of_its_board()
{
    QFETCH(int, board);
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, last);
    QFETCH(QByteArray, other);
    QFETCH(QByteArray, type);
    VeskSimOptions options;
    options.board = static_cast<VeskBoard>(board);
    VeskSim server(LoopbackAddress::unique(), options);
    WirePeer peer(server.address());
    AString const quad = AString::l1("ChannelConfigurationSet0");
    QCOMPARE(server.setting(quad).value().effective, AString::l1(first.constData()));
    QCOMPARE(server.dictionary_value(AString::l1("cf.orchard.type")).value(),
        AString::l1(type.constData()));
    QCOMPARE(peer.call(set("ChannelConfigurationSet7", last)), QByteArrayList{ok});
    QVERIFY(peer.call(set("ChannelConfigurationSet0", other)).value(0).startsWith("<error>"));
    QCOMPARE(peer.call(set("ChannelConfigurationSet0", "absent")), QByteArrayList{ok});
    server.restart(VeskState::lose);
    QCOMPARE(server.setting(quad).value().effective, AString::l1(first.constData()));
}

/// The names are typed by hand here and in the client.
void TestVeskConfigurationCommands::has_every_configuration_on_one_board()
{
    std::map<AString, int> boards_with;
    for (VeskBoard board : {VeskBoard::hd, VeskBoard::uhd, VeskBoard::zephyrx}) {
        VeskBoardFacts const facts = vesk_board_facts(board);
        QVERIFY(facts.configurations.size() <= 64);
        for (AString const &name : facts.configurations)
            ++boards_with[name];
    }
    QCOMPARE(boards_with[AString::l1("absent")], 3);
    boards_with.erase(AString::l1("absent"));
    QCOMPARE(boards_with.size(), std::size_t(77));
    for (unsigned int value = 1; value <= 77; ++value) {
        AString const name = ChannelCF::ConfigEnumStr(static_cast<ChannelCF::ConfigEnum>(value));
        QVERIFY2(boards_with[name] == 1, name.to_string().c_str());
    }
}

void TestVeskConfigurationCommands::refuses_an_unknown_name()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QByteArray const refused = error_reply(
        "There is no configuration item &quot;videostandard&quot;", "configname_invalid");
    QCOMPARE(peer.call(get("videostandard")), QByteArrayList{refused});
    QCOMPARE(peer.call(set("videostandard", "1080_50i")), QByteArrayList{refused});
    QVERIFY(!server.setting(AString::l1("videostandard")));
}

void TestVeskConfigurationCommands::refuses_a_value_that_is_not_allowed()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QCOMPARE(peer.call(set("VideoAspectRatio", "21x9")),
        QByteArrayList{error_reply("&quot;21x9&quot; is not allowed for configuration item "
                                   "&quot;VideoAspectRatio&quot;",
            "configvalue_invalid")});
    QCOMPARE(server.setting(AString::l1("VideoAspectRatio")).value().saved, AString::l1("16x9"));
}

void TestVeskConfigurationCommands::takes_any_text_where_nothing_is_listed()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QCOMPARE(peer.call(set("ControlPanel_ID0", " \xC3\xA4 &amp; b ")), QByteArrayList{ok});
    QCOMPARE(server.setting(AString::l1("ControlPanel_ID0")).value().effective,
        AString::from_utf8(" \xC3\xA4 & b "));
    QCOMPARE(peer.call(set("ControlPanel_ID0", "")), QByteArrayList{ok});
    QVERIFY(server.setting(AString::l1("ControlPanel_ID0")).value().effective.empty());
}

void TestVeskConfigurationCommands::puts_a_value_into_effect_at_once()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(set("ReferenceSource", "input2"));
    VeskSetting const setting = server.setting(AString::l1("ReferenceSource")).value();
    QCOMPARE(setting.boot, AString::l1("input2"));
    QCOMPARE(setting.saved, AString::l1("input2"));
    QCOMPARE(setting.effective, AString::l1("input2"));
}

void TestVeskConfigurationCommands::saves_a_value_that_waits_for_the_restart()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(set("ChannelConfigurationSet0", "ISO4"));
    VeskSetting before = server.setting(AString::l1("ChannelConfigurationSet0")).value();
    QCOMPARE(before.boot, AString::l1("ISO4"));
    QCOMPARE(before.saved, AString::l1("ISO4"));
    QCOMPARE(before.effective, AString::l1("VVVV"));
    server.restart(VeskState::keep);
    VeskSetting after = server.setting(AString::l1("ChannelConfigurationSet0")).value();
    QCOMPARE(after.boot, AString::l1("ISO4"));
    QCOMPARE(after.saved, AString::l1("ISO4"));
    QCOMPARE(after.effective, AString::l1("ISO4"));
}

void TestVeskConfigurationCommands::tells_the_item_to_those_registered()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    WirePeer other(server.address());
    peer.call("<report_register><ReportType>config_change</ReportType></report_register>");
    other.call(set("VideoAspectRatio", "4x3"));
    QCOMPARE(peer.sync_reports(),
        QByteArrayList{"<config_changed><ConfigurationChange>" + aspect_item("4x3", "4x3")
            + "</ConfigurationChange></config_changed>"});
    QCOMPARE(other.sync_reports(), QByteArrayList());
}

void TestVeskConfigurationCommands::tells_nothing_of_an_equal_value()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call("<report_register><ReportType>config_change</ReportType></report_register>");
    QCOMPARE(peer.call(set("VideoAspectRatio", "16x9")), QByteArrayList{ok});
    QCOMPARE(peer.sync_reports(), QByteArrayList());
}

void TestVeskConfigurationCommands::tells_of_a_value_that_goes_back_to_what_holds()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(set("ChannelConfigurationSet0", "ISO4"));
    peer.call("<report_register><ReportType>config_change</ReportType></report_register>");
    peer.call(set("ChannelConfigurationSet0", "VVVV"));
    QCOMPARE(peer.sync_reports().size(), 1);
}

void TestVeskConfigurationCommands::runs_at_the_saved_video_standard_after_a_restart()
{
    VeskSim server(LoopbackAddress::unique());
    {
        WirePeer peer(server.address());
        peer.call(set("VideoStandard", "720_50p"));
        QVERIFY(peer.call("<get_video_standard/>").value(0).contains("1080_59_94i"));
    }
    server.restart(VeskState::keep);
    WirePeer peer(server.address());
    QCOMPARE(peer.call("<get_video_standard/>"),
        QByteArrayList{"<video_standard><VideoStandard>720_50p</VideoStandard>"
                       "<VideoRate>50</VideoRate><VideoResolution>720p</VideoResolution>"
                       "</video_standard>"});
}

void TestVeskConfigurationCommands::forgets_what_was_saved_when_the_state_is_lost()
{
    VeskSim server(LoopbackAddress::unique());
    {
        WirePeer peer(server.address());
        peer.call(set("VideoAspectRatio", "4x3"));
    }
    server.restart(VeskState::lose);
    QCOMPARE(server.setting(AString::l1("VideoAspectRatio")).value().saved, AString::l1("16x9"));
}

QTEST_GUILESS_MAIN(TestVeskConfigurationCommands)
#include "tst_vesk_configuration_commands.moc"
