// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_sim.h"
#include "tests/support/loopback_address.h"
#include "tests/support/patience.h"
#include "tests/support/wire_peer.h"

#include <QTest>

/// Stored lists and chases: each rule holds for both, row by row.
class TestVeskStoredCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stores_what_the_bracket_holds_data() { kinds(); }
    void stores_what_the_bracket_holds();
    void stores_an_empty_bracket_data() { kinds(); }
    void stores_an_empty_bracket();
    void changes_nothing_before_the_end_data() { kinds(); }
    void changes_nothing_before_the_end();
    void begins_anew_with_a_second_start_data() { kinds(); }
    void begins_anew_with_a_second_start();
    void refuses_an_element_and_an_end_without_a_start_data() { kinds(); }
    void refuses_an_element_and_an_end_without_a_start();
    void keeps_the_brackets_of_connections_apart_data() { kinds(); }
    void keeps_the_brackets_of_connections_apart();
    void drops_the_bracket_of_a_connection_that_ends_data() { kinds(); }
    void drops_the_bracket_of_a_connection_that_ends();
    void gives_the_ids_in_order_data() { kinds(); }
    void gives_the_ids_in_order();
    void renames_and_deletes_data() { kinds(); }
    void renames_and_deletes();
    void refuses_what_is_unknown_or_taken_data() { kinds(); }
    void refuses_what_is_unknown_or_taken();
    void tells_of_creation_change_renaming_and_deletion_data() { kinds(); }
    void tells_of_creation_change_renaming_and_deletion();
    void survives_a_restart_that_keeps_the_state_data() { kinds(); }
    void survives_a_restart_that_keeps_the_state();
    void keeps_every_field_of_a_list_element();
    void keeps_every_field_of_a_chase_element();

private:
    static void kinds();
};

namespace {

QByteArray const ok = "<ok />";

/// The words that differ between lists and chases.
struct Kind
{
    QByteArray noun; // list, chase
    QByteArray id_tag; // ListID
    QByteArray element_tag; // ListElement
    QByteArray from_tag;
    QByteArray to_tag;
    QByteArray group; // playlist_change
    QByteArray report; // playlist

    QByteArray start(QByteArray const &id) const
    {
        return named("<" + noun + "_save_start>", id, "</" + noun + "_save_start>");
    }
    QByteArray content(QByteArray const &clip) const
    {
        return "<" + element_tag + "><ContentID><ClipID>" + clip + "</ClipID></ContentID></"
            + element_tag + ">";
    }
    QByteArray add(QByteArray const &clip) const
    {
        return "<" + noun + "_save_element>" + content(clip) + "</" + noun + "_save_element>";
    }
    QByteArray end() const { return "<" + noun + "_save_end/>"; }
    QByteArray download(QByteArray const &id) const
    {
        return named("<download_" + noun + ">", id, "</download_" + noun + ">");
    }
    QByteArray ids() const { return "<download_" + noun + "ids/>"; }
    QByteArray remove(QByteArray const &id) const
    {
        return named("<" + noun + "_delete>", id, "</" + noun + "_delete>");
    }
    QByteArray rename(QByteArray const &from, QByteArray const &to) const
    {
        return "<" + noun + "_rename><" + from_tag + ">" + from + "</" + from_tag + "><" + to_tag
            + ">" + to + "</" + to_tag + "></" + noun + "_rename>";
    }
    QByteArray element_reply(QByteArray const &clip) const
    {
        return "<" + noun + "_element>" + content(clip) + "</" + noun + "_element>";
    }
    QByteArray id_reply(QByteArray const &id) const
    {
        return named("<" + noun + "id>", id, "</" + noun + "id>");
    }
    QByteArray told(QByteArray const &what, QByteArray const &id) const
    {
        return named("<" + report + "_" + what + ">", id, "</" + report + "_" + what + ">");
    }
    QByteArray refusal(QByteArray const &text) const
    {
        return "<error><ErrorMessage>" + text
            + "</ErrorMessage><ErrorCode>general</ErrorCode>"
              "</error>";
    }
    void store(WirePeer *peer, QByteArray const &id, QByteArrayList const &clips) const
    {
        peer->call(start(id));
        for (QByteArray const &clip : clips)
            peer->call(add(clip));
        peer->call(end());
    }

private:
    QByteArray named(QByteArray const &open, QByteArray const &id, QByteArray const &close) const
    {
        return open + "<" + id_tag + ">" + id + "</" + id_tag + ">" + close;
    }
};

Kind kind_of(QByteArray const &noun)
{
    if (noun == "list")
        return {
            noun, "ListID", "ListElement", "ListFromID", "ListToID", "playlist_change", "playlist"};
    return {noun, "ChaseID", "ChaseElement", "ChaseFromID", "ChaseToID", "chaselist_change",
        "chaselist"};
}

} // namespace

#define KIND()                                                                                     \
    QFETCH(QByteArray, noun);                                                                      \
    Kind const kind = kind_of(noun);                                                               \
    VeskSim server(LoopbackAddress::unique());                                                     \
    WirePeer peer(server.address())

void TestVeskStoredCommands::kinds()
{
    QTest::addColumn<QByteArray>("noun");
    QTest::newRow("list") << QByteArray("list");
    QTest::newRow("chase") << QByteArray("chase");
}

void TestVeskStoredCommands::stores_what_the_bracket_holds()
{
    KIND();
    QCOMPARE(peer.call(kind.start("x")), QByteArrayList{ok});
    QCOMPARE(peer.call(kind.add("one")), QByteArrayList{ok});
    QCOMPARE(peer.call(kind.add("two")), QByteArrayList{ok});
    QCOMPARE(peer.call(kind.end()), QByteArrayList{ok});
    QCOMPARE(peer.call(kind.download("x")),
        (QByteArrayList{kind.element_reply("one"), kind.element_reply("two"), ok}));
}

void TestVeskStoredCommands::stores_an_empty_bracket()
{
    KIND();
    kind.store(&peer, "x", {});
    QCOMPARE(peer.call(kind.download("x")), QByteArrayList{ok});
    QCOMPARE(peer.call(kind.ids()), (QByteArrayList{kind.id_reply("x"), ok}));
}

void TestVeskStoredCommands::changes_nothing_before_the_end()
{
    KIND();
    kind.store(&peer, "x", {"old"});
    peer.call(kind.start("x"));
    peer.call(kind.add("new"));
    QCOMPARE(peer.call(kind.download("x")), (QByteArrayList{kind.element_reply("old"), ok}));
    peer.call(kind.end());
    QCOMPARE(peer.call(kind.download("x")), (QByteArrayList{kind.element_reply("new"), ok}));
}

void TestVeskStoredCommands::begins_anew_with_a_second_start()
{
    KIND();
    peer.call(kind.start("x"));
    peer.call(kind.add("dropped"));
    QCOMPARE(peer.call(kind.start("y")), QByteArrayList{ok});
    peer.call(kind.add("kept"));
    peer.call(kind.end());
    QCOMPARE(peer.call(kind.ids()), (QByteArrayList{kind.id_reply("y"), ok}));
    QCOMPARE(peer.call(kind.download("y")), (QByteArrayList{kind.element_reply("kept"), ok}));
}

void TestVeskStoredCommands::refuses_an_element_and_an_end_without_a_start()
{
    KIND();
    QByteArray const refused
        = kind.refusal("No " + noun + " is being saved; " + noun + "_save_start comes first");
    QCOMPARE(peer.call(kind.add("one")), QByteArrayList{refused});
    QCOMPARE(peer.call(kind.end()), QByteArrayList{refused});
    kind.store(&peer, "x", {"one"});
    QCOMPARE(peer.call(kind.add("two")), QByteArrayList{refused});
    QCOMPARE(peer.call(kind.end()), QByteArrayList{refused});
    QCOMPARE(peer.call(kind.ids()), (QByteArrayList{kind.id_reply("x"), ok}));
}

void TestVeskStoredCommands::keeps_the_brackets_of_connections_apart()
{
    KIND();
    WirePeer other(server.address());
    peer.call(kind.start("x"));
    other.call(kind.start("y"));
    peer.call(kind.add("mine"));
    other.call(kind.add("yours"));
    other.call(kind.end());
    peer.call(kind.end());
    QCOMPARE(peer.call(kind.download("x")), (QByteArrayList{kind.element_reply("mine"), ok}));
    QCOMPARE(peer.call(kind.download("y")), (QByteArrayList{kind.element_reply("yours"), ok}));
}

void TestVeskStoredCommands::drops_the_bracket_of_a_connection_that_ends()
{
    KIND();
    {
        WirePeer gone(server.address());
        gone.call(kind.start("x"));
        gone.call(kind.add("one"));
    }
    QTRY_COMPARE(server.counters().open_connections, quint64(1));
    QCOMPARE(peer.call(kind.ids()), QByteArrayList{ok});
}

void TestVeskStoredCommands::gives_the_ids_in_order()
{
    KIND();
    for (char const *id : {"b", "a", "C", "a b"})
        kind.store(&peer, id, {});
    QCOMPARE(peer.call(kind.ids()),
        (QByteArrayList{
            kind.id_reply("C"), kind.id_reply("a"), kind.id_reply("a b"), kind.id_reply("b"), ok}));
}

void TestVeskStoredCommands::renames_and_deletes()
{
    KIND();
    kind.store(&peer, "x", {"one"});
    QCOMPARE(peer.call(kind.rename("x", "y")), QByteArrayList{ok});
    QCOMPARE(peer.call(kind.ids()), (QByteArrayList{kind.id_reply("y"), ok}));
    QCOMPARE(peer.call(kind.download("y")), (QByteArrayList{kind.element_reply("one"), ok}));
    QCOMPARE(peer.call(kind.remove("y")), QByteArrayList{ok});
    QCOMPARE(peer.call(kind.ids()), QByteArrayList{ok});
}

void TestVeskStoredCommands::refuses_what_is_unknown_or_taken()
{
    KIND();
    QByteArray const unknown = kind.refusal("There is no " + noun + " &quot;x&quot;");
    QCOMPARE(peer.call(kind.download("x")), QByteArrayList{unknown});
    QCOMPARE(peer.call(kind.remove("x")), QByteArrayList{unknown});
    QCOMPARE(peer.call(kind.rename("x", "y")), QByteArrayList{unknown});
    kind.store(&peer, "x", {});
    kind.store(&peer, "y", {"one"});
    QCOMPARE(peer.call(kind.rename("x", "y")),
        QByteArrayList{kind.refusal("There is a " + noun + " &quot;y&quot; already")});
    QCOMPARE(peer.call(kind.rename("x", "")),
        QByteArrayList{kind.refusal("A " + noun + " needs a name")});
    QCOMPARE(peer.call(kind.download("y")), (QByteArrayList{kind.element_reply("one"), ok}));
}

void TestVeskStoredCommands::tells_of_creation_change_renaming_and_deletion()
{
    KIND();
    WirePeer stranger(server.address());
    stranger.call("<sync/>");
    peer.call("<report_register><ReportType>" + kind.group + "</ReportType></report_register>");
    kind.store(&peer, "x", {});
    kind.store(&peer, "x", {"one"});
    peer.call(kind.rename("x", "y"));
    peer.call(kind.remove("y"));
    peer.call(kind.remove("y"));
    QCOMPARE(peer.sync_reports(),
        (QByteArrayList{kind.told("created", "x"), kind.told("changed", "x"),
            kind.told("deleted", "x"), kind.told("created", "y"), kind.told("deleted", "y")}));
    QCOMPARE(stranger.sync_reports(), QByteArrayList());
}

void TestVeskStoredCommands::survives_a_restart_that_keeps_the_state()
{
    KIND();
    kind.store(&peer, "x", {"one"});
    server.restart(VeskState::keep);
    {
        WirePeer after(server.address());
        QCOMPARE(after.call(kind.download("x")), (QByteArrayList{kind.element_reply("one"), ok}));
    }
    server.restart(VeskState::lose);
    WirePeer after(server.address());
    QCOMPARE(after.call(kind.ids()), QByteArrayList{ok});
}

void TestVeskStoredCommands::keeps_every_field_of_a_list_element()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QByteArray const element
        = "<ListElement><ContentID><ClipID>c</ClipID><VClipID>v</VClipID></ContentID>"
          "<GotoPosition>1</GotoPosition><ClipPosition>2</ClipPosition><Speed>-0.5X</Speed>"
          "<Angle>3</Angle><ListElementAtStart>pause</ListElementAtStart>"
          "<ListElementAtEnd>loop</ListElementAtEnd>"
          "<Transition><TransitionType>dissolve</TransitionType>"
          "<TransitionDuration>25</TransitionDuration></Transition><Gain>-6</Gain>"
          "<ThumbPosition>4</ThumbPosition><Layer>bed</Layer><NickName>n &amp; m</NickName>"
          "<Duration>5</Duration></ListElement>";
    peer.call("<list_save_start><ListID>x</ListID></list_save_start>");
    peer.call("<list_save_element>" + element + "</list_save_element>");
    peer.call("<list_save_end/>");
    QCOMPARE(peer.call("<download_list><ListID>x</ListID></download_list>"),
        (QByteArrayList{"<list_element>" + element + "</list_element>", ok}));
    QCOMPARE(server.list(AString::l1("x")).value().at(0).gain, -6);
}

void TestVeskStoredCommands::keeps_every_field_of_a_chase_element()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QByteArray const element
        = "<ChaseElement><ContentID><ClipID>c</ClipID></ContentID>"
          "<GotoPosition>1</GotoPosition><ClipPosition>2</ClipPosition><Speed>2X</Speed>"
          "<Angle>3</Angle><ChaseElementAtEnd>loop</ChaseElementAtEnd>"
          "<ClipStartOffset>4</ClipStartOffset><TcStartTrigger>5</TcStartTrigger></ChaseElement>";
    peer.call("<chase_save_start><ChaseID>x</ChaseID></chase_save_start>");
    peer.call("<chase_save_element>" + element + "</chase_save_element>");
    peer.call("<chase_save_end/>");
    QCOMPARE(peer.call("<download_chase><ChaseID>x</ChaseID></download_chase>"),
        (QByteArrayList{"<chase_element>" + element + "</chase_element>", ok}));
    QCOMPARE(server.chase(AString::l1("x")).value().at(0).tc_start_trigger, 5U);
}

QTEST_GUILESS_MAIN(TestVeskStoredCommands)
#include "tst_vesk_stored_commands.moc"
