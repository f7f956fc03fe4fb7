// SPDX-License-Identifier: LGPL-2.1-or-later
#include "engineclient.h"

#include "process/enginepool.h"

namespace engine {

EngineClient& EngineClient::instance()
{
    static EngineClient client;
    return client;
}

void EngineClient::beginImport()
{
    EnginePool::instance().beginImport();
}

ItemRecordPtr EngineClient::describe(const Item& item)
{
    const auto job = std::make_shared<DescribeJob>(item);
    return EnginePool::instance().run(job) ? job->record() : nullptr;
}

DiscRecordPtr EngineClient::readDisc(const std::string& path)
{
    const auto job = std::make_shared<ReadDiscJob>(Item{path, nullptr});
    return EnginePool::instance().run(job) ? job->record() : nullptr;
}

std::shared_ptr<FramesJob> EngineClient::frames(const ItemRecordPtr& record,
                                                const FrameWish& wish)
{
    auto job = std::make_shared<FramesJob>(record, wish);
    return EnginePool::instance().run(job) ? job : nullptr;
}

void EngineClient::setPictureSize(std::uint32_t width, std::uint32_t height)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_pictureSize = {width, height};
}

std::pair<std::uint32_t, std::uint32_t> EngineClient::pictureSize() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_pictureSize;
}

} // namespace engine
