// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"

/// The tree of the one element that \a text holds. The dialect has elements, attributes without
/// blanks or "=" in their values, text in leaves and five entities, which are read in content
/// only. It has no prolog, comments, CDATA, namespaces or numeric references.
/// On failure: a null tree, and true in \a error, which is otherwise left alone and may be null.
TARN_EXPORT XMLTree XMLParse(AString const &text, bool *error = nullptr);
