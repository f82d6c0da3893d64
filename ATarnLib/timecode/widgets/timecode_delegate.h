// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/timecode/atimecode.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QColor>
#include <QItemDelegate>

/// Shows and edits the timecodes of an item model, which holds each as a `Corvane::ATimecode` for
/// `Qt::EditRole`. For a model that holds them otherwise, override `get_model_timecode` and
/// `set_model_timecode`; for another editor, `createEditor`, `get_editor_timecode` and
/// `set_editor_timecode`.
///
/// A model that leaves out equal values, as `QStandardItemModel` does, does not take a timecode
/// that differs from the present one in frequency, flag or speed alone: those compare as equal.
/// Thread: the main thread.
class TARN_EXPORT TimecodeDelegate : public QItemDelegate
{
    Q_OBJECT
    Q_PROPERTY(QColor hover_background READ get_hover_background WRITE set_hover_background)

public:
    explicit TimecodeDelegate(QObject *parent = nullptr);
    ~TimecodeDelegate() override;

    /// An `ATimecodeEntry` that selects all when it gets the focus.
    QWidget *createEditor(QWidget *parent, QStyleOptionViewItem const &option,
        QModelIndex const &index) const override;
    void setEditorData(QWidget *editor, QModelIndex const &index) const override;
    /// Leaves the model as it is where the entry shows what it would show of the model's timecode,
    /// so that what an entry cannot show, such as days, outlasts an editor that changed nothing.
    void setModelData(
        QWidget *editor, QAbstractItemModel *model, QModelIndex const &index) const override;

    /// Undefined where the model holds none.
    virtual Corvane::ATimecode get_model_timecode(QModelIndex const &index) const;
    virtual void set_model_timecode(QAbstractItemModel *model, QModelIndex const &index,
        Corvane::ATimecode const &edited) const;
    /// Undefined for an editor that is no `ATimecodeEntry`.
    virtual Corvane::ATimecode get_editor_timecode(QWidget *editor) const;
    /// Without effect on an editor that is no `ATimecodeEntry`.
    virtual void set_editor_timecode(QWidget *editor, Corvane::ATimecode const &shown) const;

    /// Behind an item below the mouse that is not selected, in a view whose viewport has
    /// `Qt::WA_Hover`. An invalid colour, which it is unless set here, leaves the background.
    void set_hover_background(QColor const &color) { hover_background = color; }
    QColor get_hover_background() const { return hover_background; }

    /// The timecode as `toString(4)`; nothing while undefined.
    void paint(QPainter *painter, QStyleOptionViewItem const &option,
        QModelIndex const &index) const override;
    QSize sizeHint(QStyleOptionViewItem const &option, QModelIndex const &index) const override;

private:
    QString text_of(QModelIndex const &index) const;

    QColor hover_background;
};
