// SPDX-License-Identifier: GPL-2.0-or-later
//
// The far half of the engine, a program that libvspavbased starts:
//
//   Supervisor       forks engine processes off itself and tells how they end
//   enterSandbox()   what such a process gives up before it is asked anything
//   Server           answers requests: what an item holds, what a movie shows
//   RequestedFiles   has the near half open files; nothing is opened here
//   itemwriter       the engine's records as messages
//   OpenMovie        the movie that is being read, and how far; Canvas: where its pictures go
//
// One thread a process. An engine process owns nothing that it could not make again: it may end at
// any time, and costs what it was doing.
#include "enginelink/supervision.h"
#include "libavlog.h"
#include "server/sandbox.h"
#include "server/server.h"
#include "server/supervisor.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>

namespace {

enum ExitStatus
{
    Done = 0,
    Unusable = 2,
    NoMemory = wire::EndedForMemory
};

bool isSocket(int descriptor)
{
    struct stat status;
    return fstat(descriptor, &status) == 0 && S_ISSOCK(status.st_mode);
}

/// Whatever the starter left open beside the socket is not for us.
void closeOthers()
{
    syscall(SYS_close_range, wire::supervisorSocket + 1, ~0U, 0);
}

/// Never through exit(): what was set up before the fork is the supervisor's to end.
[[noreturn]] void serve(wire::Descriptor socket)
{
    wire::Channel channel(std::move(socket), wire::Channel::Descriptors::taken);
    const std::uint32_t protections = engine::enterSandbox();
    int status = Done;
    try {
        flatbuffers::FlatBufferBuilder builder;
        channel.send(builder, wire::CreateConfined(builder, protections), wire::noDeadline);
        engine::Server(channel).run();
    } catch (const std::exception&) {
        status = NoMemory;
    }
    _exit(status);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2 || !isSocket(wire::supervisorSocket)) {
        std::fputs("vspimport-engine is started by libvspavbased\n", stderr);
        return Unusable;
    }
    closeOthers();
    setsid(); // what a terminal sends is for the starter
    engine::joinLibavLog();
    engine::Supervisor supervisor(wire::Descriptor(wire::supervisorSocket), std::atoi(argv[1]));
    if (wire::Descriptor socket = supervisor.run())
        serve(std::move(socket));
    return Done;
}
