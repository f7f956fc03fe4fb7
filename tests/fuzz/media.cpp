// SPDX-License-Identifier: GPL-2.0-or-later
//
// Media files. The libraries below are not looked into: this is about what they are asked, and
// about what is made of what they say.
#include "boundarywalk.h"
#include "engine.h"
#include "memoryfile.h"
#include "server/openmovie.h"
#include "takepicture.h"

using namespace engine;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static MemoryFile file("/input.media");
    file.clear();
    file.write(0, data, size);
    const ImporterPtr importer(openItem(file.path()));
    if (!importer)
        return 0;
    walk(*importer, file.path().c_str());
    const AVBased::AVMovieInfo& movie = *importer->movieInfo(0);
    for (std::uint32_t i = 0; i < movie.streamCount; ++i) {
        if (movie.streams[i].kind == AVBased::StreamKindVideo) {
            takePicture(*importer, movie.id, movie.streams[i].id, 200);
            break;
        }
    }
    importer->close();
    return 0;
}
