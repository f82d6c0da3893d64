// SPDX-License-Identifier: Apache-2.0
#include "tools/designer/tarn_designer.h"

#include "ATarnLib/timecode/widgets/aspeed_label.h"
#include "ATarnLib/timecode/widgets/atimecode_entry.h"
#include "ATarnLib/timecode/widgets/atimecode_label.h"

#include <QIcon>
#include <QPixmap>

namespace {

template <typename Widget> QWidget *make(QWidget *parent)
{
    return new Widget(parent);
}

constexpr WidgetKind kinds[] = {
    {"ATimecodeEntry", "Types a timecode", "plus", make<ATimecodeEntry>},
    {"ATimecodeLabel", "Shows a timecode", "colon", make<ATimecodeLabel>},
    {"ASpeedLabel", "Shows a speed", "percent", make<ASpeedLabel>},
};

} // namespace

TarnWidget::TarnWidget(WidgetKind const &described, QObject *parent)
    : QObject(parent)
    , kind(described)
{
}

QString TarnWidget::name() const
{
    return QLatin1String(kind.name);
}

QString TarnWidget::group() const
{
    return QStringLiteral("Tarn");
}

QString TarnWidget::toolTip() const
{
    return tr(kind.tool_tip);
}

QString TarnWidget::includeFile() const
{
    return QStringLiteral("<Tarn/%1>").arg(name());
}

QIcon TarnWidget::icon() const
{
    return QIcon(QPixmap(QStringLiteral(":/tc/large/%1.png").arg(QLatin1String(kind.glyph))));
}

QWidget *TarnWidget::createWidget(QWidget *parent)
{
    return kind.make(parent);
}

TarnDesigner::TarnDesigner(QObject *parent)
    : QObject(parent)
{
    for (WidgetKind const &kind : kinds)
        widgets.append(new TarnWidget(kind, this));
}
