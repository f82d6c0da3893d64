// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDesignerCustomWidgetCollectionInterface>
#include <QDesignerCustomWidgetInterface>
#include <QObject>

/// How the form editor makes and describes one of the widgets.
struct WidgetKind
{
    char const *name; ///< of the class, and of the header that the package installs for it
    char const *tool_tip;
    char const *glyph; ///< the picture that stands for it
    QWidget *(*make)(QWidget *parent);
};

/// A widget in the form editor's box.
class TarnWidget : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    /// \a described must outlive this.
    TarnWidget(WidgetKind const &described, QObject *parent);

    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override { return toolTip(); }
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override { return false; }
    QWidget *createWidget(QWidget *parent) override;

private:
    WidgetKind const &kind;
};

/// What the form editor loads.
class TarnDesigner : public QObject, public QDesignerCustomWidgetCollectionInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QDesignerCustomWidgetCollectionInterface_iid)
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)

public:
    explicit TarnDesigner(QObject *parent = nullptr);

    QList<QDesignerCustomWidgetInterface *> customWidgets() const override { return widgets; }

private:
    QList<QDesignerCustomWidgetInterface *> widgets;
};
