// SPDX-License-Identifier: GPL-2.0-or-later
#include "lostpictures.h"

#include "cimportcontext.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryFile>

#include <QtGui/QImageWriter>

using Vesk::CImportContext;

namespace {

/// Why `count` bytes cannot be written to `folder`; null when they can.
QString writeError(const QString& folder, int count)
{
    const QByteArray someBytes(count, ' ');
    QTemporaryFile file(folder + QStringLiteral("/.vspimport-XXXXXX"));
    const bool written = file.open() && file.write(someBytes) == someBytes.size() && file.flush();
    return written ? QString() : file.errorString();
}

} // namespace

bool canWritePictures()
{
    return QImageWriter::supportedImageFormats().contains("jpg");
}

/// Clips get their URLs whether or not a picture comes of them, unless the capture of their disc
/// could not begin.
bool lacksCapture(const facts::Item& item)
{
    for (const facts::BlurayFile& file : item.bluray.files) {
        if (!file.picturedClips.empty())
            return file.clips[std::size_t(file.picturedClips.front())].url.isEmpty();
    }
    return false;
}

QStringList reasonsForLostPictures(const QString& uncaptured)
{
    const int sizeOfPictures = 64 * 1024;
    const int sizeOfTimeline = 1024 * 1024;
    QStringList reasons;
    const QString pictures = CImportContext::instance()->configDir();
    const QString error = writeError(pictures, sizeOfPictures);
    if (!error.isNull() && QDir(pictures).exists())
        reasons << QStringLiteral("pictures cannot be written to %1: %2").arg(pictures, error);
    if (uncaptured.isEmpty())
        return reasons;
    const QString temporary = QDir::tempPath();
    const QString reason = writeError(temporary, sizeOfTimeline);
    if (!reason.isNull())
        reasons << QStringLiteral("pictures of Blu-ray discs cannot be made, since %1 cannot be "
                                  "written to: %2")
                       .arg(temporary, reason);
    else
        reasons << QStringLiteral("no pictures could be made of %1").arg(uncaptured);
    return reasons;
}
