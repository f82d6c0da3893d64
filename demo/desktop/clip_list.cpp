// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/clip_list.h"

#include <algorithm>
#include <utility>

using namespace VCTP3;

ClipList::ClipList(Glint *server, QObject *parent)
    : QStringListModel(parent)
    , hub(server)
{
    connect(hub, &Glint::connected, this, &ClipList::connected);
    connect(hub, &Glint::report_clip_created, this, [this](AString const &id) {
        changed({QString(id), true});
    });
    connect(hub, &Glint::report_clip_deleted, this, [this](AString const &id) {
        changed({QString(id), false});
    });
    connect(&answers, &CallbackGroup_set2::sig_clipid, this,
        [this](AString const &id) { arriving.append(QString(id)); });
    connect(&answers, &CallbackGroup_set2::sig_ok, this, [this] {
        arriving.sort();
        take(arriving);
        end_reading();
        Q_EMIT complete();
    });
    connect(&answers, &CallbackGroup_set2::sig_error, this, &ClipList::end_reading);
}

void ClipList::connected()
{
    arriving.clear();
    meanwhile.clear();
    is_reading = true;
    // Registered before it is read, so that no clip is made unseen in between.
    hub->cmd_report_register(ReportType::clip_change);
    hub->cmd_download_clipids(answers);
}

void ClipList::end_reading()
{
    is_reading = false;
    for (Change const &change : std::exchange(meanwhile, {}))
        changed(change);
}

/// A report may overtake the list, which then is of before.
void ClipList::changed(Change const &change)
{
    if (is_reading)
        meanwhile.append(change);
    else if (change.is_there)
        add(change.id);
    else
        remove(change.id);
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
