// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QString>

/// Writes the saved error report at `fileName` to standard output, one line an error or as JSON.
/// False, with the reason in one line in `error`, when it cannot be read; what can be is shown.
bool showReport(const QString& fileName, bool asJson, QString& error);
