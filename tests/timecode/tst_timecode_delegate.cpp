// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/widgets/atimecode_entry.h"
#include "ATarnLib/timecode/widgets/timecode_delegate.h"
#include "tests/support/patience.h"
#include "tests/timecode/standard_numbers.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>

using Corvane::ATimecode;
using Corvane::VideoFrequency;

namespace {

/// A timecode for editing, and its text for all that only show it.
class TimecodeItem : public QStandardItem
{
public:
    QVariant data(int role) const override
    {
        QVariant const held = QStandardItem::data(role);
        if (role == Qt::DisplayRole && held.metaType() == QMetaType::fromType<ATimecode>())
            return ATimecodeEntry::text_of(held.value<ATimecode>());
        return held;
    }
};

/// A table of timecodes in a window, edited with the delegate.
class Table
{
public:
    Table()
        : tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal)
    {
        for (int row = 0; row < 3; ++row)
            model.setItem(row, 0, new TimecodeItem);
        put(0, ATimecode(VideoFrequency::v50, 186158, 1));
        view.setModel(&model);
        view.setItemDelegate(&delegate);
        view.show();
        QApplication::setActiveWindow(&view);
    }

    QModelIndex index(int row) const { return model.index(row, 0); }
    void put(int row, ATimecode const &t)
    {
        // Timecodes of one count are equal, and the model would keep the first.
        model.setData(index(row), QVariant());
        model.setData(index(row), QVariant::fromValue(t));
    }
    ATimecode at(int row) const { return index(row).data(Qt::EditRole).value<ATimecode>(); }
    ATimecodeEntry *edit(int row)
    {
        view.setCurrentIndex(index(row));
        view.edit(index(row));
        return view.viewport()->findChild<ATimecodeEntry *>();
    }

    QStandardItemModel model;
    QAbstractItemModelTester tester;
    TimecodeDelegate delegate;
    QTableView view;
};

QImage painted(TimecodeDelegate const &delegate, QModelIndex const &index, QStyle::State state)
{
    QImage image(120, 24, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.rect = image.rect();
    option.state = state | QStyle::State_Enabled | QStyle::State_Active;
    delegate.paint(&painter, option, index);
    return image;
}

/// Timecodes as counts at 25 Hz in a spin box, and as the row number in the model.
class RowDelegate : public TimecodeDelegate
{
public:
    using TimecodeDelegate::TimecodeDelegate;
    ATimecode get_model_timecode(QModelIndex const &index) const override
    {
        return ATimecode(VideoFrequency::v25, index.data(Qt::EditRole).toUInt(), 1);
    }
    void set_model_timecode(
        QAbstractItemModel *model, QModelIndex const &index, ATimecode const &edited) const override
    {
        model->setData(index, edited.get_nfields(), Qt::EditRole);
    }
    ATimecode get_editor_timecode(QWidget *editor) const override
    {
        int const value = static_cast<QSpinBox *>(editor)->value();
        return ATimecode(VideoFrequency::v25, static_cast<unsigned int>(value), 1);
    }
    void set_editor_timecode(QWidget *editor, ATimecode const &shown) const override
    {
        static_cast<QSpinBox *>(editor)->setValue(static_cast<int>(shown.get_nfields()));
    }
};

} // namespace

class TestTimecodeDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void editor_is_an_entry_that_highlights();
    void typed_timecode_goes_to_the_model();
    void editor_shows_the_timecode_of_the_model();
    void escape_leaves_the_model();
    void editor_that_changed_nothing_leaves_the_model_data();
    void editor_that_changed_nothing_leaves_the_model();
    void emptied_editor_makes_the_model_undefined();
    void other_data_is_undefined();
    void other_editor_is_undefined_and_stays();
    void overridden_ways_are_used_both_ways();
    void hover_background_is_behind_an_item_below_the_mouse();
    void hover_background_follows_the_mouse_in_a_view();
    void text_of_the_timecode_is_drawn();
    void size_holds_the_text();
};

void TestTimecodeDelegate::editor_is_an_entry_that_highlights()
{
    Table table;
    QWidget parent;
    QWidget *editor = table.delegate.createEditor(&parent, {}, table.index(0));
    auto *entry = qobject_cast<ATimecodeEntry *>(editor);
    QVERIFY(entry);
    QVERIFY(entry->get_auto_highlight());
    QCOMPARE(entry->parentWidget(), &parent);
}

void TestTimecodeDelegate::typed_timecode_goes_to_the_model()
{
    Table table;
    QVERIFY(QTest::qWaitForWindowActive(&table.view, patience_ms));
    ATimecodeEntry *entry = table.edit(0);
    QVERIFY(entry);
    QTRY_COMPARE(entry->selectedText(), QStringLiteral("01.02.03.04"));
    QSignalSpy changed(&table.model, &QAbstractItemModel::dataChanged);
    QTest::keyClicks(entry, QStringLiteral("1234"));
    QTest::keyClick(entry, Qt::Key_Return);
    QTRY_COMPARE(changed.count(), 1);
    QCOMPARE(table.at(0).get_nfields(), 12u * 50 + 34 * 2);
    QCOMPARE(number(table.at(0).get_std()), 3);
}

void TestTimecodeDelegate::editor_shows_the_timecode_of_the_model()
{
    Table table;
    ATimecodeEntry entry;
    table.delegate.setEditorData(&entry, table.index(0));
    QCOMPARE(entry.text(), QStringLiteral("01.02.03.04"));
    QCOMPARE(number(entry.frequency()), 3);
    table.put(0, ATimecode(VideoFrequency::v59_94, 3601, 1));
    table.delegate.setEditorData(&entry, table.index(0));
    QCOMPARE(entry.text(), QStringLiteral("00;01;00;02"));
    QVERIFY(table.delegate.get_editor_timecode(&entry) == table.at(0));
    table.delegate.setEditorData(&entry, table.index(1));
    QCOMPARE(entry.text(), QString());
}

void TestTimecodeDelegate::escape_leaves_the_model()
{
    Table table;
    ATimecodeEntry *entry = table.edit(0);
    QTest::keyClicks(entry, QStringLiteral("9"));
    QTest::keyClick(entry, Qt::Key_Escape);
    QTRY_VERIFY(!table.view.viewport()->findChild<ATimecodeEntry *>());
    QCOMPARE(table.at(0).get_nfields(), 186158u);
}

void TestTimecodeDelegate::editor_that_changed_nothing_leaves_the_model_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<unsigned>("count");
    QTest::addColumn<unsigned>("speed");
    QTest::newRow("plain") << 3 << 186158u << 1u;
    // None of these could be told by the text of an entry.
    QTest::newRow("beyond the day") << 3 << 4320000u * 2 + 5 << 1u;
    QTest::newRow("slow motion") << 3 << 186158u << 3u;
    QTest::newRow("a field is a frame") << 8 << 104u << 1u;
}

void TestTimecodeDelegate::editor_that_changed_nothing_leaves_the_model()
{
    QFETCH(int, value);
    QFETCH(unsigned, count);
    QFETCH(unsigned, speed);
    Table table;
    ATimecode t;
    t.set(frequency(value), count, speed);
    table.put(0, t);
    ATimecodeEntry *entry = table.edit(0);
    QSignalSpy changed(&table.model, &QAbstractItemModel::dataChanged);
    table.delegate.setModelData(entry, &table.model, table.index(0));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(table.at(0).get_nfields(), count);
    QCOMPARE(table.at(0).get_ssm_speed(), speed);
    // Nor does one that changed it and took that back.
    QTest::keyClick(entry, Qt::Key_End);
    QTest::keyClicks(entry, QStringLiteral("7"));
    entry->setText(ATimecodeEntry::text_of(t));
    table.delegate.setModelData(entry, &table.model, table.index(0));
    QCOMPARE(changed.count(), 0);
}

void TestTimecodeDelegate::emptied_editor_makes_the_model_undefined()
{
    Table table;
    ATimecodeEntry entry;
    table.delegate.setEditorData(&entry, table.index(0));
    entry.clear();
    table.delegate.setModelData(&entry, &table.model, table.index(0));
    QVERIFY(table.at(0).is_undefined());
    QVERIFY(table.index(0).data(Qt::EditRole).isValid());
}

void TestTimecodeDelegate::other_data_is_undefined()
{
    Table table;
    for (QVariant const &data :
        {QVariant(), QVariant(5), QVariant(QStringLiteral("01:02:03:04"))}) {
        table.model.setData(table.index(0), data);
        QVERIFY(table.delegate.get_model_timecode(table.index(0)).is_undefined());
    }
    QVERIFY(table.delegate.get_model_timecode(QModelIndex()).is_undefined());
}

void TestTimecodeDelegate::other_editor_is_undefined_and_stays()
{
    Table table;
    QLineEdit line;
    table.delegate.setEditorData(&line, table.index(0));
    QCOMPARE(line.text(), QString());
    QVERIFY(table.delegate.get_editor_timecode(&line).is_undefined());
    QVERIFY(table.delegate.get_editor_timecode(nullptr).is_undefined());
    table.delegate.set_editor_timecode(nullptr, table.at(0));
}

void TestTimecodeDelegate::overridden_ways_are_used_both_ways()
{
    QStandardItemModel model(1, 1);
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setData(model.index(0, 0), 25);
    RowDelegate const delegate;
    QSpinBox box;
    delegate.setEditorData(&box, model.index(0, 0));
    QCOMPARE(box.value(), 25);
    box.setValue(50);
    delegate.setModelData(&box, &model, model.index(0, 0));
    QCOMPARE(model.index(0, 0).data().toInt(), 50);
}

void TestTimecodeDelegate::hover_background_is_behind_an_item_below_the_mouse()
{
    Table table;
    QModelIndex const index = table.index(0);
    QStyle::State const below_mouse = QStyle::State_MouseOver;
    QColor const color(10, 80, 10);
    QPoint const corner(118, 1);
    QVERIFY(!table.delegate.get_hover_background().isValid());
    QColor const plain = painted(table.delegate, index, below_mouse).pixelColor(corner);
    QCOMPARE(plain, QColor(Qt::white));
    table.delegate.set_hover_background(color);
    QCOMPARE(table.delegate.get_hover_background(), color);
    QCOMPARE(painted(table.delegate, index, below_mouse).pixelColor(corner), color);
    QCOMPARE(painted(table.delegate, index, {}).pixelColor(corner), plain);
    QStyle::State const selected = QStyle::State_Selected;
    QCOMPARE(painted(table.delegate, index, below_mouse | selected).pixelColor(corner),
        painted(table.delegate, index, selected).pixelColor(corner));
}

void TestTimecodeDelegate::hover_background_follows_the_mouse_in_a_view()
{
    Table table;
    table.view.setSelectionMode(QAbstractItemView::NoSelection);
    table.delegate.set_hover_background(QColor(10, 80, 10));
    QVERIFY(QTest::qWaitForWindowActive(&table.view, patience_ms));
    QWidget *viewport = table.view.viewport();
    viewport->setAttribute(Qt::WA_Hover);
    auto const shown = [&](int row) {
        QPoint const inside = table.view.visualRect(table.index(row)).bottomRight() - QPoint(3, 3);
        return viewport->grab().toImage().pixelColor(inside * viewport->devicePixelRatio());
    };
    QColor const plain = shown(1);
    for (int row : {1, 2}) {
        QTest::mouseMove(viewport, table.view.visualRect(table.index(row)).center());
        QTRY_COMPARE(shown(row), QColor(10, 80, 10));
        QCOMPARE(shown(3 - row), plain);
    }
}

void TestTimecodeDelegate::text_of_the_timecode_is_drawn()
{
    Table table;
    QImage const blank = painted(table.delegate, table.index(1), {});
    QImage const first = painted(table.delegate, table.index(0), {});
    QVERIFY(first != blank);
    table.put(2, table.at(0));
    QCOMPARE(painted(table.delegate, table.index(2), {}), first);
    table.put(2, table.at(0) + 2u);
    QVERIFY(painted(table.delegate, table.index(2), {}) != first);
    table.put(2, ATimecode());
    QCOMPARE(painted(table.delegate, table.index(2), {}), blank);
}

void TestTimecodeDelegate::size_holds_the_text()
{
    Table table;
    QStyleOptionViewItem option;
    option.font = table.view.font();
    QFontMetrics const metrics(option.font);
    QSize const size = table.delegate.sizeHint(option, table.index(0));
    QVERIFY(size.width() > metrics.horizontalAdvance(QStringLiteral("01.02.03.04")));
    QVERIFY(size.height() >= metrics.height());
    table.model.setData(table.index(0), QSize(7, 8), Qt::SizeHintRole);
    QCOMPARE(table.delegate.sizeHint(option, table.index(0)), QSize(7, 8));
}

QTEST_MAIN(TestTimecodeDelegate)
#include "tst_timecode_delegate.moc"
