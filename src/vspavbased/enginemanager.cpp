// SPDX-License-Identifier: LGPL-2.1-or-later
#include "enginemanager.h"

#include "engineclient.h"
#include "enginelink/ascii.h"
#include "enginelink/log.h"
#include "enginelink/timeline/timelinetext.h"
#include "importer.h"
#include "refusals.h"
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
    WrittenTimelines& timelines = WrittenTimelines::ofThisProcess();
    const Item item = {path, timelines.find(path)};
    if (!item.timeline && endsWith(path, timelineSuffix)) {
        log(path + ": a timeline that this process has not written");
        refuse(path, AVBased::RefusedOther, true);
        return nullptr;
    }
    if (const ItemRecordPtr record = EngineClient::instance().describe(item))
        return new Importer(record);
    if (item.timeline)
        timelines.remove(path);
    return nullptr;
}

void EngineManager::beginImport()
{
    EngineClient::instance().beginImport();
}

} // namespace engine
