// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"
#include "tests/support/assert_log.h"
#include "tests/xml/xml_texts.h"

#include <QTest>
#include <vector>

Q_DECLARE_METATYPE(XMLTree)

class TestXMLWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void styles_lay_out_lines_data();
    void styles_lay_out_lines();
    void default_is_lines_and_short_empty();
    void command_is_written_in_these_bytes();
    void short_empty_wants_neither_children_nor_content_data();
    void short_empty_wants_neither_children_nor_content();
    void text_is_escaped_data();
    void text_is_escaped();
    void attributes_are_written_in_order_and_escaped();
    void attributes_are_not_unescaped_on_reading();
    void children_win_over_content();
    void null_tree_is_an_assertion_and_gives_nothing();
    void null_child_leaves_its_line_empty();
    void pieces_join_to_the_text();
    void sink_sees_whole_characters();
    void characters_without_utf8_are_left_out();
    void long_text_is_written_whole_data();
    void long_text_is_written_whole();
};

namespace {

XMLTree command()
{
    XMLTree tree(l1("cmd"));
    tree.add_subnode(XMLTree(l1("xid"), l1("7")));
    tree.add_subnode(XMLTree(l1("stop"), XMLTree(l1("Channel"), l1("A"))));
    return tree;
}

/// The text by every road that writes it, which must agree.
QByteArray written(XMLTree const &tree, XMLTree::FlattenStyle style, bool short_empty)
{
    QByteArray const text = flat(tree, style, short_empty);
    AString const joined = tree.flatten_base(style, short_empty).join(AString());
    if (sent(tree, style, short_empty) != text || joined.to_string() != text.toStdString())
        return "the roads differ";
    return text;
}

} // namespace

void TestXMLWriter::styles_lay_out_lines_data()
{
    QTest::addColumn<XMLTree>("tree");
    QTest::addColumn<int>("style");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("compact") << command() << 0
                             << QByteArray(
                                    "<cmd><xid>7</xid><stop><Channel>A</Channel></stop></cmd>");
    QTest::newRow("lines") << command() << 1
                           << QByteArray("<cmd>\r\n<xid>7</xid>\r\n<stop>\r\n<Channel>A</Channel>"
                                         "\r\n</stop>\r\n</cmd>");
    QTest::newRow("indented") << command() << 2
                              << QByteArray(
                                     "<cmd>\r\n    <xid>7</xid>\r\n    <stop>\r\n"
                                     "        <Channel>A</Channel>\r\n    </stop>\r\n</cmd>");
    QTest::newRow("leaf compact") << XMLTree(l1("a"), l1("x")) << 0 << QByteArray("<a>x</a>");
    QTest::newRow("leaf lines") << XMLTree(l1("a"), l1("x")) << 1 << QByteArray("<a>x</a>");
    QTest::newRow("leaf indented") << XMLTree(l1("a"), l1("x")) << 2 << QByteArray("<a>x</a>");
}

void TestXMLWriter::styles_lay_out_lines()
{
    QFETCH(XMLTree, tree);
    QFETCH(int, style);
    QFETCH(QByteArray, text);
    auto const flatten_style = static_cast<XMLTree::FlattenStyle>(style);
    QCOMPARE(written(tree, flatten_style, true), text);
    QCOMPARE(written(XMLParse(tree.flatten()), flatten_style, true), text);
}

void TestXMLWriter::default_is_lines_and_short_empty()
{
    XMLTree const tree(l1("a"), XMLTree(l1("b")));
    QVERIFY(tree.flatten() == l1("<a>\r\n<b />\r\n</a>"));
    QVERIFY(tree.flatten_base().join(AString()) == tree.flatten());
}

void TestXMLWriter::command_is_written_in_these_bytes()
{
    QCOMPARE(sent(command(), XMLTree::FlattenLines, true),
        QByteArray("<cmd>\r\n"
                   "<xid>7</xid>\r\n"
                   "<stop>\r\n"
                   "<Channel>A</Channel>\r\n"
                   "</stop>\r\n"
                   "</cmd>"));
}

void TestXMLWriter::short_empty_wants_neither_children_nor_content_data()
{
    QTest::addColumn<XMLTree>("tree");
    QTest::addColumn<bool>("short_empty");
    QTest::addColumn<QByteArray>("text");
    XMLTree attributed(l1("a"));
    attributed.attr()[l1("k")] = l1("v");
    QTest::newRow("empty, short") << XMLTree(l1("a")) << true << QByteArray("<a />");
    QTest::newRow("empty, long") << XMLTree(l1("a")) << false << QByteArray("<a></a>");
    QTest::newRow("attributes, short") << attributed << true << QByteArray("<a k=\"v\" />");
    QTest::newRow("attributes, long") << attributed << false << QByteArray("<a k=\"v\"></a>");
    QTest::newRow("blank content") << XMLTree(l1("a"), l1(" ")) << true << QByteArray("<a> </a>");
    QTest::newRow("empty child") << XMLTree(l1("a"), XMLTree(l1("b"))) << true
                                 << QByteArray("<a><b /></a>");
    QTest::newRow("empty child, long")
        << XMLTree(l1("a"), XMLTree(l1("b"))) << false << QByteArray("<a><b></b></a>");
}

void TestXMLWriter::short_empty_wants_neither_children_nor_content()
{
    QFETCH(XMLTree, tree);
    QFETCH(bool, short_empty);
    QFETCH(QByteArray, text);
    QCOMPARE(written(tree, XMLTree::FlattenCompact, short_empty), text);
}

void TestXMLWriter::text_is_escaped_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("apostrophe") << QByteArray("'") << QByteArray("&apos;");
    QTest::newRow("less") << QByteArray("<") << QByteArray("&lt;");
    QTest::newRow("greater") << QByteArray(">") << QByteArray("&gt;");
    QTest::newRow("quote") << QByteArray("\"") << QByteArray("&quot;");
    QTest::newRow("ampersand") << QByteArray("&") << QByteArray("&amp;");
    QTest::newRow("entity") << QByteArray("&lt;") << QByteArray("&amp;lt;");
    QTest::newRow("between text") << QByteArray("a<b>c&&d") << QByteArray("a&lt;b&gt;c&amp;&amp;d");
    QTest::newRow("others") << QByteArray("/=;\r\n\t\xC3\xA9\xE6\xB1\xBA\xF0\x9F\x98\x80")
                            << QByteArray("/=;\r\n\t\xC3\xA9\xE6\xB1\xBA\xF0\x9F\x98\x80");
}

void TestXMLWriter::text_is_escaped()
{
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, text);
    XMLTree const tree(l1("a"), AString::from_utf8(content.constData()));
    QCOMPARE(written(tree, XMLTree::FlattenCompact, true), "<a>" + text + "</a>");
    QVERIFY(XMLParse(tree.flatten()) == tree);
}

void TestXMLWriter::attributes_are_written_in_order_and_escaped()
{
    XMLTree tree(l1("a"), l1("x"));
    tree.attr()[l1("z")] = l1("1");
    tree.attr()[l1("b")] = l1("<'>\"&");
    tree.attr()[l1("%2")] = l1("%1");
    QCOMPARE(written(tree, XMLTree::FlattenCompact, true),
        QByteArray("<a %2=\"%1\" b=\"&lt;&apos;&gt;&quot;&amp;\" z=\"1\">x</a>"));
}

void TestXMLWriter::attributes_are_not_unescaped_on_reading()
{
    XMLTree tree(l1("a"));
    tree.attr()[l1("k")] = l1("&");
    XMLTree const read = XMLParse(tree.flatten());
    QVERIFY(read.attr().at(l1("k")) == l1("&amp;"));
    QCOMPARE(flat(read), QByteArray("<a k=\"&amp;amp;\" />"));
}

void TestXMLWriter::children_win_over_content()
{
    XMLTree tree(l1("a"), l1("content"));
    tree.add_subnode(XMLTree(l1("b")));
    QVERIFY(tree.get_content() == l1("content"));
    QCOMPARE(written(tree, XMLTree::FlattenCompact, true), QByteArray("<a><b /></a>"));
}

void TestXMLWriter::null_tree_is_an_assertion_and_gives_nothing()
{
    AssertLog log;
    QVERIFY(XMLTree().flatten_base().empty());
    QCOMPARE(log.take(), QStringList({QStringLiteral("!tree.is_null()")}));
    QVERIFY(XMLTree().flatten().empty());
    QVERIFY(sent(XMLTree()).isEmpty());
    QCOMPARE(log.take().size(), 2);
}

void TestXMLWriter::null_child_leaves_its_line_empty()
{
    AssertLog log;
    XMLTree const tree(l1("a"), XMLTree());
    QCOMPARE(sent(tree, XMLTree::FlattenLines), QByteArray("<a>\r\n\r\n</a>"));
    QCOMPARE(log.take(), QStringList({QStringLiteral("!tree.is_null()")}));
}

void TestXMLWriter::pieces_join_to_the_text()
{
    AString const content = AString::rep(l1("0123456789"), 100);
    AStringList const pieces = XMLTree(l1("a"), content).flatten_base();
    bool shared = false;
    for (AString const &piece : pieces)
        shared = shared || piece.store().get() == content.store().get();
    QVERIFY2(shared, "long content is a piece of its own");
}

void TestXMLWriter::sink_sees_whole_characters()
{
    struct Seen
    {
        QByteArray bytes;
        std::vector<unsigned long long> sizes;
    } seen;
    auto const note = [](void *to, char const *p, unsigned long long n) {
        static_cast<Seen *>(to)->bytes.append(p, static_cast<qsizetype>(n));
        static_cast<Seen *>(to)->sizes.push_back(n);
        AString const part = AString::from_utf8(p, n);
        QCOMPARE(QByteArray::fromStdString(part.to_string()).size(), static_cast<qsizetype>(n));
    };
    AString const content = AString::rep(AString::from_utf8("x\xE6\xB1\xBA"), 1000);
    XMLTree const tree(l1("a"), content);
    tree.send_utf8({note, &seen}, XMLTree::FlattenLines, true);
    QCOMPARE(seen.bytes, "<a>" + QByteArray("x\xE6\xB1\xBA").repeated(1000) + "</a>");
    for (unsigned long long const size : seen.sizes)
        QVERIFY(size != 0 && size <= 512);
}

void TestXMLWriter::characters_without_utf8_are_left_out()
{
    char32_t const text[] = {U'a', 0x110000, U'b', 0xffffffff, U'c'};
    QCOMPARE(sent(XMLTree(l1("a"), AString::from_utf32(text, 5))), QByteArray("<a>abc</a>"));
}

void TestXMLWriter::long_text_is_written_whole_data()
{
    QTest::addColumn<int>("length");
    for (int const length : {255, 256, 257, 500, 505, 506, 507, 508, 509, 510, 511, 512, 513, 5000})
        QTest::addRow("%d", length) << length;
}

void TestXMLWriter::long_text_is_written_whole()
{
    QFETCH(int, length);
    QByteArray text;
    for (int i = 0; i < length; ++i)
        text += static_cast<char>('a' + i % 26);
    XMLTree const leaf(l1("a"), AString::from_latin1(text.constData()));
    QCOMPARE(written(leaf, XMLTree::FlattenCompact, true), "<a>" + text + "</a>");
    XMLTree const tag(AString::from_latin1(text.constData()));
    QCOMPARE(written(tag, XMLTree::FlattenCompact, false), "<" + text + "></" + text + ">");
    XMLTree const entities(l1("a"), AString::rep(l1("<"), static_cast<unsigned>(length)));
    QCOMPARE(written(entities, XMLTree::FlattenCompact, true),
        "<a>" + QByteArray("&lt;").repeated(length) + "</a>");
}

QTEST_GUILESS_MAIN(TestXMLWriter)
#include "tst_xml_writer.moc"
