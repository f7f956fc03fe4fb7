// SPDX-License-Identifier: LGPL-2.1-or-later
#include "policy.h"

#include "ofprocess.h"

#include <dlfcn.h>
#include <sched.h>

#include <algorithm>

namespace engine {

namespace {

/// The processors that this process may run on.
unsigned cores()
{
    cpu_set_t set;
    const int count = sched_getaffinity(0, sizeof(set), &set) == 0 ? CPU_COUNT(&set) : 1;
    return static_cast<unsigned>(std::clamp(count, 1, static_cast<int>(mostProcesses)));
}

/// They lie at a fixed place beside this library, wherever both have been put.
std::string folderOfPrograms()
{
    Dl_info library;
    if (dladdr(reinterpret_cast<const void*>(&folderOfPrograms), &library) == 0 ||
        !library.dli_fname)
        return {};
    const std::string path = library.dli_fname;
    const std::size_t end = path.rfind('/');
    return (end == std::string::npos ? std::string(".") : path.substr(0, end)) +
           "/" VSPAVBASED_PROGRAMS "/";
}

} // namespace

Policy::Policy()
    : program(folderOfPrograms() + "vspimport-engine")
    , tablesProgram(folderOfPrograms() + "vspimport-tables")
    , processes(cores())
{}

void Policy::end()
{
    std::string().swap(program);
    std::string().swap(tablesProgram);
}

Policy& policy()
{
    static OfProcess<Policy> instance;
    return instance.get();
}

} // namespace engine
