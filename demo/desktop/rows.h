// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QRect>

/// Cuts rows off an area, from the top. Tiles place what they hold by hand: a layout would be asked
/// anew whenever a text changes, which is with every field on every channel.
class Rows
{
public:
    explicit Rows(QRect const &area)
        : left(area)
    {
    }

    QRect take(int height)
    {
        QRect const row(left.topLeft(), QSize(left.width(), height));
        left.setTop(left.top() + height);
        return row;
    }
    /// What has not been taken.
    QRect rest() const { return left; }

private:
    QRect left;
};
