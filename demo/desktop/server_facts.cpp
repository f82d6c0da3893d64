// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/server_facts.h"

#include "demo/desktop/clip_list.h"
#include "demo/desktop/desk_style.h"

#include <Tarn/CFChannelConfig>
#include <Tarn/CFModel>
#include <Tarn/USModel>

#include <QLocale>

using namespace VCTP3;

ServerFacts::ServerFacts(Glint *server, ClipList *clips, QWidget *parent)
    : QWidget(parent)
    , hub(server)
    , rows(DeskStyle::form(this))
    , latency_model(server)
    , standard_model(server->get_cf_model())
{
    version = DeskStyle::row(rows, "Version");
    standard = DeskStyle::row(rows, "Standard after a reboot");
    latency = DeskStyle::row(rows, "From input to output");
    board = DeskStyle::row(rows, "Board");
    clip_count = DeskStyle::row(rows, "Clips");
    disk = DeskStyle::row(rows, "Disk");
    temperature = DeskStyle::row(rows, "Temperature");
    follow_models(clips);
    follow_reports();
    connect(hub, &Glint::connected, this, &ServerFacts::ask);
}

void ServerFacts::follow_models(ClipList *clips)
{
    connect(&latency_model, &IOLatencyModel::changed, latency,
        [this] { latency->setText(QStringLiteral("%1 fields").arg(latency_model.get())); });
    connect(&standard_model, qOverload<Corvane::VideoStandard>(&VideoStandardModel::changed),
        standard, [this] {
            standard->setText(
                hub->get_cf_model()->get_item(QStringLiteral("VideoStandard"))->get());
        });
    auto const show_board = [this, config = hub->get_channel_config()] {
        board->setText(
            QStringLiteral("%1, %2 channels")
                .arg(hub->get_us_model()->get_item(QStringLiteral("cf.orchard.type"))->get())
                .arg(config->channel_count()));
    };
    connect(hub->get_channel_config(), &CFChannelConfig::changed, board, show_board);
    connect(hub->get_channel_config(), &CFChannelConfig::board_type_changed, board, show_board);
    auto const show_count = [this, clips] { clip_count->setNum(clips->rowCount()); };
    connect(clips, &ClipList::complete, clip_count, show_count);
    connect(clips, &ClipList::rowsInserted, clip_count, show_count);
    connect(clips, &ClipList::rowsRemoved, clip_count, show_count);
}

void ServerFacts::follow_reports()
{
    connect(&version_answer, &CallbackGroup_set12::sig_version_info, version,
        [this](AString const &revision, AString const &path) {
            version->setText(QString(revision) + QStringLiteral(" of ") + QString(path));
        });
    connect(hub, &Glint::report_disk_space_changed, disk, [this](DiskSpaceChange const &space) {
        QLocale const locale(QLocale::C);
        disk->setText(QStringLiteral("%1 of %2 free")
                          .arg(locale.formattedDataSize(qint64(space.available_disk_space)),
                              locale.formattedDataSize(qint64(space.total_disk_space))));
    });
    connect(hub, &Glint::report_temperature, temperature, [this](unsigned int tenths) {
        temperature->setText(QString::number(tenths / 10.0, 'f', 1) + QStringLiteral(" \u00B0C"));
    });
}

void ServerFacts::ask()
{
    hub->cmd_get_version_info(version_answer);
    // A registration belongs to a connection. Behind it comes the present state.
    hub->cmd_report_register(ReportType::disk_space);
    hub->cmd_report_register(ReportType::temperature);
}
