// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QPluginLoader>
#include <QtCore/QString>

/// The import module, loaded as a plug-in. Stays loaded until the process ends.
class ModulePlugin
{
public:
    /// Loads, initializes and starts the plug-in, which lies where the build or the installation of
    /// this program has put it. False, with the reason in one line in `error`, when it cannot be
    /// used.
    bool load(QString& error);

private:
    QPluginLoader m_loader;
};
