// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_control_panel.h"
#include "ATarnLib/config/cf_show.h"
#include "tests/config/binding_bench.h"
#include "tests/support/latin1_text.h"

#include <QLayout>
#include <QTest>

/// Widgets that show by what a server has: those for an item, and rows of control panels.
class TestCFShow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void widgets_show_while_an_accepted_value_is_allowed_data();
    void widgets_show_while_an_accepted_value_is_allowed();
    void without_a_set_the_item_counts();
    void widgets_hide_where_the_server_has_no_such_item();
    void the_allowed_values_count_and_not_the_value();
    void a_widget_may_go();
    void the_model_may_go_before_the_widgets();
    void a_control_panel_has_a_row_for_each();
    void rows_come_and_go_with_the_count();
    void rows_go_both_ways_through_the_server();
    void a_hot_control_panel_has_hot_rows();
    void a_wrong_count_shows_a_bounded_number_of_rows_data();
    void a_wrong_count_shows_a_bounded_number_of_rows();
    void rows_have_accessible_names();
};

namespace {

QString const aspect = QStringLiteral("VideoAspectRatio");

QSet<QString> set_of(char const *words)
{
    QStringList const list = text(words).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    return QSet<QString>(list.begin(), list.end());
}

} // namespace

void TestCFShow::widgets_show_while_an_accepted_value_is_allowed_data()
{
    QTest::addColumn<QString>("accepted");
    QTest::addColumn<bool>("visible");
    QTest::newRow("one") << text("4x3") << true;
    QTest::newRow("one of several") << text("21x9 4x3") << true;
    QTest::newRow("none of several") << text("21x9 1x1") << false;
    QTest::newRow("an empty set") << QString() << false;
}

void TestCFShow::widgets_show_while_an_accepted_value_is_allowed()
{
    QFETCH(QString, accepted);
    QFETCH(bool, visible);
    BindingBench b;
    QWidget page;
    auto *first = new QWidget(&page);
    auto *second = new QWidget(&page);
    CFShow show(b.model, aspect, set_of(accepted.toLatin1().constData()));
    show.add(first);
    QVERIFY(first->isHidden());
    QVERIFY(b.scan());
    show.add(second);
    QCOMPARE(!first->isHidden(), visible);
    QCOMPARE(!second->isHidden(), visible);
}

void TestCFShow::without_a_set_the_item_counts()
{
    BindingBench b;
    QWidget page;
    auto *listed = new QWidget(&page);
    auto *any_text = new QWidget(&page);
    CFShow show_listed(b.model, aspect);
    CFShow show_any_text(b.model, text("ControlPanel_ID0"));
    show_listed.add(listed);
    show_any_text.add(any_text);
    QVERIFY(listed->isHidden());
    QVERIFY(any_text->isHidden());
    QVERIFY(b.scan());
    QVERIFY(!listed->isHidden());
    QVERIFY(!any_text->isHidden());
}

void TestCFShow::widgets_hide_where_the_server_has_no_such_item()
{
    BindingBench b;
    QWidget page;
    auto *widget = new QWidget(&page);
    CFShow show(b.model, text("NoSuchItem"));
    show.add(widget);
    b.item(text("NoSuchItem"))->set(text("typed"));
    QVERIFY(b.scan());
    QVERIFY(widget->isHidden());
}

void TestCFShow::the_allowed_values_count_and_not_the_value()
{
    BindingBench b;
    QWidget page;
    auto *widget = new QWidget(&page);
    CFShow show(b.model, aspect, set_of("4x3"));
    show.add(widget);
    VCTP3::ConfigurationItem cf;
    cf.configuration_item_name = AString(aspect);
    cf.configuration_item_effective_value = AString::l1("4x3");
    b.item(aspect)->config(cf);
    QVERIFY(widget->isHidden());
    cf.configuration_item_effective_value = AString::l1("16x9");
    cf.configuration_item_allowed_values.push_back(AString::l1("4x3"));
    b.item(aspect)->config(cf);
    QVERIFY(!widget->isHidden());
    cf.configuration_item_allowed_values.clear_all();
    b.item(aspect)->config(cf);
    QVERIFY(widget->isHidden());
}

void TestCFShow::a_widget_may_go()
{
    BindingBench b;
    QWidget page;
    auto *widget = new QWidget(&page);
    CFShow show(b.model, aspect);
    show.add(new QWidget(&page));
    show.add(widget);
    delete page.findChild<QWidget *>();
    QVERIFY(b.scan());
    QCOMPARE(page.findChildren<QWidget *>().size(), 1);
    QVERIFY(!page.findChild<QWidget *>()->isHidden());
}

void TestCFShow::the_model_may_go_before_the_widgets()
{
    QWidget page;
    auto *widget = new QWidget(&page);
    auto b = std::make_unique<BindingBench>();
    CFShow show(b->model, aspect);
    show.add(widget);
    CFControlPanel panels(b->model);
    QVERIFY(b->scan());
    b.reset();
    QVERIFY(!widget->isHidden());
    show.add(new QWidget(&page));
    QVERIFY(widget->isHidden());
    panels.count_box()->setCurrentText(text("3"));
    panels.setHot(true);
    QCOMPARE(panels.panel_count(), 1U);
    QTest::keyClicks(panels.panel(0)->id_edit(), text("12"));
    QCOMPARE(panels.panel(0)->id_edit()->text(), text("12"));
}

void TestCFShow::a_control_panel_has_a_row_for_each()
{
    BindingBench b;
    CFControlPanel panels(b.model);
    QCOMPARE(panels.panel_count(), 0U);
    QVERIFY(b.scan());
    QCOMPARE(panels.count_box()->currentText(), text("1"));
    QCOMPARE(panels.panel_count(), 1U);
    QVERIFY(panels.panel(0) != nullptr);
    QVERIFY(panels.panel(1) == nullptr);
    CFControlPanelItem *row = panels.panel(0);
    QCOMPARE(panels.findChildren<CFControlPanelItem *>(), QList<CFControlPanelItem *>{row});
    QVERIFY(panels.layout()->indexOf(row) >= 0);
    for (QLineEdit *edit : {row->id_edit(), row->channels_edit()})
        QVERIFY(row->layout()->indexOf(edit) >= 0);
    CFControlPanel late(b.model);
    QCOMPARE(late.panel_count(), 1U);
}

void TestCFShow::rows_come_and_go_with_the_count()
{
    BindingBench b;
    CFControlPanel panels(b.model);
    QVERIFY(b.scan());
    QCOMPARE(panels.count_box()->count(), 5);
    panels.count_box()->setCurrentText(text("3"));
    QCOMPARE(panels.panel_count(), 3U);
    CFControlPanelItem *third = panels.panel(2);
    QVERIFY(!third->isHidden());
    panels.count_box()->setCurrentText(text("0"));
    QCOMPARE(panels.panel_count(), 0U);
    for (CFControlPanelItem const *row : panels.findChildren<CFControlPanelItem *>())
        QVERIFY(row->isHidden());
    panels.count_box()->setCurrentText(text("4"));
    QCOMPARE(panels.panel(2), third);
    QVERIFY(!third->isHidden());
    QCOMPARE(b.committed("ControlPanelCount"), text("4"));
}

void TestCFShow::rows_go_both_ways_through_the_server()
{
    BindingBench b;
    CFControlPanel panels(b.model);
    QVERIFY(b.scan());
    QVERIFY(b.set_on_server("ControlPanelCount", "2"));
    QCOMPARE(panels.panel_count(), 2U);
    QTest::keyClicks(panels.panel(1)->id_edit(), text("12345"));
    QCOMPARE(b.committed("ControlPanel_ID1"), text("12345"));
    QVERIFY(b.set_on_server("ControlPanel_Channels0", "A,B"));
    QCOMPARE(panels.panel(0)->channels_edit()->text(), text("A,B"));
    QVERIFY(!b.model->have_changes());
}

void TestCFShow::a_hot_control_panel_has_hot_rows()
{
    BindingBench b;
    CFControlPanel panels(b.model);
    QVERIFY(b.scan());
    panels.setHot(true);
    panels.count_box()->setCurrentText(text("2"));
    for (char const *name : {"ControlPanelCount", "ControlPanel_ID0", "ControlPanel_Channels0",
             "ControlPanel_ID1", "ControlPanel_Channels1"})
        QVERIFY2(b.item(text(name))->hot(), name);
    QVERIFY(b.sync());
    QCOMPARE(b.server.setting(AString::l1("ControlPanelCount")).value().saved, AString::l1("2"));
    panels.setHot(false);
    QVERIFY(!b.item(text("ControlPanel_ID1"))->hot());
}

void TestCFShow::a_wrong_count_shows_a_bounded_number_of_rows_data()
{
    QTest::addColumn<QString>("count");
    QTest::addColumn<unsigned int>("rows");
    QTest::newRow("too many") << text("4294967295") << CFControlPanel::most_panels;
    QTest::newRow("more than the numbers there are") << text("99999999999") << 0U;
    QTest::newRow("below 0") << text("-1") << 0U;
    QTest::newRow("no number") << text("two") << 0U;
}

void TestCFShow::a_wrong_count_shows_a_bounded_number_of_rows()
{
    QFETCH(QString, count);
    BindingBench b;
    CFControlPanel panels(b.model);
    b.item(text("ControlPanelCount"))->set(count);
    QTEST(panels.panel_count(), "rows");
}

void TestCFShow::rows_have_accessible_names()
{
    BindingBench b;
    CFControlPanel panels(b.model);
    b.item(text("ControlPanelCount"))->set(2);
    QCOMPARE(panels.count_box()->accessibleName(), text("Control panels"));
    QCOMPARE(panels.panel(1)->id_edit()->accessibleName(), text("Identifier of panel 2"));
    QCOMPARE(panels.panel(1)->channels_edit()->accessibleName(), text("Channels of panel 2"));
}

QTEST_MAIN(TestCFShow)
#include "tst_cf_show.moc"
