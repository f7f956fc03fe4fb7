// SPDX-License-Identifier: LGPL-2.1-or-later
#include "process/protections.h"

#include "enginelink/supervision.h"

namespace engine {

namespace {

struct NamedProtection
{
    wire::Protection protection;
    const char* name;
};

const NamedProtection namedProtections[] = {
    {wire::NoNewPrivileges, "no new privileges"},
    {wire::SystemCalls, "filtered system calls (seccomp)"},
    {wire::FileSystem, "no file system (Landlock)"},
    {wire::MemoryLimit, "a limit of memory"},
    {wire::DescriptorLimit, "a limit of open files"},
    {wire::NoCoreDumps, "no core dumps"},
    {wire::Untraceable, "no tracing"},
};

} // namespace

std::string protectionsInWords(std::uint32_t protections)
{
    std::string inForce;
    std::string refused;
    for (const NamedProtection& named : namedProtections) {
        std::string& list = protections & named.protection ? inForce : refused;
        list += (list.empty() ? "" : ", ") + std::string(named.name);
    }
    return inForce + (refused.empty() ? "" : "; refused by this system: " + refused);
}

} // namespace engine
