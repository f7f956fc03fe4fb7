// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "importresult.h"
#include "logcollector.h"

#include <QtCore/QObject>

#include <functional>
#include <future>

/// Writes what the list shows into files, in a thread of Qt's pool. The window says what came of
/// it.
class Exporter : public QObject
{
    Q_OBJECT

public:
    enum Format
    {
        Json, ///< the document of the command-line program's --json
        Csv,
        Page,
        Report ///< the module's, of the failures
    };

    struct Findings
    {
        std::vector<std::shared_ptr<const facts::Item>> items;
        std::vector<ImportResult::Failure> failures;
        QList<LogCollector::Record> log;
        bool isPartial = false; ///< while an import runs, or once one was stopped
        int importPercent = 100;
        int picturePercent = 100;
    };

    using QObject::QObject;

    void write(Format format, const QString& fileName, const Findings& findings);

    /// The items as JSON, one alone as an object and several as an array.
    void makeText(const std::vector<std::shared_ptr<const facts::Item>>& items);

Q_SIGNALS:
    /// `error` is empty when all was written.
    void written(const QString& fileName, const QString& error);
    void textMade(const QString& text);

private:
    void runInBackground(std::function<void()> job);

    std::vector<std::future<void>> m_jobs; ///< waited for when they are destroyed
};
