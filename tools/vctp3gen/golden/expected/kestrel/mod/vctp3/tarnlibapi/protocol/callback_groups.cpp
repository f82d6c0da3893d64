// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from groups.tbl; do not edit.

#include "kestrel/mod/vctp3/tarnlibapi/protocol/callback_groups.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/callback_group_helper.h"

namespace VCTP3 {

CallbackGroup_set1::CallbackGroup_set1(QObject *parent)
    : QObject(parent)
    , helper(new CallbackGroupHelper(this))
{
    helper->bind_final<&CallbackGroup_set1::send_ok>(&on_ok);
    helper->bind_final<&CallbackGroup_set1::send_error>(&on_error);
}

CallbackGroup_set1::~CallbackGroup_set1()
{
    helper->detach();
}

void CallbackGroup_set1::addref() const
{
    helper->addref();
}

void CallbackGroup_set1::send_ok()
{
    Q_EMIT sig_ok();
}

void CallbackGroup_set1::send_error(AString const &message, unsigned int code)
{
    Q_EMIT sig_error(message, code);
}

CallbackGroup_set2::CallbackGroup_set2(QObject *parent)
    : QObject(parent)
    , helper(new CallbackGroupHelper(this))
{
    helper->bind_streaming<&CallbackGroup_set2::send_car>(&on_car);
    helper->bind_final<&CallbackGroup_set2::send_ok>(&on_ok);
    helper->bind_final<&CallbackGroup_set2::send_error>(&on_error);
}

CallbackGroup_set2::~CallbackGroup_set2()
{
    helper->detach();
}

void CallbackGroup_set2::addref() const
{
    helper->addref();
}

void CallbackGroup_set2::send_car(Car const &car)
{
    Q_EMIT sig_car(car);
}

void CallbackGroup_set2::send_ok()
{
    Q_EMIT sig_ok();
}

void CallbackGroup_set2::send_error(AString const &message, unsigned int code)
{
    Q_EMIT sig_error(message, code);
}

CallbackGroup_set3::CallbackGroup_set3(QObject *parent)
    : QObject(parent)
    , helper(new CallbackGroupHelper(this))
{
    helper->bind_final<&CallbackGroup_set3::send_road>(&on_road);
    helper->bind_final<&CallbackGroup_set3::send_error>(&on_error);
}

CallbackGroup_set3::~CallbackGroup_set3()
{
    helper->detach();
}

void CallbackGroup_set3::addref() const
{
    helper->addref();
}

void CallbackGroup_set3::send_road(Road const &road, unsigned long long serial)
{
    Q_EMIT sig_road(road, serial);
}

void CallbackGroup_set3::send_error(AString const &message, unsigned int code)
{
    Q_EMIT sig_error(message, code);
}

} // namespace VCTP3
