// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/server_page.h"

#include "demo/desktop/alert_list.h"
#include "demo/desktop/desk_style.h"
#include "demo/desktop/health_panel.h"
#include "demo/desktop/server_facts.h"

#include <QGridLayout>

ServerPage::ServerPage(Glint *hub, ClipList *clips, QWidget *parent)
    : QWidget(parent)
    , facts(new ServerFacts(hub, clips, this))
    , alert_list(new AlertList(hub, this))
{
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(8, 8, 8, 8);
    grid->setSpacing(6);
    alert_list->setFrameShape(QFrame::NoFrame);
    grid->addWidget(DeskStyle::panel_with(this, "Server", facts), 0, 0);
    grid->addWidget(DeskStyle::panel_with(this, "Connection", new HealthPanel(hub, this)), 0, 1);
    grid->addWidget(DeskStyle::panel_with(this, "Alerts", alert_list), 1, 0, 1, 2);
    for (int column : {0, 1})
        grid->setColumnStretch(column, 1);
    grid->setRowStretch(1, 1);
}

void ServerPage::set_live(bool on)
{
    facts->setEnabled(on);
    alert_list->setEnabled(on);
}
