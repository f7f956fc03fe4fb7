// SPDX-License-Identifier: GPL-2.0-or-later
#include "enginemanager.h"

#include "dvd/dvdimporter.h"
#include "log.h"
#include "media/mediaimporter.h"
#include "opening.h"
#include "timeline/timelineeditor.h"
#include "timeline/timelineimporter.h"

#include <cstring>

namespace engine {

namespace {

/// Asked in this order: the first that knows the path decides.
using Opener = Opening (*)(const std::string& path);
const Opener openers[] = {
    TimelineImporter::open,
    DvdImporter::open,
    MediaImporter::open,
};

} // namespace

AVBased::IAVImporter* EngineManager::createNamedImporter(const char* name)
{
    if (name && std::strcmp(name, "SimpleEditImporter") == 0)
        return new TimelineEditor;
    return nullptr;
}

AVBased::IAVImporter* EngineManager::createImporter(const char* utf8Path)
{
    const std::string path = utf8Path ? utf8Path : "";
    for (const Opener open : openers) {
        const Opening opening = open(path);
        if (opening.answer != Opening::Answer::notMine)
            return opening.importer;
    }
    log("nothing that can be imported: " + path);
    return nullptr;
}

/// Importers share nothing, so there is nothing to prepare.
void EngineManager::beginImport() {}

} // namespace engine
