// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/widgets/timecode_delegate.h"

#include "ATarnLib/timecode/widgets/atimecode_entry.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QPainter>
#include <QStyle>

using Corvane::ATimecode;

TimecodeDelegate::TimecodeDelegate(QObject *parent)
    : QItemDelegate(parent)
{
}

TimecodeDelegate::~TimecodeDelegate() = default;

QWidget *TimecodeDelegate::createEditor(
    QWidget *parent, QStyleOptionViewItem const &, QModelIndex const &) const
{
    auto *entry = new ATimecodeEntry(parent);
    entry->setFrame(false);
    entry->set_auto_highlight(true);
    return entry;
}

void TimecodeDelegate::setEditorData(QWidget *editor, QModelIndex const &index) const
{
    set_editor_timecode(editor, get_model_timecode(index));
}

void TimecodeDelegate::setModelData(
    QWidget *editor, QAbstractItemModel *model, QModelIndex const &index) const
{
    auto const *entry = qobject_cast<ATimecodeEntry *>(editor);
    if (entry && entry->text() == ATimecodeEntry::text_of(get_model_timecode(index)))
        return;
    set_model_timecode(model, index, get_editor_timecode(editor));
}

ATimecode TimecodeDelegate::get_model_timecode(QModelIndex const &index) const
{
    return index.data(Qt::EditRole).value<ATimecode>();
}

void TimecodeDelegate::set_model_timecode(
    QAbstractItemModel *model, QModelIndex const &index, ATimecode const &edited) const
{
    model->setData(index, QVariant::fromValue(edited), Qt::EditRole);
}

ATimecode TimecodeDelegate::get_editor_timecode(QWidget *editor) const
{
    auto const *entry = qobject_cast<ATimecodeEntry *>(editor);
    return entry ? entry->timecode() : ATimecode();
}

void TimecodeDelegate::set_editor_timecode(QWidget *editor, ATimecode const &shown) const
{
    if (auto *entry = qobject_cast<ATimecodeEntry *>(editor))
        entry->set_timecode(shown);
}

void TimecodeDelegate::paint(
    QPainter *painter, QStyleOptionViewItem const &option, QModelIndex const &index) const
{
    QStyleOptionViewItem const item = setOptions(index, option);
    painter->save();
    drawBackground(painter, item, index);
    // Of a selected item the text brings its own background.
    if (item.state.testFlag(QStyle::State_MouseOver) && hover_background.isValid())
        painter->fillRect(item.rect, hover_background);
    drawDisplay(painter, item, item.rect, text_of(index));
    drawFocus(painter, item, item.rect);
    painter->restore();
}

QSize TimecodeDelegate::sizeHint(QStyleOptionViewItem const &option, QModelIndex const &index) const
{
    QVariant const set_size = index.data(Qt::SizeHintRole);
    if (set_size.isValid())
        return set_size.toSize();
    // As much on both sides of the text as drawDisplay leaves.
    int const margin = QApplication::style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1;
    QSize const text = setOptions(index, option).fontMetrics.size(0, text_of(index));
    return text + QSize(2 * margin, 0);
}

QString TimecodeDelegate::text_of(QModelIndex const &index) const
{
    ATimecode const timecode = get_model_timecode(index);
    return timecode.is_defined() ? QString(timecode.toString(4)) : QString();
}
