// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_spin_box.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

namespace {

constexpr long long one = 65536; // of a number of 16.16
constexpr long long divider = 100;

} // namespace

CFSpinBox::CFSpinBox(CFModel *cf_model, QString const &name, QSpinBox *spin_box, int minimum,
    int maximum, QObject *parent)
    : CFItem(cf_model, name, parent ? parent : spin_box)
    , box(spin_box)
{
    if (!A_ASSERT(spin_box != nullptr))
        return;
    box->setMinimum(minimum);
    box->setMaximum(maximum);
    box->setValue(minimum);
    connect(box, qOverload<int>(&QSpinBox::valueChanged), this, &CFSpinBox::send_change);
    CFSpinBox::cf(present_value());
}

void CFSpinBox::set_fixed(bool on)
{
    fixed = on;
    cf(present_value());
}

void CFSpinBox::cf(QString const &value)
{
    bool is_number = false;
    int const number = value.toInt(&is_number);
    if (!box || !is_number)
        return;
    Showing const showing(this);
    box->setValue(cf_value(number));
}

void CFSpinBox::send_change()
{
    if (!box)
        return;
    bool is_number = false;
    int const present = present_value().toInt(&is_number);
    // Numbers that look the same in the box differ less than it can show.
    if (!is_number || cf_value(present) != box->value())
        emit_if_new(text_value(box->value()));
}

/// To the nearest hundredth, halves away from 0.
int CFSpinBox::cf_value(int number) const
{
    if (!fixed)
        return number;
    long long const half = number < 0 ? -one / 2 : one / 2;
    return static_cast<int>((number * divider + half) / one);
}

QString CFSpinBox::text_value(int shown) const
{
    return fixed ? QString::number(shown * one / divider) : QString::number(shown);
}
