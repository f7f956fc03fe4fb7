// SPDX-License-Identifier: GPL-2.0-or-later
#include "jsonoutput.h"

#include "facts/itemjson.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace {

QByteArray lineOf(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

QJsonObject failureToJson(const ImportResult::Failure& failure)
{
    return {{QStringLiteral("type"), QLatin1String(errorName(failure.type).enumerator)},
            {QStringLiteral("url"), failure.path},
            {QStringLiteral("reason"), failure.reason}};
}

/// All but the items.
QJsonObject frameOf(const QStringList& sources, const ImportResult& result,
                    const QList<LogCollector::Record>& records)
{
    QJsonArray errors;
    for (const ImportResult::Failure& failure : result.errors())
        errors.append(failureToJson(failure));
    QJsonArray log;
    for (const LogCollector::Record& record : records) {
        log.append(QJsonObject{{QStringLiteral("code"), record.code},
                               {QStringLiteral("message"), record.message}});
    }
    return {{QStringLiteral("sources"), QJsonArray::fromStringList(sources)},
            {QStringLiteral("stopped"), result.stopped},
            {QStringLiteral("importPercent"), result.importPercent},
            {QStringLiteral("snapPercent"), result.picturePercent},
            {QStringLiteral("errors"), errors},
            {QStringLiteral("log"), log}};
}

QByteArray indented(QByteArray json, const char* indentation)
{
    json.chop(1); // the last line's end
    return indentation + json.replace('\n', QByteArray("\n") + indentation);
}

struct SignalName
{
    ImportEvent::Kind kind;
    const char* name;
    const char* type;      ///< of a task's processing
    const char* valueName; ///< null where there is no value
};

const SignalName signalNames[] = {
    {ImportEvent::Found, "taskProcess", "ImportDone", nullptr},
    {ImportEvent::Pictured, "taskProcess", "SnapDone", nullptr},
    {ImportEvent::Failed, "importError", nullptr, "type"},
    {ImportEvent::Seen, "importUrl", nullptr, nullptr},
    {ImportEvent::ImportPercent, "importPercentChanged", nullptr, "value"},
    {ImportEvent::ImportFinished, "importFinished", nullptr, nullptr},
    {ImportEvent::PicturePercent, "snapPercentChanged", nullptr, "value"},
    {ImportEvent::PicturesFinished, "snapFinished", nullptr, nullptr},
    {ImportEvent::Finished, "finished", nullptr, nullptr},
};

} // namespace

bool writeJsonDocument(QIODevice& device, const QStringList& sources, const ImportResult& result,
                       const QList<LogCollector::Record>& log)
{
    const auto write = [&device](const QByteArray& text) {
        return device.write(text) == text.size();
    };
    QByteArray frame = QJsonDocument(frameOf(sources, result, log)).toJson();
    frame.chop(3); // "\n}\n"
    bool written = write(frame + ",\n    \"tasks\": [");
    const char* separator = "\n";
    for (const auto& item : result.items()) {
        const QByteArray json = QJsonDocument(facts::toJson(*item)).toJson();
        written = written && write(separator + indented(json, "        "));
        separator = ",\n";
    }
    return written && write("\n    ]\n}\n");
}

QByteArray jsonLine(const facts::Item& item)
{
    return lineOf(facts::toJson(item));
}

QByteArray jsonLine(const ImportResult::Failure& failure)
{
    return lineOf(failureToJson(failure));
}

QByteArray jsonLine(const ImportEvent& event)
{
    for (const SignalName& signal : signalNames) {
        if (signal.kind != event.kind)
            continue;
        QJsonObject json{{QStringLiteral("signal"), QLatin1String(signal.name)}};
        if (signal.type)
            json.insert(QStringLiteral("type"), QLatin1String(signal.type));
        if (signal.valueName)
            json.insert(QLatin1String(signal.valueName), event.value);
        if (!event.path.isEmpty())
            json.insert(QStringLiteral("url"), event.path);
        return lineOf(json);
    }
    return QByteArray();
}
