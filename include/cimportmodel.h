// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "cimportreply.h"
#include "cimportsource.h"
#include "vspbased/cveskobject.h"
#include "vspimportglobal.h"

#include <QtCore/QString>

class QIODevice;

namespace Vesk {

class CImportModelPrivate;

/// Starts imports and keeps the list of what they could not import.
///
/// Lives on the host's thread and outlives all replies that it opened.
class VSPIMPORT_EXPORT CImportModel : public CVeskObject
{
    Q_OBJECT
    Q_ENUMS(ErrorType)

public:
    /// Why an item gave no task.
    enum ErrorType
    {
        ErrorUnKnownSource = 0,   ///< a media file whose suffix is not among the file formats
        ErrorUnSupportSource = 1, ///< a media file whose suffix is among the forbidden ones
        ErrorImportFalsed = 2     ///< an item that could not be opened or read
    };

    /// Without errors.
    Q_INVOKABLE CImportModel(QObject* parent = 0);
    virtual ~CImportModel();

    /// Writes the errors that no earlier call has written, as one block. False, with nothing
    /// written, when there are none. `device` is open for writing and can seek; afterwards it
    /// stands right behind the block's length field. Each error is offered once, whether or not the
    /// device took it. One call at a time.
    bool saveReport(QIODevice* device);

Q_SIGNALS:
    /// An item could not be imported: an ErrorType, and the item's absolute path. Emitted on the
    /// thread that reported it, which is the import's.
    void importError(int type, const QString& url);

public Q_SLOTS:
    /// Starts an import of `source` and returns at once. The caller owns the reply and deletes it
    /// when it is done, or before to stop the import. Null when it could not be started.
    CImportReply* open(CImportSource& source);

    /// Records an error and emits importError(). Callable from any thread.
    void importErrorProc(CImportModel::ErrorType type, const QString& url);

protected:
    /// For subclasses with a private part of their own, which becomes the object's: `dd`.
    CImportModel(CImportModelPrivate& dd, QObject* parent);

private:
    CImportReply* startImport(CImportSource& source);

    VESK_DECLARE_PRIVATE(CImportModel)
    Q_DISABLE_COPY(CImportModel)
};

} // namespace Vesk
