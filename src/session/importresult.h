// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "errornames.h"
#include "importsession.h"

#include <QtCore/QMap>
#include <QtCore/QSet>
#include <QtCore/QStringList>

#include <memory>
#include <vector>

/// What came of an import, or of the parts of one.
class ImportResult
{
public:
    struct Failure
    {
        int type; ///< of the module's kinds of error
        QString path;
        QString reason; ///< for people; never empty
    };

    /// Files of other kinds are told from those that failed if a folder brought them, not if they
    /// were `named` one by one. Items are kept only where `keepsItems`; sums always.
    ImportResult(const QStringList& named, bool keepsItems);

    void add(const std::shared_ptr<const facts::Item>& item, int number);
    void add(const Failure& failure);

    /// Whether the failure is that of a file in a folder that is of another kind.
    bool isOfOtherKind(const Failure& failure) const;

    /// In the order of the import.
    const QMap<int, std::shared_ptr<const facts::Item>>& items() const { return m_items; }
    /// All that the import reported, where items are kept.
    const std::vector<Failure>& errors() const { return m_errors; }
    /// Those among them that a person cares for, and what the import did not report.
    std::vector<Failure> failures() const;
    /// An item that could not be imported, of which the import says nothing when it is for
    /// conversion.
    void addUnreported(const QString& path, const QString& reason);
    /// Whether the import itself has reported one of failures().
    bool hasErrors() const;

    /// How many files of other kinds there were, by suffix.
    const QMap<QString, int>& otherKinds() const { return m_otherKinds; }

    struct Sums
    {
        int items = 0;
        int byKind[4] = {};
        double duration = 0.0;
        qint64 bytes = 0;
    };
    const Sums& sums() const { return m_sums; }

    bool stopped = false;
    int importPercent = 0;
    int picturePercent = 0;

private:
    QSet<QString> m_named;
    const bool m_keepsItems;
    QMap<int, std::shared_ptr<const facts::Item>> m_items;
    std::vector<Failure> m_errors;
    std::vector<Failure> m_unreported;
    QMap<QString, int> m_otherKinds;
    Sums m_sums;
};
