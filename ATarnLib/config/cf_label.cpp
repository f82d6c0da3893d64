// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_label.h"

CFLabel::CFLabel(CFModel *cf_model, QString const &name, QLabel *text_label, QObject *parent)
    : CFItem(cf_model, name, parent ? parent : text_label)
    , label(text_label)
{
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
