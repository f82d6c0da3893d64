// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_sim.h"
#include "tests/support/loopback_address.h"
#include "tests/support/patience.h"
#include "tests/support/wire_peer.h"

#include <QTest>

/// The user dictionary: values, watches and owners.
class TestVeskDictionaryCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keeps_what_is_set();
    void tells_the_present_value_to_a_new_watcher();
    void tells_nothing_to_the_watcher_of_a_key_that_is_not_there();
    void tells_every_watcher_the_writer_too();
    void tells_a_value_that_stays_the_same();
    void tells_only_the_watched_key();
    void tells_an_empty_value_for_an_erased_key();
    void refuses_to_erase_what_is_not_there();
    void tells_nothing_after_an_unwatch();
    void takes_an_unwatch_of_what_is_not_watched();
    void erases_what_was_owned_when_its_connection_ends();
    void keeps_what_was_set_when_its_connection_ends();
    void gives_a_key_to_the_last_who_owns_it();
    void leaves_the_owner_when_another_sets_the_value();
    void forgets_the_owner_of_an_erased_key();
    void survives_a_restart_but_for_what_was_owned();
};

namespace {

QByteArray const ok = "<ok />";

QByteArray command(QByteArray const &verb, QByteArray const &key)
{
    return "<userdict_" + verb + "><Key>" + key + "</Key></userdict_" + verb + ">";
}

QByteArray command(QByteArray const &verb, QByteArray const &key, QByteArray const &value)
{
    return "<userdict_" + verb + "><Key>" + key + "</Key><Value>" + value + "</Value></userdict_"
        + verb + ">";
}

QByteArray change(QByteArray const &key, QByteArray const &value)
{
    return "<userdict_change><Key>" + key + "</Key>"
        + (value.isEmpty() ? "<Value />" : "<Value>" + value + "</Value>") + "</userdict_change>";
}

} // namespace

void TestVeskDictionaryCommands::keeps_what_is_set()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QCOMPARE(peer.call(command("set", "k", "one")), QByteArrayList{ok});
    QCOMPARE(peer.call(command("set", "k", "two")), QByteArrayList{ok});
    QCOMPARE(server.dictionary_value(AString::l1("k")).value(), AString::l1("two"));
    QVERIFY(!server.dictionary_value(AString::l1("K")));
}

void TestVeskDictionaryCommands::tells_the_present_value_to_a_new_watcher()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(command("set", "k", "v"));
    QCOMPARE(peer.call(command("watch", "k")), QByteArrayList{ok});
    QCOMPARE(peer.sync_reports(), QByteArrayList{change("k", "v")});
}

void TestVeskDictionaryCommands::tells_nothing_to_the_watcher_of_a_key_that_is_not_there()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QCOMPARE(peer.call(command("watch", "k")), QByteArrayList{ok});
    QCOMPARE(peer.sync_reports(), QByteArrayList());
}

void TestVeskDictionaryCommands::tells_every_watcher_the_writer_too()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer writer(server.address());
    WirePeer watcher(server.address());
    WirePeer stranger(server.address());
    writer.call(command("watch", "k"));
    watcher.call(command("watch", "k"));
    stranger.call("<sync/>");
    writer.call(command("set", "k", "a &lt; b"));
    QCOMPARE(writer.sync_reports(), QByteArrayList{change("k", "a &lt; b")});
    QCOMPARE(watcher.sync_reports(), QByteArrayList{change("k", "a &lt; b")});
    QCOMPARE(stranger.sync_reports(), QByteArrayList());
}

void TestVeskDictionaryCommands::tells_a_value_that_stays_the_same()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(command("watch", "k"));
    peer.call(command("set", "k", "v"));
    peer.call(command("set", "k", "v"));
    QCOMPARE(peer.sync_reports(), (QByteArrayList{change("k", "v"), change("k", "v")}));
}

void TestVeskDictionaryCommands::tells_only_the_watched_key()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(command("watch", "k"));
    peer.call(command("set", "kk", "v"));
    peer.call(command("set", "", "v"));
    QCOMPARE(peer.sync_reports(), QByteArrayList());
}

void TestVeskDictionaryCommands::tells_an_empty_value_for_an_erased_key()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(command("set", "k", "v"));
    peer.call(command("watch", "k"));
    peer.sync_reports();
    QCOMPARE(peer.call(command("erase", "k")), QByteArrayList{ok});
    QCOMPARE(peer.sync_reports(), QByteArrayList{change("k", "")});
    QVERIFY(!server.dictionary_value(AString::l1("k")));
}

void TestVeskDictionaryCommands::refuses_to_erase_what_is_not_there()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QCOMPARE(peer.call(command("erase", "k")),
        QByteArrayList{"<error><ErrorMessage>There is no key &quot;k&quot;</ErrorMessage>"
                       "<ErrorCode>general</ErrorCode></error>"});
}

void TestVeskDictionaryCommands::tells_nothing_after_an_unwatch()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(command("watch", "k"));
    QCOMPARE(peer.call(command("unwatch", "k")), QByteArrayList{ok});
    peer.call(command("set", "k", "v"));
    QCOMPARE(peer.sync_reports(), QByteArrayList());
}

void TestVeskDictionaryCommands::takes_an_unwatch_of_what_is_not_watched()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QCOMPARE(peer.call(command("unwatch", "k")), QByteArrayList{ok});
}

void TestVeskDictionaryCommands::erases_what_was_owned_when_its_connection_ends()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer watcher(server.address());
    watcher.call(command("watch", "k"));
    {
        WirePeer owner(server.address());
        QCOMPARE(owner.call(command("own", "k", "mine")), QByteArrayList{ok});
    }
    QCOMPARE(watcher.wait_for_reports(2), (QByteArrayList{change("k", "mine"), change("k", "")}));
    QVERIFY(!server.dictionary_value(AString::l1("k")));
}

void TestVeskDictionaryCommands::keeps_what_was_set_when_its_connection_ends()
{
    VeskSim server(LoopbackAddress::unique());
    {
        WirePeer peer(server.address());
        peer.call(command("set", "k", "v"));
    }
    QTRY_COMPARE(server.counters().open_connections, quint64(0));
    QCOMPARE(server.dictionary_value(AString::l1("k")).value(), AString::l1("v"));
}

void TestVeskDictionaryCommands::gives_a_key_to_the_last_who_owns_it()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer second(server.address());
    {
        WirePeer first(server.address());
        first.call(command("own", "k", "first"));
        second.call(command("own", "k", "second"));
    }
    QTRY_COMPARE(server.counters().open_connections, quint64(1));
    QCOMPARE(server.dictionary_value(AString::l1("k")).value(), AString::l1("second"));
    second.socket.abort();
    QTRY_VERIFY(!server.dictionary_value(AString::l1("k")));
}

void TestVeskDictionaryCommands::leaves_the_owner_when_another_sets_the_value()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer other(server.address());
    {
        WirePeer owner(server.address());
        owner.call(command("own", "k", "mine"));
        other.call(command("set", "k", "yours"));
        QCOMPARE(server.dictionary_value(AString::l1("k")).value(), AString::l1("yours"));
    }
    QTRY_VERIFY(!server.dictionary_value(AString::l1("k")));
}

void TestVeskDictionaryCommands::forgets_the_owner_of_an_erased_key()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer other(server.address());
    {
        WirePeer owner(server.address());
        owner.call(command("own", "k", "mine"));
        other.call(command("erase", "k"));
        other.call(command("set", "k", "yours"));
    }
    QTRY_COMPARE(server.counters().open_connections, quint64(1));
    QCOMPARE(server.dictionary_value(AString::l1("k")).value(), AString::l1("yours"));
}

void TestVeskDictionaryCommands::survives_a_restart_but_for_what_was_owned()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(command("set", "kept", "v"));
    peer.call(command("own", "gone", "v"));
    server.restart(VeskState::keep);
    QCOMPARE(server.dictionary_value(AString::l1("kept")).value(), AString::l1("v"));
    QVERIFY(!server.dictionary_value(AString::l1("gone")));
}

QTEST_GUILESS_MAIN(TestVeskDictionaryCommands)
#include "tst_vesk_dictionary_commands.moc"
