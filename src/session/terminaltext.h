// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QString>

/// `text` for a person at a terminal: names of files may hold anything, so control characters,
/// which could move the cursor or break the line, are shown as "?".
QString terminalText(const QString& text);
