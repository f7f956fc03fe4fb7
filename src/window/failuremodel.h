// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "importresult.h"

#include <QtCore/QAbstractTableModel>

/// What could not be imported, and why.
class FailureModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Those that are there already, with more behind them, or fewer.
    void setFailures(const std::vector<ImportResult::Failure>& failures);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<ImportResult::Failure> m_failures;
};
