// SPDX-License-Identifier: GPL-2.0-or-later
//
// Media files. The libraries below are not looked into: this is about what they are asked, and
// about what is made of what they say.
#include "boundarywalk.h"
#include "engine.h"
#include "memoryfile.h"
#include "server/openmovie.h"
#include "takepicture.h"

#include <new>

using namespace engine;

namespace {

void import(const MemoryFile& file)
{
    const ImporterPtr importer(fullEngine().open(file.path()).importer);
    if (!importer)
        return;
    walk(*importer, file.path().c_str());
    const AVBased::AVMovieInfo& movie = *importer->movieInfo(0);
    for (std::uint32_t i = 0; i < movie.streamCount; ++i) {
        if (movie.streams[i].kind == AVBased::StreamKindVideo) {
            takePicture(*importer, movie.id, movie.streams[i].id, 200);
            break;
        }
    }
    importer->close();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static MemoryFile file("/input.media");
    file.clear();
    file.write(0, data, size);
    try {
        import(file);
    } catch (const std::bad_alloc&) {
        return 0; // an engine process ends then, and says so
    }
    return 0;
}
