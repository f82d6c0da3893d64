// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/clip_list.h"

#include <algorithm>

using namespace VCTP3;

ClipList::ClipList(Glint *server, QObject *parent)
    : QStringListModel(parent)
    , hub(server)
{
    connect(hub, &Glint::connected, this, &ClipList::connected);
    connect(
        hub, &Glint::report_clip_created, this, [this](AString const &id) { add(QString(id)); });
    connect(
        hub, &Glint::report_clip_deleted, this, [this](AString const &id) { remove(QString(id)); });
    connect(&answers, &CallbackGroup_set2::sig_clipid, this,
        [this](AString const &id) { arriving.append(QString(id)); });
    connect(&answers, &CallbackGroup_set2::sig_ok, this, [this] {
        arriving.sort();
        take(arriving);
        Q_EMIT complete();
    });
}

void ClipList::connected()
{
    arriving.clear();
    // Registered before it is read, so that no clip is made unseen in between.
    hub->cmd_report_register(ReportType::clip_change);
    hub->cmd_download_clipids(answers);
}

/// Those that stay are not touched, so that what a view has chosen among them stays chosen.
void ClipList::take(QStringList const &ids)
{
    QStringList const before = stringList();
    if (before.isEmpty())
        setStringList(ids);
    for (QString const &id : before)
        if (!std::binary_search(ids.begin(), ids.end(), id))
            remove(id);
    for (QString const &id : ids)
        add(id);
}

void ClipList::add(QString const &id)
{
    QStringList const ids = stringList();
    auto const place = std::lower_bound(ids.begin(), ids.end(), id);
    if (place != ids.end() && *place == id)
        return;
    int const row = int(place - ids.begin());
    insertRow(row);
    setData(index(row), id);
}

void ClipList::remove(QString const &id)
{
    int const row = int(stringList().indexOf(id));
    if (row >= 0)
        removeRow(row);
}
