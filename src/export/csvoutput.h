// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "facts/item.h"

#include <QtCore/QIODevice>

#include <memory>
#include <vector>

/// Writes items as comma-separated values for spreadsheets: UTF-8, a line of names and then one an
/// item (of a disc, its main title). What is unknown is empty. No cell is taken for a formula.
/// False when `device` does not take it.
bool writeCsv(QIODevice& device, const std::vector<std::shared_ptr<const facts::Item>>& items);
