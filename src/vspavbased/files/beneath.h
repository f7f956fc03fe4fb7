// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "enginelink/descriptor.h"

#include <string>

namespace engine {

/// A folder to open files beneath; it is held, not read. None, with the reason in errno, when there
/// is none. Links are followed.
wire::Descriptor openFolder(const std::string& path);

/// What lies at the relative path `path` below `folder`, with flags as for open(). Links are
/// followed as long as they stay below it; on kernels that cannot tell, none is. None, with the
/// reason in errno, otherwise.
wire::Descriptor openBeneath(const wire::Descriptor& folder, const std::string& path, int flags);

/// `file` if it is a regular file, and not one in which the kernel tells of processes; else none,
/// with EINVAL in errno.
wire::Descriptor onlyRegular(wire::Descriptor file);

} // namespace engine
