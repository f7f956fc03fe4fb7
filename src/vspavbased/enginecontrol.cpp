// SPDX-License-Identifier: LGPL-2.1-or-later
#include "vspavbased/enginecontrol.h"

#include "process/enginepool.h"
#include "process/protections.h"

namespace AVBased {

bool startEngine()
{
    return engine::EnginePool::instance().start();
}

const char* engineFailure()
{
    thread_local std::string failure;
    failure = engine::EnginePool::instance().failure();
    return failure.c_str();
}

void stopEngine()
{
    engine::EnginePool::instance().stop();
}

const char* engineProtections()
{
    thread_local std::string words;
    const std::uint32_t protections = engine::EnginePool::instance().protections();
    words = protections == 0 ? std::string() : engine::protectionsInWords(protections);
    return words.c_str();
}

} // namespace AVBased
