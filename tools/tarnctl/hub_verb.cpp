// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/hub_verb.h"

#include "ATarnLib/config/cf_model.h"
#include "ATarnLib/glint/cf_channel_config.h"
#include "ATarnLib/glint/glint.h"
#include "ATarnLib/glint/glint_health.h"

#include <QTimer>

#include <chrono>
#include <utility>

namespace TarnCtl {
namespace {

constexpr std::chrono::milliseconds look_again{1};

} // namespace

/// The first round trip gives the event loop its turns, in which an output connects to its channel
/// and the channel registers; what the server says to that has come with the second.
bool HubVerb::prepare(CommandLine const &, QString *error)
{
    return add_call("sync", {}, error) && add_call("sync", {}, error);
}

void HubVerb::connected()
{
    if (complete)
        return;
    CFModel *const configuration = hub().get_cf_model();
    if (begun)
        Verb::connected();
    else if (!needs_configuration() || configuration->is_fully_scanned())
        start();
    else
        connect(
            configuration, &CFModel::fully_scanned, this, &HubVerb::start, Qt::UniqueConnection);
}

void HubVerb::start()
{
    if (session().is_over() || std::exchange(begun, true))
        return;
    begin();
    Verb::connected();
}

void HubVerb::done()
{
    if (session().is_over() || complete)
        return;
    if (!is_told()) {
        QTimer::singleShot(look_again, this, &HubVerb::done);
        return;
    }
    complete = true;
    told();
}

/// What comes at field rate is decoded beside the replies; what is decoded waits for delivery.
bool HubVerb::is_told()
{
    GlintHealth const *const health = hub().get_health();
    return health->messages_to_decode() == 0 && health->results_to_deliver() == 0;
}

std::vector<VCTP3::Channel> HubVerb::server_channels()
{
    std::vector<VCTP3::Channel> channels;
    for (unsigned int const number : hub().get_channel_config()->AllUserChannels())
        channels.push_back(static_cast<VCTP3::Channel>(number));
    if (!channels.empty())
        return channels;
    for (unsigned int number = 0; number < Glint::channel_count; ++number)
        channels.push_back(static_cast<VCTP3::Channel>(number));
    return channels;
}

} // namespace TarnCtl
