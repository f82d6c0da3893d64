// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/us_model.h"

#include "ATarnLib/config/local_model_p.h"
#include "ATarnLib/glint/glint.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

namespace {

std::atomic<USModel *> local_user_settings{nullptr};

} // namespace

USModel::~USModel()
{
    USModel *self = this;
    local_user_settings.compare_exchange_strong(self, nullptr);
}

USModel *USModel::create(bool local, Glint *hub)
{
    USModel *model = local ? localhost() : new USModel;
    model->config(hub);
    return model;
}

USModel *USModel::localhost()
{
    return local_model(&local_user_settings, [] { return new USModel; });
}

USItemModel *USModel::get_item_localhost(QString const &key)
{
    return localhost()->get_item(key);
}

void USModel::config(Glint *hub)
{
    if (!A_ASSERT_TEXT(glint == nullptr, "glint == 0") || !A_ASSERT(hub != nullptr))
        return;
    glint = hub;
    setParent(hub);
    connect(hub, &Glint::connected, this, &USModel::connected);
    connect(hub, &Glint::disconnected, this, &USModel::disconnected);
    connect(hub, &Glint::report_userdict_change, this, &USModel::userdict_change);
    if (hub->is_connected())
        connected();
}

USItemModel *USModel::get_item(QString const &key)
{
    if (USItemModel *known = items.value(key))
        return known;
    auto *const item = new USItemModel(key, this);
    items.insert(key, item);
    if (up)
        item->renew(glint);
    return item;
}

void USModel::connected()
{
    up = true;
    // A copy: who listens to what is sent may ask for another item.
    QList<USItemModel *> const present = items.values();
    for (USItemModel *item : present)
        item->renew(glint);
}

void USModel::disconnected()
{
    up = false;
}

void USModel::userdict_change(AString const &key, AString const &value)
{
    if (USItemModel *item = items.value(key))
        item->userdict_change(value);
}
