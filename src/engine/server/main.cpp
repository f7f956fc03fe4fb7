// SPDX-License-Identifier: GPL-2.0-or-later
#include "engine.h"
#include "server/program.h"

int main(int argc, char** argv)
{
    return engine::runProgram(argc, argv, engine::fullEngine());
}
