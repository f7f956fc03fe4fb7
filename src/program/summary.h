// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "importresult.h"

#include <QtCore/QStringList>

/// What an import of `sources` found, for a person: a line an item with its facts, sorted by path,
/// or where `mayGroup` and these are many, a line a folder; then what could not be imported and
/// why, sums, and where the pictures are (`pictureFolder`, empty without any).
QString summaryOf(const ImportResult& result, const QStringList& sources,
                  const QString& pictureFolder, bool mayGroup);
