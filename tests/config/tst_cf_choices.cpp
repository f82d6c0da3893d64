// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_check_box.h"
#include "ATarnLib/config/cf_combo_box.h"
#include "ATarnLib/config/cf_radio_buttons.h"
#include "tests/config/binding_bench.h"
#include "tests/support/latin1_text.h"

#include <QButtonGroup>
#include <QSignalSpy>
#include <QTest>

/// Bindings that choose among values: check boxes, radio buttons, combo boxes.
class TestCFChoices : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void a_check_box_means_its_two_values_data();
    void a_check_box_means_its_two_values();
    void a_check_box_shows_another_value_as_unchecked();
    void a_disabled_check_box_writes_nothing();
    void a_check_box_is_enabled_only_while_both_values_are_allowed_data();
    void a_check_box_is_enabled_only_while_both_values_are_allowed();
    void a_check_box_follows_the_server();
    void radio_buttons_mean_their_values_data();
    void radio_buttons_mean_their_values();
    void no_radio_button_is_checked_for_a_value_without_one_data();
    void no_radio_button_is_checked_for_a_value_without_one();
    void radio_buttons_of_different_parents_uncheck_each_other();
    void radio_buttons_show_the_item_also_where_a_slot_of_theirs_sets_it();
    void a_radio_button_takes_the_place_of_the_one_before();
    void a_combo_box_offers_what_the_server_takes();
    void a_combo_box_offers_the_options_that_the_server_takes();
    void a_combo_box_shows_a_value_that_it_does_not_offer();
    void a_combo_box_is_filled_anew_only_when_its_options_change();
    void widgets_may_go_before_their_bindings();
    void the_model_may_go_before_the_bindings();
};

namespace {

QString const aspect = QStringLiteral("VideoAspectRatio");
QString const enable = QStringLiteral("Channel_GrowingMxfExportEnable0");

QStringList values(QComboBox const &box)
{
    QStringList result;
    for (int i = 0; i < box.count(); ++i)
        result += box.itemData(i).toString();
    return result;
}

VCTP3::ConfigurationItem item(char const *value, std::vector<char const *> const &allowed)
{
    VCTP3::ConfigurationItem result;
    result.configuration_item_name = enable;
    result.configuration_item_effective_value = AString::l1(value);
    for (char const *entry : allowed)
        result.configuration_item_allowed_values.push_back(AString::l1(entry));
    return result;
}

/// Buttons for the two values of an item, exclusive by their parent or by a group.
struct AspectButtons
{
    AspectButtons(CFModel *model, bool grouped)
        : binding(model, aspect, &page)
    {
        if (grouped) {
            group.addButton(&wide);
            group.addButton(&narrow);
        }
        binding.insert(text("16x9"), &wide);
        binding.insert(text("4x3"), &narrow);
    }

    QWidget page;
    QRadioButton wide{&page};
    QRadioButton narrow{&page};
    QButtonGroup group;
    CFRadioButtons binding;
};

} // namespace

void TestCFChoices::a_check_box_means_its_two_values_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("on");
    QTest::addColumn<QString>("off");
    QTest::newRow("its own") << 0 << text("Enabled") << text("Disabled");
    QTest::newRow("enable") << 1 << text("Enabled") << text("Disabled");
    QTest::newRow("disable") << 2 << text("Disabled") << text("Enabled");
}

void TestCFChoices::a_check_box_means_its_two_values()
{
    QFETCH(int, kind);
    QFETCH(QString, on);
    QFETCH(QString, off);
    BindingBench b;
    QCheckBox box;
    if (kind == 0)
        new CFCheckBox(b.model, enable, on, off, &box);
    else if (kind == 1)
        new CFEnableCheckBox(b.model, enable, &box);
    else
        new CFDisableCheckBox(b.model, enable, &box);
    QVERIFY(b.scan());
    QCOMPARE(box.isChecked(), on == text("Disabled"));
    box.setChecked(true);
    QCOMPARE(b.item(enable)->get(), on);
    QCOMPARE(b.committed("Channel_GrowingMxfExportEnable0"), on);
    box.click();
    QCOMPARE(b.item(enable)->get(), off);
    QCOMPARE(b.committed("Channel_GrowingMxfExportEnable0"), off);
    QVERIFY(!b.model->have_changes());
}

void TestCFChoices::a_check_box_shows_another_value_as_unchecked()
{
    BindingBench b;
    QCheckBox box;
    CFCheckBox binding(b.model, aspect, text("4x3"), text("16x9"), &box);
    QVERIFY(b.scan());
    b.item(aspect)->set(text("4x3"));
    QVERIFY(box.isChecked());
    b.item(aspect)->set(text("21x9"));
    QVERIFY(!box.isChecked());
    QCOMPARE(b.item(aspect)->get(), text("21x9"));
}

void TestCFChoices::a_disabled_check_box_writes_nothing()
{
    BindingBench b;
    QCheckBox box;
    box.setChecked(true);
    CFEnableCheckBox binding(b.model, enable, &box);
    QSignalSpy changes(&binding, &CFItem::sig_change);
    QVERIFY(!box.isEnabled());
    QVERIFY(!box.isChecked());
    binding.send_change();
    box.setChecked(true);
    box.setChecked(false);
    QCOMPARE(changes.count(), 0);
    QCOMPARE(b.item(enable)->get(), QString());
    QVERIFY(b.scan());
    box.setEnabled(false);
    box.setChecked(true);
    QCOMPARE(changes.count(), 0);
    QVERIFY(!b.model->have_changes());
}

void TestCFChoices::a_check_box_is_enabled_only_while_both_values_are_allowed_data()
{
    QTest::addColumn<int>("allowed");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("both") << 3 << true;
    QTest::newRow("on alone") << 1 << false;
    QTest::newRow("off alone") << 2 << false;
    QTest::newRow("any text") << 0 << true;
    QTest::newRow("others") << 4 << false;
}

void TestCFChoices::a_check_box_is_enabled_only_while_both_values_are_allowed()
{
    QFETCH(int, allowed);
    BindingBench b;
    QCheckBox box;
    CFEnableCheckBox binding(b.model, enable, &box);
    QVERIFY(!box.isEnabled());
    std::vector<char const *> list;
    if ((allowed & 1) != 0)
        list.push_back("Enabled");
    if ((allowed & 2) != 0)
        list.push_back("Disabled");
    if ((allowed & 4) != 0)
        list.push_back("Other");
    b.item(enable)->config(item("Enabled", list));
    QTEST(box.isEnabled(), "enabled");
    QVERIFY(box.isChecked());
    b.item(enable)->config(item("Disabled", {"Disabled"}));
    QVERIFY(!box.isEnabled());
    QVERIFY(!box.isChecked());
    QVERIFY(!b.model->have_changes());
}

void TestCFChoices::a_check_box_follows_the_server()
{
    BindingBench b;
    QCheckBox box;
    CFEnableCheckBox binding(b.model, enable, &box);
    QSignalSpy changes(&binding, &CFItem::sig_change);
    QVERIFY(b.scan());
    QVERIFY(b.set_on_server("Channel_GrowingMxfExportEnable0", "Enabled"));
    QVERIFY(box.isChecked());
    QVERIFY(b.set_on_server("Channel_GrowingMxfExportEnable0", "Disabled"));
    QVERIFY(!box.isChecked());
    QCOMPARE(changes.count(), 0);
}

void TestCFChoices::radio_buttons_mean_their_values_data()
{
    QTest::addColumn<bool>("grouped");
    QTest::newRow("of one parent") << false;
    QTest::newRow("of a group") << true;
}

void TestCFChoices::radio_buttons_mean_their_values()
{
    QFETCH(bool, grouped);
    BindingBench b;
    AspectButtons buttons(b.model, grouped);
    QSignalSpy changes(&buttons.binding, &CFItem::sig_change);
    QVERIFY(b.scan());
    QVERIFY(buttons.wide.isChecked());
    QVERIFY(b.set_on_server("VideoAspectRatio", "4x3"));
    QVERIFY(buttons.narrow.isChecked());
    QCOMPARE(changes.count(), 0);
    buttons.wide.click();
    QCOMPARE(changes.count(), 1);
    QCOMPARE(b.item(aspect)->get(), text("16x9"));
    QCOMPARE(b.committed("VideoAspectRatio"), text("16x9"));
    QVERIFY(buttons.wide.isChecked());
}

void TestCFChoices::no_radio_button_is_checked_for_a_value_without_one_data()
{
    radio_buttons_mean_their_values_data();
}

void TestCFChoices::no_radio_button_is_checked_for_a_value_without_one()
{
    QFETCH(bool, grouped);
    BindingBench b;
    AspectButtons buttons(b.model, grouped);
    b.item(aspect)->set(text("4x3"));
    QVERIFY(buttons.narrow.isChecked());
    b.item(aspect)->set(text("21x9"));
    QVERIFY(!buttons.narrow.isChecked());
    QVERIFY(!buttons.wide.isChecked());
    // Unchecking them all leaves the buttons as they were otherwise.
    QVERIFY(buttons.group.exclusive());
    QVERIFY(buttons.wide.autoExclusive() && buttons.narrow.autoExclusive());
    QCOMPARE(b.item(aspect)->get(), text("21x9"));
    buttons.wide.click();
    QCOMPARE(b.item(aspect)->get(), text("16x9"));
    buttons.narrow.click();
    QVERIFY(!buttons.wide.isChecked());
    QCOMPARE(b.item(aspect)->get(), text("4x3"));
}

void TestCFChoices::radio_buttons_of_different_parents_uncheck_each_other()
{
    BindingBench b;
    QRadioButton narrow;
    QRadioButton wide;
    CFRadioButtons binding(b.model, aspect);
    binding.insert(text("4x3"), &narrow);
    binding.insert(text("16x9"), &wide);
    QVERIFY(b.scan());
    QVERIFY(wide.isChecked());
    narrow.click();
    QCOMPARE(b.item(aspect)->get(), text("4x3"));
    QVERIFY(narrow.isChecked());
    QVERIFY(!wide.isChecked());
    wide.click();
    QCOMPARE(b.item(aspect)->get(), text("16x9"));
    QVERIFY(wide.isChecked());
    QVERIFY(!narrow.isChecked());
    // What is only shown is typed when asked for.
    binding.cf(text("4x3"));
    QCOMPARE(b.item(aspect)->get(), text("16x9"));
    binding.send_change();
    QCOMPARE(b.item(aspect)->get(), text("4x3"));
}

void TestCFChoices::radio_buttons_show_the_item_also_where_a_slot_of_theirs_sets_it()
{
    BindingBench b;
    AspectButtons buttons(b.model, false);
    b.item(aspect)->set(text("16x9"));
    connect(&buttons.wide, &QRadioButton::toggled, this, [&](bool checked) {
        if (!checked)
            b.item(aspect)->set(text("16x9"));
    });
    QSignalSpy changes(&buttons.binding, &CFItem::sig_change);
    b.item(aspect)->set(text("4x3"));
    QCOMPARE(b.item(aspect)->get(), text("16x9"));
    QVERIFY(buttons.wide.isChecked());
    QVERIFY(!buttons.narrow.isChecked());
    QCOMPARE(changes.count(), 0);
}

void TestCFChoices::a_radio_button_takes_the_place_of_the_one_before()
{
    BindingBench b;
    QRadioButton before;
    QRadioButton now;
    CFRadioButtons binding(b.model, aspect);
    binding.insert(text("4x3"), &before);
    binding.insert(text("4x3"), &now);
    b.item(aspect)->set(text("4x3"));
    QVERIFY(now.isChecked());
    QVERIFY(!before.isChecked());
    b.item(aspect)->set(text("16x9"));
    before.click();
    QCOMPARE(b.item(aspect)->get(), text("16x9"));
}

void TestCFChoices::a_combo_box_offers_what_the_server_takes()
{
    BindingBench b;
    QComboBox box;
    CFComboBox binding(b.model, aspect, &box);
    QCOMPARE(box.count(), 0);
    QSignalSpy changes(&binding, &CFItem::sig_change);
    QVERIFY(b.scan());
    QCOMPARE(values(box), (QStringList{text("16x9"), text("4x3")}));
    QCOMPARE(box.currentText(), text("16x9"));
    QVERIFY(b.set_on_server("VideoAspectRatio", "4x3"));
    QCOMPARE(box.currentText(), text("4x3"));
    QCOMPARE(changes.count(), 0);
    box.setCurrentIndex(0);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(b.item(aspect)->get(), text("16x9"));
    QCOMPARE(b.committed("VideoAspectRatio"), text("16x9"));
    QComboBox second;
    CFComboBox late(b.model, aspect, &second);
    QCOMPARE(values(second), values(box));
    QCOMPARE(second.currentText(), text("16x9"));
}

void TestCFChoices::a_combo_box_offers_the_options_that_the_server_takes()
{
    BindingBench b;
    QComboBox box;
    CFComboBox binding(b.model, aspect, &box);
    binding.add_option(text("4x3"), text("Narrow"));
    binding.add_option(text("21x9"), text("Very wide"));
    binding.add_option(text("16x9"), text("Wide"));
    QCOMPARE(box.count(), 0);
    QVERIFY(b.scan());
    QCOMPARE(values(box), (QStringList{text("4x3"), text("16x9")}));
    QCOMPARE(box.currentText(), text("Wide"));
    box.setCurrentIndex(0);
    QCOMPARE(b.item(aspect)->get(), text("4x3"));
}

void TestCFChoices::a_combo_box_shows_a_value_that_it_does_not_offer()
{
    BindingBench b;
    QComboBox box;
    CFComboBox binding(b.model, aspect, &box);
    QVERIFY(b.scan());
    b.item(aspect)->set(text("21x9"));
    QCOMPARE(values(box), (QStringList{text("16x9"), text("4x3"), text("21x9")}));
    QCOMPARE(box.currentText(), text("21x9"));
    b.item(aspect)->set(text("4x3"));
    QCOMPARE(values(box), (QStringList{text("16x9"), text("4x3")}));
    b.item(aspect)->set(QString());
    QCOMPARE(box.currentIndex(), -1);
    QCOMPARE(b.item(aspect)->get(), QString());
}

void TestCFChoices::a_combo_box_is_filled_anew_only_when_its_options_change()
{
    BindingBench b;
    QComboBox box;
    CFComboBox binding(b.model, aspect, &box);
    QVERIFY(b.scan());
    QSignalSpy filled(box.model(), &QAbstractItemModel::rowsInserted);
    b.item(aspect)->set(text("4x3"));
    b.item(aspect)->set(text("16x9"));
    QCOMPARE(filled.count(), 0);
}

void TestCFChoices::widgets_may_go_before_their_bindings()
{
    BindingBench b;
    auto check = std::make_unique<QCheckBox>();
    auto radio = std::make_unique<QRadioButton>();
    auto combo = std::make_unique<QComboBox>();
    CFEnableCheckBox check_binding(b.model, enable, check.get(), this);
    CFRadioButtons radio_binding(b.model, enable, this);
    radio_binding.insert(text("Enabled"), radio.get());
    CFComboBox combo_binding(b.model, enable, combo.get(), this);
    check.reset();
    radio.reset();
    combo.reset();
    b.item(enable)->set(text("Enabled"));
    check_binding.send_change();
    radio_binding.send_change();
    combo_binding.send_change();
    QCOMPARE(b.item(enable)->get(), text("Enabled"));
    b.item(enable)->set(text("Disabled"));
}

void TestCFChoices::the_model_may_go_before_the_bindings()
{
    QCheckBox check;
    QRadioButton radio;
    QComboBox combo;
    auto b = std::make_unique<BindingBench>();
    CFEnableCheckBox check_binding(b->model, enable, &check);
    CFRadioButtons radio_binding(b->model, aspect);
    radio_binding.insert(text("4x3"), &radio);
    CFComboBox combo_binding(b->model, aspect, &combo);
    QVERIFY(b->scan());
    b.reset();
    check.click();
    radio.click();
    combo.setCurrentIndex(1);
    QVERIFY(check.isChecked() && radio.isChecked());
    QCOMPARE(combo.currentText(), text("4x3"));
    for (CFItem *binding :
        std::initializer_list<CFItem *>{&check_binding, &radio_binding, &combo_binding})
        binding->send_change();
    // Without an item there is nothing to offer.
    combo_binding.add_option(text("16x9"), text("Wide"));
    QCOMPARE(combo.count(), 0);
    radio_binding.insert(text("16x9"), &radio);
    QVERIFY(!radio.isChecked());
}

QTEST_MAIN(TestCFChoices)
#include "tst_cf_choices.moc"
