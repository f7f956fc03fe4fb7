// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "item.h"

namespace Vesk {
class CImportTask;
}

namespace facts {

/// What `task` says. On the thread of its import while that runs, or on the host's once it is over.
Item readItem(Vesk::CImportTask* task);

} // namespace facts
