// SPDX-License-Identifier: LGPL-2.1-or-later
#include "importer.h"

#include "engineclient.h"
#include "framesource.h"
#include "timeline/writtentimelines.h"

#include <cstring>

namespace engine {

const AVBased::AVImporterDescriptor* Importer::descriptor()
{
    return m_record->descriptor();
}

void* Importer::queryExtension(const char* name)
{
    if (!name)
        return nullptr;
    if (std::strcmp(name, "IDVDInfo") == 0 && m_record->isDvd())
        return static_cast<AVBased::IDVDInfo*>(this);
    if (std::strcmp(name, "IMovieInfoExt") == 0 && m_record->told().facts())
        return static_cast<AVBased::IMovieInfoExt*>(this);
    return nullptr;
}

std::uint32_t Importer::movieCount()
{
    return m_record->movieCount();
}

const AVBased::AVMovieInfo* Importer::movieInfo(std::uint32_t index)
{
    return m_record->movie(index);
}

AVBased::IAVSource* Importer::openSource(std::int32_t movieId, std::int32_t videoStreamId,
                                         std::int32_t /*audioStreamId*/)
{
    return FrameSource::open(m_record, movieId, videoStreamId);
}

/// What the engine has open of the item, for the next picture.
void Importer::close()
{
    EngineClient::instance().close(*m_record);
}

void Importer::release()
{
    EngineClient::instance().forget(*m_record);
    if (m_record->item().timeline)
        WrittenTimelines::ofThisProcess().remove(m_record->item().path);
    delete this;
}

std::uint32_t Importer::titleSetCount()
{
    return m_record->titleSetCount();
}

const AVBased::DVDTitleSetInfo* Importer::titleSet(std::uint32_t index)
{
    return m_record->titleSet(index);
}

bool Importer::isDiscScrambled(const char* utf8Path)
{
    const std::string path = utf8Path ? utf8Path : "";
    if (path == m_record->item().path)
        return m_record->told().dvd()->is_scrambled();
    const ItemRecordPtr other = EngineClient::instance().describe({path, nullptr});
    return other && other->isDvd() && other->told().dvd()->is_scrambled();
}

bool Importer::isMainTitle(std::int32_t movieId)
{
    const wire::Movie* movie = m_record->movieWithId(movieId);
    return movie && movie->is_main();
}

const char* Importer::value(const char* key)
{
    for (const wire::Tag* fact : *m_record->told().facts()) {
        if (key && std::strcmp(fact->key()->c_str(), key) == 0)
            return fact->value()->c_str();
    }
    return nullptr;
}

} // namespace engine
