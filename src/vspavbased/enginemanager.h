// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The near half of the engine: what hosts load. It holds what was found as records, and has engine
// processes do the work, which are started by a program beside it:
//
//   accesschain       the way that callers take to it
//   EngineManager     opens items               Importer, DiscLoader   hold what they hold
//   FrameSource       reads frames              ImageConverter         makes pictures of them
//   timeline/         builds and writes timelines
//   EngineClient      asks the engine for all of them, and reads ahead
//   process/          EnginePool: the processes and their jobs; EngineProcess: one of them;
//                     EngineProgram, SupervisorLink: the programs that fork them
//   records/          the boundary's records out of messages
//   files/            ItemFiles: what a process may open, the one rule
//   refuse()          tells the host why an item cannot be opened
//   Policy            how many processes, and how long they may take
//
// The boundary's objects are used on one thread each; everything from EngineClient down is shared,
// behind the locks of EngineClient and EnginePool. Records never change once they are made.
#pragma once

#include "vspavbased/iavmanager.h"

namespace engine {

class EngineManager final : public AVBased::IAVManager
{
public:
    AVBased::IAVImporter* createNamedImporter(const char* name) override;
    AVBased::IAVImporter* createImporter(const char* utf8Path) override;
    void beginImport() override;
};

} // namespace engine
