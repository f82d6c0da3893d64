// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt_impl_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/report_ahead_p.h"

namespace VCTP3 {

void APIQtImpl::send(void const *data, unsigned long long size)
{
    if (belongs_to_stream())
        owner->send(data, size);
}

bool APIQtImpl::deliver_ahead(XMLParseEngine2::Prepared const *prepared)
{
    if (!prepared || has_receive_hook)
        return false;
    struct Call
    {
        void operator()(ReportAhead::Status const &value) const
        {
            if (report.bed)
                to->report_channel_aux_audio_status(report.channel, value.status, value.clip_id);
            else
                to->report_channel_status(report.channel, value.status, value.clip_id);
        }
        void operator()(ReportAhead::ClipID const &value) const
        {
            if (report.bed)
                to->report_channel_aux_audio_clipid(report.channel, value.clip_id);
            else
                to->report_channel_clipid(report.channel, value.clip_id);
        }
        void operator()(ReportAhead::Speed const &value) const
        {
            if (report.bed)
                to->report_channel_aux_audio_speed(report.channel, value.speed);
            else
                to->report_channel_speed(report.channel, value.speed);
        }
        void operator()(ChannelInformation const &value) const
        {
            if (report.bed)
                to->report_channel_aux_audio_info(report.channel, value);
            else
                to->report_channel_info(report.channel, value);
        }
        APIQtImpl *to;
        ReportAhead const &report;
    };
    auto const &report = static_cast<ReportAhead const &>(*prepared);
    std::visit(Call{this, report}, report.value);
    return true;
}

} // namespace VCTP3
