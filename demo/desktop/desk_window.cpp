// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/desk_window.h"

#include "demo/desktop/alert_list.h"
#include "demo/desktop/channel_wall.h"
#include "demo/desktop/configuration_page.h"
#include "demo/desktop/log_page.h"
#include "demo/desktop/output_wall.h"
#include "demo/desktop/server_bar.h"
#include "demo/desktop/server_page.h"
#include "demo/desktop/transport_bar.h"

#include <Tarn/CFModel>

#include <QAction>
#include <QTabBar>
#include <QVBoxLayout>

DeskWindow::DeskWindow(Glint *server)
    : hub(server)
    , server_link(hub, nullptr)
    , clip_list(hub, nullptr)
    , transport(hub, nullptr)
{
    setWindowTitle(QStringLiteral("Tarn Desk"));
    auto *body = new QWidget(this);
    auto *column = new QVBoxLayout(body);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    server_bar = new ServerBar(hub, &server_link, body);
    pages = new QTabWidget(body);
    pages->setDocumentMode(true);
    pages->tabBar()->setFocusPolicy(Qt::NoFocus);
    pages->tabBar()->setDrawBase(false);
    column->addWidget(server_bar);
    column->addWidget(pages, 1);
    setCentralWidget(body);
    make_pages();
    write_log();
    connect(&server_link, &ServerLink::changed, this, &DeskWindow::show_liveness);
    connect(hub->get_cf_model(), &CFModel::fully_scanned, this, &DeskWindow::show_liveness);
    show_liveness();
}

/// Disabled widgets have the colours of what is not known to be true any more.
void DeskWindow::show_liveness()
{
    bool const is_live = server_link.is_live();
    for (QWidget *widget :
        QList<QWidget *>{transport_bar, channel_wall, output_wall, configuration_page})
        widget->setEnabled(is_live);
    server_page->set_live(is_live);
    for (TileGrid *wall : QList<TileGrid *>{channel_wall, output_wall})
        wall->set_hint(hint());
}

/// Why there may be no tile.
QString DeskWindow::hint() const
{
    if (!server_link.is_live())
        return QStringLiteral("Waiting for the server");
    return hub->get_cf_model()->is_fully_scanned() ? QStringLiteral("No channel is configured")
                                                   : QStringLiteral("Reading the configuration");
}

void DeskWindow::make_pages()
{
    pages->addTab(make_channel_page(), QStringLiteral("Channels"));
    output_wall = new OutputWall(hub, pages);
    pages->addTab(output_wall, QStringLiteral("Outputs"));
    server_page = new ServerPage(hub, &clip_list, pages);
    pages->addTab(server_page, QStringLiteral("Server"));
    configuration_page = new ConfigurationPage(hub, pages);
    pages->addTab(configuration_page, QStringLiteral("Configuration"));
    log_page = new LogPage(pages);
    pages->addTab(log_page, QStringLiteral("Log"));
    add_page_keys();
}

/// Ctrl+1 for the first.
void DeskWindow::add_page_keys()
{
    for (int page = 0; page < pages->count(); ++page) {
        auto *press = new QAction(this);
        press->setShortcut(QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + page)));
        connect(press, &QAction::triggered, pages, [this, page] { pages->setCurrentIndex(page); });
        addAction(press);
    }
}

QWidget *DeskWindow::make_channel_page()
{
    auto *page = new QWidget(pages);
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    channel_wall = new ChannelWall(hub, page);
    transport_bar = new TransportBar(&transport, &clip_list, channel_wall, page);
    column->addWidget(transport_bar);
    column->addWidget(channel_wall, 1);
    return page;
}

void DeskWindow::write_log()
{
    connect(&server_link, &ServerLink::changed, log_page, [this] {
        switch (server_link.state()) {
        case ServerLink::State::live:
            log_page->note(QStringLiteral("connected, and told everything"));
            break;
        case ServerLink::State::lost:
            log_page->note(QStringLiteral("the connection is lost"));
            break;
        default:
            break;
        }
    });
    connect(server_page->alerts(), &AlertList::news, log_page, &LogPage::note);
    connect(&transport, &Transport::failed, log_page, &LogPage::note);
    connect(&transport, &Transport::failed, server_bar, &ServerBar::show_notice);
    connect(&transport, &Transport::recording, log_page,
        [this](QString const &clip) { log_page->note(QStringLiteral("recording ") + clip); });
}

bool DeskWindow::show_page(QString const &title)
{
    int const index = int(page_titles().indexOf(title));
    if (index < 0)
        return false;
    pages->setCurrentIndex(index);
    return true;
}

QStringList DeskWindow::page_titles() const
{
    QStringList titles;
    for (int i = 0; i < pages->count(); ++i)
        titles << pages->tabText(i);
    return titles;
}
