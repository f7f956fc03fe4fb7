// SPDX-License-Identifier: GPL-2.0-or-later
#include "moduleplugin.h"

#include "vsplugin/cabstractplugin.h"

#include <QtCore/QCoreApplication>

bool ModulePlugin::load(QString& error)
{
    m_loader.setFileName(QCoreApplication::applicationDirPath() +
                         QLatin1String("/" VSPIMPORT_PLUGINS "/libvspimport.so"));
    auto* plugin = qobject_cast<Vesk::CAbstractPlugin*>(m_loader.instance());
    if (!plugin) {
        error = QStringLiteral("the import plug-in cannot be loaded: %1")
                    .arg(m_loader.errorString().simplified());
        return false;
    }
    if (!plugin->initialize(nullptr, QVariantMap()) || !plugin->start()) {
        error = QStringLiteral("the import plug-in does not start");
        return false;
    }
    return true;
}
