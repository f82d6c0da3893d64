// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint.h"
#include "ATarnLib/glint/tally_model.h"
#include "tools/tarnctl/json_records.h"
#include "tools/tarnctl/snapshot_verb.h"
#include "tools/tarnctl/verbs.h"

#include <QMetaEnum>

namespace TarnCtl {
namespace {

QMetaEnum tally_states()
{
    return QMetaEnum::fromType<TallyModel::TallyState>();
}

QString tally_of(TallyModel const &tally)
{
    return QLatin1String(tally_states().valueToKey(tally.get_state()));
}

class TallyVerb : public SnapshotVerb
{
protected:
    void begin() override
    {
        for (VCTP3::Channel const channel : server_channels())
            tallies.push_back({channel,
                new TallyModel(hub().get_us_model(), static_cast<unsigned int>(channel), this)});
    }

    void print_json() override
    {
        for (auto const &[channel, tally] : tallies) {
            JsonValue line = JsonValue::object();
            line.add("channel", json_of(channel));
            line.add("tally", JsonValue::text(tally_of(*tally)));
            output().json_line(line);
        }
    }

    void write(Exposition *metrics) override
    {
        QStringList all;
        for (int i = 0; i < tally_states().keyCount(); ++i)
            all << QLatin1String(tally_states().key(i));
        metrics->family("tarn_tally", Exposition::Type::Gauge,
            "Tally light of a channel: 1 for the state that it is in.");
        for (auto const &[channel, tally] : tallies)
            metrics->states({{"channel", json_of(channel).scalar()}}, all, tally_of(*tally));
    }

private:
    std::vector<std::pair<VCTP3::Channel, TallyModel *>> tallies;
};

} // namespace

std::unique_ptr<Verb> make_tally(CommandLine const &)
{
    return std::make_unique<TallyVerb>();
}

} // namespace TarnCtl
