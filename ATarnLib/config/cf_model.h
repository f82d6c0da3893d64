// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/config/cf_item_model.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"

#include <QStringList>

#include <list>

namespace VCTP3 {
class APIQt;
}

/// A live copy of those items of a server's configuration that were asked for. Each connection
/// reads all of them anew, at most six at a time, and from then on the server tells what changes.
/// What is typed stays here until it is committed: one command for each item.
///
/// Asking for items and reading and writing them is safe from any thread. Commits go out from the
/// thread that commits, so from another than the connection's only over one that hands its
/// commands over, as a `Glint` does; hot items commit on the model's.
/// Thread: that of its connection. Signals of the model come from the thread of the change.
class TARN_EXPORT CFModel : public QObject
{
    Q_OBJECT

public:
    /// A model for \a api, which becomes its parent. With \a local it is `localhost()`, which one
    /// connection at a time may have.
    static CFModel *create(bool local, VCTP3::APIQt *api);
    /// The model of the server on this machine, made at the first call, on the application's
    /// thread. Until `create` has given it a connection its items do not arrive. It goes with its
    /// connection; the next call makes another.
    static CFModel *localhost();
    static CFItemModel *get_item_localhost(QString const &name);
    ~CFModel() override;

    /// The item of that name, always the same one. It arrives some time after the first call.
    CFItemModel *get_item(QString const &name);
    /// Gives the model its connection, once: a second one is an assertion and changes nothing.
    void config(VCTP3::APIQt *connection);

    /// Sends what was typed; does nothing while not connected. What is sent still counts as a
    /// change until the server tells of it, unless it is what the server holds.
    void commit_changes();
    /// The same for the named items alone, each once. Names that nobody asked for are passed over.
    void commit(QStringList const &names);
    /// Takes back what was typed into the named items.
    void revert(QStringList const &names);
    void revert_all_items();

    /// Whether any item has changes. The answer is kept until an item changes.
    bool have_changes() const;
    /// Whether any item waits for a reboot.
    bool need_reboot() const;
    /// Whether the server has saved everything that was typed.
    bool commit_done() const;
    /// Whether every item that was asked for has been fetched, or refused, on this connection.
    bool is_fully_scanned() const;
    /// Forgets the answer that `have_changes` keeps.
    void cache_clear();

public Q_SLOTS:
    /// Fetches what is still wanted, as soon as the event loop comes to it.
    void update();

Q_SIGNALS:
    /// Some item has changed, or an edit has ended.
    void changed();
    /// All items are here, or refused; again after each reconnection, and behind items that were
    /// asked for since.
    void fully_scanned();

private Q_SLOTS:
    void connected();
    void disconnected();
    void config_changed_on_server(AOption<std::list<VCTP3::ConfigurationItem>> const &items);
    void get_one_reply(unsigned int icb, VCTP3::ConfigurationItem const &item);
    void get_one_error(unsigned int icb, AString const &text, VCTP3::ErrorCode code);
    void update_action();
    void item_changed();
    void hot_change();

private:
    struct Private;

    CFModel();
    CFItemModel *find_item(QString const &name) const;
    QList<CFItemModel *> all_items() const;
    QList<CFItemModel *> named_items(QStringList const &names) const;
    void configuration_item(VCTP3::ConfigurationItem const &item);
    void commit_items(QList<CFItemModel *> const &items);
    AOption<QString> end_fetch(unsigned int icb);
    bool advance_scan();
    bool fetch_next();

    std::unique_ptr<Private> const d;
};
