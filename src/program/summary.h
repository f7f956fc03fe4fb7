// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QString>

class ImportSession;

/// What came of an import, for a person: a line an item, discs with their titles, then what could
/// not be imported and why, then counts.
QString summaryOf(const ImportSession& session);
