// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/glint/us_item_model.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

#include <QHash>

#include <atomic>

/// The keys of a server's user dictionary that an application has asked for: settings that are
/// kept with the server, and values that clients leave for one another. Each connection watches
/// them anew, or is told what this client has set.
/// Thread: the hub's. The items are for any thread.
class TARN_EXPORT USModel : public QObject
{
    Q_OBJECT

public:
    /// A model for \a hub, which becomes its parent. With \a local it is `localhost()`, which one
    /// hub at a time may have.
    static USModel *create(bool local, Glint *hub);
    /// The model of the server on this machine, made at the first call, on the application's
    /// thread. It goes with its hub; the next call makes another.
    static USModel *localhost();
    static USItemModel *get_item_localhost(QString const &key);
    ~USModel() override;

    /// Gives the model its hub, once: a second one is an assertion and changes nothing.
    void config(Glint *hub);
    /// The item of that key, always the same one.
    USItemModel *get_item(QString const &key);

public Q_SLOTS:
    void connected();
    void disconnected();
    /// Keys that nobody asked for are passed over.
    void userdict_change(AString const &key, AString const &value);

private:
    friend class USItemModel;

    USModel() = default;
    bool has_hub() const { return glint != nullptr; }
    Glint *hub() const { return glint; }
    bool is_up() const { return up; }

    // Each set by the hub's thread alone, and read by any.
    std::atomic<Glint *> glint{nullptr};
    std::atomic<bool> up{false};
    QHash<QString, USItemModel *> items;
};
