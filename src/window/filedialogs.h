// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QStringList>

class QWidget;

/// The dialogs in which a person chooses files. They begin in the folder that was chosen from last.
/// What they return is empty when nothing was chosen.
class FileDialogs
{
public:
    /// `window`, which outlives this, waits while one is open.
    explicit FileDialogs(QWidget& window);

    QStringList openFiles(const QString& title);
    QString openFile(const QString& title);
    /// Begins in `folder`, if it is one.
    QString openFolder(const QString& title, const QString& folder = QString());
    /// `suffix` is given to a name without; empty for none.
    QString saveFile(const QString& title, const QString& suffix);

    const QString& folder() const { return m_folder; }
    void setFolder(const QString& folder) { m_folder = folder; }

private:
    QString chosen(const QString& path);

    QWidget& m_window;
    QString m_folder;
};
