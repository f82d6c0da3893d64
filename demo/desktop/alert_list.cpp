// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/alert_list.h"

#include "demo/desktop/desk_style.h"

#include <QHeaderView>

using namespace VCTP3;

namespace {

QColor level_colour(AlertingLevel level)
{
    switch (level) {
    case AlertingLevel::error:
        return DeskStyle::red;
    case AlertingLevel::warning:
        return DeskStyle::amber;
    case AlertingLevel::ok:
        return DeskStyle::green;
    default:
        return DeskStyle::quiet;
    }
}

} // namespace

AlertList::AlertList(Glint *hub, QWidget *parent)
    : QTableWidget(0, 3, parent)
    , alert_model(hub->get_alert_model())
    , nothing(DeskStyle::label(viewport(), "no alerts"))
{
    nothing->setText(QStringLiteral("None so far"));
    nothing->move(4, 8);
    nothing->setForegroundRole(QPalette::WindowText);
    DeskStyle::set_text_colour(nothing, DeskStyle::quiet);
    setHorizontalHeaderLabels(
        {QStringLiteral("Alert"), QStringLiteral("Level"), QStringLiteral("What it says")});
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->hide();
    setColumnWidth(0, 180);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(NoSelection);
    setFocusPolicy(Qt::NoFocus);
    setShowGrid(false);
    // The model has a thread of its own; with a context its news come on ours.
    connect(alert_model, &AlertModel::added, this, &AlertList::add);
    for (QString const &name : alert_model->names())
        add(name);
}

int AlertList::row_of(QString const &name) const
{
    for (int row = 0; row < rowCount(); ++row)
        if (item(row, 0)->data(Qt::UserRole).toString() == name)
            return row;
    return -1;
}

void AlertList::add(QString const &name)
{
    if (row_of(name) >= 0)
        return;
    int const row = rowCount();
    insertRow(row);
    nothing->hide();
    for (int column = 0; column < columnCount(); ++column)
        setItem(row, column, new QTableWidgetItem);
    item(row, 0)->setData(Qt::UserRole, name);
    item(row, 0)->setText(name);
    connect(alert_model->get(name), &AlertItemModel::changed, this, &AlertList::show_alert);
    show_alert(name);
}

void AlertList::show_alert(QString const &name)
{
    int const row = row_of(name);
    AOption<Alert> const alert = alert_model->get(name)->get();
    if (row < 0 || !alert)
        return;
    QString const level = QString(AlertingLevel_to_string(alert->alerting_level));
    QString const title = QString(alert->alert_name_description);
    QString const value = QString(alert->alert_value_description);
    QStringList const old{item(row, 1)->text(), item(row, 2)->text()};
    item(row, 0)->setText(title.isEmpty() ? name : title);
    item(row, 1)->setText(level);
    item(row, 1)->setForeground(level_colour(alert->alerting_level));
    item(row, 2)->setText(value);
    if (old != QStringList{level, value})
        Q_EMIT news(QStringLiteral("alert %1: %2, %3").arg(item(row, 0)->text(), level, value));
}
