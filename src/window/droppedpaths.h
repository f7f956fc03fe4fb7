// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QStringList>

class QMimeData;

/// Absolute paths of the files and folders that were dropped or copied: as URLs, or as lines of
/// text that are paths or file URLs. What is neither is passed over.
QStringList droppedPaths(const QMimeData& data);
