// SPDX-License-Identifier: GPL-2.0-or-later
#include "importresult.h"

#include <QtCore/QFileInfo>

#include <algorithm>

ImportResult::ImportResult(const QStringList& named, bool keepsItems)
    : m_keepsItems(keepsItems)
{
    for (const QString& path : named)
        m_named.insert(QFileInfo(path).absoluteFilePath());
}

void ImportResult::add(const std::shared_ptr<const facts::Item>& item, int number)
{
    ++m_sums.items;
    ++m_sums.byKind[int(item->kind)];
    m_sums.duration += std::max(0.0, item->duration());
    m_sums.bytes += item->bytes;
    if (m_keepsItems)
        m_items.insert(number, item);
}

bool ImportResult::isOfOtherKind(const Failure& failure) const
{
    return failure.type != Vesk::CImportModel::ErrorImportFalsed && !m_named.contains(failure.path);
}

void ImportResult::add(const Failure& failure)
{
    const bool isOther = isOfOtherKind(failure);
    if (isOther)
        ++m_otherKinds[QFileInfo(failure.path).suffix().toLower()];
    if (m_keepsItems || !isOther)
        m_errors.push_back(failure);
}

void ImportResult::addUnreported(const QString& path, const QString& reason)
{
    m_unreported.push_back({Vesk::CImportModel::ErrorImportFalsed, path, reason});
}

bool ImportResult::hasErrors() const
{
    return std::any_of(m_errors.begin(), m_errors.end(),
                       [this](const Failure& error) { return !isOfOtherKind(error); });
}

std::vector<ImportResult::Failure> ImportResult::failures() const
{
    std::vector<Failure> failures;
    for (const Failure& error : m_errors) {
        if (!isOfOtherKind(error))
            failures.push_back(error);
    }
    failures.insert(failures.end(), m_unreported.begin(), m_unreported.end());
    return failures;
}
