// SPDX-License-Identifier: GPL-2.0-or-later
#include "server/sandbox.h"

#include "enginelink/supervision.h"

#include <linux/landlock.h>
#include <seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <memory>

namespace engine {

namespace {

/// The largest pictures that are decoded, with all that they refer to, take a good gigabyte.
constexpr rlim_t mostMemory = rlim_t{2048} * 1024 * 1024;

/// A disc image and a stream file in it, the files of a title set, and some to spare.
constexpr rlim_t mostDescriptors = 64;

/// What is left. Whatever is not here fails with EPERM.
const int allowedCalls[] = {
    // answering
    SCMP_SYS(read),
    SCMP_SYS(write),
    SCMP_SYS(recvmsg),
    SCMP_SYS(recvfrom),
    SCMP_SYS(sendmsg),
    SCMP_SYS(poll),
    SCMP_SYS(ppoll),
    SCMP_SYS(close),
    // files that came as descriptors
    SCMP_SYS(pread64),
    SCMP_SYS(lseek),
    // memory
    SCMP_SYS(brk),
    SCMP_SYS(munmap),
    SCMP_SYS(mremap),
    SCMP_SYS(madvise),
    SCMP_SYS(futex),
    // time and chance; the first two without the kernel's shared page
    SCMP_SYS(clock_gettime),
    SCMP_SYS(gettimeofday),
    SCMP_SYS(getrandom),
    SCMP_SYS(sched_yield),
    SCMP_SYS(sched_getaffinity),
    // the end
    SCMP_SYS(exit),
    SCMP_SYS(exit_group),
    SCMP_SYS(rt_sigreturn),
    SCMP_SYS(rt_sigprocmask),
    SCMP_SYS(rt_sigaction),
    SCMP_SYS(getpid),
    SCMP_SYS(gettid),
    SCMP_SYS(restart_syscall),
#ifdef VSPIMPORT_SANITIZED // which ask the kernel in this way whether memory is there, and tidy up
    SCMP_SYS(pipe),
    SCMP_SYS(pipe2),
    SCMP_SYS(sigaltstack),
#endif
};

struct FreeFilter
{
    void operator()(void* filter) const { seccomp_release(filter); }
};

/// A limit that is stricter already stays.
bool limitTo(__rlimit_resource resource, rlim_t most)
{
    rlimit limit = {most, most};
    if (getrlimit(resource, &limit) == 0)
        limit.rlim_cur = limit.rlim_max = std::min(limit.rlim_max, most);
    return setrlimit(resource, &limit) == 0;
}

/// Memory that is written to is never run, and who ends itself with abort() ends nobody else.
bool allowWithConditions(scmp_filter_ctx filter)
{
    const auto notExecutable = SCMP_A2(SCMP_CMP_MASKED_EQ, 4 /* PROT_EXEC */, 0);
    const auto ownProcess = SCMP_A0(SCMP_CMP_EQ, static_cast<scmp_datum_t>(getpid()));
    // Not what has the kernel send signals to others, nor what locks files.
    for (const int command : {F_DUPFD_CLOEXEC, F_GETFD, F_SETFD, F_GETFL}) {
        const auto isCommand = SCMP_A1(SCMP_CMP_EQ, static_cast<scmp_datum_t>(command));
        if (seccomp_rule_add(filter, SCMP_ACT_ALLOW, SCMP_SYS(fcntl), 1, isCommand) != 0)
            return false;
    }
    return seccomp_rule_add(filter, SCMP_ACT_ALLOW, SCMP_SYS(mmap), 1, notExecutable) == 0 &&
           seccomp_rule_add(filter, SCMP_ACT_ALLOW, SCMP_SYS(mprotect), 1, notExecutable) == 0 &&
           seccomp_rule_add(filter, SCMP_ACT_ALLOW, SCMP_SYS(tgkill), 1, ownProcess) == 0;
}

bool limitSystemCalls()
{
    const std::unique_ptr<void, FreeFilter> filter(seccomp_init(SCMP_ACT_ERRNO(EPERM)));
    if (!filter)
        return false;
    for (const int call : allowedCalls) {
        if (seccomp_rule_add(filter.get(), SCMP_ACT_ALLOW, call, 0) != 0)
            return false;
    }
    return allowWithConditions(filter.get()) && seccomp_load(filter.get()) == 0;
}

/// Every right that the running kernel has a rule for is taken away, and none is given back.
bool limitFileSystem()
{
#ifdef LANDLOCK_CREATE_RULESET_VERSION
    const long version =
        syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    if (version < 1)
        return false;
    constexpr std::uint64_t rightsOfVersion[] = {0x1FFF, 0x3FFF, 0x7FFF, 0x7FFF, 0xFFFF};
    constexpr long newest = sizeof(rightsOfVersion) / sizeof(*rightsOfVersion);
    const std::uint64_t rights = rightsOfVersion[(version < newest ? version : newest) - 1];
    const int rules =
        static_cast<int>(syscall(SYS_landlock_create_ruleset, &rights, sizeof(rights), 0));
    if (rules < 0)
        return false;
    const bool isLimited = syscall(SYS_landlock_restrict_self, rules, 0) == 0;
    close(rules);
    return isLimited;
#else
    return false;
#endif
}

} // namespace

std::uint32_t enterSandbox()
{
    using namespace wire;
    std::uint32_t inForce = 0;
    const auto note = [&inForce](Protection protection, bool isInForce) {
        if (isInForce)
            inForce |= protection;
    };
    note(NoCoreDumps, limitTo(RLIMIT_CORE, 0));
    note(DescriptorLimit, limitTo(RLIMIT_NOFILE, mostDescriptors));
#ifndef VSPIMPORT_SANITIZED // whose shadow memory is larger than any limit
    note(MemoryLimit, limitTo(RLIMIT_AS, mostMemory));
#endif
    note(Untraceable, prctl(PR_SET_DUMPABLE, 0) == 0);
    note(NoNewPrivileges, prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0);
    note(FileSystem, limitFileSystem());
    note(SystemCalls, limitSystemCalls());
    return inForce;
}

} // namespace engine
