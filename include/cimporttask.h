// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "cbdinformation.h"
#include "cdvdinformation.h"
#include "cmovieinfomation.h"
#include "vspbased/cveskobject.h"
#include "vspimportglobal.h"

#include <QtCore/QString>

namespace Vesk {

class CImportTaskPrivate;

/// One item that can be imported. Owned by the host, also after its reply is gone.
///
/// The host deletes it, with `delete` and on its own thread, once the import is over: after
/// finished(), or wait() that has answered true, or the reply's end. Before that the import may
/// still work on it. deleteLater() would wait for the event loop of the import's thread, which is
/// gone by then.
///
/// Which of the three information objects says something depends on the type; the others are empty.
/// None is ever null, and all go with the task.
class VSPIMPORT_EXPORT CImportTask : public CVeskObject
{
    Q_OBJECT
    Q_ENUMS(TaskType)
    Q_PROPERTY(CMovieInfomation* movieInfo READ movieInfo NOTIFY nullChanged)
    Q_PROPERTY(CBDInformation* bdInfo READ bdInfo NOTIFY nullChanged)
    Q_PROPERTY(CDVDInformation* dvdInfo READ dvdInfo NOTIFY nullChanged)
    Q_PROPERTY(QString url READ url NOTIFY nullChanged)
    Q_PROPERTY(TaskType taskType READ taskType NOTIFY nullChanged)
    Q_PROPERTY(QString size READ size NOTIFY nullChanged)

public:
    /// What kind of item it is.
    enum TaskType
    {
        VideoTask = 0, ///< a media file with video: movieInfo()
        AudioTask = 1, ///< a media file without video: movieInfo()
        BdTask = 2,    ///< a Blu-ray disc: bdInfo()
        DvdTask = 3    ///< a DVD: dvdInfo()
    };

    /// Of no source. Tasks that mean something come from an import.
    CImportTask(QObject* parent = 0);
    virtual ~CImportTask();

    /// What is in a media file.
    CMovieInfomation* movieInfo();
    /// What is on a Blu-ray disc.
    CBDInformation* bdInfo();
    /// What is on a DVD.
    CDVDInformation* dvdInfo();

    /// Says which of the three it is.
    TaskType taskType() const;

    /// Path of the source.
    QString url() const;

    /// Size of the file as a text for people ("1.4 GB"); a disc's folder counts nothing.
    QString size() const;

Q_SIGNALS:
    void nullChanged();    ///< never emitted
    void aboutToDestory(); ///< first thing in the destructor; all data is still there

protected:
    /// For subclasses with a private part of their own, which becomes the object's: `dd`.
    CImportTask(CImportTaskPrivate& dd, QObject* parent);

private:
    VESK_DECLARE_PRIVATE(CImportTask)
    Q_DISABLE_COPY(CImportTask)
};

} // namespace Vesk
