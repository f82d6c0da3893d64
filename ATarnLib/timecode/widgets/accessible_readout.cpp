// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/widgets/accessible_readout_p.h"

#include "ATarnLib/timecode/widgets/aspeed_label.h"
#include "ATarnLib/timecode/widgets/atimecode_label.h"

#include <QAccessibleWidget>

namespace {

/// \a readout is one of the two classes below.
QString value_of(QObject const *readout)
{
    if (auto const *label = qobject_cast<ATimecodeLabel const *>(readout))
        return label->shown_text();
    return static_cast<ASpeedLabel const *>(readout)->shown_text();
}

class Readout : public QAccessibleWidget
{
public:
    explicit Readout(QWidget *widget)
        : QAccessibleWidget(widget, QAccessible::StaticText)
    {
    }
    int childCount() const override { return 0; }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int indexOfChild(QAccessibleInterface const *) const override { return -1; }
    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? value_of(object()) : QAccessibleWidget::text(kind);
    }
};

QAccessibleInterface *make(QString const &, QObject *object)
{
    bool const ours = qobject_cast<ATimecodeLabel *>(object) || qobject_cast<ASpeedLabel *>(object);
    return ours ? new Readout(static_cast<QWidget *>(object)) : nullptr;
}

} // namespace

void AccessibleReadout::install()
{
    // Takes no notice of one that is installed already.
    QAccessible::installFactory(make);
}

void AccessibleReadout::value_changed(QWidget *readout)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleValueChangeEvent event(readout, value_of(readout));
    QAccessible::updateAccessibility(&event);
}
