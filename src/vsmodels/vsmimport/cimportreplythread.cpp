// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cimportreplythread.h"

#include "cimportreply_p.h"
#include "vspbased/veskqt.h"

#include <QtCore/QDebug>
#include <QtCore/QPointer>
#include <QtCore/QTimer>

namespace Vesk {

namespace {

const int startDelayMs = 10;

}

CImportReplyThread::CImportReplyThread()
    : QThread(0)
    , replyPrivate(0)
    , m_ranToEnd(false)
{
    connect(this, SIGNAL(finished()), this, SLOT(_finished()));
    connectTerminated(this, this, SLOT(_terminated()));
}

void CImportReplyThread::run()
{
    qDebug() << "thread start:" << QThread::currentThreadId();
    {
        QTimer timer;
        // In this order: the import runs within the one timeout, and then the timer stops.
        connect(&timer, SIGNAL(timeout()), this, SLOT(_innerRun()), Qt::DirectConnection);
        connect(&timer, SIGNAL(timeout()), &timer, SLOT(stop()), Qt::DirectConnection);
        timer.start(startDelayMs);
        exec();
        qDebug() << "thread done:" << QThread::currentThreadId();
    }
    m_ranToEnd = true;
}

void CImportReplyThread::_finished()
{
    // Qt 4 has a signal for a thread that was terminated, and emits it before finished(). Qt 5
    // emits finished() alone, but then run() has not come to its end.
    const QPointer<CImportReplyThread> self(this);
    if (!qtSignalsTermination && !m_ranToEnd)
        _terminated();
    // A receiver of terminated() may have deleted the reply, and this thread with it.
    if (self)
        replyPrivate->threadFinished();
}

void CImportReplyThread::_terminated()
{
    replyPrivate->threadTerminated();
}

void CImportReplyThread::_innerRun()
{
    replyPrivate->innerRun();
}

void CImportReplyThread::_analyze_visit(const CSourceAnalyzer::AnalyzeResult& result)
{
    replyPrivate->analyzeVisit(result);
}

} // namespace Vesk
