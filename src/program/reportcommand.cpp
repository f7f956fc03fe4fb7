// SPDX-License-Identifier: GPL-2.0-or-later
#include "reportcommand.h"

#include "reportreader.h"
#include "session/errornames.h"
#include "terminaltext.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <cstdio>

namespace {

QByteArray asJsonText(const QList<ReportedError>& errors)
{
    QJsonArray list;
    for (const ReportedError& entry : errors) {
        list.append(QJsonObject{{QStringLiteral("type"), errorName(entry.type).enumerator},
                                {QStringLiteral("url"), entry.path},
                                {QStringLiteral("time"), entry.time.toString(Qt::ISODate)},
                                {QStringLiteral("sampleSize"), entry.sample.size()}});
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("errors"), list}}).toJson();
}

QByteArray asLines(const QList<ReportedError>& errors)
{
    QByteArray lines;
    for (const ReportedError& entry : errors) {
        lines += QStringLiteral("%1  %2: %3\n")
                     .arg(entry.time.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")),
                          terminalText(entry.path), QLatin1String(errorName(entry.type).reason))
                     .toLocal8Bit();
    }
    return lines;
}

} // namespace

bool showReport(const QString& fileName, bool asJson, QString& error)
{
    QList<ReportedError> errors;
    const bool isWhole = readReport(fileName, errors, error);
    if (isWhole || !errors.isEmpty()) {
        const QByteArray text = asJson ? asJsonText(errors) : asLines(errors);
        std::fwrite(text.constData(), 1, size_t(text.size()), stdout);
    }
    return isWhole;
}
