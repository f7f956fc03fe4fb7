// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "cimporttask.h"
#include "vspbased/cveskobject.h"
#include "vspimportglobal.h"

#include <QtCore/QString>
#include <QtGui/QImage>

namespace AVBased {
class IAVImporter;
class IAVSource;
class IBDLoader;
} // namespace AVBased

namespace Vesk {

/// A task's data and engine objects, and the taking of its snapshots. Filled by probing; used on
/// the import's thread.
class VSPIMPORT_EXPORT CImportTaskPrivate : public CVeskObjectPrivate
{
public:
    CImportTaskPrivate();
    virtual ~CImportTaskPrivate();

    /// The private part of `task`; null for a null task.
    static CImportTaskPrivate* getImportTaskPrivate(CImportTask* task);

    /// Hands an engine object over to the task, which ends it.
    void setImporter(AVBased::IAVImporter* importer);
    void setBdLoader(AVBased::IBDLoader* loader);

    /// Makes sure that the task's importer is open; false when it cannot be, as for a Blu-ray disc,
    /// whose importer is there only while its pictures are taken.
    bool createContext();

    /// Ends the engine objects that the task holds.
    void freeContext();

    /// A source of the media file's frames, owned by the caller; null for discs and when the engine
    /// cannot make one. The task may open its importer anew for it.
    AVBased::IAVSource* createSource(int videoStreamId, int audioStreamId);

    /// Takes the task's snapshots and ends its engine objects. Throws CVeskException when the
    /// folder for the pictures cannot be made; the engine objects are then still there.
    void snap();

    CMovieInfomation movieInfo;
    CBDInformation bdInfo;
    CDVDInformation dvdInfo;
    AVBased::IAVImporter* importer;
    AVBased::IBDLoader* bdLoader;
    CImportTask::TaskType taskType;
    QString url;
    QString importerName;
    qint64 fileSize; ///< bytes

    VESK_DECLARE_PUBLIC(CImportTask)

private:
    void snapVideo();
    void snapDVD();
    void snapBD();
    void snapClips(CBDFile* file, double offset, const QString& folder, AVBased::IAVSource* source);

    /// A picture of `source` at its position; null when there is none. Valid until the next one.
    QImage snapFrame(AVBased::IAVSource* source);
    /// Writes the picture called `name`; throws when its folder cannot be made.
    void saveImage(QImage& image, QString name);
    /// The path of the picture called `name`.
    QString getImageUrl(QString name);

    /// Copying is not supported: engine objects have one owner.
    CImportTaskPrivate(const CImportTaskPrivate&);
};

} // namespace Vesk
