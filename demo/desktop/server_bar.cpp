// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/server_bar.h"

#include "demo/desktop/desk_style.h"
#include "demo/desktop/server_link.h"

#include <QHBoxLayout>

using namespace VCTP3;

namespace {

constexpr int notice_ms = 8000;

QString duration_text(qint64 seconds)
{
    return QStringLiteral("%1:%2:%3")
        .arg(seconds / 3600)
        .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

} // namespace

ServerBar::ServerBar(Glint *server, ServerLink *server_link, QWidget *parent)
    : QWidget(parent)
    , hub(server)
    , link(server_link)
    , ltc(server)
    , server_name(DeskStyle::label(this, "server name", 16, true))
    , server_address(DeskStyle::label(this, "server address"))
    , standard(DeskStyle::label(this, "standard"))
    , timecode(new ATimecodeLabel(this))
    , notice(DeskStyle::label(this, "notice"))
    , state(DeskStyle::label(this, "link state", 13, true))
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(12, 8, 12, 6);
    row->setSpacing(16);
    auto *ltc_title = DeskStyle::label(this, "ltc title");
    ltc_title->setText(QStringLiteral("LTC"));
    for (QWidget *widget :
        QList<QWidget *>{server_name, server_address, standard, ltc_title, timecode})
        row->addWidget(widget);
    server_name->setText(QStringLiteral("Tarn Desk"));
    timecode->set_font(ATimecodeLabel::Font::small);
    timecode->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    notice->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    notice->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    DeskStyle::set_text_colour(notice, DeskStyle::red);
    notice_shows.setSingleShot(true);
    connect(&notice_shows, &QTimer::timeout, notice, &QLabel::clear);
    row->addWidget(notice, 1);
    row->addWidget(state);
    for (QLabel *label : {server_address, standard, ltc_title})
        DeskStyle::set_text_colour(label, DeskStyle::quiet);

    connect(hub, &Glint::connected, this, &ServerBar::ask_server);
    connect(&name_answer, &CallbackGroup_set6::sig_computername, this,
        [this](AString const &name) { server_name->setText(QString(name)); });
    connect(&standard_answer, &CallbackGroup_set8::sig_video_standard, this,
        [this](VideoStandard running, VideoRate, VideoResolution) {
            standard->setText(QString(VideoStandard_to_string(running)));
        });
    connect(&ltc, &LTCModel::changed, timecode, [this] { timecode->set_timecode(ltc.get()); });
    connect(link, &ServerLink::changed, this, &ServerBar::show_link);
    connect(&second, &QTimer::timeout, this, &ServerBar::show_link);
    second.start(1000);
    show_link();
}

void ServerBar::set_server(QString const &name)
{
    server_address->setText(name);
}

void ServerBar::show_problem(QString const &text)
{
    second.stop();
    state->setText(text);
    DeskStyle::set_text_colour(state, DeskStyle::red);
}

void ServerBar::show_notice(QString const &text)
{
    DeskStyle::set_elided(notice, text, Qt::ElideRight);
    notice_shows.start(notice_ms);
}

void ServerBar::ask_server()
{
    hub->cmd_get_computer_name(name_answer);
    hub->cmd_get_video_standard(standard_answer);
}

void ServerBar::show_link()
{
    standard->setEnabled(link->is_live());
    QString const time = link->since().toString(QStringLiteral("HH:mm:ss"));
    QString const passed = duration_text(link->since().secsTo(QDateTime::currentDateTime()));
    DeskStyle::set_text_colour(state, link->is_live() ? DeskStyle::green : DeskStyle::amber);
    if (link->is_live())
        state->setText(QStringLiteral("live for %1").arg(passed));
    else if (link->has_values())
        state->setText(QStringLiteral("NOT LIVE: values as of %1, %2 ago").arg(time, passed));
    else
        state->setText(QStringLiteral("connecting, for %1").arg(passed));
}
