// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <QtCore/QString>

class QImage;

namespace Vesk {

/// The files of snapshots.
///
/// Their names are made of texts that come from files and discs: separators, control characters and
/// leading dots become "_", so that no picture lands outside its folder. A text that is too long
/// for a name is cut and a code of the whole put behind it, so that different ones stay different.

/// `text` as the name of a folder of pictures.
QString imageFolderName(const QString& text);

/// `text`, between `before` and `after`, as the name of a picture's file without its suffix.
QString imageFileName(const QString& before, const QString& text, const QString& after);

/// The URL of the picture at `path`: "file:///" and the path as it stands, nothing in it written as
/// codes. The slash that an absolute path begins with is the third of the three.
QString imageUrlOf(const QString& path);

/// Whether there is a picture at `path` that was written to its end. Reads a few bytes of it.
bool isWholeImageFile(const QString& path);

/// Writes `image` as a JPG that appears at `path` whole or not at all, replacing what is there. The
/// folder exists. False when it could not be written; nothing of it is then left behind. Callable
/// from any thread.
bool writeImageFile(const QImage& image, const QString& path);

} // namespace Vesk
