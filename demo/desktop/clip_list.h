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
    struct Change
    {
        QString id;
        bool is_there;
    };

    void connected();
    void end_reading();
    void changed(Change const &change);
    void take(QStringList const &ids);
    void add(QString const &id);
    void remove(QString const &id);

    Glint *const hub;
    VCTP3::CallbackGroup_set2 answers;
    bool is_reading = false;
    QStringList arriving;
    QList<Change> meanwhile;
};
