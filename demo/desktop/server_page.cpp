// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/server_page.h"

#include "demo/desktop/alert_list.h"
#include "demo/desktop/desk_style.h"
#include "demo/desktop/server_facts.h"

#include <QHBoxLayout>
#include <QLabel>

ServerPage::ServerPage(Glint *hub, ClipList *clips, QWidget *parent)
    : QWidget(parent)
    , alert_list(new AlertList(hub, this))
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(8, 8, 8, 8);
    row->setSpacing(6);
    alert_list->setFrameShape(QFrame::NoFrame);
    row->addWidget(make_panel("Server", new ServerFacts(hub, clips, this)), 2);
    row->addWidget(make_panel("Alerts", alert_list), 3);
}

QWidget *ServerPage::make_panel(char const *title, QWidget *content)
{
    auto *panel = new QWidget(this);
    panel->setAutoFillBackground(true);
    QPalette palette = panel->palette();
    palette.setColor(QPalette::Window, DeskStyle::panel);
    panel->setPalette(palette);
    auto *column = new QVBoxLayout(panel);
    column->setContentsMargins(16, 12, 16, 12);
    column->setSpacing(14);
    QLabel *heading = DeskStyle::label(panel, "heading", 15, true);
    heading->setText(QLatin1String(title));
    column->addWidget(heading);
    column->addWidget(content, 1);
    return panel;
}
