// SPDX-License-Identifier: LGPL-2.1-or-later
#include "files/beneath.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/vfs.h>

#include <algorithm>
#include <cerrno>

namespace engine {

namespace {

/// One part of the path after the other, none of which may be a link or lead upwards.
wire::Descriptor walkBeneath(const wire::Descriptor& folder, const std::string& path, int flags)
{
    wire::Descriptor held;
    int from = folder.get();
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        const std::string part = path.substr(begin, end - begin);
        const bool isLast = end == path.size();
        if (part == "..") {
            errno = EXDEV;
            return {};
        }
        if (!part.empty()) {
            const int partFlags = isLast ? flags : O_PATH | O_DIRECTORY;
            held.reset(openat(from, part.c_str(), partFlags | O_NOFOLLOW | O_CLOEXEC));
            if (!held)
                return {};
            from = held.get();
        }
        begin = end + 1;
    }
    return held;
}

} // namespace

wire::Descriptor openFolder(const std::string& path)
{
    return wire::Descriptor(open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

wire::Descriptor openBeneath(const wire::Descriptor& folder, const std::string& path, int flags)
{
    open_how how{};
    how.flags = static_cast<unsigned>(flags) | O_CLOEXEC;
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS;
    const long found = syscall(SYS_openat2, folder.get(), path.c_str(), &how, sizeof(how));
    if (found >= 0 || (errno != ENOSYS && errno != EPERM))
        return wire::Descriptor(static_cast<int>(found));
    return walkBeneath(folder, path, flags);
}

wire::Descriptor onlyRegular(wire::Descriptor file)
{
    struct stat status;
    struct statfs system;
    if (!file || (fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode) &&
                  fstatfs(file.get(), &system) == 0 && system.f_type != PROC_SUPER_MAGIC &&
                  system.f_type != SYSFS_MAGIC))
        return file;
    errno = EINVAL;
    return {};
}

} // namespace engine
