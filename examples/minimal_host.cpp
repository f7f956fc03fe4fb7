// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The least that a host does: load the plug-in, set the context, import, listen, read the tasks.
#include <cimportcontext.h>
#include <cimportmodel.h>
#include <cimportsource.h>
#include <cimporttask.h>
#include <vsplugin/cabstractplugin.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDebug>
#include <QtCore/QDir>
#include <QtCore/QPluginLoader>

using namespace Vesk;

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QPluginLoader loader(PLUGIN);
    CAbstractPlugin* plugin = qobject_cast<CAbstractPlugin*>(loader.instance());
    if (!plugin || !plugin->initialize(nullptr, QVariantMap()) || !plugin->start())
        return 1;
    CImportContext::instance()->setConfigDir(QDir("snapshots").absolutePath());
    CImportContext::instance()->setSnapSize(QSize(320, 180));
    CImportContext::instance()->setFileFormats("*.mp4;*.mkv;*.mp3;");
    // What taskProcess() carries from the import's thread to this one.
    qRegisterMetaType<Vesk::CImportTask*>("Vesk::CImportTask*");
    qRegisterMetaType<Vesk::CImportReply::ProcessType>("Vesk::CImportReply::ProcessType");

    CImportSource source;
    source.setSources(application.arguments().mid(1)); // a path where nothing is gives nothing
    source.setForImport(true);
    CImportModel model;
    QScopedPointer<CImportReply> reply(model.open(source));
    if (!reply)
        return 1;
    QObject::connect(reply.data(), &CImportReply::taskProcess, &application,
                     [](CImportTask* task, CImportReply::ProcessType type) {
                         qDebug() << (type == CImportReply::ImportDone ? "found" : "done")
                                  << task->url();
                     });
    // On the import's thread: in a queued slot the percentage may be a later one.
    QObject::connect(
        reply.data(), &CImportReply::snapPercentChanged, reply.data(),
        [&reply] { qDebug() << "pictures:" << reply->snapPercent() << "%"; }, Qt::DirectConnection);
    QObject::connect(reply.data(), SIGNAL(finished()), &application, SLOT(quit()));
    application.exec();

    for (int i = 0; i < reply->tasks()->count(); ++i) {
        auto* task = static_cast<CImportTask*>(reply->tasks()->item(i));
        qDebug() << task->movieInfo()->movieName() << task->movieInfo()->imageUrl();
        delete task;
    }
    return 0;
}
