// SPDX-License-Identifier: LGPL-2.1-or-later
#include "discloader.h"

#include "engineclient.h"

namespace engine {

bool DiscLoader::open(const char* utf8Path)
{
    if (m_record || !utf8Path)
        return false;
    m_record = EngineClient::instance().readDisc(utf8Path);
    return m_record != nullptr;
}

AVBased::IBDList* DiscLoader::titleList()
{
    return m_record ? BdList::forCaller(m_record->titleNames()) : nullptr;
}

AVBased::IBDList* DiscLoader::fileList()
{
    return m_record ? BdList::forCaller(m_record->fileNames()) : nullptr;
}

const AVBased::BDPlayInfo* DiscLoader::titleInfo(const char* title)
{
    return m_record ? m_record->title(title) : nullptr;
}

const AVBased::BDPlayInfo* DiscLoader::chapters(const char* title, std::uint32_t* count)
{
    const auto* chapters = m_record ? m_record->chapters(title) : nullptr;
    *count = chapters ? static_cast<std::uint32_t>(chapters->size()) : 0;
    return *count > 0 ? chapters->data() : nullptr;
}

const AVBased::AVMovieInfo* DiscLoader::fileMovieInfo(const char* file)
{
    return m_record ? m_record->file(file) : nullptr;
}

const AVBased::BDDiscInfo* DiscLoader::discInfo(std::uint32_t index)
{
    return m_record && index == 0 ? m_record->disc() : nullptr;
}

void DiscLoader::release()
{
    delete this;
}

} // namespace engine
