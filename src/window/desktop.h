// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QStringList>

/// What the desktop's other programs do with files. Each returns at once.
namespace desktop {

/// Opens the file or folder with the program that is meant for it.
void open(const QString& path);

/// Shows the files in the file manager; where there is none that can, their folders.
void showInFolder(const QStringList& paths);

} // namespace desktop
