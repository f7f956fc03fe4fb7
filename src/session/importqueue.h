// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "checkedimport.h"

#include <deque>

/// Runs a host's imports, one after another; each as CheckedImport does. Lives on the thread whose
/// event loop brings the events.
class ImportQueue
{
public:
    /// `receiver` gets the events of all imports, those of each up to its Finished.
    explicit ImportQueue(ImportSession::Receiver receiver);

    /// Begins when all that were added before are over; at once, when there are none. What cannot
    /// be started gives NotStarted and Finished, maybe before this returns.
    void add(const ImportRequest& request);

    /// Stops the import at hand, of which what has been found still arrives, and Finished. Those
    /// that wait are dropped.
    void stop();

    /// Whether there is nothing at hand and nothing that waits. So it is when the last Finished
    /// arrives.
    bool isIdle() const { return !m_isRunning && m_waiting.empty(); }

    /// As ImportSession's.
    void reportFailure(int type, const QString& path) { m_import.reportFailure(type, path); }
    bool saveReport(QIODevice* device) { return m_import.saveReport(device); }

private:
    void receive(const ImportEvent& event);
    void next();

    ImportSession::Receiver m_receiver;
    std::deque<ImportRequest> m_waiting;
    bool m_isRunning = false;
    CheckedImport m_import;

    Q_DISABLE_COPY(ImportQueue)
};
