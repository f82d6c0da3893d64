// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_parse_engine.h"
#include "tests/support/thoroughness.h"
#include "tests/xml/xml_texts.h"

#include <QTest>
#include <pthread.h>

/// Trees may be as deep as the bytes of a message allow; none of what is done with them may use
/// the call stack for that.
class TestXMLDepth : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void deep_tree_needs_little_stack_data();
    void deep_tree_needs_little_stack();
};

namespace {

// Under a sanitizer frames and the runtime itself need more.
constexpr std::size_t frame_growth = sanitized ? 8 : 1;

struct Job
{
    bool (*work)(int depth);
    int depth;
    bool good = false;
};

bool run_on_stack(Job &job, std::size_t stack)
{
    auto const entry = [](void *p) -> void * {
        Job &own = *static_cast<Job *>(p);
        own.good = own.work(own.depth);
        return nullptr;
    };
    pthread_attr_t attributes;
    pthread_t thread;
    pthread_attr_init(&attributes);
    bool const started = pthread_attr_setstacksize(&attributes, stack) == 0
        && pthread_create(&thread, &attributes, entry, &job) == 0;
    pthread_attr_destroy(&attributes);
    if (started)
        pthread_join(thread, nullptr);
    return started && job.good;
}

QByteArray deep_text(int depth)
{
    return QByteArray("<a>").repeated(depth) + "x" + QByteArray("</a>").repeated(depth);
}

XMLTree deep_parsed(int depth)
{
    QByteArray const text = deep_text(depth);
    return XMLParse(
        AString::from_latin1(text.constData(), static_cast<unsigned long long>(text.size())));
}

XMLTree deep_built(int depth)
{
    XMLTree tree(l1("a"), l1("x"));
    for (int i = 1; i < depth; ++i) {
        XMLTree around(l1("a"));
        around.add_subnode(tree);
        tree = around;
    }
    return tree;
}

bool use(XMLTree const &tree, int depth)
{
    XMLTree copy = tree;
    copy.attr()[l1("k")] = l1("v");
    copy.attr().clear();
    return sent(tree) == deep_text(depth) && flat(copy) == deep_text(depth) && copy == tree
        && flat(tree, XMLTree::FlattenLines).size() > depth * 8;
}

bool parsed_text(int depth)
{
    return use(deep_parsed(depth), depth);
}

bool streamed(int depth)
{
    QByteArray const text = "<m>" + deep_text(depth) + "</m>";
    XMLParseEngine engine(static_cast<unsigned long long>(text.size()));
    engine.config_tag("m");
    engine.input_bytes(static_cast<unsigned long long>(text.size()), text.constData());
    return use(engine.get_xml().get_subnode(l1("a")), depth);
}

bool built(int depth)
{
    return use(deep_built(depth), depth);
}

bool built_and_parsed(int depth)
{
    return deep_built(depth) == deep_parsed(depth);
}

/// Each level through the list of the level above, the last one kept longest.
bool walked_by_lists(int depth)
{
    XMLTree const tree = deep_parsed(depth);
    AList<XMLTree> last = tree.get_subnodes();
    for (int i = 2; i < depth; ++i)
        last = AList<XMLTree>(last.const_at(0).get_subnodes());
    return last.const_at(0).get_content() == l1("x");
}

/// All lists of all levels exist at once.
bool walked_by_references(int depth)
{
    XMLTree const tree = deep_parsed(depth);
    XMLTree const *place = &tree;
    while (place->has_subnodes())
        place = &place->get_subnodes().const_at(0);
    XMLTree const kept = *place;
    return kept.get_content() == l1("x");
}

bool changed_at_every_level(int depth)
{
    XMLTree tree = deep_parsed(depth);
    XMLTree *place = &tree;
    while (XMLTree *child = place->get_modifiable_subnode(l1("a")))
        place = child;
    place->set_content(l1("y"));
    return sent(tree).contains("<a>y</a>");
}

bool list_alone(int depth)
{
    AList<XMLTree> list;
    list.push_back(deep_built(depth));
    list.push_back(deep_parsed(depth));
    AList<XMLTree> copy = list;
    copy.push_back(XMLTree(l1("b")));
    list.clear();
    nonstd_list<XMLTree> own(copy.const_ref());
    copy.clear();
    return own.size() == 3;
}

} // namespace

void TestXMLDepth::deep_tree_needs_little_stack_data()
{
    using Work = bool (*)(int);
    QTest::addColumn<Work>("work");
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("stack_kib");
    std::pair<char const *, Work> const works[] = {{"parsed", &parsed_text},
        {"streamed", &streamed}, {"built", &built}, {"built and parsed", &built_and_parsed},
        {"walked by lists", &walked_by_lists}, {"walked by references", &walked_by_references},
        {"changed at every level", &changed_at_every_level}, {"list alone", &list_alone}};
    for (auto const &[name, work] : works) {
        QTest::addRow("%s, 21800 on 512 KiB", name) << work << 21800 << 512;
        QTest::addRow("%s, 10900 on 64 KiB", name) << work << 10900 << 64;
    }
}

void TestXMLDepth::deep_tree_needs_little_stack()
{
    using Work = bool (*)(int);
    QFETCH(Work, work);
    QFETCH(int, depth);
    QFETCH(int, stack_kib);
    Job job{work, depth};
    QVERIFY(run_on_stack(job, static_cast<std::size_t>(stack_kib) * 1024 * frame_growth));
}

QTEST_GUILESS_MAIN(TestXMLDepth)
#include "tst_xml_depth.moc"
