// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_line_edit.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

CFLineEdit::CFLineEdit(
    CFModel *cf_model, QString const &name, QLineEdit *line_edit, QObject *parent)
    : CFItem(cf_model, name, parent ? parent : line_edit)
    , edit(line_edit)
{
    if (!A_ASSERT(line_edit != nullptr))
        return;
    connect(edit, &QLineEdit::textChanged, this, &CFLineEdit::send_change);
    CFLineEdit::cf(present_value());
}

void CFLineEdit::cf(QString const &value)
{
    // Setting the same text would move the cursor.
    if (!edit || edit->text() == value)
        return;
    Showing const showing(this);
    edit->setText(value);
}

void CFLineEdit::send_change()
{
    if (edit)
        emit_if_new(edit->text());
}
