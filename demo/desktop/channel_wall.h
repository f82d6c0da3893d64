// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Tarn/CFChannelConfig>
#include <Tarn/ChannelSet>
#include <Tarn/Glint>

#include <QGridLayout>
#include <QTimer>
#include <QWidget>

class ChannelTile;

/// A tile for each channel that the server's configuration has, and which of them are selected.
/// One tile has the cursor; the gang are the selected ones.
class ChannelWall : public QWidget
{
    Q_OBJECT

public:
    ChannelWall(Glint *hub, CFChannelConfig *config, QWidget *parent);

    QList<ChannelTile *> const &tiles() const { return all; }
    VCTP3::ChannelSet selection() const;

public Q_SLOTS:
    /// Moves the cursor and selects that channel alone. Beyond an edge nothing happens.
    void move_cursor(int columns, int rows);
    /// Moves the cursor and takes the channel into the gang.
    void extend_to(int columns, int rows);
    void select_all();
    void select_one();

Q_SIGNALS:
    void selection_changed();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void follow_configuration();
    void make_tiles(std::vector<unsigned int> const &channels);
    void arrange();
    void tile_clicked(VCTP3::Channel channel, Qt::KeyboardModifiers modifiers);
    bool step_cursor(int columns, int rows);
    void select(ChannelTile *only);

    Glint *const hub;
    CFChannelConfig *const config;
    QGridLayout *const grid;
    QTimer configuration_settled;
    QList<ChannelTile *> all;
    int columns_shown = 0;
    int cursor = 0;
};
