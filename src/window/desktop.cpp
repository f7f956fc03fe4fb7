// SPDX-License-Identifier: GPL-2.0-or-later
#include "desktop.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>
#include <QtCore/QUrl>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtGui/QDesktopServices>

namespace desktop {

namespace {

/// More windows at once would be more than anybody wants.
const int mostFolders = 10;

void openFolders(const QStringList& paths)
{
    QSet<QString> folders;
    for (const QString& path : paths) {
        const QString folder = QFileInfo(path).path();
        if (folders.size() < mostFolders && !folders.contains(folder))
            open(folder);
        folders.insert(folder);
    }
}

} // namespace

void open(const QString& path)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

void showInFolder(const QStringList& paths)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) { // then nothing would answer
        openFolders(paths);
        return;
    }
    QStringList urls;
    for (const QString& path : paths)
        urls.append(QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded));
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    message << urls << QString();
    const QDBusPendingCall call = bus.asyncCall(message);
    auto* watcher = new QDBusPendingCallWatcher(call, QCoreApplication::instance());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, paths] {
        if (watcher->isError())
            openFolders(paths);
        watcher->deleteLater();
    });
}

} // namespace desktop
