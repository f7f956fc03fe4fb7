// SPDX-License-Identifier: GPL-2.0-or-later
#include "exporter.h"

#include "cimportmodel.h"
#include "csvoutput.h"
#include "facts/itemjson.h"
#include "htmlpage.h"
#include "jsonoutput.h"
#include "outputfile.h"
#include "reasontexts.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <algorithm>
#include <chrono>

using Vesk::CImportModel;

namespace {

using Items = std::vector<std::shared_ptr<const facts::Item>>;

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
    result.stopped = findings.isPartial;
    result.importPercent = findings.importPercent;
    result.picturePercent = findings.picturePercent;
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

/// It is for people.
void writePage(const QString& fileName, const Exporter::Findings& findings, QString& error)
{
    PageContent content{findings.items, findings.failures, findings.isPartial};
    for (ImportResult::Failure& failure : content.failures)
        failure.reason = translatedReason(failure.reason);
    writeHtmlPage(fileName, content, error);
}

/// Empty, or why it could not be written.
QString writeFile(Exporter::Format format, const QString& fileName,
                  const Exporter::Findings& findings)
{
    QString error;
    if (format == Exporter::Page) {
        writePage(fileName, findings, error);
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
    runInBackground([this, format, fileName, findings] {
        const QString error = writeFile(format, fileName, findings);
        QMetaObject::invokeMethod(
            this, [this, fileName, error] { emit written(fileName, error); }, Qt::QueuedConnection);
    });
}

void Exporter::makeText(const Items& items)
{
    runInBackground([this, items] {
        const QString text = textOf(items);
        QMetaObject::invokeMethod(
            this, [this, text] { emit textMade(text); }, Qt::QueuedConnection);
    });
}

void Exporter::runInBackground(std::function<void()> job)
{
    const auto isOver = [](const std::future<void>& known) {
        return known.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    };
    m_jobs.erase(std::remove_if(m_jobs.begin(), m_jobs.end(), isOver), m_jobs.end());
    m_jobs.push_back(std::async(std::launch::async, std::move(job)));
}
