// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"

namespace VCTP3 {

/// The element that a reader reads: \a parent itself if it has the tag, so that one reader serves
/// a field and a whole message; else its only child of that tag. Null, and the reason in *error,
/// if there is no such child or more than one. It is good as long as \a parent is.
TARN_EXPORT XMLTree const *find_element(XMLTree const &parent, AString const &tag, AString *error);

/// \name Reading of leaves
/// On failure: false, *out untouched, the reason in *error. White space around anything but a text
/// is allowed.
/// @{
/// The content, unchanged.
TARN_EXPORT bool read_element(
    XMLTree const &parent, AString const &tag, AString *out, AString *error);
TARN_EXPORT bool read_element(XMLTree const &parent, AString const &tag, int *out, AString *error);
TARN_EXPORT bool read_element(
    XMLTree const &parent, AString const &tag, unsigned int *out, AString *error);
TARN_EXPORT bool read_element(
    XMLTree const &parent, AString const &tag, unsigned short *out, AString *error);
TARN_EXPORT bool read_element(
    XMLTree const &parent, AString const &tag, unsigned char *out, AString *error);
TARN_EXPORT bool read_element(
    XMLTree const &parent, AString const &tag, unsigned long long *out, AString *error);
/// "true", "false", or any integer, of which 0 is false.
TARN_EXPORT bool read_element(XMLTree const &parent, AString const &tag, bool *out, AString *error);
/// A fixed-point number of 16 fractional bits: "1.5X", or the raw number.
TARN_EXPORT bool read_speed(XMLTree const &parent, AString const &tag, int *out, AString *error);
/// @}

/// \name Writing of leaves
/// @{
TARN_EXPORT XMLTree write_element(AString const &tag, AString const &value);
TARN_EXPORT XMLTree write_element(AString const &tag, int value);
TARN_EXPORT XMLTree write_element(AString const &tag, unsigned int value);
TARN_EXPORT XMLTree write_element(AString const &tag, unsigned short value);
TARN_EXPORT XMLTree write_element(AString const &tag, unsigned char value);
TARN_EXPORT XMLTree write_element(AString const &tag, unsigned long long value);
TARN_EXPORT XMLTree write_element(AString const &tag, bool value);
/// A narrow text would pass for a bool.
XMLTree write_element(AString const &tag, char const *value) = delete;
TARN_EXPORT XMLTree write_speed(AString const &tag, int value);
/// @}

} // namespace VCTP3
