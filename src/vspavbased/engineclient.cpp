// SPDX-License-Identifier: LGPL-2.1-or-later
#include "engineclient.h"

#include "files/itemstate.h"
#include "ofprocess.h"
#include "policy.h"
#include "process/enginepool.h"
#include "refusals.h"

#include <algorithm>

namespace engine {

namespace {

/// Of pictures that wait to be asked for.
constexpr std::size_t mostPictureBytes = std::size_t{32} * 1024 * 1024;

/// What the file system says of the item is worth more than what the engine makes of that.
void tellRefusal(const Job& job, bool isInLog)
{
    const std::string& path = job.item().path;
    if (const auto refusal = job.refusal())
        refuse(path, std::max(*refusal, stateOfItem(path)), isInLog);
}

} // namespace

EngineClient& EngineClient::instance()
{
    static OfProcess<EngineClient> client;
    return client.get();
}

void EngineClient::beginImport()
{
    EnginePool::instance().beginImport();
    end();
}

void EngineClient::end()
{
    const Lock lock(m_mutex);
    m_folders = FolderOrder();
    m_pictures = PictureOrder();
    m_descriptions.clear();
    m_frames.clear();
    m_distance = SIZE_MAX;
}

ItemRecordPtr EngineClient::describe(const Item& item)
{
    EnginePool& pool = EnginePool::instance();
    DescribeJobPtr job = takeDescription(item);
    bool isAnswered = pool.run(job);
    if (isAnswered && job->isForEngine()) {
        job = std::make_shared<DescribeJob>(item, DescribeJob::By::engine);
        isAnswered = pool.run(job);
    }
    if (!isAnswered || !job->record()) {
        tellRefusal(*job, !isAnswered);
        return nullptr;
    }
    if (job->record()->isProtected())
        refuse(item.path, AVBased::RefusedProtected, false);
    const Lock lock(m_mutex);
    m_pictures.add(job->record());
    return job->record();
}

/// One that is under way, or a new one; and the next ones are set out.
EngineClient::DescribeJobPtr EngineClient::takeDescription(const Item& item)
{
    if (item.timeline)
        return std::make_shared<DescribeJob>(item);
    const Lock lock(m_mutex);
    const auto ahead = findDescription(item.path);
    DescribeJobPtr job;
    if (ahead != m_descriptions.end()) {
        job = *ahead;
        m_descriptions.erase(ahead);
    }
    describeAheadFrom(item.path);
    return job ? job : std::make_shared<DescribeJob>(item);
}

std::list<EngineClient::DescribeJobPtr>::iterator
EngineClient::findDescription(const std::string& path)
{
    return std::find_if(m_descriptions.begin(), m_descriptions.end(),
                        [&path](const auto& job) { return job->item().path == path; });
}

/// What comes before `path` in its folder has been passed over.
void EngineClient::describeAheadFrom(const std::string& path)
{
    EnginePool& pool = EnginePool::instance();
    const std::size_t most = pool.mostAhead();
    const std::vector<std::string> next = m_folders.following(path, most);
    m_descriptions.remove_if([&](const DescribeJobPtr& job) {
        const bool isPassed = !m_folders.isAhead(job->item().path);
        if (isPassed)
            pool.drop(job);
        return isPassed;
    });
    for (const std::string& follower : next) {
        if (m_descriptions.size() >= most)
            break;
        if (findDescription(follower) != m_descriptions.end())
            continue;
        m_descriptions.push_back(std::make_shared<DescribeJob>(Item{follower, nullptr}));
        pool.runAhead(m_descriptions.back());
    }
}

DiscRecordPtr EngineClient::readDisc(const std::string& path)
{
    const auto job = std::make_shared<ReadDiscJob>(Item{path, nullptr});
    const bool isAnswered = EnginePool::instance().run(job);
    if (!isAnswered || !job->record()) {
        // Of an image without one the log says nothing: it may well be that of a DVD.
        tellRefusal(*job, !isAnswered || job->refusal() == AVBased::RefusedNoDisc);
        return nullptr;
    }
    const Lock lock(m_mutex);
    m_pictures.add(job->record());
    return job->record();
}

void EngineClient::close(const ItemRecord& item)
{
    EnginePool::instance().letGo(item.item().path);
}

void EngineClient::forget(const ItemRecord& item)
{
    {
        const Lock lock(m_mutex);
        dropFrames(item);
        m_pictures.remove(item);
    }
    close(item);
}

/// What is ahead of an item and was never asked for was there already: then so may be what follows.
void EngineClient::dropFrames(const ItemRecord& item)
{
    for (auto job = m_frames.begin(); job != m_frames.end();) {
        if (&(*job)->record() != &item) {
            ++job;
            continue;
        }
        EnginePool::instance().drop(*job);
        job = m_frames.erase(job);
        m_distance = 0;
    }
}

/// Of a media file, whoever opens it wants its picture. Of a disc there may be no picture missing.
bool EngineClient::open(const ItemRecordPtr& item, std::int32_t movie, std::int32_t stream)
{
    FramesJobPtr job;
    {
        const Lock lock(m_mutex);
        const auto ahead = std::find_if(m_frames.begin(), m_frames.end(), [&](const auto& job) {
            return &job->record() == item.get() && job->wish().movie == movie &&
                   job->wish().stream == stream;
        });
        if (ahead != m_frames.end())
            job = *ahead;
        const bool isMedia = !item->isDvd() && !item->item().timeline;
        const auto planned = isMedia ? m_pictures.firstOf(*item, movie, stream) : std::nullopt;
        if (!job && planned && m_pictureSize.first > 0) {
            job = std::make_shared<FramesJob>(item, wishFor(*planned));
            m_frames.push_back(job);
            readAheadFrom(*item, job->wish());
        }
    }
    if (!job) {
        FrameWish wish;
        wish.movie = movie;
        wish.stream = stream;
        job = std::make_shared<FramesJob>(item, wish);
    }
    return EnginePool::instance().run(job) && job->isOpened();
}

std::shared_ptr<FramesJob> EngineClient::frames(const ItemRecordPtr& item, const FrameWish& wish)
{
    const FramesJobPtr job = takeFrames(item, wish);
    return EnginePool::instance().run(job) ? job : nullptr;
}

EngineClient::FramesJobPtr EngineClient::takeFrames(const ItemRecordPtr& item,
                                                    const FrameWish& wish)
{
    const Lock lock(m_mutex);
    const auto ahead = std::find_if(m_frames.begin(), m_frames.end(), [&](const auto& job) {
        return &job->record() == item.get() && job->wish() == wish;
    });
    if (ahead == m_frames.end()) {
        readAheadFrom(*item, wish);
        return std::make_shared<FramesJob>(item, wish);
    }
    FramesJobPtr job = *ahead;
    m_frames.erase(ahead);
    m_distance = m_distance > SIZE_MAX / 2 ? SIZE_MAX : m_distance * 2 + 1;
    readAheadFrom(*item, wish);
    return job;
}

FrameWish EngineClient::wishFor(const PlannedPicture& planned) const
{
    FrameWish wish;
    wish.movie = planned.movie;
    wish.stream = planned.stream;
    wish.seekMs = planned.seekMs;
    wish.reads = policy().readsOfPicture;
    wish.width = m_pictureSize.first;
    wish.height = m_pictureSize.second;
    return wish;
}

/// Sets out the pictures that follow the one wished for.
void EngineClient::readAheadFrom(const ItemRecord& item, const FrameWish& wish)
{
    EnginePool& pool = EnginePool::instance();
    const std::size_t pictureSize = std::size_t{wish.width} * wish.height * 4;
    const std::size_t most =
        std::min({pool.mostAhead(), m_distance, 1 + mostPictureBytes / (pictureSize + 1)});
    if (m_distance == 0)
        m_distance = 1;
    if (!wish.seekMs || wish.width == 0 ||
        !m_pictures.goTo(item, wish.movie, wish.stream, *wish.seekMs))
        return;
    while (m_frames.size() < most) {
        const auto next = m_pictures.next();
        if (!next)
            break;
        m_frames.push_back(std::make_shared<FramesJob>(next->item, wishFor(next->planned)));
        pool.runAhead(m_frames.back());
    }
}

void EngineClient::setPictureSize(std::uint32_t width, std::uint32_t height)
{
    const Lock lock(m_mutex);
    m_pictureSize = {width, height};
}

std::pair<std::uint32_t, std::uint32_t> EngineClient::pictureSize() const
{
    const Lock lock(m_mutex);
    return m_pictureSize;
}

} // namespace engine
