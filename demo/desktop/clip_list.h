// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Tarn/CallbackGroup_set2>
#include <Tarn/Glint>

#include <QStringListModel>

/// The ids of a server's clips, in order. Read anew with each connection, as nobody tells what came
/// and went in between; from then on the server tells of each clip.
class ClipList : public QStringListModel
{
    Q_OBJECT

public:
    ClipList(Glint *hub, QObject *parent);

Q_SIGNALS:
    /// All of them have been read.
    void complete();

private:
    void connected();
    void take(QStringList const &ids);
    void add(QString const &id);
    void remove(QString const &id);

    Glint *const hub;
    VCTP3::CallbackGroup_set2 answers;
    QStringList arriving;
};
