// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/config/cf_model.h"
#include "sim/vesk/vesk_world.h"
#include "tests/support/linked_client.h"

/// A simulated server, and a model of its configuration for widgets to be bound to.
struct BindingBench : LinkedClient<>
{
    CFModel *model = CFModel::create(false, &api);

    CFItemModel *item(QString const &name) { return model->get_item(name); }
    /// Connects, and waits until every item that was asked for is here.
    bool scan()
    {
        return connect() && wait_for([this] { return model->is_fully_scanned(); });
    }
    /// Sets an item as another client does, and waits until the model knows.
    bool set_on_server(char const *name, char const *value)
    {
        server.with_world([&](VeskWorld &world) {
            world.configuration.set(AString::l1(name), AString::l1(value));
        });
        return sync();
    }
    /// Commits, and tells what the server has saved then.
    QString committed(char const *name)
    {
        model->commit_changes();
        if (!sync())
            return QStringLiteral("(no answer)");
        return server.setting(AString::l1(name)).value().saved;
    }
};
