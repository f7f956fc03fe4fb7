// SPDX-License-Identifier: GPL-2.0-or-later
#include "engine.h"

#include "dvd/dvdimporter.h"
#include "enginelink/log.h"
#include "media/mediaimporter.h"
#include "opening.h"
#include "timeline/timelineimporter.h"

namespace engine {

namespace {

/// Asked in this order: the first that knows the path decides.
using Opener = Opening (*)(const std::string& path);
const Opener openers[] = {
    DvdImporter::open,
    MediaImporter::open,
};

} // namespace

AVBased::IAVImporter* openItem(const std::string& path)
{
    for (const Opener open : openers) {
        const Opening opening = open(path);
        if (opening.answer != Opening::Answer::notMine)
            return opening.importer;
    }
    log("nothing that can be imported: " + path);
    return nullptr;
}

AVBased::IAVImporter* openTimeline(const std::string& path)
{
    return TimelineImporter::open(path).importer;
}

} // namespace engine
