// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "demo/desktop/clip_list.h"
#include "demo/desktop/server_link.h"
#include "demo/desktop/transport.h"

#include <Tarn/Glint>

#include <QMainWindow>
#include <QTabWidget>

class ChannelWall;
class ConfigurationPage;
class LogPage;
class OutputWall;
class ServerBar;
class ServerPage;
class TransportBar;

/// The window: the state of the connection above, a page below. It needs nothing but the hub.
class DeskWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// \a hub must outlive the window.
    explicit DeskWindow(Glint *hub);

    ServerLink *link() { return &server_link; }
    ClipList *clips() { return &clip_list; }
    ChannelWall *wall() const { return channel_wall; }
    ServerBar *bar() const { return server_bar; }
    LogPage *log() const { return log_page; }
    /// By the title of its tab. False, and nothing happens, if there is none.
    bool show_page(QString const &title);
    QStringList page_titles() const;

private:
    void make_pages();
    void add_page_keys();
    QWidget *make_channel_page();
    void show_liveness();
    QString hint() const;
    void write_log();

    Glint *const hub;
    ServerLink server_link;
    ClipList clip_list;
    Transport transport;
    ServerBar *server_bar = nullptr;
    TransportBar *transport_bar = nullptr;
    ChannelWall *channel_wall = nullptr;
    OutputWall *output_wall = nullptr;
    ServerPage *server_page = nullptr;
    ConfigurationPage *configuration_page = nullptr;
    LogPage *log_page = nullptr;
    QTabWidget *pages = nullptr;
};
