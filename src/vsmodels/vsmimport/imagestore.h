// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <QtCore/QString>

class QImage;

namespace Vesk {

/// The files of snapshots.

/// `text` as one part of a picture's name. Texts come from files and discs: separators, control
/// characters and leading dots become "_", so that no picture lands outside its folder, and what is
/// too long for a file's name with the rest behind it is cut.
QString imageNamePart(const QString& text);

/// The URL under which programs find the picture at `path`: three slashes, an absolute path, and
/// the characters that would end the path or be decoded written as codes.
QString imageUrlOf(const QString& path);

/// Writes `image` as a JPG that appears at `path` whole or not at all, replacing an older one. The
/// folder exists. False when it could not be written; nothing of it is then left behind.
bool writeImageFile(const QImage& image, const QString& path);

} // namespace Vesk
