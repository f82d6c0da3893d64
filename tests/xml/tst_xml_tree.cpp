// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"
#include "tests/xml/xml_texts.h"

#include <QTest>
#include <climits>

Q_DECLARE_METATYPE(XMLTree)

class TestXMLTree : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void default_tree_is_null();
    void tree_with_a_tag_is_not_null();
    void content_may_be_text_or_number_data();
    void content_may_be_text_or_number();
    void constructors_take_children();
    void tag_and_content_do_not_pin_a_large_text();
    void default_style_is_1();
    void tag_is_compared_as_text();

    void children_are_kept_in_order_data();
    void children_are_kept_in_order();
    void subnodes_are_found_by_tag_data();
    void subnodes_are_found_by_tag();
    void missing_subnode_is_the_shared_null_tree();
    void count_leaves_first_alone_without_a_match();
    void first_may_be_the_tree_that_is_asked();

    void copies_are_independent_data();
    void copies_are_independent();
    void list_of_subnodes_outlives_its_tree();
    void subnodes_of_listed_subnodes_can_be_walked();
    void part_of_a_message_outlives_the_rest();
    void subnode_is_changed_in_place_data();
    void subnode_is_changed_in_place();
    void tree_can_be_added_to_itself();
    void tree_can_be_replaced_by_its_part();
    void lists_are_appended();
    void subnodes_are_removed_by_tag_data();
    void subnodes_are_removed_by_tag();
    void set_content_drops_children();
    void set_subnode_replaces_the_first_match_data();
    void set_subnode_replaces_the_first_match();
    void set_subnode_keeps_the_attributes();
    void set_subnode_of_an_own_part();
    void attributes_can_be_changed_data();
    void attributes_can_be_changed();
    void changed_attributes_do_not_reach_a_copy();
    void null_tree_stays_null_when_it_is_changed();
    void equality_regards_every_field_data();
    void equality_regards_every_field();
};

namespace {

XMLTree built_sample()
{
    XMLTree b1(l1("b"), l1("1"));
    XMLTree c(l1("c"), l1("2"));
    XMLTree b3(l1("b"), XMLTree(l1("d"), l1("3")));
    XMLTree a(l1("a"));
    a.add_subnode(b1);
    a.add_subnode(c);
    a.add_subnode(b3);
    return a;
}

constexpr char const *sample_text = "<a><b>1</b><c>2</c><b><d>3</d></b></a>";

/// The same element in each form that a tree can have.
void add_sample_rows()
{
    QTest::addColumn<XMLTree>("sample");
    QTest::newRow("built") << built_sample();
    QTest::newRow("parsed") << parsed(sample_text);
    QTest::newRow("part of a message")
        << parsed("<m><x/><a><b>1</b><c>2</c><b><d>3</d></b></a></m>").get_subnode(l1("a"));
    XMLTree const message = parsed("<m><a><b>1</b><c>2</c><b><d>3</d></b></a></m>");
    QTest::newRow("from the list of subnodes") << message.get_subnodes().front();
    XMLTree changed = parsed("<a><b>1</b><c>2</c></a>");
    changed.add_subnode(XMLTree(l1("b"), XMLTree(l1("d"), l1("3"))));
    QTest::newRow("parsed and changed") << changed;
}

} // namespace

void TestXMLTree::default_tree_is_null()
{
    XMLTree const tree;
    QVERIFY(tree.is_null());
    QVERIFY(tree.get_tag().empty());
    QVERIFY(tree.get_content().empty());
    QVERIFY(tree.attr().empty());
    QVERIFY(tree.get_subnodes().empty());
    QVERIFY(!tree.has_subnodes());
    QCOMPARE(tree.count_subnodes(), 0u);
    QVERIFY(tree.has_tag(AString()));
    QVERIFY(!tree.has_tag(l1("a")));
}

void TestXMLTree::tree_with_a_tag_is_not_null()
{
    XMLTree const tree(l1("a"));
    QVERIFY(!tree.is_null());
    QVERIFY(tree.get_tag() == l1("a"));
    QVERIFY(tree.get_content().empty());
    QVERIFY(!XMLTree(AString()).is_null());
}

void TestXMLTree::content_may_be_text_or_number_data()
{
    QTest::addColumn<XMLTree>("tree");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("text") << XMLTree(l1("a"), l1("x y")) << QByteArray("x y");
    QTest::newRow("empty") << XMLTree(l1("a"), AString()) << QByteArray();
    QTest::newRow("unsigned 0") << XMLTree(l1("a"), 0u) << QByteArray("0");
    QTest::newRow("unsigned maximum") << XMLTree(l1("a"), UINT_MAX) << QByteArray("4294967295");
    QTest::newRow("signed -1") << XMLTree(l1("a"), -1ll) << QByteArray("-1");
    QTest::newRow("signed minimum")
        << XMLTree(l1("a"), LLONG_MIN) << QByteArray("-9223372036854775808");
    QTest::newRow("signed maximum")
        << XMLTree(l1("a"), LLONG_MAX) << QByteArray("9223372036854775807");
    QTest::newRow("unsigned 64 bits")
        << XMLTree(l1("a"), ULLONG_MAX) << QByteArray("18446744073709551615");
}

void TestXMLTree::content_may_be_text_or_number()
{
    QFETCH(XMLTree, tree);
    QFETCH(QByteArray, content);
    QVERIFY(tree.has_tag_z("a"));
    QCOMPARE(QByteArray::fromStdString(tree.get_content().to_string()), content);
    QVERIFY(!tree.has_subnodes());
}

void TestXMLTree::constructors_take_children()
{
    XMLTree const one(l1("a"), XMLTree(l1("b")));
    QCOMPARE(flat(one), QByteArray("<a><b /></a>"));
    AList<XMLTree> list;
    list.push_back(XMLTree(l1("b")));
    list.push_back(XMLTree(l1("c")));
    XMLTree const two(l1("a"), list);
    QCOMPARE(flat(two), QByteArray("<a><b /><c /></a>"));
    QVERIFY(two.get_content().empty());
    QVERIFY(!XMLTree(l1("a"), AList<XMLTree>()).has_subnodes());
}

void TestXMLTree::tag_and_content_do_not_pin_a_large_text()
{
    AString const large = AString::rep(l1("x"), 5000);
    XMLTree const tree(large.mid(10, 3), large.mid(20, 4));
    QVERIFY(tree.get_tag() == l1("xxx"));
    QVERIFY(tree.get_content() == l1("xxxx"));
    QVERIFY(tree.get_tag().store().get() != large.store().get());
    QVERIFY(tree.get_content().store().get() != large.store().get());
    XMLTree changed(l1("a"));
    changed.set_content(large.mid(1, 1));
    QVERIFY(changed.get_content().store().get() != large.store().get());
}

void TestXMLTree::default_style_is_1()
{
    QCOMPARE(int(XMLTree::default_flatten_style), 1);
    QCOMPARE(int(XMLTree::FlattenCompact), 0);
    QCOMPARE(int(XMLTree::FlattenLines), 1);
    QCOMPARE(int(XMLTree::FlattenIndented), 2);
}

void TestXMLTree::tag_is_compared_as_text()
{
    for (XMLTree const &tree : {XMLTree(l1("tag")), parsed("<tag/>")}) {
        QVERIFY(tree.has_tag(l1("tag")));
        QVERIFY(!tree.has_tag(l1("Tag")));
        QVERIFY(!tree.has_tag(l1("tags")));
        QVERIFY(!tree.has_tag(l1("ta")));
        QVERIFY(!tree.has_tag(AString()));
        QVERIFY(tree.has_tag_z("tag"));
        QVERIFY(!tree.has_tag_z("tags"));
        QVERIFY(!tree.has_tag_z(""));
    }
}

void TestXMLTree::children_are_kept_in_order_data()
{
    add_sample_rows();
}

void TestXMLTree::children_are_kept_in_order()
{
    QFETCH(XMLTree, sample);
    QByteArray walked;
    for (XMLTree const &child : sample.children())
        walked += flat(child);
    QCOMPARE(walked, QByteArray("<b>1</b><c>2</c><b><d>3</d></b>"));
    QByteArray listed;
    for (XMLTree const &child : sample.get_subnodes())
        listed += flat(child);
    QCOMPARE(listed, walked);
    QCOMPARE(sample.get_subnodes().size(), 3u);
    QCOMPARE(sample.count_subnodes(), 3u);
    QVERIFY(sample.has_subnodes());
    QCOMPARE(&sample.get_subnodes(), &sample.get_subnodes());
}

void TestXMLTree::subnodes_are_found_by_tag_data()
{
    add_sample_rows();
}

void TestXMLTree::subnodes_are_found_by_tag()
{
    QFETCH(XMLTree, sample);
    QVERIFY(sample.has_subnodes(l1("b")));
    QVERIFY(!sample.has_subnodes(l1("d")));
    QCOMPARE(flat(sample.get_subnode(l1("b"))), QByteArray("<b>1</b>"));
    QCOMPARE(flat(sample.get_subnode(l1("c"))), QByteArray("<c>2</c>"));
    AList<XMLTree> const both = sample.get_subnodes(l1("b"));
    QCOMPARE(both.size(), 2u);
    QCOMPARE(flat(both.front()), QByteArray("<b>1</b>"));
    QCOMPARE(flat(both.back()), QByteArray("<b><d>3</d></b>"));
    QVERIFY(sample.get_subnodes(l1("d")).empty());
    XMLTree first;
    QCOMPARE(sample.count_subnodes(l1("b"), &first), 2u);
    QCOMPARE(flat(first), QByteArray("<b>1</b>"));
    QCOMPARE(sample.count_subnodes(l1("b")), 2u);
    QCOMPARE(sample.count_subnodes(l1("x")), 0u);
}

void TestXMLTree::missing_subnode_is_the_shared_null_tree()
{
    XMLTree const built = built_sample();
    XMLTree const read = parsed(sample_text);
    XMLTree const &none = built.get_subnode(l1("x"));
    QVERIFY(none.is_null());
    QCOMPARE(&read.get_subnode(l1("x")), &none);
    QCOMPARE(&XMLTree().get_subnode(l1("x")), &none);
    QCOMPARE(&none.get_subnode(l1("x")), &none);
}

void TestXMLTree::count_leaves_first_alone_without_a_match()
{
    XMLTree first(l1("kept"));
    QCOMPARE(built_sample().count_subnodes(l1("x"), &first), 0u);
    QVERIFY(first.has_tag_z("kept"));
}

void TestXMLTree::first_may_be_the_tree_that_is_asked()
{
    XMLTree tree = parsed(sample_text);
    QCOMPARE(tree.count_subnodes(l1("b"), &tree), 2u);
    QCOMPARE(flat(tree), QByteArray("<b>1</b>"));
}

void TestXMLTree::copies_are_independent_data()
{
    add_sample_rows();
}

void TestXMLTree::copies_are_independent()
{
    QFETCH(XMLTree, sample);
    XMLTree const before = sample;
    XMLTree changed = sample;
    changed.add_subnode(XMLTree(l1("e")));
    changed.get_modifiable_subnode(l1("b"))->set_content(l1("changed"));
    changed.attr()[l1("k")] = l1("v");
    QCOMPARE(flat(sample), QByteArray(sample_text));
    QCOMPARE(flat(before), QByteArray(sample_text));
    QCOMPARE(
        flat(changed), QByteArray("<a k=\"v\"><b>changed</b><c>2</c><b><d>3</d></b><e /></a>"));
}

void TestXMLTree::list_of_subnodes_outlives_its_tree()
{
    AList<XMLTree> kept;
    {
        XMLTree const message = parsed("<m><a><b>1</b></a><c>2</c></m>");
        kept = message.get_subnodes();
    }
    QCOMPARE(kept.size(), 2u);
    QCOMPARE(flat(kept.front()), QByteArray("<a><b>1</b></a>"));
    QCOMPARE(flat(kept.front().get_subnodes().front()), QByteArray("<b>1</b>"));
    QCOMPARE(flat(kept.back()), QByteArray("<c>2</c>"));
}

void TestXMLTree::subnodes_of_listed_subnodes_can_be_walked()
{
    XMLTree const message = parsed("<m><a x=1><b y=2>1</b><b/></a></m>");
    XMLTree const &a = message.get_subnodes().front();
    QCOMPARE(a.attr().size(), size_t(1));
    QVERIFY(a.attr().at(l1("x")) == l1("1"));
    XMLTree const &b = a.get_subnodes().front();
    QVERIFY(b.attr().at(l1("y")) == l1("2"));
    QVERIFY(b.get_content() == l1("1"));
    QCOMPARE(&a.get_subnode(l1("b")), &b);
    XMLTree const kept = b;
    QCOMPARE(flat(kept), QByteArray("<b y=\"2\">1</b>"));
}

void TestXMLTree::part_of_a_message_outlives_the_rest()
{
    XMLTree part;
    {
        XMLTree const message = parsed("<m><a><b>1</b></a></m>");
        part = message.get_subnode(l1("a")).get_subnode(l1("b"));
    }
    QCOMPARE(flat(part), QByteArray("<b>1</b>"));
}

void TestXMLTree::subnode_is_changed_in_place_data()
{
    add_sample_rows();
}

void TestXMLTree::subnode_is_changed_in_place()
{
    QFETCH(XMLTree, sample);
    QVERIFY(!sample.get_modifiable_subnode(l1("x")));
    XMLTree *const b = sample.get_modifiable_subnode(l1("b"));
    QVERIFY(b);
    b->set_content(l1("new"));
    QCOMPARE(sample.get_modifiable_subnode(l1("b")), b);
    QCOMPARE(flat(sample), QByteArray("<a><b>new</b><c>2</c><b><d>3</d></b></a>"));
}

void TestXMLTree::tree_can_be_added_to_itself()
{
    XMLTree tree(l1("a"), l1("1"));
    tree.add_subnode(tree);
    QCOMPARE(flat(tree), QByteArray("<a><a>1</a></a>"));
    tree += tree.get_subnode(l1("a"));
    QCOMPARE(flat(tree), QByteArray("<a><a>1</a><a>1</a></a>"));
    tree.add_subnodes(tree.get_subnodes());
    QCOMPARE(tree.count_subnodes(), 4u);
    XMLTree read = parsed("<a><b/></a>");
    read.add_subnode(read);
    QCOMPARE(flat(read), QByteArray("<a><b /><a><b /></a></a>"));
}

void TestXMLTree::tree_can_be_replaced_by_its_part()
{
    XMLTree built = built_sample();
    built = built.get_subnode(l1("b"));
    QCOMPARE(flat(built), QByteArray("<b>1</b>"));
    XMLTree read = parsed(sample_text);
    read = read.get_subnode(l1("c"));
    QCOMPARE(flat(read), QByteArray("<c>2</c>"));
    XMLTree const &same = read;
    read = same;
    QCOMPARE(flat(read), QByteArray("<c>2</c>"));
    XMLTree moved = std::move(read);
    QVERIFY(read.is_null());
    QCOMPARE(flat(moved), QByteArray("<c>2</c>"));
}

void TestXMLTree::lists_are_appended()
{
    XMLTree tree = parsed("<a><b/></a>");
    tree.add_subnodes(parsed("<m><c/><d/></m>").get_subnodes());
    QCOMPARE(flat(tree), QByteArray("<a><b /><c /><d /></a>"));
    tree.add_subnodes({});
    QCOMPARE(tree.count_subnodes(), 3u);
}

void TestXMLTree::subnodes_are_removed_by_tag_data()
{
    add_sample_rows();
}

void TestXMLTree::subnodes_are_removed_by_tag()
{
    QFETCH(XMLTree, sample);
    QCOMPARE(sample.remove_subnodes(l1("x")), 0u);
    QCOMPARE(sample.remove_subnodes(l1("b")), 2u);
    QCOMPARE(flat(sample), QByteArray("<a><c>2</c></a>"));
    QCOMPARE(sample.remove_subnodes(l1("c")), 1u);
    QVERIFY(!sample.has_subnodes());
}

void TestXMLTree::set_content_drops_children()
{
    XMLTree tree = built_sample();
    tree.set_content(l1("x"));
    QCOMPARE(flat(tree), QByteArray("<a>x</a>"));
    XMLTree read = parsed("<a k=1><b/></a>");
    read.set_content(l1("x"));
    QCOMPARE(flat(read), QByteArray("<a k=\"1\">x</a>"));
}

void TestXMLTree::set_subnode_replaces_the_first_match_data()
{
    add_sample_rows();
}

void TestXMLTree::set_subnode_replaces_the_first_match()
{
    QFETCH(XMLTree, sample);
    sample.set_subnode(l1("b"), l1("new"));
    QCOMPARE(flat(sample), QByteArray("<a><b>new</b><c>2</c><b><d>3</d></b></a>"));
    sample.set_subnode(parsed("<c><e/></c>"));
    QCOMPARE(flat(sample), QByteArray("<a><b>new</b><c><e /></c><b><d>3</d></b></a>"));
    QVERIFY(sample.get_subnode(l1("c")).get_content().empty());
    sample.set_subnode(l1("f"), l1("6"));
    AList<XMLTree> list;
    list.push_back(XMLTree(l1("g")));
    sample.set_subnode(l1("f"), list);
    QCOMPARE(flat(sample), QByteArray("<a><b>new</b><c><e /></c><b><d>3</d></b><f><g /></f></a>"));
}

void TestXMLTree::set_subnode_keeps_the_attributes()
{
    XMLTree tree = parsed("<a><b k=1>old</b></a>");
    tree.set_subnode(parsed("<b l=2>new</b>"));
    QCOMPARE(flat(tree), QByteArray("<a><b k=\"1\">new</b></a>"));
    tree.set_subnode(parsed("<c l=2>new</c>"));
    QCOMPARE(flat(tree.get_subnode(l1("c"))), QByteArray("<c l=\"2\">new</c>"));
}

void TestXMLTree::set_subnode_of_an_own_part()
{
    XMLTree tree = built_sample();
    tree.set_subnode(tree.get_subnodes().back());
    QCOMPARE(flat(tree), QByteArray("<a><b><d>3</d></b><c>2</c><b><d>3</d></b></a>"));
    XMLTree nested(l1("a"), XMLTree(l1("a"), l1("1")));
    nested.set_subnode(nested);
    QCOMPARE(flat(nested), QByteArray("<a><a><a>1</a></a></a>"));
}

void TestXMLTree::attributes_can_be_changed_data()
{
    QTest::addColumn<XMLTree>("tree");
    XMLTree built(l1("a"), XMLTree(l1("b")));
    built.attr()[l1("y")] = l1("2");
    built.attr()[l1("x")] = l1("1");
    QTest::newRow("built") << built;
    QTest::newRow("parsed") << parsed("<a y=2 x=1><b/></a>");
}

void TestXMLTree::attributes_can_be_changed()
{
    QFETCH(XMLTree, tree);
    XMLTree const before = tree;
    QCOMPARE(flat(tree), QByteArray("<a x=\"1\" y=\"2\"><b /></a>"));
    tree.attr().erase(l1("x"));
    tree.attr()[l1("z")] = l1("3");
    QCOMPARE(flat(tree), QByteArray("<a y=\"2\" z=\"3\"><b /></a>"));
    QCOMPARE(flat(before), QByteArray("<a x=\"1\" y=\"2\"><b /></a>"));
    QCOMPARE(&before.attr(), &before.attr());
}

void TestXMLTree::changed_attributes_do_not_reach_a_copy()
{
    XMLTree tree(l1("a"));
    XMLTree::Attributes &attributes = tree.attr();
    XMLTree const copy = tree;
    attributes[l1("k")] = l1("v");
    QVERIFY(copy.attr().empty());
    QCOMPARE(flat(tree), QByteArray("<a k=\"v\" />"));
    XMLTree const second = copy;
    QCOMPARE(&second.attr(), &copy.attr());
}

void TestXMLTree::null_tree_stays_null_when_it_is_changed()
{
    XMLTree tree;
    tree.set_content(l1("x"));
    QVERIFY(tree.is_null());
    QVERIFY(tree.get_content() == l1("x"));
    tree.add_subnode(XMLTree(l1("b")));
    QVERIFY(tree.is_null());
    QCOMPARE(tree.count_subnodes(), 1u);
    QVERIFY(XMLTree(tree).is_null());
}

void TestXMLTree::equality_regards_every_field_data()
{
    QTest::addColumn<XMLTree>("a");
    QTest::addColumn<XMLTree>("b");
    QTest::addColumn<bool>("equal");
    QTest::newRow("null") << XMLTree() << XMLTree() << true;
    QTest::newRow("null and no tag") << XMLTree() << XMLTree(AString()) << false;
    QTest::newRow("built and parsed") << built_sample() << parsed(sample_text) << true;
    QTest::newRow("tag") << parsed("<a/>") << parsed("<b/>") << false;
    QTest::newRow("content") << parsed("<a>1</a>") << parsed("<a>2</a>") << false;
    QTest::newRow("attribute") << parsed("<a k=1/>") << parsed("<a k=2/>") << false;
    QTest::newRow("order") << parsed("<a><b/><c/></a>") << parsed("<a><c/><b/></a>") << false;
    QTest::newRow("one more") << parsed("<a><b/></a>") << parsed("<a><b/><b/></a>") << false;
    QTest::newRow("deep down") << parsed("<a><b><c>1</c></b></a>")
                               << parsed("<a><b><c>2</c></b></a>") << false;
    QTest::newRow("behind a deep one")
        << parsed("<a><b><c>1</c></b><d/></a>") << parsed("<a><b><c>1</c></b><e/></a>") << false;
}

void TestXMLTree::equality_regards_every_field()
{
    QFETCH(XMLTree, a);
    QFETCH(XMLTree, b);
    QFETCH(bool, equal);
    QCOMPARE(a == b, equal);
    QCOMPARE(b == a, equal);
    QCOMPARE(a != b, !equal);
    QVERIFY(a == XMLTree(a));
}

QTEST_GUILESS_MAIN(TestXMLTree)
#include "tst_xml_tree.moc"
