// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QString>

/// One line on standard error that says how far the import is and redraws in place. Draws nothing
/// when it is disabled or standard error is no terminal, and leaves nothing behind.
class ProgressLine
{
public:
    explicit ProgressLine(bool enabled);
    ~ProgressLine();

    /// `state` tells how far it is, `path` where. Not drawn more often than eyes follow.
    void show(const QString& state, const QString& path);

    void clear();

private:
    const bool m_enabled;
    bool m_isShown = false;
    QElapsedTimer m_sinceDrawn;

    Q_DISABLE_COPY(ProgressLine)
};
