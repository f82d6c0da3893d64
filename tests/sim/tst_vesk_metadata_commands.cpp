// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_sim.h"
#include "tests/support/loopback_address.h"
#include "tests/support/patience.h"
#include "tests/support/wire_peer.h"

#include <QTest>

/// Metadata databases: prefixes, blocks and watches.
class TestVeskMetadataCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void puts_the_prefix_in_front_of_each_key();
    void keeps_databases_apart();
    void gives_keys_behind_the_prefix_in_key_order();
    void gives_ok_alone_where_there_is_nothing();
    void gives_blocks_of_two_hundred_pairs();
    void gives_smaller_blocks_of_long_values();
    void gives_a_value_that_is_longer_than_a_block_by_itself();
    void tells_later_changes_below_the_prefix_with_keys_behind_it();
    void tells_every_watcher_with_the_prefix_of_its_watch();
    void tells_a_value_that_stays_the_same();
    void tells_once_per_prefix_of_a_connection();
    void tells_removals_of_what_was_there_alone();
    void tells_many_changes_in_blocks();
    void tells_nothing_of_another_database_or_prefix();
    void tells_nothing_of_an_empty_list();
    void ends_all_watches_of_a_database_on_that_connection_alone();
    void forgets_the_watches_of_a_connection_that_ends();
    void survives_a_restart_that_keeps_the_state();
};

namespace {

QByteArray const ok = "<ok />";

QByteArray element(QByteArray const &tag, QByteArray const &content)
{
    return "<" + tag + ">" + content + "</" + tag + ">";
}

QByteArray pair(QByteArray const &key, QByteArray const &value)
{
    return "<Metadata><Key>" + key + "</Key><Value>" + value + "</Value></Metadata>";
}

QByteArray prefix_element(QByteArray const &prefix)
{
    return prefix.isEmpty() ? QByteArray() : element("MetadataPrefix", prefix);
}

QByteArray set(QByteArray const &database, QByteArray const &pairs, QByteArray const &prefix = {})
{
    return "<metadata_set><MetadataDatabase>" + database + "</MetadataDatabase>"
        + element("MetadataList", pairs) + prefix_element(prefix) + "</metadata_set>";
}

QByteArray erase(QByteArray const &database, QByteArray const &keys, QByteArray const &prefix = {})
{
    return "<metadata_erase><MetadataDatabase>" + database + "</MetadataDatabase>"
        + element("KeyList", keys) + prefix_element(prefix) + "</metadata_erase>";
}

QByteArray with_prefix(QByteArray const &verb, QByteArray const &prefix = {})
{
    return "<" + verb + "><MetadataDatabase>db</MetadataDatabase>" + prefix_element(prefix) + "</"
        + verb + ">";
}

QByteArray watch(QByteArray const &prefix = {})
{
    return with_prefix("watch_metadata_database", prefix);
}

QByteArray body(QByteArray const &prefix, QByteArray const &list)
{
    return "<MetadataDatabase>db</MetadataDatabase>"
        + (prefix.isEmpty() ? QByteArray("<MetadataPrefix />") : prefix_element(prefix)) + list;
}

QByteArray change(QByteArray const &prefix, QByteArray const &pairs)
{
    return element("metadata_change", body(prefix, element("MetadataList", pairs)));
}

QByteArray removal(QByteArray const &prefix, QByteArray const &keys)
{
    return element("metadata_remove", body(prefix, element("KeyList", keys)));
}

QByteArray block(QByteArray const &prefix, QByteArray const &pairs)
{
    return element("metadata", body(prefix, element("MetadataList", pairs)));
}

} // namespace

void TestVeskMetadataCommands::puts_the_prefix_in_front_of_each_key()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QCOMPARE(peer.call(set("db", pair("a", "1") + pair("b", "2"), "p.")), QByteArrayList{ok});
    QCOMPARE(peer.call(set("db", pair("c", "3"))), QByteArrayList{ok});
    QCOMPARE(
        server.metadata_value(AString::l1("db"), AString::l1("p.a")).value(), AString::l1("1"));
    QCOMPARE(
        server.metadata_value(AString::l1("db"), AString::l1("p.b")).value(), AString::l1("2"));
    QCOMPARE(server.metadata_value(AString::l1("db"), AString::l1("c")).value(), AString::l1("3"));
    QCOMPARE(peer.call(erase("db", "<Key>a</Key>", "p.")), QByteArrayList{ok});
    QVERIFY(!server.metadata_value(AString::l1("db"), AString::l1("p.a")));
}

void TestVeskMetadataCommands::keeps_databases_apart()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(set("other", pair("a", "1")));
    QCOMPARE(peer.call(with_prefix("download_metadata")), QByteArrayList{ok});
    peer.call(erase("db", "<Key>a</Key>"));
    QVERIFY(server.metadata_value(AString::l1("other"), AString::l1("a")).has_value());
}

void TestVeskMetadataCommands::gives_keys_behind_the_prefix_in_key_order()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(set("db",
        pair("p.z", "1") + pair("p.", "2") + pair("p", "3") + pair("p.a", "4") + pair("p/a", "5")
            + pair("q", "6")));
    QCOMPARE(peer.call(with_prefix("download_metadata", "p.")),
        (QByteArrayList{
            block("p.",
                "<Metadata><Key /><Value>2</Value></Metadata>" + pair("a", "4") + pair("z", "1")),
            ok}));
    QCOMPARE(peer.call(with_prefix("download_metadata")),
        (QByteArrayList{block("",
                            pair("p", "3") + pair("p.", "2") + pair("p.a", "4") + pair("p.z", "1")
                                + pair("p/a", "5") + pair("q", "6")),
            ok}));
}

void TestVeskMetadataCommands::gives_ok_alone_where_there_is_nothing()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QCOMPARE(peer.call(with_prefix("download_metadata")), QByteArrayList{ok});
    peer.call(set("db", pair("a", "1")));
    QCOMPARE(peer.call(with_prefix("download_metadata", "b")), QByteArrayList{ok});
}

void TestVeskMetadataCommands::gives_blocks_of_two_hundred_pairs()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QByteArray pairs;
    for (int number = 1000; number < 1401; ++number)
        pairs += pair(QByteArray::number(number), "v");
    peer.call(set("db", pairs));
    QByteArrayList const replies = peer.call(with_prefix("download_metadata"));
    QCOMPARE(replies.size(), 4);
    QCOMPARE(replies.at(0).count("<Metadata>"), 200);
    QCOMPARE(replies.at(1).count("<Metadata>"), 200);
    QCOMPARE(replies.at(2), block("", pair("1400", "v")));
    QCOMPARE(replies.at(3), ok);
}

void TestVeskMetadataCommands::gives_smaller_blocks_of_long_values()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    // Each is 6000 bytes on the wire, since every character is escaped.
    for (char const *key : {"a", "b", "c", "d", "e"})
        peer.call(set("db", pair(key, QByteArray("&apos;").repeated(1000))));
    QByteArrayList const replies = peer.call(with_prefix("download_metadata"));
    QCOMPARE(replies.size(), 3);
    QCOMPARE(replies.at(0).count("<Metadata>"), 3);
    QCOMPARE(replies.at(1).count("<Metadata>"), 2);
    QVERIFY(replies.at(0).size() < 32768);
}

void TestVeskMetadataCommands::gives_a_value_that_is_longer_than_a_block_by_itself()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QByteArray const value(50000, 'x');
    peer.call(set("db", pair("a", "1")));
    peer.call(set("db", pair("b", value)));
    peer.call(set("db", pair("c", "3")));
    QCOMPARE(peer.call(with_prefix("download_metadata")),
        (QByteArrayList{block("", pair("a", "1")), block("", pair("b", value)),
            block("", pair("c", "3")), ok}));
}

void TestVeskMetadataCommands::tells_later_changes_below_the_prefix_with_keys_behind_it()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(set("db", pair("p.old", "1")));
    QCOMPARE(peer.call(watch("p.")), QByteArrayList{ok});
    QCOMPARE(peer.sync_reports(), QByteArrayList());
    peer.call(set("db", pair("p.a", "1") + pair("q", "2") + pair("p.b", "3")));
    QCOMPARE(peer.sync_reports(), QByteArrayList{change("p.", pair("a", "1") + pair("b", "3"))});
}

void TestVeskMetadataCommands::tells_every_watcher_with_the_prefix_of_its_watch()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer writer(server.address());
    WirePeer watcher(server.address());
    writer.call(watch("p.q."));
    watcher.call(watch());
    writer.call(set("db", pair("q.a", "1"), "p."));
    QCOMPARE(writer.sync_reports(), QByteArrayList{change("p.q.", pair("a", "1"))});
    QCOMPARE(watcher.sync_reports(), QByteArrayList{change("", pair("p.q.a", "1"))});
}

void TestVeskMetadataCommands::tells_a_value_that_stays_the_same()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(set("db", pair("a", "1")));
    peer.call(watch());
    peer.call(set("db", pair("a", "1")));
    QCOMPARE(peer.sync_reports(), QByteArrayList{change("", pair("a", "1"))});
}

void TestVeskMetadataCommands::tells_once_per_prefix_of_a_connection()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(watch("p."));
    peer.call(watch("p."));
    peer.call(watch());
    peer.call(set("db", pair("p.a", "1")));
    QCOMPARE(peer.sync_reports(),
        (QByteArrayList{change("", pair("p.a", "1")), change("p.", pair("a", "1"))}));
}

void TestVeskMetadataCommands::tells_removals_of_what_was_there_alone()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(set("db", pair("p.a", "1") + pair("p.b", "2")));
    peer.call(watch("p."));
    QCOMPARE(
        peer.call(erase("db", "<Key>b</Key><Key>c</Key><Key>a</Key>", "p.")), QByteArrayList{ok});
    QCOMPARE(peer.sync_reports(), QByteArrayList{removal("p.", "<Key>b</Key><Key>a</Key>")});
    QCOMPARE(peer.call(erase("db", "<Key>a</Key>", "p.")), QByteArrayList{ok});
    QCOMPARE(peer.sync_reports(), QByteArrayList());
}

void TestVeskMetadataCommands::tells_many_changes_in_blocks()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QByteArray pairs;
    QByteArray keys;
    for (int number = 1000; number < 1201; ++number) {
        pairs += pair(QByteArray::number(number), "v");
        keys += "<Key>" + QByteArray::number(number) + "</Key>";
    }
    peer.call(watch());
    peer.call(set("db", pairs));
    QByteArrayList const changes = peer.sync_reports();
    QCOMPARE(changes.size(), 2);
    QCOMPARE(changes.at(1), change("", pair("1200", "v")));
    peer.call(erase("db", keys));
    QByteArrayList const removals = peer.sync_reports();
    QCOMPARE(removals.size(), 2);
    QCOMPARE(removals.at(1), removal("", "<Key>1200</Key>"));
}

void TestVeskMetadataCommands::tells_nothing_of_another_database_or_prefix()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(watch("p."));
    peer.call(set("other", pair("p.a", "1")));
    peer.call(set("db", pair("p", "1") + pair("P.a", "2")));
    QCOMPARE(peer.sync_reports(), QByteArrayList());
}

void TestVeskMetadataCommands::tells_nothing_of_an_empty_list()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.call(watch());
    QCOMPARE(peer.call(set("db", "")), QByteArrayList{ok});
    QCOMPARE(peer.call(erase("db", "")), QByteArrayList{ok});
    QCOMPARE(peer.sync_reports(), QByteArrayList());
}

void TestVeskMetadataCommands::ends_all_watches_of_a_database_on_that_connection_alone()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    WirePeer other(server.address());
    peer.call(watch());
    peer.call(watch("p."));
    other.call(watch());
    QCOMPARE(peer.call("<unwatch_metadata_database><MetadataDatabase>db</MetadataDatabase>"
                       "</unwatch_metadata_database>"),
        QByteArrayList{ok});
    peer.call(set("db", pair("p.a", "1")));
    QCOMPARE(peer.sync_reports(), QByteArrayList());
    QCOMPARE(other.sync_reports().size(), 1);
}

void TestVeskMetadataCommands::forgets_the_watches_of_a_connection_that_ends()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer writer(server.address());
    {
        WirePeer watcher(server.address());
        watcher.call(watch());
    }
    QTRY_COMPARE(server.counters().open_connections, quint64(1));
    QCOMPARE(writer.call(set("db", pair("a", "1"))), QByteArrayList{ok});
    QCOMPARE(writer.sync_reports(), QByteArrayList());
}

void TestVeskMetadataCommands::survives_a_restart_that_keeps_the_state()
{
    VeskSim server(LoopbackAddress::unique());
    {
        WirePeer peer(server.address());
        peer.call(set("db", pair("a", "1")));
        peer.call(watch());
    }
    server.restart(VeskState::keep);
    QCOMPARE(server.metadata_value(AString::l1("db"), AString::l1("a")).value(), AString::l1("1"));
    {
        WirePeer peer(server.address());
        peer.call(set("db", pair("a", "2")));
        QCOMPARE(peer.sync_reports(), QByteArrayList());
    }
    server.restart(VeskState::lose);
    QVERIFY(!server.metadata_value(AString::l1("db"), AString::l1("a")));
}

QTEST_GUILESS_MAIN(TestVeskMetadataCommands)
#include "tst_vesk_metadata_commands.moc"
