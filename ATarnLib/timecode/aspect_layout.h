// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QLayout>
#include <QSize>
#include <QWidget>
#include <memory>

/// Gives its one item the room that a picture of a certain aspect ratio takes, beside some extra
/// space that takes no part in the ratio.
///
/// The picture's room is first fitted into what there is. A height that came out smaller is then
/// set to the whole height, and a width that came out smaller to the whole width and one pixel.
/// Screens are built around that.
/// Thread: the main thread.
class TARN_EXPORT AspectLayout : public QLayout
{
    Q_OBJECT

public:
    explicit AspectLayout(QWidget *parent = nullptr);
    ~AspectLayout() override;

    /// \a extra: fixed space beside the picture. \a aspect: the ratio; a side below 1 becomes 1.
    void set_aspect(QSize extra, QSize aspect);
    /// Where the item stands in the layout's rectangle; in the centre of both directions unless set
    /// here. As the item is never smaller than its room, the flags share out the margins alone:
    /// with `Qt::AlignLeft` all of both is on its right. Without margins it is the upper left
    /// corner with all flags.
    void set_alignment(Qt::Alignment flags);

    /// The item's size in a layout of the size \a available, margins included.
    QSize item_size(QSize available) const;

    /// Takes \a added. A second item is an assertion and takes the place of the first.
    void addItem(QLayoutItem *added) override;
    QLayoutItem *itemAt(int index) const override;
    QLayoutItem *takeAt(int index) override;
    int count() const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    /// Without effect while neither the rectangle nor anything that was set has changed.
    void setGeometry(QRect const &rect) override;

private:
    QSize with_margins(QSize size) const;
    void lay_out_again();

    std::unique_ptr<QLayoutItem> item;
    QSize extra_space{0, 0};
    QSize ratio{1, 1};
    Qt::Alignment alignment_flags = Qt::AlignHCenter | Qt::AlignVCenter;
};

/// A widget that lays out its one child by an `AspectLayout` without margins.
/// Thread: the main thread.
class TARN_EXPORT AspectWidget : public QWidget
{
    Q_OBJECT

public:
    AspectWidget(QWidget *parent, QSize minimum_size, QSize aspect,
        Qt::Alignment alignment = Qt::AlignHCenter | Qt::AlignVCenter);

    AspectLayout *aspect_layout() const { return layout_by_aspect; }

private:
    AspectLayout *layout_by_aspect;
};
