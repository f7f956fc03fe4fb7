// SPDX-License-Identifier: GPL-2.0-or-later
//
// The module as Qt's plug-in loader finds it.
#include "vsplugin/cabstractplugin.h"

#include <QtCore/QLibrary>
#include <QtCore/QPluginLoader>
#include <QtTest/QtTest>

using Vesk::CAbstractPlugin;

class PluginTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void loadsAndStarts();
    void isMadeAnewAfterItWasDeleted();
    void tellsWhatItWasBuiltFor();
};

void PluginTest::loadsAndStarts()
{
    QPluginLoader loader(PLUGIN_FILE);
    auto* plugin = qobject_cast<CAbstractPlugin*>(loader.instance());
    QVERIFY2(plugin, qPrintable(loader.errorString()));
    QCOMPARE(plugin->metaObject()->className(), "Vesk::CImportPlugin");
    QVERIFY(plugin->start());
    QVERIFY(plugin->initialize(nullptr, QVariantMap()));
    QVERIFY(plugin->initialize(nullptr, QVariantMap()));
}

void PluginTest::isMadeAnewAfterItWasDeleted()
{
    using Instance = QObject* (*)();
    const auto instance =
        reinterpret_cast<Instance>(QLibrary::resolve(PLUGIN_FILE, "qt_plugin_instance"));
    QVERIFY(instance);
    QPointer<QObject> first(instance());
    QCOMPARE(instance(), first.data());
    delete first;
    const QPointer<QObject> second(instance());
    QVERIFY(qobject_cast<CAbstractPlugin*>(second));
    delete second;
}

void PluginTest::tellsWhatItWasBuiltFor()
{
    using Verification = const char* (*)();
    const auto verification = reinterpret_cast<Verification>(
        QLibrary::resolve(PLUGIN_FILE, "qt_plugin_query_verification_data"));
    QVERIFY(verification);
    const QStringList lines = QString::fromLatin1(verification()).split('\n');
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines.at(0), QString("pattern=QT_PLUGIN_VERIFICATION_DATA"));
    QCOMPARE(lines.at(1), QString("version=" QT_VERSION_TEXT));
    QCOMPARE(lines.at(2), QString("debug=false"));
    QVERIFY(lines.at(3).startsWith("buildkey=") && lines.at(3).endsWith(" full-config"));
}

QTEST_GUILESS_MAIN(PluginTest)
#include "tst_plugin.moc"
