// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/demo_show.h"

#include "demo/desktop/channel_tile.h"
#include "demo/desktop/channel_wall.h"
#include "demo/desktop/desk_window.h"

#include <Tarn/TrackSet>
#include <Tarn/USModel>

#include <iterator>

using namespace VCTP3;

namespace {

/// What the channels do, the first one first, and again from the front behind the last.
struct Part
{
    double speed; // 0: only cued
    bool records;
    char const *tally;
};

constexpr Part parts[] = {
    {1, false, "red"},
    {0.5, false, "green"},
    {0, false, "yellow"},
    {-1, false, "offline"},
    {1, true, "offline"},
    {2, false, "offline"},
    {0.25, false, "green"},
    {1, true, "offline"},
};

} // namespace

DemoShow::DemoShow(Glint *server, DeskWindow *desk, QObject *parent)
    : QObject(parent)
    , hub(server)
    , window(desk)
{
    connect(window->link(), &ServerLink::changed, this, &DemoShow::begin_when_ready);
    connect(window->clips(), &ClipList::complete, this, &DemoShow::begin_when_ready);
    connect(window->wall(), &ChannelWall::selection_changed, this, &DemoShow::begin_when_ready);
}

void DemoShow::begin_when_ready()
{
    QStringList const clips = window->clips()->stringList();
    QList<ChannelTile *> const &tiles = window->wall()->tiles();
    if (begun || clips.isEmpty() || tiles.isEmpty() || !window->link()->is_live())
        return;
    begun = true;
    for (int i = 0; i < tiles.size(); ++i) {
        Channel const channel = tiles[i]->channel();
        Part const &part = parts[std::size_t(i) % std::size(parts)];
        if (part.records)
            hub->cmd_create_clip(AString(QStringLiteral("Camera %1").arg(i + 1)),
                TrackSet(TrackType::video), 0U, channel);
        else
            hub->cmd_cue_clip(channel, AString(clips[i * 13 % clips.size()]), Loop::loop, 200U);
        if (part.speed != 0)
            hub->cmd_play(channel, int(part.speed * 65536));
    }
    set_tally();
}

void DemoShow::set_tally()
{
    for (ChannelTile const *tile : window->wall()->tiles()) {
        auto const number = static_cast<unsigned int>(tile->channel());
        hub->get_us_model()
            ->get_item(QStringLiteral("Tally%1").arg(number))
            ->set(QLatin1String(parts[number % std::size(parts)].tally));
    }
}
