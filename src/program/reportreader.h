// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QString>

/// One error of a saved report.
struct ReportedError
{
    int type = 0;
    QString path;
    QDateTime time;    ///< when its block was written
    QByteArray sample; ///< first bytes of the file; failed imports only
};

/// Reads all blocks of the report at `fileName`. False, with the reason in one line in `error`,
/// when it cannot be read or is none; what came before the fault is then in `errors`.
bool readReport(const QString& fileName, QList<ReportedError>& errors, QString& error);
