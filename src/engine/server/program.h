// SPDX-License-Identifier: GPL-2.0-or-later
//
// The far half of the engine: programs that libvspavbased starts.
//
//   main               vspimport-engine, which loads the rest: enginemodule, with libav
//   tablesmain         vspimport-tables, which does without
//   Supervisor         forks engine processes off itself and tells how they end
//   enterSandbox()     what such a process gives up before it is asked anything
//   Server             answers requests: what an item holds, what a movie shows
//   RequestedFiles     has the near half open files; nothing is opened here
//   itemwriter         the engine's records as messages
//   OpenMovie          the movie that is being read, and how far; Canvas: where its pictures go
//
// One thread a process. An engine process owns nothing that it could not make again: it may end at
// any time, and costs what it was doing.
#pragma once

namespace engine {

class Engine;

/// The program: a supervisor until its starter ends it, and in the processes that it forks a server
/// of `engine`. The exit status.
int runProgram(int argc, char** argv, Engine& engine);

} // namespace engine
