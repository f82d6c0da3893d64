// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/aspect_layout.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <algorithm>
#include <utility>

namespace {

/// The largest size of the ratio that fits into \a available.
QSize fit(QSize available, QSize ratio)
{
    // Wide products, as a ratio may be given in any unit.
    qint64 const across = qint64{available.width()} * ratio.height();
    qint64 const down = qint64{available.height()} * ratio.width();
    if (down >= across)
        return {available.width(), static_cast<int>(across / ratio.width())};
    return {static_cast<int>(down / ratio.height()), available.height()};
}

/// Where a stretch of \a size begins in \a available.
int place(int available, int size, bool at_begin, bool at_end)
{
    if (at_begin)
        return 0;
    return std::max(0, at_end ? available - size : available / 2 - size / 2);
}

/// A size that a widget may have, so that sums of sizes stay within the number range.
QSize possible(QSize size)
{
    return size.expandedTo({0, 0}).boundedTo({QWIDGETSIZE_MAX, QWIDGETSIZE_MAX});
}

QSize margins_size(QMargins margins)
{
    return possible({margins.left(), margins.top()})
        + possible({margins.right(), margins.bottom()});
}

} // namespace

AspectLayout::AspectLayout(QWidget *parent)
    : QLayout(parent)
{
}

AspectLayout::~AspectLayout() = default;

void AspectLayout::set_aspect(QSize extra, QSize aspect)
{
    extra = possible(extra);
    aspect = aspect.expandedTo({1, 1});
    if (extra == extra_space && aspect == ratio)
        return;
    extra_space = extra;
    ratio = aspect;
    lay_out_again();
}

void AspectLayout::set_alignment(Qt::Alignment flags)
{
    if (flags == alignment_flags)
        return;
    alignment_flags = flags;
    lay_out_again();
}

QSize AspectLayout::item_size(QSize available) const
{
    QSize const room
        = possible(possible(available) - margins_size(contentsMargins()) - extra_space);
    QSize size = fit(room, ratio);
    if (size.width() < room.width())
        size.setWidth(room.width() + 1);
    if (size.height() < room.height())
        size.setHeight(room.height());
    return size + extra_space;
}

void AspectLayout::addItem(QLayoutItem *added)
{
    A_ASSERT(!item);
    item.reset(added);
    invalidate();
}

QLayoutItem *AspectLayout::itemAt(int index) const
{
    return index == 0 ? item.get() : nullptr;
}

QLayoutItem *AspectLayout::takeAt(int index)
{
    return index == 0 ? item.release() : nullptr;
}

int AspectLayout::count() const
{
    return item ? 1 : 0;
}

QSize AspectLayout::sizeHint() const
{
    return with_margins(item ? item->sizeHint() : QSize(0, 0));
}

QSize AspectLayout::minimumSize() const
{
    return with_margins(item ? item->minimumSize() : QSize(0, 0));
}

void AspectLayout::setGeometry(QRect const &rect)
{
    if (rect == geometry())
        return;
    QLayout::setGeometry(rect);
    if (!item)
        return;
    QSize const size = item_size(rect.size());
    int const x = place(rect.width(), size.width(), alignment_flags.testFlag(Qt::AlignLeft),
        alignment_flags.testFlag(Qt::AlignRight));
    int const y = place(rect.height(), size.height(), alignment_flags.testFlag(Qt::AlignTop),
        alignment_flags.testFlag(Qt::AlignBottom));
    item->setGeometry(QRect(rect.topLeft() + QPoint(x, y), size));
}

QSize AspectLayout::with_margins(QSize size) const
{
    return size + margins_size(contentsMargins());
}

void AspectLayout::lay_out_again()
{
    QRect const rect = geometry();
    // Forgets the rectangle, so that it counts as a new one.
    invalidate();
    setGeometry(rect);
}

AspectWidget::AspectWidget(
    QWidget *parent, QSize minimum_size, QSize aspect, Qt::Alignment alignment)
    : QWidget(parent)
    , layout_by_aspect(new AspectLayout(this))
{
    setMinimumSize(minimum_size);
    layout_by_aspect->setContentsMargins(0, 0, 0, 0);
    layout_by_aspect->set_aspect(QSize(0, 0), aspect);
    layout_by_aspect->set_alignment(alignment);
}
