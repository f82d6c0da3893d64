// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api.h"

#include "kestrel/mod/vctp3/tarnlibapi/protocol/pending_table_p.h"

namespace VCTP3 {

API::API()
    : pending(std::make_unique<PendingTable>())
{
}

API::~API() = default;

unsigned int API::outstanding_commands() const
{
    return pending->outstanding();
}

bool API::forget_transaction(AString const &xid)
{
    return pending->forget(xid);
}

void API::fail_all_pending_commands()
{
    pending->fail_all();
}

} // namespace VCTP3
