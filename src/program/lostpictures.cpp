// SPDX-License-Identifier: GPL-2.0-or-later
#include "lostpictures.h"

#include "cbdfile.h"
#include "cbdinformation.h"
#include "cimportcontext.h"
#include "cimporttask.h"
#include "importsession.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryFile>
#include <QtCore/QVariant>

#include <QtGui/QImageWriter>

#include <algorithm>

using namespace Vesk;

namespace {

/// Why `count` bytes cannot be written to `folder`; null when they can.
QString writeError(const QString& folder, int count)
{
    const QByteArray someBytes(count, ' ');
    QTemporaryFile file(folder + QStringLiteral("/.vspimport-XXXXXX"));
    const bool written = file.open() && file.write(someBytes) == someBytes.size() && file.flush();
    return written ? QString() : file.errorString();
}

/// Clips get their URLs whether or not a picture comes of them, unless the capture of their disc
/// could not begin.
bool lacksCapture(CImportTask* task)
{
    if (task->taskType() != CImportTask::BdTask)
        return false;
    const CBDInformation* disc = task->bdInfo();
    for (int i = 0; i < disc->fileCount(); ++i) {
        for (CBDFileClip* clip : disc->file(i)->snapClips()) {
            return CBDFile::clipObject(clip)->property("imageUrl").toString().isEmpty();
        }
    }
    return false;
}

} // namespace

bool canWritePictures()
{
    return QImageWriter::supportedImageFormats().contains("jpg");
}

QStringList reasonsForLostPictures(const ImportSession& session)
{
    const int sizeOfPictures = 64 * 1024;
    const int sizeOfTimeline = 1024 * 1024;
    QStringList reasons;
    const QString pictures = CImportContext::instance()->configDir();
    const QString error = writeError(pictures, sizeOfPictures);
    if (!error.isNull() && QDir(pictures).exists())
        reasons << QStringLiteral("pictures cannot be written to %1: %2").arg(pictures, error);

    const auto lost = std::find_if(session.tasks().begin(), session.tasks().end(),
                                   [](const auto& task) { return lacksCapture(task.get()); });
    if (session.wasStopped() || lost == session.tasks().end())
        return reasons;
    const QString temporary = QDir::tempPath();
    const QString reason = writeError(temporary, sizeOfTimeline);
    if (!reason.isNull())
        reasons << QStringLiteral("pictures of Blu-ray discs cannot be made, since %1 cannot be "
                                  "written to: %2")
                       .arg(temporary, reason);
    else
        reasons << QStringLiteral("no pictures could be made of %1").arg((*lost)->url());
    return reasons;
}
