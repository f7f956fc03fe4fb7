// SPDX-License-Identifier: GPL-2.0-or-later
#include "server/program.h"

#include "enginelink/supervision.h"
#include "server/sandbox.h"
#include "server/server.h"
#include "server/supervisor.h"

#include <fcntl.h>
#include <malloc.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>

namespace engine {

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

/// Each file needs about what the last one did. Memory that went back to the system in between
/// would have to be cleared again, page by page.
void keepMemory()
{
    mallopt(M_MMAP_THRESHOLD, 32 * 1024 * 1024);
    mallopt(M_TRIM_THRESHOLD, 64 * 1024 * 1024);
}

/// Never through exit(): what was set up before the fork is the supervisor's to end.
[[noreturn]] void serve(wire::Descriptor socket, Engine& engine)
{
    wire::Channel channel(std::move(socket), wire::Channel::Descriptors::taken);
    keepMemory();
    const std::uint32_t protections = enterSandbox();
    int status = Done;
    try {
        flatbuffers::FlatBufferBuilder builder;
        channel.send(builder, wire::CreateConfined(builder, protections), wire::noDeadline);
        Server(channel, engine).run();
    } catch (const std::exception&) {
        status = NoMemory;
    }
    _exit(status);
}

} // namespace

int runProgram(int argc, char** argv, Engine& engine)
{
    if (argc < 2 || !isSocket(wire::supervisorSocket)) {
        std::fputs("this program is started by libvspavbased\n", stderr);
        return Unusable;
    }
    closeOthers();
    setsid(); // what a terminal sends is for the starter
    Supervisor supervisor(wire::Descriptor(wire::supervisorSocket), std::atoi(argv[1]));
    if (wire::Descriptor socket = supervisor.run())
        serve(std::move(socket), engine);
    return Done;
}

} // namespace engine
