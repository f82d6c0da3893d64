// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/tarnctl/json_value.h"

#include <QStringList>

#include <vector>

namespace TarnCtl {

/// A scalar for people: as it stands, or quoted and escaped where it is empty or holds blanks,
/// brackets, "=" or control characters.
QString plain_text(JsonValue const &scalar);

/// Any value on one line: what is inside of it in brackets, nothing as "-".
QString value_text(JsonValue const &value);

/// A message on one line: its name in a column, then Key=value; what is inside in brackets.
QString message_line(JsonValue const &message);

/// A message as people read it at rest: its name, then its elements below, aligned and indented.
/// A message without records is one line.
QString message_block(JsonValue const &message);

/// Rows of cells, written with aligned columns.
class TextTable
{
public:
    bool is_empty() const { return rows.empty(); }
    void add(QStringList const &row) { rows.push_back(row); }
    /// One line per row, without blanks at the ends.
    QString text() const;

private:
    std::vector<QStringList> rows;
};

} // namespace TarnCtl
