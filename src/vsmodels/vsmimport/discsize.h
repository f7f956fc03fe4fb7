// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <QtCore/QFileInfo>
#include <QtCore/QString>

namespace Vesk {

/// Bytes of the image at `path`; 0 for a folder, whose own size says nothing of the disc.
inline qint64 discSize(const QString& path)
{
    const QFileInfo info(path);
    return info.isDir() ? 0 : info.size();
}

} // namespace Vesk
