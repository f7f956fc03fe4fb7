// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "csourceanalyzer.h"

#include <QtCore/QThread>

#include <atomic>

namespace Vesk {

class CImportReplyPrivate;

/// The thread of one import. The object itself lives on the host's thread, where _finished() and
/// _terminated() run; run(), _innerRun() and _analyze_visit() run on the thread that it starts.
class CImportReplyThread : public QThread
{
    Q_OBJECT

public:
    CImportReplyThread();

    CImportReplyPrivate* replyPrivate; ///< the reply that owns the thread

protected:
    void run() override;

private Q_SLOTS:
    void _finished();
    void _terminated();
    void _innerRun();
    void _analyze_visit(const CSourceAnalyzer::AnalyzeResult& result);

private:
    std::atomic<bool> m_ranToEnd;

    Q_DISABLE_COPY(CImportReplyThread)
};

} // namespace Vesk
