// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/config/cf_combo_box.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <algorithm>

CFComboBox::CFComboBox(
    CFModel *cf_model, QString const &name, QComboBox *combo_box, QObject *parent)
    : CFItem(cf_model, name, parent ? parent : combo_box)
    , box(combo_box)
{
    if (!A_ASSERT(combo_box != nullptr))
        return;
    connect(box, qOverload<int>(&QComboBox::currentIndexChanged), this, &CFComboBox::send_change);
    CFComboBox::cf(present_value());
}

void CFComboBox::add_option(QString const &value, QString const &text)
{
    options.append({value, text});
    cf(present_value());
}

void CFComboBox::cf(QString const &value)
{
    if (!box)
        return;
    Showing const showing(this);
    fill(wanted_options(value));
    box->setCurrentIndex(box->findData(value));
}

void CFComboBox::send_change()
{
    if (box && box->currentIndex() >= 0)
        emit_if_new(box->currentData().toString());
}

QList<CFComboBox::Option> CFComboBox::wanted_options(QString const &present) const
{
    CFItemModel const *const item = get_item();
    QList<Option> result;
    for (Option const &option : options)
        if (item && item->is_allowed(option.value))
            result.append(option);
    if (options.isEmpty() && item)
        for (QString const &value : item->allowed_values())
            result.append({value, value});
    bool const is_there = std::any_of(result.begin(), result.end(),
        [&](Option const &option) { return option.value == present; });
    if (!is_there && !present.isEmpty())
        result.append({present, present});
    return result;
}

/// Entries stay while they are the same, as an open list would close.
void CFComboBox::fill(QList<Option> const &wanted)
{
    if (wanted == shown)
        return;
    shown = wanted;
    box->clear();
    for (Option const &option : wanted)
        box->addItem(option.text, option.value);
}
