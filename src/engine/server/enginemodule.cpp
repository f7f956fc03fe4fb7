// SPDX-License-Identifier: GPL-2.0-or-later
#include "engine.h"
#include "server/program.h"

/// What vspimport-engine does once it has loaded this.
extern "C" __attribute__((visibility("default"))) int vspimportEngine(int argc, char** argv)
{
    return engine::runProgram(argc, argv, engine::fullEngine());
}
