// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_parse_engine.h"
#include "tests/support/assert_log.h"
#include "tests/xml/literal_xml.h"
#include "tests/xml/random_texts.h"

#include <QTest>
#include <algorithm>
#include <vector>

class TestXMLParseEngine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void size_0_is_an_assertion_and_becomes_1024();
    void bytes_are_taken_as_far_as_they_fit();
    void stream_gives_messages_data();
    void stream_gives_messages();
    void stream_gives_the_same_split_at_every_byte_data();
    void stream_gives_the_same_split_at_every_byte();
    void stream_gives_the_same_byte_by_byte_data();
    void stream_gives_the_same_byte_by_byte();
    void tag_forms_that_bound_a_message_data();
    void tag_forms_that_bound_a_message();
    void closing_forms_that_end_a_message_data();
    void closing_forms_that_end_a_message();
    void a_closing_tag_is_found_wherever_it_stands_data();
    void a_closing_tag_is_found_wherever_it_stands();
    void lowest_opening_wins();
    void no_tags_no_messages();
    void odd_tags_are_an_assertion();
    void bytes_in_front_are_dropped_only_with_the_message();
    void nested_element_of_the_root_tag_ends_early();
    void bad_message_is_an_error_until_reset();
    void bad_bytes_are_an_error();
    void message_as_long_as_the_buffer_passes_data();
    void message_as_long_as_the_buffer_passes();
    void stream_without_a_root_fills_the_buffer();
    void long_stream_passes_a_small_buffer();
    void message_length_is_told();
    void nothing_is_searched_twice_data();
    void nothing_is_searched_twice();
    void reset_forgets_the_search();
    void random_streams_agree_with_the_literal_rules();
};

namespace {

/// The messages of the stream, and "error" where the engine stopped.
QByteArrayList drain(XMLParseEngine &engine)
{
    QByteArrayList messages;
    for (XMLTree tree = engine.get_xml(); !tree.is_null(); tree = engine.get_xml())
        messages.append(flat(tree));
    if (engine.has_error())
        messages.append("error");
    return messages;
}

void configure(XMLParseEngine &engine, QByteArray const &tags)
{
    for (QByteArray const &tag : tags.split(' '))
        engine.config_tag(tag.constData());
}

unsigned long long feed(XMLParseEngine &engine, QByteArray const &bytes)
{
    return engine.input_bytes(static_cast<unsigned long long>(bytes.size()), bytes.constData());
}

void add_streams()
{
    QTest::addColumn<QByteArray>("tags");
    QTest::addColumn<QByteArray>("stream");
    QTest::addColumn<QByteArrayList>("messages");
    auto const row = [](char const *name, char const *tags, QByteArray const &stream,
                         QByteArrayList const &messages) {
        QTest::newRow(name) << QByteArray(tags) << stream << messages;
    };
    row("one", "a", "<a>x</a>", {"<a>x</a>"});
    row("two of a kind", "a", "<a>x</a><a>y</a>", {"<a>x</a>", "<a>y</a>"});
    row("two kinds", "a b", "<a></a><b></b>", {"<a />", "<b />"});
    row("in the other order", "b a", "<a></a><b></b>", {"<a />", "<b />"});
    row("one kind of two", "b", "<a>1</a><b>2</b><a>3</a>", {"<b>2</b>"});
    row("self-closed roots", "a b", "<a/><b/>", {});
    row("self-closed roots between", "a b", "<a/><b>1</b><a />", {"<b>1</b>"});
    row("bytes between", "a", "x<a>1</a>\r\n y<a>2</a>z", {"<a>1</a>", "<a>2</a>"});
    row("marks between", "a", "<<a>1</a><</<a>2</a>", {"<a>1</a>", "<a>2</a>"});
    row("prolog between", "a", "<?xml version=\"1.0\"?><a>1</a>", {"<a>1</a>"});
    row("children", "reply report",
        "<report>\r\n<x>1</x>\r\n</report><reply>\r\n<y>2</y>\r\n</reply>",
        {"<report><x>1</x></report>", "<reply><y>2</y></reply>"});
    row("blanks in the tags", "reply", "< \t\b\r\nreply \b> x < \b/ \treply\n >",
        {}); // the backspaces are no white space for the parser
    row("plain blanks in the tags", "reply", "< \t\r\nreply \t> x < / \treply\n >",
        {"<reply> x </reply>"});
    row("longer name", "reply", "<replyx><reply>1</reply></replyx>", {"<reply>1</reply>"});
    row("attributes", "reply", "<reply a=\"b\">1</reply><reply>2</reply>", {"<reply>2</reply>"});
    row("open twice", "a", "<a><a>1</a></a><a>2</a>", {});
    row("entities", "a", "<a>&lt;a&gt;</a>", {"<a>&lt;a&gt;</a>"});
    row("non-ascii", "a", "<a>\xC3\xA9\xE6\xB1\xBA</a>", {"<a>\xC3\xA9\xE6\xB1\xBA</a>"});
    row("incomplete", "a", "<a>1</a><a>2", {"<a>1</a>"});
    row("closing first", "a", "</a><a>1</a>", {"<a>1</a>"});
}

} // namespace

void TestXMLParseEngine::size_0_is_an_assertion_and_becomes_1024()
{
    AssertLog log;
    XMLParseEngine engine(0);
    QCOMPARE(log.take().size(), 1);
    QCOMPARE(engine.available_buffer_space(), 1024ull);
}

void TestXMLParseEngine::bytes_are_taken_as_far_as_they_fit()
{
    XMLParseEngine engine(10);
    QCOMPARE(feed(engine, "12345678"), 8ull);
    QCOMPARE(engine.available_buffer_space(), 2ull);
    QCOMPARE(feed(engine, "abc"), 2ull);
    QCOMPARE(engine.available_buffer_space(), 0ull);
    QCOMPARE(feed(engine, "abc"), 0ull);
    QCOMPARE(engine.input_bytes(0, nullptr), 0ull);
}

void TestXMLParseEngine::stream_gives_messages_data()
{
    add_streams();
}

void TestXMLParseEngine::stream_gives_messages()
{
    QFETCH(QByteArray, tags);
    QFETCH(QByteArray, stream);
    QFETCH(QByteArrayList, messages);
    XMLParseEngine engine(4096);
    configure(engine, tags);
    QCOMPARE(feed(engine, stream), static_cast<unsigned long long>(stream.size()));
    QByteArrayList got = drain(engine);
    got.removeAll("error");
    QCOMPARE(got, messages);
}

void TestXMLParseEngine::stream_gives_the_same_split_at_every_byte_data()
{
    add_streams();
}

void TestXMLParseEngine::stream_gives_the_same_split_at_every_byte()
{
    QFETCH(QByteArray, tags);
    QFETCH(QByteArray, stream);
    QFETCH(QByteArrayList, messages);
    for (qsizetype cut = 0; cut <= stream.size(); ++cut) {
        XMLParseEngine engine(4096);
        configure(engine, tags);
        feed(engine, stream.left(cut));
        QByteArrayList got = drain(engine);
        feed(engine, stream.mid(cut));
        got += drain(engine);
        got.removeAll("error");
        QCOMPARE(got, messages);
    }
}

void TestXMLParseEngine::stream_gives_the_same_byte_by_byte_data()
{
    add_streams();
}

void TestXMLParseEngine::stream_gives_the_same_byte_by_byte()
{
    QFETCH(QByteArray, tags);
    QFETCH(QByteArray, stream);
    QFETCH(QByteArrayList, messages);
    XMLParseEngine engine(static_cast<unsigned long long>(stream.size()));
    configure(engine, tags);
    QByteArrayList got;
    for (char const &byte : stream) {
        QCOMPARE(engine.input_bytes(1, &byte), 1ull);
        got += drain(engine);
    }
    got.removeAll("error");
    QCOMPARE(got, messages);
}

void TestXMLParseEngine::tag_forms_that_bound_a_message_data()
{
    QTest::addColumn<QByteArray>("opening");
    QTest::addColumn<bool>("bounds");
    QTest::newRow("plain") << QByteArray("<reply>") << true;
    QTest::newRow("blank behind") << QByteArray("<reply >") << true;
    QTest::newRow("blank before") << QByteArray("< reply>") << true;
    QTest::newRow("tab, line feed, return") << QByteArray("<\t\nreply\r>") << true;
    QTest::newRow("longer") << QByteArray("<replyx>") << false;
    QTest::newRow("shorter") << QByteArray("<repl>") << false;
    QTest::newRow("attribute") << QByteArray("<reply x=\"1\">") << false;
    QTest::newRow("self-closed") << QByteArray("<reply/>") << false;
    QTest::newRow("self-closed with a blank") << QByteArray("<reply />") << false;
    QTest::newRow("other case") << QByteArray("<Reply>") << false;
    QTest::newRow("vertical tab before") << QByteArray("<\vreply>") << false;
    QTest::newRow("form feed behind") << QByteArray("<reply\f>") << false;
    QTest::newRow("blank within") << QByteArray("<re ply>") << false;
    QTest::newRow("closing") << QByteArray("</reply>") << false;
}

void TestXMLParseEngine::tag_forms_that_bound_a_message()
{
    QFETCH(QByteArray, opening);
    QFETCH(bool, bounds);
    XMLParseEngine engine(4096);
    engine.config_tag("reply");
    feed(engine, opening + "1</reply>");
    QCOMPARE(drain(engine), bounds ? QByteArrayList({"<reply>1</reply>"}) : QByteArrayList());
}

void TestXMLParseEngine::closing_forms_that_end_a_message_data()
{
    QTest::addColumn<QByteArray>("closing");
    QTest::addColumn<bool>("ends");
    QTest::newRow("plain") << QByteArray("</reply>") << true;
    QTest::newRow("blanks everywhere") << QByteArray("< / \treply\r\n>") << true;
    QTest::newRow("longer") << QByteArray("</replyx>") << false;
    QTest::newRow("attribute") << QByteArray("</reply a=1>") << false;
    QTest::newRow("vertical tab") << QByteArray("</reply\v>") << false;
    QTest::newRow("form feed") << QByteArray("<\f/reply>") << false;
    QTest::newRow("opening") << QByteArray("<reply>") << false;
    QTest::newRow("two slashes") << QByteArray("<//reply>") << false;
}

void TestXMLParseEngine::closing_forms_that_end_a_message()
{
    QFETCH(QByteArray, closing);
    QFETCH(bool, ends);
    XMLParseEngine engine(4096);
    engine.config_tag("reply");
    feed(engine, "<reply>1" + closing);
    QCOMPARE(drain(engine), ends ? QByteArrayList({"<reply>1</reply>"}) : QByteArrayList());
    QVERIFY(!engine.has_error());

    // Backspace counts for the boundary. That the parser then objects shows that it ended there.
    feed(engine, "<\b/\breply\b>");
    QCOMPARE(drain(engine), ends ? QByteArrayList() : QByteArrayList({"error"}));
}

void TestXMLParseEngine::a_closing_tag_is_found_wherever_it_stands_data()
{
    QTest::addColumn<QByteArray>("closing");
    for (char const *closing : {"</a>", "< /a>", "</ a>", "</a >", "< / a >", "<\n/\ta\r>"})
        QTest::newRow(closing) << QByteArray(closing);
}

/// In one read, with much behind it: long reads are searched in blocks.
void TestXMLParseEngine::a_closing_tag_is_found_wherever_it_stands()
{
    QFETCH(QByteArray, closing);
    for (int before = 0; before <= 200; ++before) {
        QByteArray const elements = "<b>x</b><c /><aa>y</aa>";
        for (QByteArray const &inside :
            {QByteArray(before, 'x'), elements.repeated(1 + before / elements.size())}) {
            XMLParseEngine engine(4096);
            engine.config_tag("a");
            QByteArray const behind = QByteArray(before % 7 * 40, '.') + "<a>2</a>";
            feed(engine, "<a>" + inside + closing + behind);
            QByteArray const first = inside.isEmpty() ? "<a />" : "<a>" + inside + "</a>";
            QCOMPARE(drain(engine), QByteArrayList({first, "<a>2</a>"}));
        }
    }
}

void TestXMLParseEngine::lowest_opening_wins()
{
    XMLParseEngine engine(4096);
    configure(engine, "a b");
    feed(engine, "<b><a>1</a></b>");
    QCOMPARE(drain(engine), QByteArrayList({"<b><a>1</a></b>"}));
    feed(engine, "<b><a>1</a>");
    QCOMPARE(drain(engine), QByteArrayList());
    feed(engine, "</b>");
    QCOMPARE(drain(engine), QByteArrayList({"<b><a>1</a></b>"}));
    engine.config_tag("a");
    feed(engine, "<a>2</a>");
    QCOMPARE(drain(engine), QByteArrayList({"<a>2</a>"}));
}

void TestXMLParseEngine::no_tags_no_messages()
{
    XMLParseEngine engine(64);
    feed(engine, "<a>1</a>");
    QVERIFY(engine.get_xml().is_null());
    QVERIFY(!engine.has_error());
    engine.config_tag("a");
    QCOMPARE(drain(engine), QByteArrayList({"<a>1</a>"}));
}

void TestXMLParseEngine::odd_tags_are_an_assertion()
{
    AssertLog log;
    XMLParseEngine engine(64);
    engine.config_tag(nullptr);
    engine.config_tag("a<b");
    engine.config_tag("a>b");
    QCOMPARE(log.take().size(), 3);
    engine.config_tag("");
    feed(engine, "<>x</>");
    QCOMPARE(drain(engine), QByteArrayList({"error"}));
}

void TestXMLParseEngine::bytes_in_front_are_dropped_only_with_the_message()
{
    XMLParseEngine engine(20);
    engine.config_tag("a");
    feed(engine, "12345<a>1");
    QVERIFY(engine.get_xml().is_null());
    QCOMPARE(engine.available_buffer_space(), 11ull);
    feed(engine, "</a>678");
    QCOMPARE(drain(engine), QByteArrayList({"<a>1</a>"}));
    QCOMPARE(engine.available_buffer_space(), 17ull);
}

void TestXMLParseEngine::nested_element_of_the_root_tag_ends_early()
{
    XMLParseEngine engine(64);
    engine.config_tag("a");
    feed(engine, "<a><a>1</a></a>");
    QCOMPARE(drain(engine), QByteArrayList({"error"}));
}

void TestXMLParseEngine::bad_message_is_an_error_until_reset()
{
    XMLParseEngine engine(64);
    engine.config_tag("a");
    feed(engine, "<a>1</a><a><b></a><a>2</a>");
    QCOMPARE(drain(engine), QByteArrayList({"<a>1</a>", "error"}));
    QCOMPARE(engine.available_buffer_space(), 64ull - 18ull); // nothing of the bad one went
    QCOMPARE(feed(engine, QByteArray(1000, 'x')), 1000ull);
    QCOMPARE(engine.available_buffer_space(), 64ull - 18ull);
    QCOMPARE(drain(engine), QByteArrayList({"error"}));
    engine.reset();
    QVERIFY(!engine.has_error());
    QCOMPARE(engine.available_buffer_space(), 64ull);
    feed(engine, "<a>3</a>");
    QCOMPARE(drain(engine), QByteArrayList({"<a>3</a>"}));
}

void TestXMLParseEngine::bad_bytes_are_an_error()
{
    XMLParseEngine engine(64);
    engine.config_tag("a");
    feed(engine, QByteArray("<a>\0</a>", 8));
    QCOMPARE(drain(engine), QByteArrayList({"error"}));
    engine.reset();
    feed(engine, "<a>\xFF</a>");
    QCOMPARE(drain(engine), QByteArrayList({"error"}));
}

void TestXMLParseEngine::message_as_long_as_the_buffer_passes_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("surplus");
    for (int const size : {8, 1024, 32768, 65536}) {
        for (int const surplus : {-1, 0, 1})
            QTest::addRow("%d%+d", size, surplus) << size << surplus;
    }
}

void TestXMLParseEngine::message_as_long_as_the_buffer_passes()
{
    QFETCH(int, size);
    QFETCH(int, surplus);
    QByteArray const message = "<a>" + QByteArray(size + surplus - 7, 'x') + "</a>";
    XMLParseEngine engine(static_cast<unsigned long long>(size));
    engine.config_tag("a");
    unsigned long long const taken = feed(engine, message);
    QCOMPARE(taken, static_cast<unsigned long long>(std::min<qsizetype>(size, message.size())));
    XMLTree const tree = engine.get_xml();
    QCOMPARE(tree.is_null(), surplus > 0);
    QVERIFY(!engine.has_error());
    QCOMPARE(engine.available_buffer_space(),
        surplus > 0 ? 0ull : static_cast<unsigned long long>(size));
    if (surplus <= 0)
        QCOMPARE(flat(tree, XMLTree::FlattenCompact, false), message);
}

void TestXMLParseEngine::stream_without_a_root_fills_the_buffer()
{
    XMLParseEngine engine(100);
    engine.config_tag("a");
    QCOMPARE(feed(engine, QByteArray(1000, '<')), 100ull);
    QVERIFY(engine.get_xml().is_null());
    QVERIFY(!engine.has_error());
    QCOMPARE(engine.available_buffer_space(), 0ull);
}

void TestXMLParseEngine::long_stream_passes_a_small_buffer()
{
    QByteArray stream;
    QByteArrayList expected;
    for (int i = 0; i < 500; ++i) {
        QByteArray const message = "<a>" + QByteArray::number(i) + "</a>";
        stream += QByteArray(i % 5, ' ') + message;
        expected.append(message);
    }
    for (qsizetype const piece : {1, 3, 7, 16, 1000}) {
        XMLParseEngine engine(16);
        engine.config_tag("a");
        QByteArrayList got;
        qsizetype done = 0;
        while (done < stream.size()) {
            unsigned long long const taken = feed(engine, stream.mid(done, piece));
            QVERIFY(taken != 0);
            done += static_cast<qsizetype>(taken);
            got += drain(engine);
        }
        QCOMPARE(got, expected);
    }
}

void TestXMLParseEngine::message_length_is_told()
{
    XMLParseEngine engine(64);
    engine.config_tag("a");
    QCOMPARE(engine.last_message_bytes(), 0ull);
    feed(engine, "junk<a>12</a><a>3</a>");
    engine.get_xml();
    QCOMPARE(engine.last_message_bytes(), 9ull);
    engine.get_xml();
    QCOMPARE(engine.last_message_bytes(), 8ull);
    engine.get_xml();
    QCOMPARE(engine.last_message_bytes(), 0ull);
}

void TestXMLParseEngine::nothing_is_searched_twice_data()
{
    QTest::addColumn<QByteArray>("stream");
    QByteArray const end = "</reply>";
    QTest::newRow("long content") << "<reply>" + QByteArray(65000, 'x') + end;
    QTest::newRow("many elements") << "<reply>" + QByteArray("<a>b</a>\r\n").repeated(6500) + end;
    QTest::newRow("nearly closing") << "<reply>" + QByteArray("</repl>").repeated(9000) + end;
    QTest::newRow("marks") << "<reply>" + QByteArray(65000, '<') + end;
    QTest::newRow("blanks in the closing tag") << "<reply><" + QByteArray(65000, ' ') + "/reply>";
    QTest::newRow("blanks in the opening tag") << "<" + QByteArray(65000, ' ') + "reply>" + end;
    QTest::newRow("no root") << QByteArray("<a>b</a>\r\n").repeated(6500);
    QTest::newRow("marks and no root") << QByteArray(65000, '<');
}

/// Counted, not timed: each byte is looked at once, and those of an opening tag once per name.
void TestXMLParseEngine::nothing_is_searched_twice()
{
    QFETCH(QByteArray, stream);
    XMLParseEngine engine(65536);
    configure(engine, "reply report");
    for (char const &byte : stream) {
        QCOMPARE(engine.input_bytes(1, &byte), 1ull);
        engine.get_xml();
    }
    unsigned long long const bytes = static_cast<unsigned long long>(stream.size());
    QVERIFY2(
        engine.examined_bytes() <= 2 * bytes, qPrintable(QString::number(engine.examined_bytes())));
}

void TestXMLParseEngine::reset_forgets_the_search()
{
    XMLParseEngine engine(64);
    configure(engine, "a b");
    for (char const *half : {"<", "<a", "<a>", "<a>x", "<a>x<", "<a>x</", "<a>x</a"}) {
        feed(engine, half);
        QVERIFY(engine.get_xml().is_null());
        engine.reset();
        feed(engine, "a></a><b>1</b>");
        QCOMPARE(drain(engine), QByteArrayList({"<b>1</b>"}));
        engine.reset();
    }
}

void TestXMLParseEngine::random_streams_agree_with_the_literal_rules()
{
    RandomTexts texts(4);
    int messages = 0;
    for (int i = 0; i < 4000; ++i) {
        std::vector<std::string> tags{"a", "Key", "reply"};
        tags.resize(1 + texts.below(3));
        std::size_t const size = texts.below(4) == 0 ? 16 + texts.below(100) : 4096;
        LiteralXml::Engine literal(size, tags);
        XMLParseEngine engine(size);
        for (std::string const &tag : tags)
            engine.config_tag(tag.c_str());
        QByteArray stream;
        for (unsigned int n = texts.below(5); n != 0; --n)
            stream += texts.below(4) == 0 ? texts.garbage() : texts.message();
        unsigned int const longest = 1 + texts.below(60);
        for (qsizetype done = 0; done < stream.size();) {
            QByteArray const piece = stream.mid(done, 1 + texts.below(longest));
            unsigned long long const taken = feed(engine, piece);
            QCOMPARE(taken, literal.input(piece.toStdString()));
            for (;;) {
                auto const element = literal.get_xml();
                XMLTree const tree = engine.get_xml();
                QCOMPARE(engine.has_error(), literal.error);
                QCOMPARE(engine.available_buffer_space(), size - literal.held.size());
                QCOMPARE(tree.is_null(), !element);
                if (!element)
                    break;
                QVERIFY2(LiteralXml::same(tree, *element), stream.toPercentEncoding());
                ++messages;
            }
            if (taken == 0 || engine.has_error())
                break;
            done += static_cast<qsizetype>(taken);
        }
    }
    QVERIFY2(messages > 1000, qPrintable(QString::number(messages)));
}

QTEST_GUILESS_MAIN(TestXMLParseEngine)
#include "tst_xml_parse_engine.moc"
