// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/widgets/aspeed_label.h"
#include "ATarnLib/timecode/widgets/atimecode_entry.h"
#include "ATarnLib/timecode/widgets/atimecode_label.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDesignerCustomWidgetCollectionInterface>
#include <QDesignerCustomWidgetInterface>
#include <QDir>
#include <QIcon>
#include <QPluginLoader>
#include <QTest>
#include <QUiLoader>
#include <memory>

namespace {

QDir build_folder()
{
    return QDir(QCoreApplication::applicationDirPath() + QStringLiteral("/../.."));
}

QString plugin_folder()
{
    return build_folder().filePath(QStringLiteral("plugins/designer"));
}

QStringList const names{QStringLiteral("ATimecodeEntry"), QStringLiteral("ATimecodeLabel"),
    QStringLiteral("ASpeedLabel")};

} // namespace

class TestDesignerPlugin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void loads_with_all_widgets();
    void form_makes_the_widgets_with_their_properties();
};

void TestDesignerPlugin::loads_with_all_widgets()
{
    QPluginLoader loader(plugin_folder() + QStringLiteral("/tarn_designer"));
    QVERIFY2(loader.load(), qPrintable(loader.errorString()));
    auto *collection = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(loader.instance());
    QVERIFY(collection);
    QStringList found;
    for (QDesignerCustomWidgetInterface *kind : collection->customWidgets()) {
        found.append(kind->name());
        QCOMPARE(kind->group(), QStringLiteral("Tarn"));
        QVERIFY(!kind->toolTip().isEmpty());
        QCOMPARE(kind->whatsThis(), kind->toolTip());
        QVERIFY(!kind->icon().pixmap(16).isNull());
        QVERIFY(!kind->isContainer());
        QVERIFY(kind->domXml().contains(kind->name()));
        // The header is one that the package installs.
        QString const header = kind->includeFile().mid(1).chopped(1);
        QCOMPARE(header, QStringLiteral("Tarn/") + kind->name());
        QVERIFY2(build_folder().exists(QStringLiteral("forwarding/") + header), qPrintable(header));
        QWidget parent;
        QWidget *made = kind->createWidget(&parent);
        QCOMPARE(QString::fromLatin1(made->metaObject()->className()), kind->name());
        QCOMPARE(made->parentWidget(), &parent);
    }
    QCOMPARE(found, names);
}

void TestDesignerPlugin::form_makes_the_widgets_with_their_properties()
{
    QByteArray form = R"(<ui version="4.0"><class>Form</class><widget class="QWidget" name="Form">
        <widget class="ATimecodeEntry" name="entry">
          <property name="auto_highlight"><bool>true</bool></property>
          <property name="df_alterable"><bool>true</bool></property>
        </widget>
        <widget class="ATimecodeLabel" name="label">
          <property name="glyphs"><enum>ATimecodeLabel::small_gray</enum></property>
          <property name="countdown"><bool>true</bool></property>
        </widget>
        <widget class="ASpeedLabel" name="speed">
          <property name="value"><number>-32768</number></property>
          <property name="glyphs"><enum>ATimecodeLabel::small</enum></property>
        </widget>
        </widget></ui>)";
    QUiLoader loader;
    loader.addPluginPath(plugin_folder());
    for (QString const &name : names)
        QVERIFY2(loader.availableWidgets().contains(name), qPrintable(name));
    QBuffer buffer(&form);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    std::unique_ptr<QWidget> const made(loader.load(&buffer));
    QVERIFY2(made, qPrintable(loader.errorString()));
    auto *entry = made->findChild<ATimecodeEntry *>(QStringLiteral("entry"));
    auto *label = made->findChild<ATimecodeLabel *>(QStringLiteral("label"));
    auto *speed = made->findChild<ASpeedLabel *>(QStringLiteral("speed"));
    QVERIFY(entry && label && speed);
    QVERIFY(entry->get_auto_highlight() && entry->isDfAlterable());
    QVERIFY(label->get_font() == ATimecodeLabel::Font::small_gray);
    QVERIFY(label->is_countdown());
    QCOMPARE(speed->shown_text(), QStringLiteral("-50%"));
    QVERIFY(speed->get_font() == ATimecodeLabel::Font::small);
}

QTEST_MAIN(TestDesignerPlugin)
#include "tst_designer_plugin.moc"
