// SPDX-License-Identifier: GPL-2.0-or-later
//
// The module as Qt's plug-in loader finds it.
#include "vsplugin/cabstractplugin.h"

#include <QtCore/QLibrary>
#include <QtTest/QtTest>

using Vesk::CAbstractPlugin;

class PluginTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isMadeAnewAfterItWasDeleted()
    {
        const auto instance =
            reinterpret_cast<QObject* (*)()>(QLibrary::resolve(PLUGIN_FILE, "qt_plugin_instance"));
        QVERIFY(instance);
        for (int pass = 0; pass < 2; ++pass) {
            auto* plugin = qobject_cast<CAbstractPlugin*>(instance());
            QVERIFY(plugin && instance() == plugin);
            QCOMPARE(plugin->metaObject()->className(), "Vesk::CImportPlugin");
            QVERIFY(plugin->initialize(nullptr, {}) && plugin->start());
            delete plugin;
        }
    }

    void tellsWhatItWasBuiltFor()
    {
        const auto verification = reinterpret_cast<const char* (*)()>(
            QLibrary::resolve(PLUGIN_FILE, "qt_plugin_query_verification_data"));
        QVERIFY(verification);
        const QRegularExpression expected("^pattern=QT_PLUGIN_VERIFICATION_DATA\n"
                                          "version=" QT_VERSION_TEXT "\n"
                                          "debug=false\n"
                                          "buildkey=.* full-config$");
        QVERIFY(expected.match(verification()).hasMatch());
    }
};

QTEST_GUILESS_MAIN(PluginTest)
#include "tst_plugin.moc"
