// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_name.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_parse.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_reader_p.h"
#include "tests/support/thoroughness.h"
#include "tests/xml/literal_xml.h"
#include "tests/xml/random_texts.h"
#include "tests/xml/xml_texts.h"

#include <QTest>

class TestXMLParse : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void text_gives_tree_data();
    void text_gives_tree();
    void text_is_an_error_data();
    void text_is_an_error();
    void error_is_only_ever_set();
    void attribute_values_are_read_data();
    void attribute_values_are_read();
    void wide_white_space_is_stripped_data();
    void wide_white_space_is_stripped();
    void code_point_0_is_white_space();
    void entities_are_read_from_the_left_data();
    void entities_are_read_from_the_left();
    void content_keeps_its_white_space();
    void contents_share_one_store();
    void long_contents_are_whole();
    void bytes_count_up_to_the_first_bad_one_data();
    void bytes_count_up_to_the_first_bad_one();
    void random_trees_survive_the_round_trip();
    void random_texts_agree_with_the_literal_rules_data();
    void random_texts_agree_with_the_literal_rules();
};

namespace {

/// Parses the bytes as a message of the stream is parsed, and as text.
void check(QByteArray const &bytes)
{
    AString const text
        = AString::from_utf8(bytes.constData(), static_cast<unsigned long long>(bytes.size()));
    static XMLReader reader; // as in an engine: with a memory of what came before
    XMLTree const read = read_bytes(reader, bytes);
    if (!LiteralXml::agrees(text, read))
        QFAIL("bytes: " + bytes.toPercentEncoding());
    if (!LiteralXml::agrees(text, XMLParse(text)))
        QFAIL("text: " + bytes.toPercentEncoding());
}

} // namespace

void TestXMLParse::text_gives_tree_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("tree"); // flattened without line breaks
    auto const row = [](char const *text, char const *tree) {
        QTest::newRow(text) << QByteArray(text) << QByteArray(tree);
    };
    row("<a>x</a>", "<a>x</a>");
    row("<a/>", "<a />");
    row("<a></a>", "<a />");
    row("<a> <b/> </a>", "<a><b /></a>");
    row("<a>\r\n<b>1</b>\r\n<c>2</c>\r\n</a>", "<a><b>1</b><c>2</c></a>");
    row(" \t\r\n\v\f<a/> \t\r\n\v\f", "<a />");
    row("< a >x</ a >", "<a>x</a>");
    row("<a>x< / a>", "<a>x</a>");
    row("<a / >", "<a />");
    row("< a / >", "<a />");
    row("<a b=c/>", "<a b=\"c\" />");
    row("<a b=c>x</a d=e>", "<a b=\"c\">x</a>");
    row("<a b=1 c=2 b=3/>", "<a b=\"3\" c=\"2\" />");
    row("<a\tb=1\r\nc=2\vd=3\fe=4 />", "<a b=\"1\" c=\"2\" d=\"3\" e=\"4\" />");
    row("<a_1Z>x</a_1Z>", "<a_1Z>x</a_1Z>");
    row("<a <b=c>x</a>", "<a <b=\"c\">x</a>");
    row("<a><a><a/></a></a>", "<a><a><a /></a></a>");
    row("<a>&bogus;</a>", "<a>&amp;bogus;</a>");
    row("<a>&lt;&amp;lt;&gt;</a>", "<a>&lt;&amp;lt;&gt;</a>");
}

void TestXMLParse::text_gives_tree()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, tree);
    bool error = false;
    XMLTree const read = XMLParse(AString::from_utf8(text.constData()), &error);
    QVERIFY(!error);
    QCOMPARE(flat(read), tree);
    check(text);
}

void TestXMLParse::text_is_an_error_data()
{
    QTest::addColumn<QByteArray>("text");
    for (char const *text : {"", " ", " \r\n\t", "x", "<", ">", "<>", "< >", "</>", "<//>", "</a/>",
             "<a", "a>", "><", "<a>", "</a>", "<a></b>", "<a><b></a></b>", "<a/>x", "x<a/>",
             "<a/><b/>", "<a></a><b></b>", "<a/></a>", "<a>x<b/>y</a>", "<a>x<b/></a>",
             "<a><b/>y</a>", "<a><b/>y<c/></a>", "<a>&lt;<b/></a>", "<a>x>y</a>", "<a>x</a>>",
             "<a b/>", "<a b=\"c d\"/>", "<a b=\"c=d\"/>", "<a b==c/>", "<a>x</a b>", "<1a/>",
             "<_a/>", "<a-b/>", "<a.b/>", "<a:b/>", "<a//>", "<?xml version=\"1.0\"?><a/>",
             "<!-- x --><a/>", "<a><!-- x --></a>", "<a><![CDATA[x]]></a>", "<a>x</a", "<a></A>",
             "<a b=c / d=e>", "<a>x</a></a>", "<a>x</ab>", "<ab>x</a>", "<a/ b=c>"})
        QTest::newRow(text) << QByteArray(text);
}

void TestXMLParse::text_is_an_error()
{
    QFETCH(QByteArray, text);
    bool error = false;
    QVERIFY(XMLParse(AString::from_utf8(text.constData()), &error).is_null());
    QVERIFY(error);
    QVERIFY(XMLParse(AString::from_utf8(text.constData())).is_null());
    check(text);
}

void TestXMLParse::error_is_only_ever_set()
{
    bool error = true;
    QVERIFY(!XMLParse(l1("<a/>"), &error).is_null());
    QVERIFY(error);
}

void TestXMLParse::attribute_values_are_read_data()
{
    QTest::addColumn<QByteArray>("attribute");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("value");
    auto const row = [](char const *attribute, char const *name, char const *value) {
        QTest::newRow(attribute) << QByteArray(attribute) << QByteArray(name) << QByteArray(value);
    };
    row("b=c", "b", "c");
    row("b=\"c\"", "b", "c");
    row("b=\"c", "b", "c");
    row("b=c\"", "b", "c");
    row("b=\"\"", "b", "");
    row("b=\"", "b", "");
    row("b=\"\"c\"\"", "b", "\"c\"");
    row("b='c'", "b", "'c'");
    row("b=", "b", "");
    row("=c", "", "c");
    row("=", "", "");
    row("b=&lt;", "b", "&lt;");
    row("b=c/d", "b", "c/d");
    row("1-x=c", "1-x", "c");
}

void TestXMLParse::attribute_values_are_read()
{
    QFETCH(QByteArray, attribute);
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, value);
    QByteArray const text = "<a " + attribute + " >x</a>";
    XMLTree const tree = parsed(text.constData());
    QCOMPARE(tree.attr().size(), size_t(1));
    QCOMPARE(tree.attr().begin()->first.to_string(), name.toStdString());
    QCOMPARE(tree.attr().begin()->second.to_string(), value.toStdString());
    check(text);
}

void TestXMLParse::wide_white_space_is_stripped_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("tree"); // empty: an error
    QByteArray const wide = "\xE6\xB1\xBA"; // counts as white space, as all from 256 up
    QByteArray const latin = "\xC2\xA0"; // does not
    QTest::newRow("around the text") << wide + "<a/>" + wide << QByteArray("<a />");
    QTest::newRow("in front of the name")
        << "<" + wide + "a>x</" + wide + "a>" << QByteArray("<a>x</a>");
    QTest::newRow("in front of the mark")
        << "<a>x<" + wide + "/" + wide + "a" + wide + ">" << QByteArray("<a>x</a>");
    QTest::newRow("at a self-closing mark")
        << "<a" + wide + "/" + wide + ">" << QByteArray("<a />");
    QTest::newRow("between children")
        << "<a>" + wide + "<b/>" + wide + "</a>" << QByteArray("<a><b /></a>");
    QTest::newRow("as content") << "<a>" + wide + "</a>"
                                << "<a>" + wide + "</a>";
    QTest::newRow("within a name") << "<a" + wide + "b/>" << QByteArray();
    QTest::newRow("does not split") << "<a" + wide + " b=1/>" << QByteArray();
    QTest::newRow("alone in a tag") << "<" + wide + ">" << QByteArray();
    QTest::newRow("latin around the text") << latin + "<a/>" << QByteArray();
    QTest::newRow("latin in a tag") << "<" + latin + "a/>" << QByteArray();
    QTest::newRow("latin between children") << "<a>" + latin + "<b/></a>" << QByteArray();
    QTest::newRow("first of 256") << QByteArray("<a>\xC4\x80<b/></a>")
                                  << QByteArray("<a><b /></a>");
    QTest::newRow("last of 255") << QByteArray("<a>\xC3\xBF<b/></a>") << QByteArray();
}

void TestXMLParse::wide_white_space_is_stripped()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, tree);
    XMLTree const read = parsed(text.constData());
    QCOMPARE(read.is_null(), tree.isEmpty());
    if (!read.is_null())
        QCOMPARE(flat(read), tree);
    check(text);
}

void TestXMLParse::code_point_0_is_white_space()
{
    QVERIFY(!XMLParse(AString::from_latin1("\0<\0a\0>\0<b/>\0</\0a\0>\0", 19)).is_null());
    QVERIFY(XMLParse(AString::from_latin1("<a\0b=c/>", 8)).is_null());
}

void TestXMLParse::entities_are_read_from_the_left_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("content");
    auto const row = [](char const *text, char const *content) {
        QTest::newRow(text) << QByteArray(text) << QByteArray(content);
    };
    row("&apos;", "'");
    row("&lt;", "<");
    row("&gt;", ">");
    row("&quot;", "\"");
    row("&amp;", "&");
    row("&lt;&amp;lt;&gt;", "<&lt;>");
    row("&amp;amp;amp;", "&amp;amp;");
    row("&&lt;", "&<");
    row("&", "&");
    row("&&", "&&");
    row("&l&lt;t;", "&l<t;");
    row("&LT;", "&LT;");
    row("&#60;", "&#60;");
    row("&bogus;", "&bogus;");
    row("&lt", "&lt");
    row("x&amp;y&amp;z", "x&y&z");
}

void TestXMLParse::entities_are_read_from_the_left()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, content);
    QByteArray const message = "<a>" + text + "</a>";
    QCOMPARE(parsed(message.constData()).get_content().to_string(), content.toStdString());
    check(message);
}

void TestXMLParse::content_keeps_its_white_space()
{
    QVERIFY(parsed("<a> x\r\n</a>").get_content() == l1(" x\r\n"));
    QVERIFY(parsed("<a> \v\f </a>").get_content() == l1(" \v\f "));
    QVERIFY(parsed("<a> <b/> </a>").get_content().empty());
}

void TestXMLParse::contents_share_one_store()
{
    XMLTree const tree = parsed("<a><b>one</b><c>two</c></a>");
    AString const one = tree.get_subnode(l1("b")).get_content();
    AString const two = tree.get_subnode(l1("c")).get_content();
    QCOMPARE(one.store().get(), two.store().get());
    QVERIFY(one.deep_copy(0).store().get() != two.store().get());
}

void TestXMLParse::long_contents_are_whole()
{
    QByteArray text;
    for (int i = 0; i < 2000; ++i)
        text += static_cast<char>('a' + i % 26);
    XMLReader reader;
    for (qsizetype const length : {255, 256, 257, 511, 512, 513, 2000}) {
        QByteArray const message = "<a><b>x</b><c>" + text.left(length) + "</c><d>y</d></a>";
        XMLTree const tree = read_bytes(reader, message);
        QCOMPARE(flat(tree), message);
        check(message);
    }
}

void TestXMLParse::bytes_count_up_to_the_first_bad_one_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("tree"); // empty: an error
    QTest::newRow("in content") << QByteArray("<a>\xFF</a>") << QByteArray();
    QTest::newRow("zero in content") << QByteArray("<a>\0</a>", 8) << QByteArray();
    QTest::newRow("cut short") << QByteArray("<a>\xE6\xB1</a>") << QByteArray();
    QTest::newRow("in a tag") << QByteArray("<a\x80>x</a>") << QByteArray();
    // The text ends in front of the bad byte, and what is left of it is whole.
    QTest::newRow("behind a whole element")
        << QByteArray("<a>x</a k=1>\xFF</a>") << QByteArray("<a>x</a>");
    QTest::newRow("behind blanks") << QByteArray("<a>x</a\v> \0</a>", 15) << QByteArray("<a>x</a>");
    // Overlong forms count as what they stand for.
    QTest::newRow("overlong mark") << QByteArray("<a>\xE0\x80\xBC"
                                                 "b/></a>")
                                   << QByteArray("<a><b /></a>");
    QTest::newRow("overlong zero between children")
        << QByteArray("<a>\xE0\x80\x80<b/></a>") << QByteArray("<a><b /></a>");
    QTest::newRow("overlong letter") << QByteArray("<a>\xE0\x81\xA2</a>") << QByteArray("<a>b</a>");
    QTest::newRow("surrogate") << QByteArray("<a>\xED\xA0\x80</a>")
                               << QByteArray("<a>\xED\xA0\x80</a>");
}

void TestXMLParse::bytes_count_up_to_the_first_bad_one()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, tree);
    XMLReader reader;
    XMLTree const read = read_bytes(reader, bytes);
    QCOMPARE(read.is_null(), tree.isEmpty());
    if (!read.is_null())
        QCOMPARE(flat(read), tree);
    check(bytes);
}

void TestXMLParse::random_trees_survive_the_round_trip()
{
    RandomTexts texts(1);
    XMLReader reader;
    for (unsigned int i = 0; i < 3000 / one_in; ++i) {
        XMLTree const tree = texts.tree(texts.below(6));
        for (auto const style :
            {XMLTree::FlattenCompact, XMLTree::FlattenLines, XMLTree::FlattenIndented}) {
            bool const short_empty = texts.below(2) != 0;
            QByteArray const bytes = sent(tree, style, short_empty);
            QVERIFY(read_bytes(reader, bytes) == tree);
            QVERIFY(XMLParse(tree.flatten(style, short_empty)) == tree);
        }
    }
}

void TestXMLParse::random_texts_agree_with_the_literal_rules_data()
{
    // The second half runs with names that the parsers look up.
    QTest::addColumn<bool>("messages");
    QTest::newRow("messages") << true;
    QTest::newRow("garbage") << false;
    QTest::newRow("messages, names known") << true;
    QTest::newRow("garbage, names known") << false;
}

void TestXMLParse::random_texts_agree_with_the_literal_rules()
{
    QFETCH(bool, messages);
    if (QByteArray(QTest::currentDataTag()).contains("known")) {
        for (char const *name : {"a", "reply", "LongerNameThan16Characters", "abcdefgh"})
            XMLName{name};
    }
    RandomTexts texts(messages ? 2 : 3);
    unsigned int const count = 15000 / one_in;
    unsigned int good = 0;
    for (unsigned int i = 0; i < count; ++i) {
        QByteArray const text = messages ? texts.message() : texts.garbage();
        check(text);
        if (QTest::currentTestFailed())
            return;
        good += parsed(text.constData()).is_null() ? 0 : 1;
    }
    QVERIFY2(
        !messages || (good > count / 5 && good < count / 5 * 4), qPrintable(QString::number(good)));
}

QTEST_GUILESS_MAIN(TestXMLParse)
#include "tst_xml_parse.moc"
