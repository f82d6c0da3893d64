// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/logging.h"

Q_LOGGING_CATEGORY(log_base, "tarn.base")
Q_LOGGING_CATEGORY(log_xml, "tarn.xml")
Q_LOGGING_CATEGORY(log_vctp3, "tarn.vctp3")
