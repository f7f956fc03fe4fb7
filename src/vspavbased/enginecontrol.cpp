// SPDX-License-Identifier: LGPL-2.1-or-later
#include "vspavbased/enginecontrol.h"

#include "process/enginepool.h"

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
    return "";
}

} // namespace AVBased
