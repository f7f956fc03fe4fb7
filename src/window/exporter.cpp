// SPDX-License-Identifier: GPL-2.0-or-later
#include "exporter.h"

#include "cimportmodel.h"
#include "csvoutput.h"
#include "facts/itemjson.h"
#include "htmlpage.h"
#include "jsonoutput.h"
#include "outputfile.h"

#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QFutureWatcher>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

using Vesk::CImportModel;

namespace {

using Items = std::vector<std::shared_ptr<const facts::Item>>;

/// Runs `job` on another thread, and `done` with its result on the owner's, if that still lives.
template <typename Job, typename Done>
void inBackground(QObject* owner, Job job, Done done)
{
    using Result = decltype(job());
    auto* watcher = new QFutureWatcher<Result>(owner);
    QObject::connect(watcher, &QFutureWatcherBase::finished, owner, [watcher, done] {
        done(watcher->result());
        watcher->deleteLater();
    });
    watcher->setFuture(QtConcurrent::run(job));
}

void writeDocument(QIODevice& device, const Exporter::Findings& findings)
{
    QStringList sources;
    for (const auto& item : findings.items)
        sources.append(item->sourcePath());
    ImportResult result(sources, true);
    for (const auto& item : findings.items)
        result.add(item, int(result.items().size()));
    for (const ImportResult::Failure& failure : findings.failures)
        result.add(failure);
    result.importPercent = 100;
    result.picturePercent = 100;
    writeJsonDocument(device, sources, result, findings.log);
}

/// By a model of its own: one that has imported offers each error once.
void writeReport(QIODevice& device, const Exporter::Findings& findings)
{
    CImportModel model;
    for (const ImportResult::Failure& failure : findings.failures)
        model.importErrorProc(CImportModel::ErrorType(failure.type), failure.path);
    model.saveReport(&device);
}

/// Empty, or why it could not be written.
QString writeFile(Exporter::Format format, const QString& fileName,
                  const Exporter::Findings& findings)
{
    QString error;
    if (format == Exporter::Page) {
        writeHtmlPage(fileName, {findings.items, findings.failures, false}, error);
        return error;
    }
    OutputFile file;
    if (!file.open(fileName, OutputFile::Replacing, error))
        return error;
    if (format == Exporter::Json)
        writeDocument(file.device(), findings);
    else if (format == Exporter::Csv)
        writeCsv(file.device(), findings.items);
    else
        writeReport(file.device(), findings);
    file.commit(error);
    return error;
}

QString textOf(const Items& items)
{
    if (items.size() == 1)
        return QString::fromUtf8(QJsonDocument(facts::toJson(*items.front())).toJson());
    QJsonArray array;
    for (const auto& item : items)
        array.append(facts::toJson(*item));
    return QString::fromUtf8(QJsonDocument(array).toJson());
}

} // namespace

void Exporter::write(Format format, const QString& fileName, const Findings& findings)
{
    inBackground(
        this, [=] { return writeFile(format, fileName, findings); },
        [this, fileName](const QString& error) { emit written(fileName, error); });
}

void Exporter::makeText(const Items& items)
{
    inBackground(
        this, [items] { return textOf(items); },
        [this](const QString& text) { emit textMade(text); });
}
