// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cimportreply.h"

#include "cimportreply_p.h"

namespace Vesk {

CImportReply::CImportReply(QObject* parent)
    : CVeskObject(*new CImportReplyPrivate, parent)
{}

CImportReply::CImportReply(CImportReplyPrivate& dd, QObject* parent)
    : CVeskObject(dd, parent)
{}

/// The one thing that cannot wait for the private part: the import's thread must not emit signals
/// of an object that is no longer a reply.
CImportReply::~CImportReply()
{
    d_func()->silence();
}

bool CImportReply::wait(unsigned long time)
{
    return d_func()->wait(time);
}

bool CImportReply::isFinished() const
{
    return d_func()->isFinished();
}

CVeskList* CImportReply::tasks()
{
    return &d_func()->tasks;
}

int CImportReply::importPercent() const
{
    return d_func()->importPercent;
}

int CImportReply::snapPercent() const
{
    return d_func()->snapPercent;
}

void CImportReply::exit(int code)
{
    d_func()->exit(code);
}

void CImportReply::setSource(CImportSource& source)
{
    d_func()->source = source;
}

CImportSource* CImportReply::source()
{
    return &d_func()->source;
}

void CImportReply::run()
{
    d_func()->start();
}

} // namespace Vesk
