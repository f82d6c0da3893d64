// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/configuration_page.h"

#include "demo/desktop/board_picture.h"
#include "demo/desktop/desk_style.h"

#include <Tarn/CFComboBox>

#include <QHBoxLayout>

namespace {

constexpr int quads = 8;

QString item_state(CFItemModel const *item)
{
    if (item->have_changes())
        return QStringLiteral("not committed");
    return item->need_reboot() ? QStringLiteral("after a reboot") : QString();
}

} // namespace

ConfigurationPage::ConfigurationPage(Glint *server, QWidget *parent)
    : QWidget(parent)
    , hub(server)
    , model(server->get_cf_model())
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(8, 8, 8, 8);
    row->setSpacing(6);
    QWidget *settings = DeskStyle::panel_with(this, "Settings", make_items());
    settings->layout()->addWidget(make_buttons());
    row->addWidget(settings, 2);
    row->addWidget(DeskStyle::panel_with(this, "Channels, angles and outputs",
                       new BoardPicture(hub->get_channel_config(), this)),
        3);
    connect(model, &CFModel::changed, this, &ConfigurationPage::show_state);
    connect(model, &CFModel::fully_scanned, this, &ConfigurationPage::show_state);
    show_state();
}

QWidget *ConfigurationPage::make_items()
{
    auto *items = new QWidget(this);
    grid = new QGridLayout(items);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(16);
    grid->setColumnStretch(1, 1);
    grid->setColumnMinimumWidth(2, 100);
    for (int quad = 0; quad < quads; ++quad)
        add_item(QStringLiteral("ChannelConfigurationSet%1").arg(quad),
            QStringLiteral("Outputs %1 to %2").arg(quad * 4 + 1).arg(quad * 4 + 4));
    add_item(QStringLiteral("VideoStandard"), QStringLiteral("Video standard"));
    add_item(QStringLiteral("ReferenceSource"), QStringLiteral("Reference"));
    add_item(QStringLiteral("VideoAspectRatio"), QStringLiteral("Aspect ratio"));
    grid->setRowStretch(grid->rowCount(), 1);
    return items;
}

void ConfigurationPage::add_item(QString const &name, QString const &title)
{
    int const row = grid->rowCount();
    QLabel *label = DeskStyle::label(this, "title");
    label->setText(title);
    DeskStyle::set_text_colour(label, DeskStyle::quiet);
    auto *box = new QComboBox(this);
    box->setObjectName(name);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    // The binding fills the box with what the server allows, and types what is chosen into the
    // item.
    auto *binding = new CFComboBox(model, name, box);
    QLabel *note = DeskStyle::label(this, "note");
    DeskStyle::set_text_colour(note, DeskStyle::amber);
    grid->addWidget(label, row, 0);
    grid->addWidget(box, row, 1);
    grid->addWidget(note, row, 2);
    CFItemModel *item = binding->get_item();
    auto const show_note = [item, note] { note->setText(item_state(item)); };
    connect(item, qOverload<>(&CFItemModel::changed), note, show_note);
    connect(item, &CFItemModel::edit_ended, note, show_note);
}

QWidget *ConfigurationPage::make_buttons()
{
    auto *bar = new QWidget(this);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    state = DeskStyle::label(bar, "configuration state");
    commit = new QPushButton(QStringLiteral("Commit"), bar);
    revert = new QPushButton(QStringLiteral("Revert"), bar);
    connect(commit, &QPushButton::clicked, model, &CFModel::commit_changes);
    connect(revert, &QPushButton::clicked, model, &CFModel::revert_all_items);
    row->addWidget(state, 1);
    row->addWidget(revert);
    row->addWidget(commit);
    return bar;
}

void ConfigurationPage::show_state()
{
    bool const pending = model->have_changes();
    commit->setEnabled(pending);
    revert->setEnabled(pending);
    if (!model->is_fully_scanned())
        state->setText(QStringLiteral("Reading"));
    else if (pending)
        state->setText(QStringLiteral("There are changes to commit"));
    else
        state->setText(model->need_reboot() ? QStringLiteral("The server waits for a reboot")
                                            : QStringLiteral("All is as the server has it"));
}
