// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_check_box.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

namespace {

QString enabled_text()
{
    return QStringLiteral("Enabled");
}

QString disabled_text()
{
    return QStringLiteral("Disabled");
}

} // namespace

CFCheckBox::CFCheckBox(CFModel *cf_model, QString const &name, QString const &on_text,
    QString const &off_text, QCheckBox *check_box, QObject *parent)
    : CFItem(cf_model, name, parent ? parent : check_box)
    , on_value(on_text)
    , off_value(off_text)
    , box(check_box)
{
    if (!A_ASSERT(check_box != nullptr))
        return;
    connect(box, &QCheckBox::toggled, this, &CFCheckBox::send_change);
    CFCheckBox::cf(present_value());
}

void CFCheckBox::cf(QString const &value)
{
    Showing const showing(this);
    update_enables();
    if (box)
        box->setChecked(value == on_value);
}

void CFCheckBox::send_change()
{
    if (box && box->isEnabled())
        emit_if_new(box->isChecked() ? on_value : off_value);
}

void CFCheckBox::update_enables()
{
    CFItemModel const *const item = get_item();
    if (box && item)
        box->setEnabled(item->is_allowed(on_value) && item->is_allowed(off_value));
}

CFEnableCheckBox::CFEnableCheckBox(
    CFModel *cf_model, QString const &name, QCheckBox *check_box, QObject *parent)
    : CFCheckBox(cf_model, name, enabled_text(), disabled_text(), check_box, parent)
{
}

CFDisableCheckBox::CFDisableCheckBox(
    CFModel *cf_model, QString const &name, QCheckBox *check_box, QObject *parent)
    : CFCheckBox(cf_model, name, disabled_text(), enabled_text(), check_box, parent)
{
}
