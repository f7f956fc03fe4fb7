// SPDX-License-Identifier: GPL-2.0-or-later
#include "filedialogs.h"

#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>
#include <QtWidgets/QFileDialog>

FileDialogs::FileDialogs(QWidget& window)
    : m_window(window)
    , m_folder(QStandardPaths::writableLocation(QStandardPaths::MoviesLocation))
{}

QStringList FileDialogs::openFiles(const QString& title)
{
    QStringList files = QFileDialog::getOpenFileNames(&m_window, title, m_folder);
    chosen(files.value(0));
    return files;
}

QString FileDialogs::openFile(const QString& title)
{
    return chosen(QFileDialog::getOpenFileName(&m_window, title, m_folder));
}

QString FileDialogs::openFolder(const QString& title, const QString& folder)
{
    return chosen(
        QFileDialog::getExistingDirectory(&m_window, title, folder.isEmpty() ? m_folder : folder));
}

QString FileDialogs::saveFile(const QString& title, const QString& suffix)
{
    QFileDialog dialog(&m_window, title, m_folder,
                       suffix.isEmpty() ? QString() : QStringLiteral("*.") + suffix);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffix);
    const bool isAccepted = dialog.exec() == QDialog::Accepted;
    return chosen(isAccepted ? dialog.selectedFiles().value(0) : QString());
}

QString FileDialogs::chosen(const QString& path)
{
    if (!path.isEmpty())
        m_folder = QFileInfo(path).path();
    return path;
}
