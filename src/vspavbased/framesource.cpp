// SPDX-License-Identifier: LGPL-2.1-or-later
#include "framesource.h"

#include "engineclient.h"
#include "policy.h"

namespace engine {

FrameSource* FrameSource::open(const ItemRecordPtr& record, std::int32_t movie, std::int32_t stream)
{
    return EngineClient::instance().open(record, movie, stream)
               ? new FrameSource(record, movie, stream)
               : nullptr;
}

void FrameSource::seek(std::int32_t positionMs)
{
    m_seekMs = positionMs;
    m_reads = 0;
    m_batch.reset();
}

bool FrameSource::readFrame(std::int64_t* positionMs, AVBased::IAVFrame** frame,
                            std::int32_t* flags, std::int32_t /*mode*/)
{
    *positionMs = -1;
    *frame = nullptr;
    *flags = 0;
    if (!fetch())
        return false;
    const wire::Read& read = m_batch->reads()[m_reads - m_batch->wish().firstRead];
    ++m_reads;
    *positionMs = read.position_ms();
    if (read.has_frame()) {
        m_frame = {};
        m_frame.source = this;
        m_frame.read = m_reads;
        *frame = &m_frame;
    }
    return read.delivered();
}

/// Makes sure that the next read has been asked for.
bool FrameSource::fetch()
{
    const auto hasNext = [this] {
        return m_batch && m_reads - m_batch->wish().firstRead < m_batch->reads().size();
    };
    if (hasNext())
        return true;
    FrameWish wish = wishFrom(m_reads, m_reads == 0 ? policy().readsOfPicture : 1);
    const auto size = EngineClient::instance().pictureSize();
    wish.width = size.first;
    wish.height = size.second;
    m_batch = EngineClient::instance().frames(m_record, wish);
    return hasNext();
}

std::vector<std::uint32_t> FrameSource::picture(std::uint32_t width, std::uint32_t height)
{
    const bool isLastOfBatch =
        m_batch && m_batch->wish().firstRead + m_batch->reads().size() == m_reads;
    if (isLastOfBatch && m_batch->wish().width == width && m_batch->wish().height == height)
        return m_batch->pixels();
    FrameWish wish = wishFrom(m_reads, 0);
    wish.width = width;
    wish.height = height;
    const auto job = EngineClient::instance().frames(m_record, wish);
    return job ? std::move(job->pixels()) : std::vector<std::uint32_t>();
}

FrameWish FrameSource::wishFrom(std::uint32_t firstRead, std::uint32_t reads) const
{
    FrameWish wish;
    wish.movie = m_movie;
    wish.stream = m_stream;
    wish.seekMs = m_seekMs;
    wish.firstRead = firstRead;
    wish.reads = reads;
    return wish;
}

void FrameSource::release()
{
    delete this;
}

} // namespace engine
