// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "item.h"

#include <QtCore/QJsonObject>

namespace facts {

/// The item as JSON: names are those of the module's properties, enumerators are written by name,
/// raw values of 64 bits as decimal texts.
QJsonObject toJson(const Item& item);

} // namespace facts
