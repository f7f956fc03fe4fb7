// SPDX-License-Identifier: LGPL-2.1-or-later
#include "timeline/timelineeditor.h"

#include "enginelink/log.h"
#include "timeline/writtentimelines.h"

#include <charconv>
#include <cstring>
#include <filesystem>

namespace engine {

namespace {

/// The number behind `key` in a URL's query; `fallback` when there is none.
std::int32_t queryNumber(const std::string& query, const std::string& key, std::int32_t fallback)
{
    const std::size_t at = query.find(key + "=");
    std::int32_t number = fallback;
    if (at != std::string::npos)
        std::from_chars(query.data() + at + key.size() + 1, query.data() + query.size(), number);
    return number;
}

/// The path may hold anything, so the last thing that looks like a query is the query.
TimelineItem parseUrl(const std::string& url)
{
    const std::size_t at = url.rfind("?movieid=");
    const std::string query = at == std::string::npos ? "" : url.substr(at);
    std::error_code error;
    TimelineItem item;
    item.path = std::filesystem::absolute(url.substr(0, at), error).string();
    item.movie = queryNumber(query, "?movieid", 0);
    item.videoStream = queryNumber(query, "&vstreamid", TimelineItem::noStream);
    item.audioStream = queryNumber(query, "&astreamid", TimelineItem::noStream);
    item.subtitleStream = queryNumber(query, "&subtitleid", TimelineItem::noStream);
    return item;
}

} // namespace

const AVBased::AVImporterDescriptor* TimelineEditor::descriptor()
{
    static const AVBased::AVImporterDescriptor descriptor = {"timeline", "Timeline editor"};
    return &descriptor;
}

void* TimelineEditor::queryExtension(const char* name)
{
    if (std::strcmp(name, "ISimpleEditTimeLine") == 0)
        return static_cast<AVBased::ISimpleEditTimeLine*>(this);
    return nullptr;
}

std::uint32_t TimelineEditor::movieCount()
{
    return 0;
}

const AVBased::AVMovieInfo* TimelineEditor::movieInfo(std::uint32_t /*index*/)
{
    return nullptr;
}

AVBased::IAVSource* TimelineEditor::openSource(std::int32_t /*movieId*/,
                                               std::int32_t /*videoStreamId*/,
                                               std::int32_t /*audioStreamId*/)
{
    return nullptr;
}

void TimelineEditor::close() {}

void TimelineEditor::release()
{
    delete this;
}

void TimelineEditor::saveToFile(const char* utf8Path)
{
    WrittenTimelines::ofThisProcess().write(utf8Path ? utf8Path : "", m_timeline);
}

void TimelineEditor::insertSource(std::int32_t position, const AVBased::SourceRecord* source)
{
    std::vector<TimelineItem>& items = m_timeline.items;
    if (!source || !source->url || items.size() >= Timeline::mostItems) {
        log("a source that cannot be put on a timeline");
        return;
    }
    TimelineItem item = parseUrl(source->url);
    item.inMs = std::max(source->inPointMs, 0);
    item.outMs = std::max(source->outPointMs, 0);
    const bool isInside = position >= 0 && static_cast<std::size_t>(position) < items.size();
    m_inserted = isInside ? static_cast<std::size_t>(position) : items.size();
    items.insert(items.begin() + static_cast<std::ptrdiff_t>(m_inserted), std::move(item));
}

/// The format's duration is not needed: how much of a source is played is in the source itself.
std::int32_t TimelineEditor::applyFormat(const AVBased::FormatRecord* format)
{
    if (format && m_inserted < m_timeline.items.size()) {
        TimelineItem& item = m_timeline.items[m_inserted];
        item.width = format->width;
        item.height = format->height;
        item.frameRate = unpackFrameRate(format->frameRate);
        item.displayAspect = unpackAspect(format->aspectRatio);
        item.sampleRate = format->sampleRate;
        item.channels = format->channels;
    }
    return static_cast<std::int32_t>(m_timeline.items.size());
}

void TimelineEditor::reset()
{
    m_timeline.items.clear();
    m_inserted = 0;
}

/// Nothing that can be done to a timeline depends on the current source.
void TimelineEditor::selectItem(std::int32_t /*index*/) {}

} // namespace engine
