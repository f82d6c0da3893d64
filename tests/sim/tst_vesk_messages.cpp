// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_sim.h"
#include "tests/support/loopback_address.h"
#include "tests/support/patience.h"
#include "tests/support/wire_peer.h"

#include <QTest>

/// What the server makes of the messages it gets, good and bad, over a socket.
class TestVeskMessages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answers_with_the_id_as_it_came_data();
    void answers_with_the_id_as_it_came();
    void tells_what_is_wrong_with_a_message_data();
    void tells_what_is_wrong_with_a_message();
    void passes_over_a_message_without_one_id_data();
    void passes_over_a_message_without_one_id();
    void takes_the_parameters_in_any_order_and_layout();
    void ignores_what_stands_between_commands();
    void reads_a_stream_split_at_every_byte();
    void reads_many_commands_from_one_write();
    void closes_a_connection_that_sends_nonsense_data();
    void closes_a_connection_that_sends_nonsense();
    void leaves_other_connections_alone_when_one_sends_nonsense();
    void takes_a_message_of_the_longest_size_and_no_longer_data();
    void takes_a_message_of_the_longest_size_and_no_longer();
    void counts_commands_and_bytes();
};

namespace {

QByteArray error_reply(QByteArray const &text)
{
    return "<error><ErrorMessage>" + text + "</ErrorMessage><ErrorCode>general</ErrorCode></error>";
}

} // namespace

void TestVeskMessages::answers_with_the_id_as_it_came_data()
{
    QTest::addColumn<QByteArray>("xid");
    QTest::newRow("number") << QByteArray("7");
    QTest::newRow("none") << QByteArray("none12");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("text with blanks") << QByteArray(" a b ");
    QTest::newRow("escaped") << QByteArray("&lt;&amp;");
    QTest::newRow("not ascii") << QByteArray("\xC3\xA4\xE2\x82\xAC");
}

void TestVeskMessages::answers_with_the_id_as_it_came()
{
    QFETCH(QByteArray, xid);
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.send("<cmd><xid>" + xid + "</xid><sync/></cmd>");
    QByteArray const written = xid.isEmpty() ? "<xid />" : "<xid>" + xid + "</xid>";
    QByteArray const expected = "<reply>" + written + "<ok /></reply>";
    QVERIFY(peer.wait_for([&] { return peer.received() == expected; }));
}

void TestVeskMessages::tells_what_is_wrong_with_a_message_data()
{
    QTest::addColumn<QByteArray>("element");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("unknown command")
        << QByteArray("<levitate/>") << QByteArray("There is no command &quot;levitate&quot;");
    QTest::newRow("name of a reply")
        << QByteArray("<ok/>") << QByteArray("There is no command &quot;ok&quot;");
    QTest::newRow("name in capitals")
        << QByteArray("<SYNC/>") << QByteArray("There is no command &quot;SYNC&quot;");
    QTest::newRow("no command") << QByteArray("") << QByteArray("The message holds no command");
    QTest::newRow("two commands") << QByteArray("<sync/><sync/>")
                                  << QByteArray("The message holds more than one command");
    QTest::newRow("a known and an unknown one")
        << QByteArray("<sync/><extra/>") << QByteArray("The message holds more than one command");
    QTest::newRow("missing parameter") << QByteArray(
        "<play/>") << QByteArray("Tag &apos;Channel&apos; not found within &apos;play&apos;");
    QTest::newRow("parameter twice")
        << QByteArray("<stop><Channel>A</Channel><Channel>B</Channel></stop>")
        << QByteArray("More than one tag &apos;Channel&apos; found within &apos;stop&apos;");
    QTest::newRow("bad enumeration")
        << QByteArray("<stop><Channel>ZZ</Channel></stop>")
        << QByteArray("Tag stop contains invalid value &apos;Channel&apos;");
    QTest::newRow("bad number") << QByteArray(
        "<jog><Channel>A</Channel><JogDistance>far</JogDistance></jog>")
                                << QByteArray(
                                       "Tag JogDistance contains invalid value &apos;far&apos;");
    QTest::newRow("bad optional parameter")
        << QByteArray("<play><Channel>A</Channel><Speed>fast</Speed></play>")
        << QByteArray("Tag Speed contains invalid value &apos;fast&apos;");
    QTest::newRow("bad boolean")
        << QByteArray("<ee><Channel>A</Channel><SonyEditMask>1</SonyEditMask>"
                      "<AutoEE>perhaps</AutoEE></ee>")
        << QByteArray("Tag AutoEE contains invalid boolean value &apos;perhaps&apos;");
}

void TestVeskMessages::tells_what_is_wrong_with_a_message()
{
    QFETCH(QByteArray, element);
    QFETCH(QByteArray, text);
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QCOMPARE(peer.call(element), QByteArrayList{error_reply(text)});
    QCOMPARE(server.counters().bad_messages, quint64(1));
    QCOMPARE(peer.call("<sync/>"), QByteArrayList{"<ok />"});
}

void TestVeskMessages::passes_over_a_message_without_one_id_data()
{
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("none") << QByteArray("<cmd><sync/></cmd>");
    QTest::newRow("two") << QByteArray("<cmd><xid>1</xid><xid>2</xid><sync/></cmd>");
    QTest::newRow("empty message") << QByteArray("<cmd></cmd>");
}

void TestVeskMessages::passes_over_a_message_without_one_id()
{
    QFETCH(QByteArray, message);
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.send(message);
    QCOMPARE(peer.call("<sync/>"), QByteArrayList{"<ok />"});
    QCOMPARE(peer.order_of_replies().size(), 1);
    QCOMPARE(server.counters().bad_messages, quint64(1));
    QCOMPARE(server.counters().count("sync"), quint64(1));
}

void TestVeskMessages::takes_the_parameters_in_any_order_and_layout()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.send("<cmd >\r\n  <userdict_set note=1>\n\t<Value> v </Value>\r\n<Unknown/><Key>k</Key>"
              "</userdict_set>\r\n<xid>5</xid>\r\n</cmd >");
    QCOMPARE(peer.replies_to("5"), QByteArrayList{"<ok />"});
    QCOMPARE(server.dictionary_value(AString::l1("k")).value(), AString::l1(" v "));
}

void TestVeskMessages::ignores_what_stands_between_commands()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.send("hello <reply><xid>1</xid><ok/></reply>\r\n");
    QCOMPARE(peer.call("<sync/>"), QByteArrayList{"<ok />"});
    QCOMPARE(server.counters().bad_messages, quint64(0));
}

void TestVeskMessages::reads_a_stream_split_at_every_byte()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QByteArray const message
        = "<cmd><xid>1</xid><userdict_set><Key>\xC3\xA4</Key><Value>&lt;\xE2\x82\xAC"
          "</Value></userdict_set></cmd>";
    quint64 received = 0;
    for (char byte : message) {
        peer.send(QByteArray(1, byte));
        ++received;
        // So that each byte is read by itself.
        QTRY_COMPARE(server.counters().bytes_received, received);
    }
    QCOMPARE(peer.replies_to("1"), QByteArrayList{"<ok />"});
    QCOMPARE(server.dictionary_value(AString::from_utf8("\xC3\xA4")).value(),
        AString::from_utf8("<\xE2\x82\xAC"));
}

void TestVeskMessages::reads_many_commands_from_one_write()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QByteArray bytes;
    for (int number = 0; number < 5000; ++number)
        bytes += "<cmd><xid>" + QByteArray::number(number) + "</xid><sync/></cmd>";
    peer.send(bytes);
    QVERIFY(peer.wait_for([&] { return peer.order_of_replies().size() == 5000; }));
    for (int number = 0; number < 5000; ++number)
        QCOMPARE(peer.order_of_replies().at(number), QByteArray::number(number));
}

void TestVeskMessages::closes_a_connection_that_sends_nonsense_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("tags that do not match")
        << QByteArray("<cmd><xid>1</xid><sync><stop></sync></cmd>");
    QTest::newRow("text between elements") << QByteArray("<cmd><xid>1</xid>text<sync/></cmd>");
    QTest::newRow("a comment") << QByteArray("<cmd><!-- x --><xid>1</xid><sync/></cmd>");
    QTest::newRow("command and nonsense")
        << QByteArray("<cmd><xid>1</xid><sync/></cmd><cmd><></cmd>");
}

void TestVeskMessages::closes_a_connection_that_sends_nonsense()
{
    QFETCH(QByteArray, bytes);
    QList<QByteArray> lines;
    VeskSimOptions options;
    options.trace = [&lines](QByteArray const &line) { lines += line; };
    VeskSim server(LoopbackAddress::unique(), options);
    WirePeer peer(server.address());
    peer.send(bytes);
    QVERIFY(peer.wait_for_end());
    QCOMPARE(server.counters().open_connections, quint64(0));
    QVERIFY(lines.contains("#1   closed, since a message is malformed or too long"));
}

void TestVeskMessages::leaves_other_connections_alone_when_one_sends_nonsense()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer good(server.address());
    WirePeer bad(server.address());
    QCOMPARE(good.call("<sync/>"), QByteArrayList{"<ok />"});
    bad.send("<cmd></x></cmd>");
    QVERIFY(bad.wait_for_end());
    QCOMPARE(good.call("<sync/>"), QByteArrayList{"<ok />"});
    QCOMPARE(server.counters().open_connections, quint64(1));
}

void TestVeskMessages::takes_a_message_of_the_longest_size_and_no_longer_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("taken");
    QTest::newRow("65535") << 65535 << true;
    QTest::newRow("65536") << 65536 << true;
    QTest::newRow("65537") << 65537 << false;
    QTest::newRow("a million") << 1000000 << false;
}

void TestVeskMessages::takes_a_message_of_the_longest_size_and_no_longer()
{
    QFETCH(int, size);
    QFETCH(bool, taken);
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    QByteArray const head = "<cmd><xid>1</xid><debug_label><DebugString>";
    QByteArray const tail = "</DebugString></debug_label></cmd>";
    QByteArray const text(size - head.size() - tail.size(), 'x');
    peer.send(head + text + tail);
    if (taken) {
        QCOMPARE(peer.replies_to("1"), QByteArrayList{"<ok />"});
        QCOMPARE(server.log().at(0).length(), quint64(text.size()));
    } else {
        QVERIFY(peer.wait_for_end());
        QCOMPARE(server.counters().count("debug_label"), quint64(0));
    }
}

void TestVeskMessages::counts_commands_and_bytes()
{
    VeskSim server(LoopbackAddress::unique());
    WirePeer peer(server.address());
    peer.send("<cmd><xid>1</xid><sync/></cmd>");
    QCOMPARE(peer.replies_to("1"), QByteArrayList{"<ok />"});
    peer.call("<get_io_latency/>");
    peer.call("<get_io_latency/>");
    VeskCounters const counters = server.counters();
    QCOMPARE(counters.connections, quint64(1));
    QCOMPARE(counters.open_connections, quint64(1));
    QCOMPARE(counters.count("sync"), quint64(1));
    QCOMPARE(counters.count("get_io_latency"), quint64(2));
    QCOMPARE(counters.count("play"), quint64(0));
    QCOMPARE(counters.bytes_received, quint64(30 + 2 * 40));
    QCOMPARE(counters.bytes_sent, quint64(peer.received().size()));
}

QTEST_GUILESS_MAIN(TestVeskMessages)
#include "tst_vesk_messages.moc"
