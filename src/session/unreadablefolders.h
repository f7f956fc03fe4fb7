// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

/// The folders at and below `path` that cannot be read, or whose paths are too long for it. The
/// import passes over them without a word. Links below it are not followed.
QStringList unreadableFolders(const QByteArray& path);
