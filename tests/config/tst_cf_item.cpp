// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_check_box.h"
#include "ATarnLib/config/cf_combo_box.h"
#include "ATarnLib/config/cf_control_panel.h"
#include "ATarnLib/config/cf_item.h"
#include "ATarnLib/config/cf_label.h"
#include "ATarnLib/config/cf_line_edit.h"
#include "ATarnLib/config/cf_radio_buttons.h"
#include "tests/config/binding_bench.h"
#include "tests/support/assert_log.h"

#include <QSignalSpy>
#include <QTest>

#include <thread>

/// What all bindings have in common, and the plain ones: line edit and label.
class TestCFItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void a_line_edit_shows_the_item_and_types_into_it();
    void a_line_edit_writes_only_what_differs();
    void what_is_shown_is_not_typed();
    void another_clients_change_shows_unless_something_is_typed();
    void the_cursor_stays_while_the_text_is_the_same();
    void a_label_shows_the_item_and_saves_its_text();
    void a_label_shows_what_looks_like_markup_as_it_is();
    void autohide_hides_until_the_item_has_arrived();
    void autohide_shows_a_widget_whose_place_another_takes();
    void autohide_leaves_a_widget_whose_item_is_here();
    void autohide_keeps_hiding_where_the_server_has_no_such_item();
    void a_hot_binding_sends_every_change_at_once();
    void two_bindings_of_one_item_follow_each_other();
    void a_widget_shows_the_item_also_where_a_slot_sets_again();
    void a_widget_shows_what_was_typed_behind_a_set_of_another_thread();
    void a_binding_without_a_parent_goes_with_its_widget();
    void a_widget_may_go_before_its_binding();
    void the_model_may_go_before_the_binding();
    void a_binding_without_a_model_is_an_assertion();
    void a_binding_without_a_widget_is_an_assertion();
    void a_control_panel_without_a_model_is_an_assertion();
};

namespace {

QString const panel = QStringLiteral("ControlPanel_ID0");

/// What a widget shows as soon as it is bound.
template <typename Binding, typename Widget>
QString shown_at_once(BindingBench &b, QString const &item)
{
    Widget widget;
    Binding const binding(b.model, item, &widget);
    return widget.text();
}

} // namespace

void TestCFItem::a_line_edit_shows_the_item_and_types_into_it()
{
    BindingBench b;
    QLineEdit edit;
    CFLineEdit binding(b.model, panel, &edit);
    QCOMPARE(binding.get_model(), b.model);
    QCOMPARE(binding.get_item(), b.item(panel));
    QVERIFY(b.scan());
    QVERIFY(b.set_on_server("ControlPanel_ID0", "one"));
    QCOMPARE(edit.text(), QStringLiteral("one"));
    edit.selectAll();
    QTest::keyClicks(&edit, QStringLiteral("two"));
    QCOMPARE(b.item(panel)->get(), QStringLiteral("two"));
    QCOMPARE(b.committed("ControlPanel_ID0"), QStringLiteral("two"));
    QVERIFY(!b.model->have_changes());
    QCOMPARE((shown_at_once<CFLineEdit, QLineEdit>(b, panel)), QStringLiteral("two"));
}

void TestCFItem::a_line_edit_writes_only_what_differs()
{
    BindingBench b;
    QLineEdit edit;
    CFLineEdit binding(b.model, panel, &edit);
    QSignalSpy changes(&binding, &CFItem::sig_change);
    QTest::keyClicks(&edit, QStringLiteral("a"));
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes[0], QVariantList{QStringLiteral("a")});
    binding.send_change();
    QCOMPARE(changes.count(), 1);
    QTest::keyClick(&edit, Qt::Key_Backspace);
    QCOMPARE(changes.count(), 2);
    QCOMPARE(b.item(panel)->get(), QString());
}

void TestCFItem::what_is_shown_is_not_typed()
{
    BindingBench b;
    QLineEdit edit;
    CFLineEdit binding(b.model, panel, &edit);
    QSignalSpy changes(&binding, &CFItem::sig_change);
    binding.cf(QStringLiteral("shown"));
    QCOMPARE(edit.text(), QStringLiteral("shown"));
    QCOMPARE(changes.count(), 0);
    QVERIFY(!b.model->have_changes());
}

void TestCFItem::another_clients_change_shows_unless_something_is_typed()
{
    BindingBench b;
    QLineEdit edit;
    CFLineEdit binding(b.model, panel, &edit);
    QVERIFY(b.scan());
    QVERIFY(b.set_on_server("ControlPanel_ID0", "one"));
    QCOMPARE(edit.text(), QStringLiteral("one"));
    edit.setText(QStringLiteral("mine"));
    QVERIFY(b.set_on_server("ControlPanel_ID0", "theirs"));
    QCOMPARE(edit.text(), QStringLiteral("mine"));
    b.model->revert_all_items();
    QCOMPARE(edit.text(), QStringLiteral("theirs"));
}

void TestCFItem::the_cursor_stays_while_the_text_is_the_same()
{
    BindingBench b;
    QLineEdit edit;
    CFLineEdit binding(b.model, panel, &edit);
    QVERIFY(b.scan());
    QTest::keyClicks(&edit, QStringLiteral("abc"));
    edit.setCursorPosition(1);
    QCOMPARE(b.committed("ControlPanel_ID0"), QStringLiteral("abc"));
    QCOMPARE(edit.cursorPosition(), 1);
}

void TestCFItem::a_label_shows_the_item_and_saves_its_text()
{
    BindingBench b;
    QString const path = QStringLiteral("Channel_GrowingMxfExportPath0");
    QLabel label;
    CFLabel binding(b.model, path, &label);
    QVERIFY(b.scan());
    QVERIFY(b.set_on_server("Channel_GrowingMxfExportPath0", "/media/a"));
    QCOMPARE(label.text(), QStringLiteral("/media/a"));
    label.setText(QStringLiteral("/media/b"));
    QVERIFY(!b.model->have_changes());
    binding.save();
    QCOMPARE(b.item(path)->get(), QStringLiteral("/media/b"));
    QCOMPARE(b.committed("Channel_GrowingMxfExportPath0"), QStringLiteral("/media/b"));
    QCOMPARE((shown_at_once<CFLabel, QLabel>(b, path)), QStringLiteral("/media/b"));
}

void TestCFItem::a_label_shows_what_looks_like_markup_as_it_is()
{
    BindingBench b;
    QLabel label;
    CFLabel binding(b.model, panel, &label);
    QString const value = QStringLiteral("<b>A</b> & <img src='none.png'>");
    b.item(panel)->set(value);
    QLabel plain;
    plain.setTextFormat(Qt::PlainText);
    plain.setText(value);
    for (QLabel *shown : {&label, &plain})
        shown->resize(400, 30);
    QCOMPARE(label.grab().toImage(), plain.grab().toImage());
    QCOMPARE(label.text(), value);
}

void TestCFItem::autohide_hides_until_the_item_has_arrived()
{
    BindingBench b;
    QWidget page;
    auto *row = new QWidget(&page);
    CFItem binding(b.model, panel);
    binding.autohide(row);
    QVERIFY(row->isHidden());
    b.item(panel)->set(QStringLiteral("typed"));
    QVERIFY(row->isHidden());
    QVERIFY(b.scan());
    QVERIFY(!row->isHidden());
    // From here on it is the application's.
    row->hide();
    QVERIFY(b.set_on_server("ControlPanel_ID0", "one"));
    QVERIFY(row->isHidden());
}

void TestCFItem::autohide_shows_a_widget_whose_place_another_takes()
{
    BindingBench b;
    QWidget page;
    auto *first = new QWidget(&page);
    auto *second = new QWidget(&page);
    CFItem binding(b.model, panel);
    binding.autohide(first);
    binding.autohide(second);
    QVERIFY(!first->isHidden());
    QVERIFY(second->isHidden());
    binding.autohide(second);
    QVERIFY(second->isHidden());
    binding.autohide(nullptr);
    QVERIFY(!second->isHidden());
}

void TestCFItem::autohide_leaves_a_widget_whose_item_is_here()
{
    BindingBench b;
    b.item(panel);
    QVERIFY(b.scan());
    QWidget page;
    auto *row = new QWidget(&page);
    CFItem binding(b.model, panel);
    binding.autohide(row);
    QVERIFY(!row->isHidden());
    row->hide();
    binding.autohide(nullptr);
    QVERIFY(row->isHidden());
}

void TestCFItem::autohide_keeps_hiding_where_the_server_has_no_such_item()
{
    BindingBench b;
    QWidget page;
    auto *row = new QWidget(&page);
    CFItem binding(b.model, QStringLiteral("NoSuchItem"));
    binding.autohide(row);
    QVERIFY(b.scan());
    QVERIFY(row->isHidden());
}

void TestCFItem::a_hot_binding_sends_every_change_at_once()
{
    BindingBench b;
    QLineEdit edit;
    CFLineEdit binding(b.model, panel, &edit);
    binding.setHot(true);
    QVERIFY(b.item(panel)->hot());
    QVERIFY(b.scan());
    QTest::keyClicks(&edit, QStringLiteral("ab"));
    QVERIFY(b.sync());
    QCOMPARE(b.count("set_configuration"), 2U);
    QVERIFY(!b.model->have_changes());
    QCOMPARE(edit.text(), QStringLiteral("ab"));
    binding.setHot(false);
    QVERIFY(!b.item(panel)->hot());
}

void TestCFItem::two_bindings_of_one_item_follow_each_other()
{
    BindingBench b;
    QLineEdit first;
    QLineEdit second;
    CFLineEdit one(b.model, panel, &first);
    CFLineEdit two(b.model, panel, &second);
    QTest::keyClicks(&first, QStringLiteral("ab"));
    QCOMPARE(second.text(), QStringLiteral("ab"));
    QTest::keyClicks(&second, QStringLiteral("c"));
    QCOMPARE(first.text(), QStringLiteral("abc"));
}

void TestCFItem::a_widget_shows_the_item_also_where_a_slot_sets_again()
{
    BindingBench b;
    QLineEdit edit;
    CFLineEdit binding(b.model, panel, &edit);
    CFItemModel *const item = b.item(panel);
    connect(item, qOverload<>(&CFItemModel::changed), this,
        [item] { item->set(QStringLiteral("mended")); });
    item->set(QStringLiteral("wrong"));
    QCOMPARE(item->get(), QStringLiteral("mended"));
    QCOMPARE(edit.text(), QStringLiteral("mended"));
}

void TestCFItem::a_widget_shows_what_was_typed_behind_a_set_of_another_thread()
{
    BindingBench b;
    QLineEdit edit;
    CFLineEdit binding(b.model, panel, &edit);
    std::thread([&] { b.item(panel)->set(QStringLiteral("other")); }).join();
    edit.setText(QStringLiteral("typed"));
    QCoreApplication::processEvents();
    QCOMPARE(b.item(panel)->get(), QStringLiteral("typed"));
    QCOMPARE(edit.text(), QStringLiteral("typed"));
}

void TestCFItem::a_binding_without_a_parent_goes_with_its_widget()
{
    BindingBench b;
    auto edit = std::make_unique<QLineEdit>();
    QPointer<CFItem> const of_the_widget = new CFLineEdit(b.model, panel, edit.get());
    QPointer<CFItem> const of_this = new CFLineEdit(b.model, panel, edit.get(), this);
    edit.reset();
    QVERIFY(of_the_widget.isNull());
    QVERIFY(!of_this.isNull());
    delete of_this;
}

void TestCFItem::a_widget_may_go_before_its_binding()
{
    BindingBench b;
    auto edit = std::make_unique<QLineEdit>();
    auto label = std::make_unique<QLabel>();
    CFLineEdit edit_binding(b.model, panel, edit.get(), this);
    CFLabel label_binding(b.model, panel, label.get(), this);
    edit.reset();
    label.reset();
    b.item(panel)->set(QStringLiteral("a"));
    edit_binding.send_change();
    label_binding.save();
    QCOMPARE(b.item(panel)->get(), QStringLiteral("a"));
}

void TestCFItem::the_model_may_go_before_the_binding()
{
    QLineEdit edit;
    auto b = std::make_unique<BindingBench>();
    CFLineEdit binding(b->model, panel, &edit);
    b.reset();
    QVERIFY(binding.get_model() == nullptr);
    QVERIFY(binding.get_item() == nullptr);
    QTest::keyClicks(&edit, QStringLiteral("a"));
    binding.setHot(true);
    binding.autohide(&edit);
    QCOMPARE(edit.text(), QStringLiteral("a"));
}

void TestCFItem::a_binding_without_a_model_is_an_assertion()
{
    QLineEdit edit;
    AssertLog asserts;
    CFLineEdit binding(nullptr, panel, &edit);
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("cf_model != nullptr")});
    QTest::keyClicks(&edit, QStringLiteral("a"));
    QCOMPARE(edit.text(), QStringLiteral("a"));
}

void TestCFItem::a_binding_without_a_widget_is_an_assertion()
{
    BindingBench b;
    AssertLog asserts;
    CFEnableCheckBox check(b.model, panel, nullptr);
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("check_box != nullptr")});
    CFComboBox combo(b.model, panel, nullptr);
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("combo_box != nullptr")});
    CFLineEdit line(b.model, panel, nullptr);
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("line_edit != nullptr")});
    CFLabel label(b.model, panel, nullptr);
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("text_label != nullptr")});
    CFRadioButtons radio(b.model, panel);
    radio.insert(QStringLiteral("a"), nullptr);
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("button != nullptr")});
    b.item(panel)->set(QStringLiteral("a"));
    for (CFItem *binding : std::initializer_list<CFItem *>{&check, &combo, &line, &label, &radio})
        binding->send_change();
    QCOMPARE(b.item(panel)->get(), QStringLiteral("a"));
}

void TestCFItem::a_control_panel_without_a_model_is_an_assertion()
{
    AssertLog asserts;
    CFControlPanel panels(nullptr);
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("cf_model != nullptr")});
    QCOMPARE(panels.panel_count(), 0U);
    panels.setHot(true);
}

QTEST_MAIN(TestCFItem)
#include "tst_cf_item.moc"
