// SPDX-License-Identifier: GPL-2.0-or-later
//
// Timeline files. What is written of one that was read is the same again.
#include "boundarywalk.h"
#include "engine.h"
#include "enginelink/timeline/timelinetext.h"
#include "memoryfile.h"
#include "server/openmovie.h"
#include "takepicture.h"

#include <cstdlib>
#include <sstream>

using namespace engine;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static MemoryFile file("/input.seix");
    std::istringstream text(std::string(data, data + size));
    Timeline timeline;
    if (parseTimeline(text, timeline) == 0) {
        const std::string written = timelineText(timeline);
        std::istringstream again(written);
        Timeline same;
        if (parseTimeline(again, same) != 0 || timelineText(same) != written)
            std::abort();
    }
    file.clear();
    file.write(0, data, size);
    if (const ImporterPtr importer{fullEngine().openTimeline(file.path())}) {
        walk(*importer, file.path().c_str());
        takePicture(*importer, 0, 0, 1000);
    }
    return 0;
}
