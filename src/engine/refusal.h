// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "vspavbased/enginecontrol.h"

namespace engine {

/// Why the item at hand cannot be opened: noted wherever that is found out, on the way to nothing.
/// Of several reasons the one that tells more is kept. One a thread.
void noteRefusal(AVBased::Refusal refusal);

/// Notes what an error of the file system (a number of errno) says, if it is one that keeps what is
/// there from being read.
void noteFileError(int error);

/// What has been noted since it was last asked for.
AVBased::Refusal takeRefusal();

} // namespace engine
