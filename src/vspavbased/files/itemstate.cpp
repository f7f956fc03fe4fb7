// SPDX-License-Identifier: LGPL-2.1-or-later
#include "files/itemstate.h"

#include "enginelink/descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

namespace engine {

namespace {

AVBased::Refusal refusalOfError(int error)
{
    switch (error) {
    case EACCES:
    case EPERM:
        return AVBased::RefusedDenied;
    case ENOENT:
    case ENOTDIR:
        return AVBased::RefusedGone;
    case EIO:
    case ENXIO:
    case ESTALE:
    case ENODEV:
        return AVBased::RefusedUnreadable;
    default:
        return AVBased::RefusedOther;
    }
}

} // namespace

/// Only files and folders are opened: opening anything else might do something.
AVBased::Refusal stateOfItem(const std::string& path)
{
    const std::string bare = path.substr(0, path.find_last_not_of('/') + 1);
    struct stat status;
    if (stat(bare.c_str(), &status) != 0)
        return refusalOfError(errno);
    if (!S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode))
        return AVBased::RefusedNoFile;
    const wire::Descriptor item(open(bare.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!item)
        return refusalOfError(errno);
    return S_ISREG(status.st_mode) && status.st_size == 0 ? AVBased::RefusedEmpty
                                                          : AVBased::RefusedOther;
}

} // namespace engine
