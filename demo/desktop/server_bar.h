// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Tarn/ATimecodeLabel>
#include <Tarn/CallbackGroup_set6>
#include <Tarn/CallbackGroup_set8>
#include <Tarn/Glint>
#include <Tarn/LTCModel>

#include <QLabel>
#include <QTimer>

class ServerLink;

/// The top of the window: which server this is, the timecode at its input, and whether what stands
/// below is what it says now.
class ServerBar : public QWidget
{
    Q_OBJECT

public:
    ServerBar(Glint *hub, ServerLink *link, QWidget *parent);

    /// What to call the server until it has told its name.
    void set_server(QString const &name);
    /// Shows a text in place of the state, until that changes.
    void show_problem(QString const &text);
    /// Shows for some seconds what has not worked.
    void show_notice(QString const &text);

private:
    void ask_server();
    void show_link();

    Glint *const hub;
    ServerLink *const link;
    LTCModel ltc;
    VCTP3::CallbackGroup_set6 name_answer;
    VCTP3::CallbackGroup_set8 standard_answer;
    QTimer second;
    QTimer notice_shows;
    QLabel *server_name = nullptr;
    QLabel *server_address = nullptr;
    QLabel *standard = nullptr;
    ATimecodeLabel *timecode = nullptr;
    QLabel *notice = nullptr;
    QLabel *state = nullptr;
};
