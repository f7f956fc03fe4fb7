// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cimporttask.h"

#include "cimporttask_p.h"
#include "vspbased/cbasicutils.h"

namespace Vesk {

CImportTask::CImportTask(QObject* parent)
    : CVeskObject(*new CImportTaskPrivate, parent)
{}

CImportTask::CImportTask(CImportTaskPrivate& dd, QObject* parent)
    : CVeskObject(dd, parent)
{}

CImportTask::~CImportTask()
{
    Q_EMIT aboutToDestory();
}

CMovieInfomation* CImportTask::movieInfo()
{
    return &d_func()->movieInfo;
}

CBDInformation* CImportTask::bdInfo()
{
    return &d_func()->bdInfo;
}

CDVDInformation* CImportTask::dvdInfo()
{
    return &d_func()->dvdInfo;
}

CImportTask::TaskType CImportTask::taskType() const
{
    return d_func()->taskType;
}

QString CImportTask::url() const
{
    return d_func()->url;
}

QString CImportTask::size() const
{
    return CBasicUtils::fileSizeToString(quint64(d_func()->fileSize));
}

} // namespace Vesk
