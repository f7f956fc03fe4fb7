// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QJsonObject>

namespace Vesk {
class CImportTask;
}

/// What a host can see of a task, as JSON: fields are called like the properties of the classes,
/// enumerators by name, and 64-bit values are decimal strings.
QJsonObject taskToJson(Vesk::CImportTask* task);
