// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLoggingCategory>

/// "tarn.base": strings, threads and time.
Q_DECLARE_LOGGING_CATEGORY(log_base)
/// "tarn.xml": message text.
Q_DECLARE_LOGGING_CATEGORY(log_xml)
/// "tarn.vctp3": the control protocol.
Q_DECLARE_LOGGING_CATEGORY(log_vctp3)
