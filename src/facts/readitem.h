// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "item.h"

namespace Vesk {
class CImportTask;
}

namespace facts {

/// Part of the names of its pictures: where it is another, no name is the same. As readItem().
QString pictureName(Vesk::CImportTask* task);

/// What `task` says. On the thread of its import while that runs, or on the host's once it is over.
Item readItem(Vesk::CImportTask* task);

} // namespace facts
