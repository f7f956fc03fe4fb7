// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The least that a host does: load the plug-in, set the context, import, read the tasks.
#include <cimportcontext.h>
#include <cimportmodel.h>
#include <cimportsource.h>
#include <cimporttask.h>
#include <vsplugin/cabstractplugin.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDebug>
#include <QtCore/QDir>
#include <QtCore/QPluginLoader>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QPluginLoader loader(PLUGIN);
    Vesk::CAbstractPlugin* plugin = qobject_cast<Vesk::CAbstractPlugin*>(loader.instance());
    if (!plugin || !plugin->initialize(nullptr, QVariantMap()) || !plugin->start())
        return 1;
    Vesk::CImportContext::instance()->setConfigDir(QDir("snapshots").absolutePath());
    Vesk::CImportContext::instance()->setSnapSize(QSize(320, 180));
    Vesk::CImportContext::instance()->setFileFormats("*.mp4;*.mkv;*.mp3;");

    Vesk::CImportSource source;
    source.setSources(application.arguments().mid(1));
    source.setForImport(true);
    Vesk::CImportModel model;
    QScopedPointer<Vesk::CImportReply> reply(model.open(source));
    if (!reply)
        return 1;
    QObject::connect(reply.data(), SIGNAL(finished()), &application, SLOT(quit()));
    application.exec();

    for (int i = 0; i < reply->tasks()->count(); ++i) {
        auto* task = static_cast<Vesk::CImportTask*>(reply->tasks()->item(i));
        qDebug() << task->movieInfo()->movieName() << task->movieInfo()->imageUrl();
        delete task;
    }
    return 0;
}
