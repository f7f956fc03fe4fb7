// SPDX-License-Identifier: GPL-2.0-or-later
#include "bluray/bdloader.h"

#include "bluray/bluraydisc.h"
#include "enginelink/log.h"
#include "text.h"

namespace engine {

namespace {

/// Clips in the chapters of all titles together. A title of n clips that begins a chapter with each
/// has about n²/2; a disc of eighty such titles of a hundred clips is within bounds, and real ones
/// have a few such. The module needs some hundred bytes for each.
constexpr std::size_t mostChapterClips = 500000;

} // namespace

template <typename Record>
template <typename... Arguments>
void BdLoader::Directory<Record>::add(const std::string& name, Arguments&&... arguments)
{
    texts.push_back(name);
    names.push_back(texts.back().c_str());
    byName.emplace(name, &records.emplace_back(std::forward<Arguments>(arguments)...));
}

template <typename Record>
Record* BdLoader::Directory<Record>::find(const char* name)
{
    const auto found = name ? byName.find(name) : byName.end();
    return found == byName.end() ? nullptr : found->second;
}

BdLoader::BdLoader()
    : m_discInfo()
{}

bool BdLoader::open(const char* utf8Path)
{
    if (m_isOpen || !utf8Path)
        return false;
    const auto disc = readBlurayDisc(utf8Path);
    if (!disc)
        return false;
    makeRecords(*disc);
    m_isOpen = true;
    return true;
}

void BdLoader::makeRecords(const BlurayDisc& disc)
{
    m_discName = toLatin1(disc.name);
    m_discInfo.name = m_discName.c_str();
    m_discInfo.scrambled = disc.isProtected ? 1 : 0;
    for (const DiscStreamFile& file : disc.files)
        m_files.add(disc.streamFolder + file.name, file.movie);
    std::size_t clipBudget = mostChapterClips;
    for (const DiscTitle& title : disc.titles)
        m_titles.add(title.name, title, m_files.names, clipBudget);
}

AVBased::IBDList* BdLoader::titleList()
{
    return m_isOpen ? BdList::forCaller(m_titles.names) : nullptr;
}

AVBased::IBDList* BdLoader::fileList()
{
    return m_isOpen ? BdList::forCaller(m_files.names) : nullptr;
}

const AVBased::BDPlayInfo* BdLoader::titleInfo(const char* title)
{
    const TitleRecord* record = m_titles.find(title);
    return record ? record->title() : nullptr;
}

const AVBased::BDPlayInfo* BdLoader::chapters(const char* title, std::uint32_t* count)
{
    const TitleRecord* record = m_titles.find(title);
    *count = record ? static_cast<std::uint32_t>(record->chapters().size()) : 0;
    return *count > 0 ? record->chapters().data() : nullptr;
}

const AVBased::AVMovieInfo* BdLoader::fileMovieInfo(const char* file)
{
    const MovieRecord* record = m_files.find(file);
    return record ? record->get() : nullptr;
}

const AVBased::BDDiscInfo* BdLoader::discInfo(std::uint32_t index)
{
    return m_isOpen && index == 0 ? &m_discInfo : nullptr;
}

void BdLoader::release()
{
    delete this;
}

} // namespace engine
