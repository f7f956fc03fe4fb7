// SPDX-License-Identifier: LGPL-2.1-or-later
#include "enginemanager.h"

#include "engineclient.h"
#include "importer.h"
#include "timeline/timelineeditor.h"
#include "timeline/writtentimelines.h"

#include <cstring>

namespace engine {

AVBased::IAVImporter* EngineManager::createNamedImporter(const char* name)
{
    if (name && std::strcmp(name, "SimpleEditImporter") == 0)
        return new TimelineEditor;
    return nullptr;
}

AVBased::IAVImporter* EngineManager::createImporter(const char* utf8Path)
{
    const std::string path = utf8Path ? utf8Path : "";
    const Item item = {path, writtenTimeline(path)};
    if (const ItemRecordPtr record = EngineClient::instance().describe(item))
        return new Importer(record);
    if (item.timeline)
        removeWrittenTimeline(path);
    return nullptr;
}

void EngineManager::beginImport()
{
    EngineClient::instance().beginImport();
}

} // namespace engine
