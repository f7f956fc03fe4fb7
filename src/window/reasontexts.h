// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QString>

/// Why something could not be imported, in the person's language. The engine and the import say it
/// in English alone, with words of a fixed set; others stay as they are.
QString translatedReason(const QString& reason);
