// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cimportmodel.h"

#include "cimportmodel_p.h"
#include "cimportreply_p.h"
#include "errorreport.h"
#include "guard.h"

#include <QtCore/QReadLocker>
#include <QtCore/QWriteLocker>

#include <memory>

namespace Vesk {

CImportModel::CImportModel(QObject* parent)
    : CVeskObject(*new CImportModelPrivate, parent)
{}

CImportModel::CImportModel(CImportModelPrivate& dd, QObject* parent)
    : CVeskObject(dd, parent)
{}

CImportModel::~CImportModel() {}

CImportReply* CImportModel::open(CImportSource& source)
{
    return VESK_GUARDED(static_cast<CImportReply*>(0), startImport(source));
}

CImportReply* CImportModel::startImport(CImportSource& source)
{
    std::unique_ptr<CImportReply> reply(new CImportReply(0));
    reply->d_func()->model = this;
    reply->setSource(source);
    reply->run();
    return reply.release();
}

void CImportModel::importErrorProc(ErrorType type, const QString& url)
{
    ImportErrorRecord record;
    record.type = type;
    record.url = url;
    {
        QWriteLocker lock(&d_func()->lock);
        d_func()->errors.append(record);
    }
    Q_EMIT importError(type, url);
}

bool CImportModel::saveReport(QIODevice* device)
{
    CImportModelPrivate* d = d_func();
    QReadLocker lock(&d->lock);
    if (d->savedCount >= d->errors.count())
        return false;
    ErrorReportBlock block(device);
    while (d->savedCount < d->errors.count())
        block.append(d->errors.at(d->savedCount++));
    block.finish();
    return true;
}

} // namespace Vesk
