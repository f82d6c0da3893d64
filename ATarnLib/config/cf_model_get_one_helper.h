// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/callback_groups.h"

#include <QObject>

/// The answers to one command at a time that fetches a configuration item, told with a number, so
/// that their receiver knows which of several fetches is over.
/// Thread: that of its parent.
class TARN_EXPORT CFModelGetOneHelper : public QObject
{
    Q_OBJECT

public:
    explicit CFModelGetOneHelper(unsigned int helper_number, QObject *parent = nullptr);

    /// What the command is sent with.
    VCTP3::CallbackGroup_set11 const &callback_group() const { return group; }

Q_SIGNALS:
    void sig_one_configuration_item(unsigned int number, VCTP3::ConfigurationItem const &item);
    void sig_error(unsigned int number, AString const &text, VCTP3::ErrorCode code);

private:
    unsigned int const number;
    VCTP3::CallbackGroup_set11 group;
};
