// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/enums.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"

#include <QtGlobal>

/// One command being answered. Each is answered by exactly one final reply, before the function
/// that was handed it returns.
/// Thread: the server's.
class VeskRequest
{
public:
    VeskRequest() = default;
    virtual ~VeskRequest();
    VeskRequest(VeskRequest const &) = delete;
    VeskRequest &operator=(VeskRequest const &) = delete;

    /// Ends the command well.
    virtual void ok() = 0;
    /// Ends the command; \a text is for people and names the thing that was wrong.
    virtual void error(AString const &text, VCTP3::ErrorCode code = VCTP3::ErrorCode::general) = 0;
    /// Sends \a reply_element, which stands in the message beside the command's id. Whether it
    /// ends the command is its kind's.
    virtual void reply(XMLTree const &reply_element) = 0;
    /// The asking connection: a number of its own, from 1, that is not used again.
    virtual quint64 connection() const = 0;
};
