// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/server_page.h"

#include "demo/desktop/alert_list.h"
#include "demo/desktop/desk_style.h"
#include "demo/desktop/server_facts.h"

#include <QHBoxLayout>

ServerPage::ServerPage(Glint *hub, ClipList *clips, QWidget *parent)
    : QWidget(parent)
    , alert_list(new AlertList(hub, this))
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(8, 8, 8, 8);
    row->setSpacing(6);
    alert_list->setFrameShape(QFrame::NoFrame);
    row->addWidget(DeskStyle::panel_with(this, "Server", new ServerFacts(hub, clips, this)), 2);
    row->addWidget(DeskStyle::panel_with(this, "Alerts", alert_list), 3);
}
