// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_request.h"

#include <QByteArray>

#include <vector>

/// Gathers the replies to one command as they are written to the connection.
/// Thread: the server's.
class VeskAnswer final : public VeskRequest
{
public:
    /// \a xid is given back as it came, whatever it is.
    VeskAnswer(AString const &xid, quint64 connection);

    void ok() override;
    void error(AString const &text, VCTP3::ErrorCode code) override;
    void reply(XMLTree const &reply_element) override;
    quint64 connection() const override { return asking; }

    /// A message each; none as long as the command is not answered.
    std::vector<QByteArray> const &replies() const { return written; }

private:
    AString id;
    quint64 asking;
    std::vector<QByteArray> written;
};

/// A message as it stands on the wire.
QByteArray vesk_bytes(XMLTree const &message);
/// A report with its root.
QByteArray vesk_report_bytes(XMLTree const &report_element);
