// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_label.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

CFLabel::CFLabel(CFModel *cf_model, QString const &name, QLabel *text_label, QObject *parent)
    : CFItem(cf_model, name, parent ? parent : text_label)
    , label(text_label)
{
    if (!A_ASSERT(text_label != nullptr))
        return;
    // A value is no markup, whatever it looks like.
    label->setTextFormat(Qt::PlainText);
    CFLabel::cf(present_value());
}

void CFLabel::cf(QString const &value)
{
    if (label)
        label->setText(value);
}

void CFLabel::send_change()
{
    if (label)
        emit_if_new(label->text());
}

void CFLabel::save()
{
    send_change();
}
