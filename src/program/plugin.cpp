// SPDX-License-Identifier: GPL-2.0-or-later
#include "plugin.h"

#include "vsplugin/cabstractplugin.h"

#include <QtCore/QCoreApplication>

namespace {

/// The library `name` in `folder`, which is given as the way there from the program's own folder.
QString libraryPath(const char* folder, const char* name)
{
    return QStringLiteral("%1/%2/lib%3.so")
        .arg(QCoreApplication::applicationDirPath(), QLatin1String(folder), QLatin1String(name));
}

QString oneLine(const QString& text)
{
    return text.simplified();
}

} // namespace

bool Plugin::load(QString& error)
{
    return loadModule(error) && loadCommand(error);
}

bool Plugin::loadModule(QString& error)
{
    m_loader.setFileName(libraryPath(VSPIMPORT_PLUGINS, "vspimport"));
    auto* plugin = qobject_cast<Vesk::CAbstractPlugin*>(m_loader.instance());
    if (!plugin) {
        error = QStringLiteral("the import plug-in cannot be loaded: %1")
                    .arg(oneLine(m_loader.errorString()));
        return false;
    }
    if (!plugin->initialize(nullptr, QVariantMap()) || !plugin->start()) {
        error = QStringLiteral("the import plug-in does not start");
        return false;
    }
    return true;
}

bool Plugin::loadCommand(QString& error)
{
    m_command.setFileName(libraryPath(VSPIMPORT_PARTS, "vspimport_command"));
    m_import = reinterpret_cast<ImportFunction>(m_command.resolve("vspimportRun"));
    if (!m_import) {
        error = QStringLiteral("a part of the program cannot be loaded: %1")
                    .arg(oneLine(m_command.errorString()));
    }
    return m_import != nullptr;
}

int Plugin::import(const Options& options)
{
    return m_import(options);
}
