// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_item_model.h"
#include "tests/support/assert_log.h"
#include "tests/support/astring_make.h"
#include "tests/support/latin1_text.h"

#include <QSignalSpy>
#include <QTest>

#include <thread>

using VCTP3::ConfigurationItem;

/// One item, fed by hand.
class TestCFItemModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads_as_empty_before_it_has_arrived();
    void reads_the_effective_value();
    void an_item_that_requires_a_reboot_reads_its_boot_value();
    void reads_what_was_typed_even_before_the_item_has_arrived();
    void typing_the_present_value_changes_nothing_data();
    void typing_the_present_value_changes_nothing();
    void takes_numbers_as_their_text();
    void tells_a_change_in_every_form_data();
    void tells_a_change_in_every_form();
    void an_equal_item_tells_nothing();
    void any_other_field_tells_a_change_data();
    void any_other_field_tells_a_change();
    void another_items_values_are_an_assertion();
    void an_arriving_item_ends_the_edit_that_it_has_caught_up_with();
    void an_arriving_item_keeps_another_edit();
    void an_equal_item_ends_an_edit_too();
    void fixup_ends_an_edit_that_the_server_holds();
    void typing_the_old_value_back_leaves_no_changes();
    void a_revert_drops_the_edit();
    void a_revert_without_an_edit_tells_nothing();
    void knows_what_is_allowed();
    void any_text_is_allowed_where_none_is_listed();
    void needs_a_reboot_for_what_is_not_in_force_data();
    void needs_a_reboot_for_what_is_not_in_force();
    void a_commit_is_done_when_the_server_has_saved_it();
    void only_a_hot_item_tells_a_hot_change();
    void a_hot_change_is_told_behind_every_form();
    void two_threads_may_read_and_write();
};

namespace {

ConfigurationItem item(AString const &value)
{
    ConfigurationItem result;
    result.configuration_item_name = "Item"_a;
    result.configuration_item_effective_value = value;
    result.configuration_item_boot_value = value;
    result.configuration_item_saved_value = value;
    result.configuration_item_allowed_values.push_back("a"_a);
    result.configuration_item_allowed_values.push_back("b"_a);
    return result;
}

/// One that was set to \a value and waits for a reboot until then \a effective holds.
ConfigurationItem waiting(AString const &effective, AString const &value)
{
    ConfigurationItem result = item(value);
    result.configuration_item_effective_value = effective;
    result.configuration_item_requires_reboot = true;
    return result;
}

struct Model
{
    CFItemModel item{text("Item")};
    QSignalSpy changed{&item, qOverload<>(&CFItemModel::changed)};
    QSignalSpy hot_changed{&item, &CFItemModel::hot_change};
};

} // namespace

void TestCFItemModel::reads_as_empty_before_it_has_arrived()
{
    Model m;
    QCOMPARE(m.item.get_name(), text("Item"));
    QVERIFY(!m.item.have_cf());
    QCOMPARE(m.item.get(), QString());
    QCOMPARE(m.item.cf_get(), QString());
    QVERIFY(m.item.allowed_values().isEmpty());
    QVERIFY(!m.item.is_allowed(text("a")));
    QVERIFY(!m.item.have_changes());
    QVERIFY(!m.item.need_reboot());
    QVERIFY(m.item.commit_done());
    QVERIFY(!m.item.hot());
}

void TestCFItemModel::reads_the_effective_value()
{
    Model m;
    ConfigurationItem cf = item("a"_a);
    cf.configuration_item_boot_value = "boot"_a;
    cf.configuration_item_saved_value = "saved"_a;
    m.item.config(cf);
    QVERIFY(m.item.have_cf());
    QCOMPARE(m.item.cf_get(), text("a"));
    QCOMPARE(m.item.get(), text("a"));
}

void TestCFItemModel::an_item_that_requires_a_reboot_reads_its_boot_value()
{
    Model m;
    ConfigurationItem cf = waiting("a"_a, "b"_a);
    cf.configuration_item_saved_value = "saved"_a;
    m.item.config(cf);
    QCOMPARE(m.item.cf_get(), text("b"));
    QCOMPARE(m.item.get(), text("b"));
}

void TestCFItemModel::reads_what_was_typed_even_before_the_item_has_arrived()
{
    Model m;
    m.item.set(text("b"));
    QCOMPARE(m.item.get(), text("b"));
    QCOMPARE(m.item.cf_get(), QString());
    QVERIFY(m.item.have_changes());
    QVERIFY(!m.item.commit_done());
    m.item.config(item("a"_a));
    QCOMPARE(m.item.get(), text("b"));
    QCOMPARE(m.item.cf_get(), text("a"));
    QVERIFY(m.item.have_changes());
}

void TestCFItemModel::typing_the_present_value_changes_nothing_data()
{
    QTest::addColumn<bool>("arrived");
    QTest::addColumn<QString>("value");
    QTest::newRow("nothing, before it has arrived") << false << QString();
    QTest::newRow("what the server holds") << true << text("a");
}

void TestCFItemModel::typing_the_present_value_changes_nothing()
{
    QFETCH(bool, arrived);
    QFETCH(QString, value);
    Model m;
    if (arrived)
        m.item.config(item("a"_a));
    m.changed.clear();
    m.item.set(value);
    QVERIFY(!m.item.have_changes());
    QCOMPARE(m.changed.count(), 0);
    m.item.set(text("b"));
    m.item.set(text("b"));
    QCOMPARE(m.changed.count(), 1);
}

void TestCFItemModel::takes_numbers_as_their_text()
{
    Model m;
    m.item.set(-12);
    QCOMPARE(m.item.get(), text("-12"));
    m.item.set(4294967295U);
    QCOMPARE(m.item.get(), text("4294967295"));
    m.item.set(0);
    QCOMPARE(m.item.get(), text("0"));
}

void TestCFItemModel::tells_a_change_in_every_form_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("number");
    QTest::addColumn<unsigned int>("natural");
    QTest::newRow("a number") << text("12") << 12 << 12U;
    QTest::newRow("below zero") << text("-3") << -3 << 0U;
    QTest::newRow("the greatest") << text("4294967295") << 0 << 4294967295U;
    QTest::newRow("no number") << text("a") << 0 << 0U;
}

void TestCFItemModel::tells_a_change_in_every_form()
{
    QFETCH(QString, value);
    Model m;
    QSignalSpy texts(&m.item, qOverload<QString const &>(&CFItemModel::changed));
    QSignalSpy numbers(&m.item, qOverload<int>(&CFItemModel::changed));
    QSignalSpy naturals(&m.item, qOverload<unsigned int>(&CFItemModel::changed));
    QSignalSpy named(&m.item, qOverload<QString const &, QString const &>(&CFItemModel::changed));
    m.item.set(value);
    QCOMPARE(m.changed.count(), 1);
    QCOMPARE(texts.value(0), QVariantList{value});
    QTEST(numbers.value(0).value(0).toInt(), "number");
    QTEST(naturals.value(0).value(0).toUInt(), "natural");
    QCOMPARE(named.value(0), (QVariantList{text("Item"), value}));
}

void TestCFItemModel::an_equal_item_tells_nothing()
{
    Model m;
    m.item.config(item("a"_a));
    QCOMPARE(m.changed.count(), 1);
    m.item.config(item("a"_a));
    QCOMPARE(m.changed.count(), 1);
}

void TestCFItemModel::any_other_field_tells_a_change_data()
{
    QTest::addColumn<int>("field");
    QTest::newRow("access") << 0;
    QTest::newRow("effective value") << 1;
    QTest::newRow("boot value") << 2;
    QTest::newRow("saved value") << 3;
    QTest::newRow("allowed values") << 4;
    QTest::newRow("requires reboot") << 5;
}

void TestCFItemModel::any_other_field_tells_a_change()
{
    QFETCH(int, field);
    ConfigurationItem other = item("a"_a);
    switch (field) {
    case 0:
        other.configuration_item_access = VCTP3::ConfigurationItemAccess::eng;
        break;
    case 1:
        other.configuration_item_effective_value = "b"_a;
        break;
    case 2:
        other.configuration_item_boot_value = "b"_a;
        break;
    case 3:
        other.configuration_item_saved_value = "b"_a;
        break;
    case 4:
        other.configuration_item_allowed_values.push_back("c"_a);
        break;
    case 5:
        other.configuration_item_requires_reboot = true;
        break;
    }
    Model m;
    m.item.config(item("a"_a));
    m.item.config(other);
    QCOMPARE(m.changed.count(), 2);
}

void TestCFItemModel::another_items_values_are_an_assertion()
{
    Model m;
    ConfigurationItem other = item("a"_a);
    other.configuration_item_name = "item"_a;
    AssertLog asserts;
    m.item.config(other);
    QCOMPARE(asserts.take(), QStringList{text("cf.name == name")});
    QVERIFY(!m.item.have_cf());
    QCOMPARE(m.changed.count(), 0);
}

void TestCFItemModel::an_arriving_item_ends_the_edit_that_it_has_caught_up_with()
{
    Model m;
    m.item.config(item("a"_a));
    m.item.set(text("b"));
    bool changes_in_slot = true;
    connect(&m.item, qOverload<>(&CFItemModel::changed), this,
        [&] { changes_in_slot = m.item.have_changes(); });
    m.item.config(item("b"_a));
    QVERIFY(!changes_in_slot);
    // The edit is gone: from here on the item follows the server.
    m.item.config(item("a"_a));
    QCOMPARE(m.item.get(), text("a"));
}

void TestCFItemModel::an_arriving_item_keeps_another_edit()
{
    Model m;
    m.item.config(item("a"_a));
    m.item.set(text("b"));
    m.item.config(item("c"_a));
    QCOMPARE(m.item.get(), text("b"));
    QCOMPARE(m.item.cf_get(), text("c"));
    QVERIFY(m.item.have_changes());
}

void TestCFItemModel::an_equal_item_ends_an_edit_too()
{
    Model m;
    m.item.config(item("a"_a));
    m.item.set(text("b"));
    m.item.set(text("a"));
    m.item.config(item("a"_a));
    m.item.config(item("b"_a));
    QCOMPARE(m.item.get(), text("b"));
}

void TestCFItemModel::fixup_ends_an_edit_that_the_server_holds()
{
    Model m;
    m.item.config(item("a"_a));
    m.item.set(text("b"));
    m.item.fixup_set_value();
    QCOMPARE(m.item.get(), text("b"));
    m.item.set(text("a"));
    m.item.fixup_set_value();
    m.item.config(item("b"_a));
    QCOMPARE(m.item.get(), text("b"));
}

void TestCFItemModel::typing_the_old_value_back_leaves_no_changes()
{
    Model m;
    m.item.config(item("a"_a));
    m.item.set(text("b"));
    m.item.set(text("a"));
    QCOMPARE(m.changed.count(), 3);
    QVERIFY(!m.item.have_changes());
    QVERIFY(m.item.commit_done());
}

void TestCFItemModel::a_revert_drops_the_edit()
{
    Model m;
    m.item.config(item("a"_a));
    m.item.set(text("b"));
    m.changed.clear();
    m.item.revert_item();
    QCOMPARE(m.changed.count(), 1);
    QCOMPARE(m.item.get(), text("a"));
    QVERIFY(!m.item.have_changes());
}

void TestCFItemModel::a_revert_without_an_edit_tells_nothing()
{
    Model m;
    m.item.config(item("a"_a));
    m.item.revert_item();
    QCOMPARE(m.changed.count(), 1);
}

void TestCFItemModel::knows_what_is_allowed()
{
    Model m;
    m.item.config(item("a"_a));
    QCOMPARE(m.item.allowed_values(), (QList<QString>{text("a"), text("b")}));
    QVERIFY(m.item.is_allowed(text("b")));
    QVERIFY(!m.item.is_allowed(text("B")));
    QVERIFY(!m.item.is_allowed(QString()));
}

void TestCFItemModel::any_text_is_allowed_where_none_is_listed()
{
    Model m;
    ConfigurationItem cf = item("a"_a);
    cf.configuration_item_allowed_values.clear_all();
    m.item.config(cf);
    QVERIFY(m.item.allowed_values().isEmpty());
    QVERIFY(m.item.is_allowed(text("anything")));
}

void TestCFItemModel::needs_a_reboot_for_what_is_not_in_force_data()
{
    QTest::addColumn<bool>("requires_reboot");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("needed");
    QTest::newRow("an item that holds at once") << false << text("b") << false;
    QTest::newRow("what the server has for its next start") << true << QString() << true;
    QTest::newRow("an edit") << true << text("c") << true;
    QTest::newRow("an edit back to what is in force") << true << text("a") << false;
}

void TestCFItemModel::needs_a_reboot_for_what_is_not_in_force()
{
    QFETCH(bool, requires_reboot);
    QFETCH(QString, typed);
    Model m;
    ConfigurationItem cf = waiting("a"_a, "b"_a);
    cf.configuration_item_requires_reboot = requires_reboot;
    m.item.config(cf);
    if (!typed.isEmpty())
        m.item.set(typed);
    QTEST(m.item.need_reboot(), "needed");
}

void TestCFItemModel::a_commit_is_done_when_the_server_has_saved_it()
{
    Model m;
    m.item.config(item("a"_a));
    m.item.set(text("b"));
    QVERIFY(!m.item.commit_done());
    ConfigurationItem saved = item("a"_a);
    saved.configuration_item_saved_value = "b"_a;
    m.item.config(saved);
    QVERIFY(m.item.commit_done());
    m.item.revert_item();
    QVERIFY(m.item.commit_done());
}

void TestCFItemModel::only_a_hot_item_tells_a_hot_change()
{
    Model m;
    m.item.set(text("a"));
    QCOMPARE(m.hot_changed.count(), 0);
    m.item.setHot(true);
    QVERIFY(m.item.hot());
    QCOMPARE(m.hot_changed.count(), 0);
    m.item.set(text("b"));
    QCOMPARE(m.hot_changed.count(), 1);
    m.item.setHot(false);
    m.item.set(text("c"));
    QCOMPARE(m.hot_changed.count(), 1);
}

void TestCFItemModel::a_hot_change_is_told_behind_every_form()
{
    Model m;
    m.item.setHot(true);
    int told = 0;
    int told_before = 0;
    auto const count = [&] { ++told; };
    connect(&m.item, qOverload<>(&CFItemModel::changed), this, count);
    connect(&m.item, qOverload<QString const &>(&CFItemModel::changed), this, count);
    connect(&m.item, qOverload<int>(&CFItemModel::changed), this, count);
    connect(&m.item, qOverload<unsigned int>(&CFItemModel::changed), this, count);
    connect(
        &m.item, qOverload<QString const &, QString const &>(&CFItemModel::changed), this, count);
    connect(&m.item, &CFItemModel::hot_change, this, [&] { told_before = told; });
    m.item.set(text("a"));
    QCOMPARE(told_before, 5);
    QCOMPARE(told, 5);
}

void TestCFItemModel::two_threads_may_read_and_write()
{
    CFItemModel model(text("Item"));
    std::thread typist([&] {
        for (int i = 0; i < 2000; ++i)
            model.set(i % 2 == 0 ? text("a") : text("b"));
    });
    int whole = 0;
    for (int i = 0; i < 2000; ++i) {
        model.config(item(i % 2 == 0 ? "a"_a : "b"_a));
        QString const value = model.get();
        whole += value == text("a") || value == text("b") ? 1 : 0;
    }
    typist.join();
    QCOMPARE(whole, 2000);
    model.config(item("b"_a));
    QCOMPARE(model.get(), text("b"));
}

QTEST_GUILESS_MAIN(TestCFItemModel)
#include "tst_cf_item_model.moc"
