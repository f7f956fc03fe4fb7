// SPDX-License-Identifier: GPL-2.0-or-later
#include "failuremodel.h"

#include "plaintip.h"
#include "reasontexts.h"

void FailureModel::setFailures(const std::vector<ImportResult::Failure>& failures)
{
    const int known = rowCount();
    const int count = int(failures.size());
    if (count < known) {
        beginResetModel();
        m_failures = failures;
        endResetModel();
    } else if (count > known) {
        beginInsertRows({}, known, count - 1);
        m_failures.insert(m_failures.end(), failures.begin() + known, failures.end());
        endInsertRows();
    }
}

int FailureModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_failures.size());
}

int FailureModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 2;
}

QVariant FailureModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    const ImportResult::Failure& failure = m_failures[std::size_t(index.row())];
    const QString text = index.column() == 0 ? failure.path : translatedReason(failure.reason);
    return role == Qt::ToolTipRole ? plainTip(text) : text;
}

QVariant FailureModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == 0 ? tr("Path") : tr("Reason");
}
