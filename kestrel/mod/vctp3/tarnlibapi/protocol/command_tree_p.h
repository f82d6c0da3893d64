// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/element_builder_p.h"

namespace VCTP3 {

/// Builds the message of one command: the transaction id, then the command with its parameters.
class TARN_EXPORT CommandTree : public ElementBuilder
{
public:
    CommandTree(AString const &transaction, Word command);

    XMLTree take() const;

private:
    AString const xid;
};

} // namespace VCTP3
