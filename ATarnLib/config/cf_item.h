// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/config/cf_item_model.h"

#include <QPointer>
#include <QWidget>
#include <utility>

class CFModel;

/// Joins a configuration item with a widget: the widget shows what the item reads, and what the
/// user does to the widget is typed into the item. Each kind of widget has a class of its own.
/// A binding of one widget that has no parent belongs to the widget; one of several has no owner
/// but its parent. Widgets and binding may go one before the other, and the model before both.
/// Thread: that of the widgets.
class TARN_EXPORT CFItem : public QObject
{
    Q_OBJECT

public:
    CFItem(CFModel *cf_model, QString const &name, QObject *parent = nullptr);

    CFModel *get_model() const;
    /// Null once the model has gone.
    CFItemModel *get_item() const { return bound; }

    /// Hides \a widget until the item has arrived, and shows it then; one widget at a time, so one
    /// that still waits shows when another takes its place.
    void autohide(QWidget *widget);
    /// As that of the item: whether every change is sent at once.
    void setHot(bool on);

Q_SIGNALS:
    /// The user has changed the widget to something else than the item reads.
    void sig_change(QString const &value);

public Q_SLOTS:
    /// Shows \a value in the widget. Nothing of it is typed into the item.
    virtual void cf(QString const &value);
    /// Types what the widget shows into the item, if that is something else.
    virtual void send_change();

protected:
    /// While one lives, changes of the widget are the binding's own.
    class Showing
    {
    public:
        explicit Showing(CFItem *of)
            : binding(of)
            , outer(std::exchange(of->is_showing, true))
        {
        }
        ~Showing() { binding->is_showing = outer; }
        Showing(Showing const &) = delete;
        Showing &operator=(Showing const &) = delete;

    private:
        CFItem *const binding;
        bool const outer;
    };

    /// Whether a change of the widget is the user's.
    bool is_user_change() const { return !is_showing && bound; }
    /// What the item reads; empty once it has gone.
    QString present_value() const;
    void emit_if_new(QString const &value);

private:
    void show_present();
    void update_autohide();

    QPointer<CFModel> model;
    QPointer<CFItemModel> bound;
    QPointer<QWidget> hidden;
    bool is_showing = false;
};
