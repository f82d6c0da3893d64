// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Tarn/CallbackGroup_set12>
#include <Tarn/Glint>
#include <Tarn/IOLatencyModel>
#include <Tarn/VideoStandardModel>

#include <QFormLayout>
#include <QLabel>

class ClipList;

/// What the server is and how much room it has. Some of it is kept by models, some is asked for on
/// each connection, some is reported to those who register.
class ServerFacts : public QWidget
{
    Q_OBJECT

public:
    ServerFacts(Glint *hub, ClipList *clips, QWidget *parent);

private:
    void follow_models(ClipList *clips);
    void follow_reports();
    void ask();

    Glint *const hub;
    QFormLayout *const rows;
    IOLatencyModel latency_model;
    VideoStandardModel standard_model;
    VCTP3::CallbackGroup_set12 version_answer;
    QLabel *version = nullptr;
    QLabel *standard = nullptr;
    QLabel *latency = nullptr;
    QLabel *board = nullptr;
    QLabel *clip_count = nullptr;
    QLabel *disk = nullptr;
    QLabel *temperature = nullptr;
};
