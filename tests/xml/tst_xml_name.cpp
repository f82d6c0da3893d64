// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_name.h"
#include "tests/support/assert_log.h"
#include "tests/xml/xml_texts.h"

#include <QTest>
#include <string>

class TestXMLName : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void name_is_its_text();
    void same_text_gives_the_same_name();
    void parsed_elements_share_the_string_of_a_name();
    void names_of_every_length_are_told_apart();
    void thousands_of_names_are_kept();
    void what_no_parser_reads_is_an_assertion_data();
    void what_no_parser_reads_is_an_assertion();
};

void TestXMLName::name_is_its_text()
{
    XMLName const name("ChannelStatus");
    QVERIFY(name.text() == l1("ChannelStatus"));
    AString const &text = name;
    QCOMPARE(&text, &name.text());
    QVERIFY(XMLTree(name, l1("play")).has_tag(name));
}

void TestXMLName::same_text_gives_the_same_name()
{
    QVERIFY(XMLName("Speed") == XMLName("Speed"));
    QVERIFY(XMLName("Speed") != XMLName("Speeds"));
    QCOMPARE(&XMLName("Speed").text(), &XMLName("Speed").text());
}

void TestXMLName::parsed_elements_share_the_string_of_a_name()
{
    XMLName const known("known_name");
    XMLTree const tree = parsed("<m><known_name>1</known_name><unknown_name/></m>");
    XMLTree const &first = *tree.children().begin();
    QCOMPARE(first.get_tag().store().get(), known.text().store().get());
    QVERIFY(tree.has_subnodes(known));
    QVERIFY(tree.get_subnode(known).get_content() == l1("1"));
    QVERIFY(tree.has_subnodes(l1("unknown_name")));
}

void TestXMLName::names_of_every_length_are_told_apart()
{
    // Names that differ in one place only, at each place.
    for (std::size_t length = 1; length <= 40; ++length) {
        std::string const text(length, 'n');
        XMLName const name(text.c_str());
        for (std::size_t i = 0; i < length; ++i) {
            std::string other = text;
            other[i] = 'm';
            QVERIFY(XMLName(other.c_str()) != name);
            QVERIFY(XMLName(other.c_str()).text() == AString::from_string(other));
            XMLTree const tree = parsed(("<" + other + "/>").c_str());
            QVERIFY(tree.has_tag_z(other.c_str()));
            QVERIFY(!tree.has_tag(name));
        }
    }
}

void TestXMLName::thousands_of_names_are_kept()
{
    XMLName const first("thousands_first");
    for (int i = 0; i < 5000; ++i)
        XMLName{("thousands_" + std::to_string(i)).c_str()};
    QVERIFY(first == XMLName("thousands_first"));
    for (int i = 0; i < 5000; ++i) {
        std::string const text = "thousands_" + std::to_string(i);
        XMLTree const tree = parsed(("<" + text + "/>").c_str());
        QCOMPARE(tree.get_tag().store().get(), XMLName(text.c_str()).text().store().get());
    }
}

void TestXMLName::what_no_parser_reads_is_an_assertion_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("fits");
    QTest::newRow("letter") << QByteArray("a") << true;
    QTest::newRow("all kinds") << QByteArray("Az_09") << true;
    QTest::newRow("longest") << QByteArray(255, 'a') << true;
    QTest::newRow("too long") << QByteArray(256, 'a') << false;
    QTest::newRow("empty") << QByteArray("") << false;
    QTest::newRow("digit first") << QByteArray("1a") << false;
    QTest::newRow("line first") << QByteArray("_a") << false;
    QTest::newRow("blank") << QByteArray("a b") << false;
    QTest::newRow("non-ascii") << QByteArray("\xC3\xA9") << false;
}

void TestXMLName::what_no_parser_reads_is_an_assertion()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, fits);
    AssertLog log;
    XMLName const name(text.constData());
    QCOMPARE(log.take().size(), fits ? 0 : 1);
    QVERIFY(name.text() == AString::from_latin1(text.constData()));
}

QTEST_GUILESS_MAIN(TestXMLName)
#include "tst_xml_name.moc"
