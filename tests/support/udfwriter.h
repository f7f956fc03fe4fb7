// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// Writes the folder as a disc image with a UDF 2.50 file system, as pressed Blu-ray discs have it:
/// folders and file entries in a metadata partition, contents of files outside of it.
void writeUdfImage(const QString& folder, const QString& image, const QByteArray& volumeName);
