// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_spin_box.h"
#include "tests/config/binding_bench.h"
#include "tests/support/assert_log.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

/// Numbers in a spin box, whole ones and ones of 16.16.
class TestCFSpinBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void begins_on_its_minimum();
    void shows_and_types_whole_numbers();
    void a_fixed_number_shows_as_the_nearest_hundredth_data();
    void a_fixed_number_shows_as_the_nearest_hundredth();
    void hundredths_become_a_fixed_number_data();
    void hundredths_become_a_fixed_number();
    void every_hundredth_comes_back_as_it_went();
    void what_is_finer_than_a_hundredth_stays_in_the_item();
    void a_number_out_of_range_stays_in_the_item();
    void a_text_that_is_no_number_leaves_the_box_data();
    void a_text_that_is_no_number_leaves_the_box();
    void a_number_goes_both_ways_through_the_server();
    void the_box_may_go_before_the_binding();
    void the_model_may_go_before_the_binding();
    void a_binding_without_a_box_is_an_assertion();
};

namespace {

QString const name = QStringLiteral("RouterControlInputLevels");

struct Bench : BindingBench
{
    QSpinBox box;
    CFSpinBox binding{model, name, &box, -1000000, 1000000};

    QString read() { return item(name)->get(); }
    void set(QString const &value) { item(name)->set(value); }
};

} // namespace

void TestCFSpinBox::begins_on_its_minimum()
{
    BindingBench b;
    QSpinBox box;
    box.setValue(50);
    CFSpinBox binding(b.model, name, &box, 3, 16);
    QCOMPARE(box.minimum(), 3);
    QCOMPARE(box.maximum(), 16);
    QCOMPARE(box.value(), 3);
    QVERIFY(!binding.is_fixed());
    QVERIFY(!b.model->have_changes());
    b.item(name)->set(7);
    QSpinBox second;
    CFSpinBox late(b.model, name, &second, 3, 16);
    QCOMPARE(second.value(), 7);
}

void TestCFSpinBox::shows_and_types_whole_numbers()
{
    Bench b;
    b.set(QStringLiteral("-42"));
    QCOMPARE(b.box.value(), -42);
    QSignalSpy changes(&b.binding, &CFItem::sig_change);
    b.box.stepUp();
    QCOMPARE(b.read(), QStringLiteral("-41"));
    b.box.setValue(0);
    QCOMPARE(b.read(), QStringLiteral("0"));
    QCOMPARE(changes.count(), 2);
    b.binding.send_change();
    QCOMPARE(changes.count(), 2);
}

void TestCFSpinBox::a_fixed_number_shows_as_the_nearest_hundredth_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("hundredths");
    QTest::newRow("0") << 0 << 0;
    QTest::newRow("1") << 65536 << 100;
    QTest::newRow("-1") << -65536 << -100;
    QTest::newRow("a half") << 32768 << 50;
    QTest::newRow("a third") << 21845 << 33;
    QTest::newRow("minus a third") << -21845 << -33;
    QTest::newRow("two thirds") << 43691 << 67;
    QTest::newRow("minus two thirds") << -43691 << -67;
    // 0.005 is 327.68: the first number whose half goes away from 0 is 328.
    QTest::newRow("below half a hundredth") << 327 << 0;
    QTest::newRow("above half a hundredth") << 328 << 1;
    QTest::newRow("below it, negative") << -327 << 0;
    QTest::newRow("above it, negative") << -328 << -1;
    // 8192 is 12.5 hundredths exactly.
    QTest::newRow("a half exactly") << 8192 << 13;
    QTest::newRow("a half exactly, negative") << -8192 << -13;
    QTest::newRow("beyond 32 bits on the way") << 50000000 << 76294;
    QTest::newRow("beyond them, negative") << -50000000 << -76294;
}

void TestCFSpinBox::a_fixed_number_shows_as_the_nearest_hundredth()
{
    QFETCH(int, number);
    Bench b;
    b.binding.set_fixed(true);
    QVERIFY(b.binding.is_fixed());
    b.set(QString::number(number));
    QTEST(b.box.value(), "hundredths");
    QCOMPARE(b.read(), number == 0 ? QStringLiteral("0") : QString::number(number));
    b.binding.set_fixed(false);
    QCOMPARE(b.box.value(), qBound(-1000000, number, 1000000));
}

void TestCFSpinBox::hundredths_become_a_fixed_number_data()
{
    QTest::addColumn<int>("hundredths");
    QTest::addColumn<QString>("number");
    QTest::newRow("1") << 100 << QStringLiteral("65536");
    QTest::newRow("-1") << -100 << QStringLiteral("-65536");
    QTest::newRow("a hundredth") << 1 << QStringLiteral("655");
    QTest::newRow("minus a hundredth") << -1 << QStringLiteral("-655");
    QTest::newRow("a third") << 33 << QStringLiteral("21626");
    QTest::newRow("beyond 32 bits on the way") << 1000000 << QStringLiteral("655360000");
    QTest::newRow("beyond them, negative") << -999999 << QStringLiteral("-655359344");
}

void TestCFSpinBox::hundredths_become_a_fixed_number()
{
    QFETCH(int, hundredths);
    Bench b;
    b.binding.set_fixed(true);
    b.box.setValue(hundredths);
    QTEST(b.read(), "number");
}

void TestCFSpinBox::every_hundredth_comes_back_as_it_went()
{
    Bench b;
    b.binding.set_fixed(true);
    for (int hundredths = -3000; hundredths <= 3000; ++hundredths) {
        b.box.setValue(hundredths);
        b.binding.cf(b.read());
        QCOMPARE(b.box.value(), hundredths);
    }
}

void TestCFSpinBox::what_is_finer_than_a_hundredth_stays_in_the_item()
{
    Bench b;
    b.binding.set_fixed(true);
    b.set(QStringLiteral("21845"));
    QSignalSpy changes(&b.binding, &CFItem::sig_change);
    b.binding.send_change();
    QCOMPARE(changes.count(), 0);
    QCOMPARE(b.read(), QStringLiteral("21845"));
}

void TestCFSpinBox::a_number_out_of_range_stays_in_the_item()
{
    BindingBench b;
    QSpinBox box;
    CFSpinBox binding(b.model, name, &box, 0, 16);
    b.item(name)->set(99);
    QCOMPARE(box.value(), 16);
    QCOMPARE(b.item(name)->get(), QStringLiteral("99"));
    b.item(name)->set(-1);
    QCOMPARE(box.value(), 0);
    QCOMPARE(b.item(name)->get(), QStringLiteral("-1"));
}

void TestCFSpinBox::a_text_that_is_no_number_leaves_the_box_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("empty") << QString();
    QTest::newRow("letters") << QStringLiteral("many");
    QTest::newRow("not whole") << QStringLiteral("1.5");
    QTest::newRow("beyond 32 bits") << QStringLiteral("4294967296");
}

void TestCFSpinBox::a_text_that_is_no_number_leaves_the_box()
{
    QFETCH(QString, value);
    Bench b;
    b.set(QStringLiteral("12"));
    b.set(value);
    QCOMPARE(b.box.value(), 12);
    QCOMPARE(b.read(), value);
    b.box.setValue(13);
    QCOMPARE(b.read(), QStringLiteral("13"));
}

void TestCFSpinBox::a_number_goes_both_ways_through_the_server()
{
    Bench b;
    QVERIFY(b.scan());
    QCOMPARE(b.box.value(), 1);
    QVERIFY(b.set_on_server("RouterControlInputLevels", "5"));
    QCOMPARE(b.box.value(), 5);
    QVERIFY(!b.model->have_changes());
    QTest::keyClick(&b.box, Qt::Key_Up);
    QCOMPARE(b.committed("RouterControlInputLevels"), QStringLiteral("6"));
    QVERIFY(!b.model->have_changes());
}

void TestCFSpinBox::the_box_may_go_before_the_binding()
{
    BindingBench b;
    auto box = std::make_unique<QSpinBox>();
    CFSpinBox binding(b.model, name, box.get(), 0, 16, this);
    box.reset();
    b.item(name)->set(5);
    binding.send_change();
    binding.set_fixed(true);
    QCOMPARE(b.item(name)->get(), QStringLiteral("5"));
}

void TestCFSpinBox::the_model_may_go_before_the_binding()
{
    QSpinBox box;
    auto b = std::make_unique<BindingBench>();
    CFSpinBox binding(b->model, name, &box, 0, 16);
    b->item(name)->set(5);
    b.reset();
    box.setValue(7);
    binding.set_fixed(true);
    binding.send_change();
    QCOMPARE(box.value(), 7);
}

void TestCFSpinBox::a_binding_without_a_box_is_an_assertion()
{
    BindingBench b;
    AssertLog asserts;
    CFSpinBox binding(b.model, name, nullptr, 0, 16);
    QCOMPARE(asserts.take(), QStringList{QStringLiteral("spin_box != nullptr")});
    b.item(name)->set(5);
    binding.send_change();
    QCOMPARE(b.item(name)->get(), QStringLiteral("5"));
}

QTEST_MAIN(TestCFSpinBox)
#include "tst_cf_spin_box.moc"
