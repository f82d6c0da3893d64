// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_answer.h"

#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_name.h"
#include "sim/vesk/replies.h"

QByteArray vesk_bytes(XMLTree const &message)
{
    QByteArray bytes;
    message.send_utf8({[](void *to, char const *data, unsigned long long size) {
                           static_cast<QByteArray *>(to)->append(
                               data, static_cast<qsizetype>(size));
                       },
                          &bytes},
        XMLTree::FlattenCompact);
    return bytes;
}

QByteArray vesk_report_bytes(XMLTree const &report_element)
{
    static XMLName const report("report");
    return vesk_bytes(XMLTree(report, report_element));
}

VeskAnswer::VeskAnswer(AString const &xid, quint64 connection)
    : id(xid)
    , asking(connection)
{
}

void VeskAnswer::ok()
{
    reply(VeskReplies::ok());
}

void VeskAnswer::error(AString const &text, VCTP3::ErrorCode code)
{
    reply(VeskReplies::error(text, code));
}

void VeskAnswer::reply(XMLTree const &reply_element)
{
    static XMLName const root("reply");
    static XMLName const xid("xid");
    XMLTree message(root, XMLTree(xid, id));
    message.add_subnode(reply_element);
    written.push_back(vesk_bytes(message));
}
