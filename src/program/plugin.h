// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QLibrary>
#include <QtCore/QPluginLoader>
#include <QtCore/QString>

struct Options;

/// The loaded import plug-in, and with it the part of this program that uses its classes. Stays
/// loaded until the process ends.
class Plugin
{
public:
    /// Loads, initializes and starts the plug-in. False, with the reason in one line in `error`,
    /// when it cannot be used.
    bool load(QString& error);

    /// Imports as `options` say; the program's exit status. Called once, after load().
    int import(const Options& options);

private:
    bool loadModule(QString& error);
    bool loadCommand(QString& error);

    using ImportFunction = int (*)(const Options&);

    QPluginLoader m_loader;
    QLibrary m_command;
    ImportFunction m_import = nullptr;
};
