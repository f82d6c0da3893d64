// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_model_get_one_helper.h"

CFModelGetOneHelper::CFModelGetOneHelper(unsigned int helper_number, QObject *parent)
    : QObject(parent)
    , number(helper_number)
    , group(this)
{
    using Group = VCTP3::CallbackGroup_set11;
    connect(&group, &Group::sig_one_configuration_item, this,
        [this](VCTP3::ConfigurationItem const &item) {
            Q_EMIT sig_one_configuration_item(number, item);
        });
    connect(&group, &Group::sig_error, this, [this](AString const &text, VCTP3::ErrorCode code) {
        Q_EMIT sig_error(number, text, code);
    });
}
