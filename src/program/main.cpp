// SPDX-License-Identifier: GPL-2.0-or-later
//
// The command-line host of the import plug-in:
//
//   main                 starts the engine, which takes longest, and loads the rest
//   program, options     the command line
//   plugin               loads the plug-in, and then what needs its classes:
//   importcommand        sets the context, opens the outputs, runs the import, writes the results
//   importrun            imports all at once or in parts; collects an ImportResult
//   jsonoutput, htmlpage, summary
//                        show what was found; importprogress shows how far it is
//   reportcommand        shows a saved error report, without the plug-in
//
// Everything here runs on the main thread but the log's receivers.
#include "vspavbased/enginecontrol.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <langinfo.h>
#include <pwd.h>
#include <string>
#include <unistd.h>

namespace {

const int unusable = 2;

/// Qt decodes file names by the locale. In a bare environment that would be ASCII, and most names
/// could not be opened.
void ensureUtf8FileNames()
{
    std::setlocale(LC_CTYPE, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0)
        setenv("LC_ALL", "C.UTF-8", 1);
}

/// A standard stream that is closed would become the first file that is opened, and get our output.
void ensureStandardStreams()
{
    int file = 0;
    while (file >= 0 && file <= STDERR_FILENO)
        file = open("/dev/null", O_RDWR | O_CLOEXEC);
    if (file >= 0)
        close(file);
}

/// Services run without one, and the cache lies in it.
void ensureHome()
{
    const passwd* user = std::getenv("HOME") ? nullptr : getpwuid(getuid());
    if (user)
        setenv("HOME", user->pw_dir, 1);
}

/// Whether the command line is likely to ask for an import; starting the engine for nothing costs
/// little.
bool mayImport(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        for (const char* word : {"-h", "--help", "--version", "report"}) {
            if (std::strcmp(argv[i], word) == 0)
                return false;
        }
    }
    return argc > 1;
}

/// The library with the rest of the program, found from where this lies.
std::string programLibrary()
{
    char path[4096];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof(path));
    const std::string program(path, length > 0 ? std::size_t(length) : 0);
    return program.substr(0, program.rfind('/') + 1) + VSPIMPORT_PARTS "/libvspimport_program.so";
}

} // namespace

int main(int argc, char** argv)
{
    ensureStandardStreams();
    ensureUtf8FileNames();
    ensureHome();
    if (mayImport(argc, argv))
        AVBased::startEngine(); // the import says when it cannot be
    void* library = dlopen(programLibrary().c_str(), RTLD_NOW);
    void* program = library ? dlsym(library, "vspimportMain") : nullptr;
    if (!program) {
        std::fprintf(stderr, "vspimport: a part of the program cannot be loaded: %s\n", dlerror());
        return unusable;
    }
    return reinterpret_cast<int (*)(int, char**)>(program)(argc, argv);
}
