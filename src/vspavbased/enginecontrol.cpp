// SPDX-License-Identifier: LGPL-2.1-or-later
#include "vspavbased/enginecontrol.h"

#include "policy.h"
#include "process/enginepool.h"
#include "process/protections.h"

#include <algorithm>
#include <string>

namespace {

/// Keeps a text for the calling thread. Nothing that has to be destroyed with the thread: that
/// would keep this library loaded.
const char* kept(const std::string& text)
{
    thread_local char copy[1024];
    copy[text.copy(copy, sizeof(copy) - 1)] = '\0';
    return copy;
}

} // namespace

namespace AVBased {

void setEngineProcesses(unsigned count)
{
    engine::policy().processes = std::clamp(count, 1U, engine::mostProcesses);
}

bool startEngine()
{
    return engine::EnginePool::instance().start();
}

const char* engineFailure()
{
    return kept(engine::EnginePool::instance().failure());
}

void stopEngine()
{
    engine::EnginePool::instance().stop();
}

const char* engineProtections()
{
    const std::uint32_t protections = engine::EnginePool::instance().protections();
    return kept(protections == 0 ? std::string() : engine::protectionsInWords(protections));
}

} // namespace AVBased
