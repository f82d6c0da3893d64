// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_sim.h"
#include "tests/support/loopback_address.h"
#include "tests/support/wire_peer.h"

#include <QTest>

/// What the server does not do yet is refused, not answered by an "ok" that does nothing.
class TestVeskNotSimulatedCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refuses_the_command_data();
    void refuses_the_command();
    void still_tells_of_a_bad_parameter();
};

void TestVeskNotSimulatedCommands::refuses_the_command_data()
{
#define CHANNEL "<Channel>A</Channel>"
#define LIST_INDEX "<ListIndex>1</ListIndex>"
#define CHASE_INDEX "<ChaseIndex>1</ChaseIndex>"
#define CONTENT "<ContentID><ClipID>c</ClipID></ContentID>"
#define TRANSITION "<Transition><TransitionType>cut</TransitionType></Transition>"
#define VCLIP "<VClipID>v</VClipID>"
#define TRACKS "<TrackSet><TrackType>video</TrackType></TrackSet>"
    static char const *const rows[][2] = {
        {"list_load", CHANNEL "<ListID>x</ListID>"},
        {"list_load_squall",
            CHANNEL "<ListID>x</ListID><ListPlayMode>pgm_pvw</ListPlayMode>" TRANSITION},
        {"list_bed", CHANNEL "<ListElement>" CONTENT "</ListElement>"},
        {"list_unload", CHANNEL},
        {"list_insert", CHANNEL LIST_INDEX "<ListElement>" CONTENT "</ListElement>"},
        {"list_remove_item", CHANNEL LIST_INDEX},
        {"list_up_one_item", CHANNEL},
        {"list_down_one_item", CHANNEL},
        {"list_set_loop", CHANNEL "<Loop>loop</Loop>"},
        {"list_take", CHANNEL},
        {"list_play_now", CHANNEL LIST_INDEX "<Roll>roll</Roll>"},
        {"list_play_next", CHANNEL LIST_INDEX "<Roll>cueonly</Roll>"},
        {"list_play_modify_item", CHANNEL LIST_INDEX "<ListElementChange />"},
        {"list_play_clear_modified", CHANNEL},
        {"list_play_reorder_start", CHANNEL},
        {"list_play_reorder_item", LIST_INDEX},
        {"list_play_reorder_finish", LIST_INDEX},
        {"chase_load", CHANNEL "<ChaseID>x</ChaseID>"},
        {"chase_unload", CHANNEL},
        {"chase_insert", CHANNEL CHASE_INDEX "<ChaseElement>" CONTENT "</ChaseElement>"},
        {"chase_remove_item", CHANNEL CHASE_INDEX},
        {"chase_play_modify_item", CHANNEL CHASE_INDEX "<ChaseElementChange />"},
        {"chase_play_clear_modified", CHANNEL},
        {"chase_play_reorder_start", CHANNEL},
        {"chase_play_reorder_item", CHASE_INDEX},
        {"chase_play_reorder_finish", CHASE_INDEX},
        {"vclip_create", VCLIP "<ClipLength>100</ClipLength>"},
        {"vclip_free", VCLIP},
        {"vclip_modification_start", VCLIP},
        {"vclip_modification_end", VCLIP},
        {"vclip_cfg_tracks", VCLIP "<ClipID>c</ClipID>" TRACKS},
        {"vclip_add_segment",
            VCLIP "<ClipID>c</ClipID><ClipPosition>0</ClipPosition>" TRACKS
                  "<VClipPosition>0</VClipPosition><ClipLength>10</ClipLength>"},
        {"vclip_modify_segment",
            VCLIP "<ClipPosition>0</ClipPosition>" TRACKS
                  "<VClipPosition>0</VClipPosition><TrackChangeVector />"},
        {"vclip_clear_segment",
            VCLIP TRACKS "<VClipPosition>0</VClipPosition><ClipLength>10</ClipLength>"},
        {"vclip_ripple",
            VCLIP TRACKS "<VClipPosition>0</VClipPosition><VClipDistance>-5</VClipDistance>"},
        {"vclip_track_enable", VCLIP TRACKS},
        {"export_initiate", CHANNEL},
        {"export_start", ""},
        {"export_add", "<ClipID>c</ClipID><Filename>f</Filename>"},
        {"export_end", ""},
        {"download_melts", ""},
        {"get_panel_mode", ""},
        {"set_panel_mode", "<PanelMode>mode_pl</PanelMode>"},
        {"get_panel_event", "<Panel>18446744073709551615</Panel>"},
        {"set_panel_event", "<Panel>1</Panel><EventName>e</EventName>"},
    };
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("parameters");
    for (auto const &row : rows)
        QTest::newRow(row[0]) << QByteArray(row[0]) << QByteArray(row[1]);
}

void TestVeskNotSimulatedCommands::refuses_the_command()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, parameters);
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QCOMPARE(peer.call("<" + name + ">" + parameters + "</" + name + ">"),
        QByteArrayList{"<error><ErrorMessage>not simulated</ErrorMessage>"
                       "<ErrorCode>general</ErrorCode></error>"});
}

void TestVeskNotSimulatedCommands::still_tells_of_a_bad_parameter()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QVERIFY(peer.call("<list_take/>").value(0).contains("Channel"));
}

QTEST_GUILESS_MAIN(TestVeskNotSimulatedCommands)
#include "tst_vesk_not_simulated_commands.moc"
