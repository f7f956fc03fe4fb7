// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QLibrary>
#include <QtCore/QString>

struct Options;

/// The part of this program that uses the module's classes. Stays loaded until the process ends.
class CommandLibrary
{
public:
    /// To be called when the plug-in is loaded. False, with the reason in one line in `error`, when
    /// it cannot be.
    bool load(QString& error);

    /// Imports as `options` say; the program's exit status. Called once, after load().
    int import(const Options& options);

private:
    using ImportFunction = int (*)(const Options&);

    QLibrary m_library;
    ImportFunction m_import = nullptr;
};
