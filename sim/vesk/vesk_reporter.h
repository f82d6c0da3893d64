// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/enums.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"

#include <QtGlobal>

/// Where the model tells what happened; the server turns it into messages. A report is given as
/// its element, without the root. What is told during a command leaves behind the command's last
/// reply; what is told during a field leaves when the field is over. Channels are not told here:
/// the server asks them what has changed.
/// Thread: the server's.
class VeskReporter
{
public:
    VeskReporter() = default;
    virtual ~VeskReporter();
    VeskReporter(VeskReporter const &) = delete;
    VeskReporter &operator=(VeskReporter const &) = delete;

    /// To those registered for \a group.
    virtual void report(VCTP3::ReportType group, XMLTree const &report) = 0;
    /// To one connection, whatever it is registered for; dropped when it has ended.
    virtual void report_to(quint64 connection, XMLTree const &report) = 0;
    /// To every connection.
    virtual void report_to_all(XMLTree const &report) = 0;
};
