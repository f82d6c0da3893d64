// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from enums.tbl, records.tbl and collections.tbl; do not edit.

#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/leaf_xml.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"

namespace VCTP3 {

/// \name Reading of the protocol's types
/// The element is \a parent itself where it has the tag, or else its only child of that
/// tag. On failure: false, *out untouched, the reason in *error.
/// @{
TARN_EXPORT bool read_element(XMLTree const &parent, AString const &tag, Side *out, AString *error);
TARN_EXPORT bool read_element(XMLTree const &parent, AString const &tag, Rate *out, AString *error);
TARN_EXPORT bool read_element(XMLTree const &parent, AString const &tag, ReportType *out,
    AString *error);
TARN_EXPORT bool read_element(XMLTree const &parent, AString const &tag, ChannelReportType *out,
    AString *error);
TARN_EXPORT bool read_element(XMLTree const &parent, AString const &tag, SideSet *out,
    AString *error);
TARN_EXPORT bool read_element(XMLTree const &parent, AString const &tag, Cars *out, AString *error);
TARN_EXPORT bool read_element(XMLTree const &parent, AString const &tag, std::list<AString> *out,
    AString *error);
TARN_EXPORT bool read_element(XMLTree const &parent, AString const &tag, Road *out, AString *error);
TARN_EXPORT bool read_element(XMLTree const &parent, AString const &tag, Car *out, AString *error);
/// @}

/// \name Writing of the protocol's types
/// An element of that tag; optional fields that are not set are left out.
/// @{
TARN_EXPORT XMLTree write_element(AString const &tag, Side value);
TARN_EXPORT XMLTree write_element(AString const &tag, Rate value);
TARN_EXPORT XMLTree write_element(AString const &tag, ReportType value);
TARN_EXPORT XMLTree write_element(AString const &tag, ChannelReportType value);
TARN_EXPORT XMLTree write_element(AString const &tag, SideSet const &value);
TARN_EXPORT XMLTree write_element(AString const &tag, Cars const &value);
TARN_EXPORT XMLTree write_element(AString const &tag, std::list<AString> const &value);
TARN_EXPORT XMLTree write_element(AString const &tag, Road const &value);
TARN_EXPORT XMLTree write_element(AString const &tag, Car const &value);
/// @}

} // namespace VCTP3
