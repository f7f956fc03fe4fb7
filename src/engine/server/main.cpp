// SPDX-License-Identifier: GPL-2.0-or-later
//
// vspimport-engine, before it has loaded anything. Libav brings hundreds of libraries, and most of
// the time that they take is spent on looking up symbols in all of them: a library that comes with
// these looks its own up behind hundreds of others. So those with the most symbols come first, each
// alone with what it needs itself. That saves a third of the time; which of them there are, or
// whether libav needs them, makes no other difference.
#include <dlfcn.h>
#include <unistd.h>

#include <cstdio>
#include <string>

namespace {

const char* const largeLibraries[] = {"libssl.so.3", "libsrt-gnutls.so.1.5", "librsvg-2.so.2",
                                      "libopenmpt.so.0", "libzvbi.so.0"};

const int unusable = 2;

/// The library beside this program.
std::string engineLibrary()
{
    char path[4096];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof(path));
    const std::string program(path, length > 0 ? std::size_t(length) : 0);
    return program.substr(0, program.rfind('/') + 1) + "libvspengine.so";
}

} // namespace

int main(int argc, char** argv)
{
    for (const char* library : largeLibraries)
        dlopen(library, RTLD_LAZY | RTLD_LOCAL);
    void* engine = dlopen(engineLibrary().c_str(), RTLD_LAZY | RTLD_LOCAL);
    void* program = engine ? dlsym(engine, "vspimportEngine") : nullptr;
    if (!program) {
        std::fprintf(stderr, "%s\n", dlerror());
        return unusable;
    }
    return reinterpret_cast<int (*)(int, char**)>(program)(argc, argv);
}
