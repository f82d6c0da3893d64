// SPDX-License-Identifier: Apache-2.0
#include "tests/xml/xml_texts.h"

#include <QTest>
#include <atomic>
#include <functional>
#include <thread>
#include <vector>

class TestXMLTreeThreads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void many_may_read_one_tree();
    void copies_may_be_changed_in_different_threads();
    void last_copy_may_go_in_any_thread();
    void list_may_outlive_its_tree_in_another_thread();
};

namespace {

constexpr int rounds = 200;
constexpr int threads = 4;

/// Runs the function in several threads that begin together.
void together(std::function<void(int)> const &work)
{
    std::atomic<int> ready{0};
    std::vector<std::thread> running;
    for (int i = 0; i < threads; ++i) {
        running.emplace_back([&, i] {
            ++ready;
            while (ready < threads)
                std::this_thread::yield();
            work(i);
        });
    }
    for (std::thread &thread : running)
        thread.join();
}

constexpr char const *message = "<m k=1><a x=2><b>1</b><b>2</b></a><c>3</c></m>";

/// Touches all that is made at the first access.
bool read_all(XMLTree const &tree)
{
    AList<XMLTree> const &list = tree.get_subnodes();
    if (list.size() != 2 || tree.attr().size() != 1)
        return false;
    XMLTree const &a = list.front();
    if (a.attr().size() != 1 || a.get_subnodes().size() != 2)
        return false;
    XMLTree const &same = tree.get_subnode(l1("a"));
    return same.attr() == a.attr() && same.get_subnodes().front().get_content() == l1("1")
        && a.get_subnodes().back().get_content() == l1("2");
}

} // namespace

void TestXMLTreeThreads::many_may_read_one_tree()
{
    for (int i = 0; i < rounds; ++i) {
        XMLTree const tree = parsed(message);
        std::atomic<int> good{0};
        together([&](int) { good += read_all(tree) ? 1 : 0; });
        QCOMPARE(good.load(), threads);
    }
}

void TestXMLTreeThreads::copies_may_be_changed_in_different_threads()
{
    for (int i = 0; i < rounds; ++i) {
        XMLTree const tree = parsed(message);
        XMLTree built(l1("m"), XMLTree(l1("a"), l1("1")));
        std::vector<XMLTree> copies(threads, tree);
        std::vector<XMLTree> others(threads, built);
        std::atomic<int> good{0};
        together([&](int n) {
            XMLTree &copy = copies[static_cast<std::size_t>(n)];
            XMLTree &other = others[static_cast<std::size_t>(n)];
            copy.add_subnode(other);
            copy.get_modifiable_subnode(l1("a"))->set_content(l1("x"));
            other.attr()[l1("k")] = l1("v");
            other.set_subnode(copy.get_subnode(l1("c")));
            good += read_all(tree) && copy.count_subnodes() == 3 && other.count_subnodes() == 2;
        });
        QCOMPARE(good.load(), threads);
        QCOMPARE(flat(built), QByteArray("<m><a>1</a></m>"));
    }
}

void TestXMLTreeThreads::last_copy_may_go_in_any_thread()
{
    for (int i = 0; i < rounds; ++i) {
        std::vector<XMLTree> copies(threads, parsed(message));
        together([&](int n) {
            XMLTree &copy = copies[static_cast<std::size_t>(n)];
            XMLTree const part = copy.get_subnode(l1("a"));
            copy.get_subnodes();
            copy = XMLTree();
            part.get_subnodes();
        });
    }
}

void TestXMLTreeThreads::list_may_outlive_its_tree_in_another_thread()
{
    for (int i = 0; i < rounds; ++i) {
        std::vector<AList<XMLTree>> lists;
        {
            XMLTree const tree = parsed(message);
            for (int n = 0; n < threads; ++n)
                lists.push_back(tree.get_subnodes());
        }
        std::atomic<int> good{0};
        together([&](int n) {
            AList<XMLTree> &list = lists[static_cast<std::size_t>(n)];
            good += list.const_at(0).get_subnodes().size() == 2 ? 1 : 0;
            list.push_back(XMLTree(l1("x")));
            list.clear();
        });
        QCOMPARE(good.load(), threads);
    }
}

QTEST_GUILESS_MAIN(TestXMLTreeThreads)
#include "tst_xml_tree_threads.moc"
