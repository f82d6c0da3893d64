// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Tarn/CallbackGroup_set1>
#include <Tarn/ChannelSet>
#include <Tarn/Glint>

/// Commands to the selected channels. One channel gets the plain command; several get the one for a
/// gang, which the server does on all of them within one field.
class Transport : public QObject
{
    Q_OBJECT

public:
    Transport(Glint *hub, QObject *parent);

    /// Other channels begin to shuttle from the lowest speed.
    void set_channels(VCTP3::ChannelSet const &selection);

    void play();
    void stop();
    /// \a fields: forward, or backward if negative.
    void jog(int fields);
    /// One speed faster forward (1) or backward (-1), along a scale from -16X to 16X.
    void shuttle(int direction);
    void cue(QString const &clip);
    /// Makes a new clip on each channel and records into it.
    void record();

Q_SIGNALS:
    /// The server, or the desk itself, could not do what was asked.
    void failed(QString const &text);
    void recording(QString const &clip);

private:
    void play_at(int speed);
    bool is_gang() const { return channels.size() > 1; }
    bool has_channels();

    Glint *const hub;
    VCTP3::CallbackGroup_set1 answers;
    VCTP3::ChannelSet channels;
    int shuttle_step = 0;
};
