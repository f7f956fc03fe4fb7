// SPDX-License-Identifier: GPL-2.0-or-later
#include "commandlibrary.h"

#include <QtCore/QCoreApplication>

bool CommandLibrary::load(QString& error)
{
    m_library.setFileName(QCoreApplication::applicationDirPath() +
                          QLatin1String("/" VSPIMPORT_PARTS "/libvspimport_command.so"));
    m_import = reinterpret_cast<ImportFunction>(m_library.resolve("vspimportRun"));
    if (!m_import) {
        error = QStringLiteral("a part of the program cannot be loaded: %1")
                    .arg(m_library.errorString().simplified());
    }
    return m_import != nullptr;
}

int CommandLibrary::import(const Options& options)
{
    return m_import(options);
}
