// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/demuxer.h"

#include "bytes/plainfile.h"
#include "enginelink/log.h"
#include "media/formats.h"
#include "media/pixellimit.h"
#include "refusal.h"

#include <cerrno>
#include <new>

namespace engine {

namespace {

/// A multiple of the units in which discs are read: 2048 bytes of a DVD, 6144 of a Blu-ray disc.
constexpr int ioBufferSize = 6 * 6144;

constexpr std::int64_t megabyte = std::int64_t{1024} * 1024;

/// What one piece of work may read. Only files that hold nothing make a demuxer look so far, which
/// may keep all of it.
constexpr std::int64_t mostBytes = 512 * megabyte;

/// What opening may read: of files of tens of thousands of fragments it is one buffer each.
constexpr std::int64_t mostBytesToOpen = 2048 * megabyte;

/// What may be read to find streams in a format that is hardly more than a guess.
constexpr std::int64_t mostBytesOfGuess = 16 * megabyte;

void logFailure(const std::string& name, const Demuxer& demuxer, int error)
{
    log(name + ": " + (demuxer.gaveUp() ? "given up, it took too long" : errorText(error)));
}

} // namespace

Demuxer::Demuxer()
    : m_deadline(describeLimit)
    , m_mostBytesRead(mostBytesToOpen)
    , m_context(avformat_alloc_context())
{
    if (!m_context)
        return;
    m_context->interrupt_callback = {interrupt, this};
    m_context->protocol_whitelist = av_strdup("");
    m_context->format_whitelist = av_strdup(mediaFormatNames().c_str());
}

Demuxer::~Demuxer() = default;

std::unique_ptr<Demuxer> Demuxer::openFile(const std::string& path, const AVInputFormat* format)
{
    errno = 0;
    auto file = PlainFile::open(path);
    if (file)
        return openBytes(std::move(file), path, format);
    if (errno != 0)
        log(path + ": " + errorText(AVERROR(errno)));
    return nullptr;
}

std::unique_ptr<Demuxer> Demuxer::openBytes(ByteSourcePtr bytes, const std::string& name,
                                            const AVInputFormat* format)
{
    std::unique_ptr<Demuxer> demuxer(new Demuxer);
    const int result =
        demuxer->attachBytes(std::move(bytes)) ? demuxer->open(name, format) : AVERROR(ENOMEM);
    if (result >= 0)
        return demuxer;
    logFailure(name, *demuxer, result);
    noteRefusal(demuxer->refusal());
    return nullptr;
}

/// libav frees the context itself when opening it fails.
int Demuxer::open(const std::string& url, const AVInputFormat* format)
{
    if (!m_context || !m_context->protocol_whitelist || !m_context->format_whitelist)
        return AVERROR(ENOMEM);
    AVFormatContext* context = m_context.get();
    const int result = avformat_open_input(&context, url.c_str(), format, nullptr);
    if (result < 0)
        static_cast<void>(m_context.release());
    return result;
}

bool Demuxer::attachBytes(ByteSourcePtr bytes)
{
    m_bytes.emplace(std::move(bytes));
    auto* buffer = static_cast<std::uint8_t*>(av_malloc(ioBufferSize));
    if (!buffer || !m_context) {
        av_free(buffer);
        return false;
    }
    m_io.reset(avio_alloc_context(buffer, ioBufferSize, 0, this, readBytes, nullptr, seekBytes));
    if (!m_io) {
        av_free(buffer);
        return false;
    }
    m_context->pb = m_io.get();
    return true;
}

bool Demuxer::findStreamInfo()
{
    allowBytes(m_context->probe_score > AVPROBE_SCORE_RETRY ? mostBytes : mostBytesOfGuess);
    ProbeLimits limits(*m_context);
    // It reports no error when it was interrupted.
    const bool isFound =
        avformat_find_stream_info(m_context.get(), limits.options()) >= 0 && !m_deadline.givenUp();
    limits.restoreSizes(*m_context);
    return isFound;
}

AVBased::Refusal Demuxer::refusal() const
{
    if (gaveUp())
        return AVBased::RefusedTooLong;
    if (!m_isKnown)
        return AVBased::RefusedUnknown;
    if (m_context)
        return AVBased::RefusedNoStreams;
    return m_hasEnded ? AVBased::RefusedCutOff : AVBased::RefusedDamaged;
}

void Demuxer::allow(std::chrono::milliseconds limit)
{
    m_deadline.restart(limit);
    allowBytes(mostBytes);
}

bool Demuxer::isExhausted()
{
    if (bytesRead() > m_mostBytesRead)
        m_deadline.giveUp();
    return m_deadline.expired();
}

std::int64_t Demuxer::bytesRead() const
{
    return m_context && m_context->pb ? m_context->pb->bytes_read : 0;
}

void Demuxer::allowBytes(std::int64_t most)
{
    m_mostBytesRead = bytesRead() + most;
}

int Demuxer::interrupt(void* demuxer)
{
    return static_cast<Demuxer*>(demuxer)->isExhausted() ? 1 : 0;
}

/// Called by libav, which no exception may pass through.
int Demuxer::readBytes(void* demuxer, std::uint8_t* buffer, int size)
{
    try {
        return static_cast<Demuxer*>(demuxer)->read(buffer, size);
    } catch (const std::bad_alloc&) {
        return AVERROR(ENOMEM);
    }
}

/// libav does not ask its interrupt callback about reads through a context of ours.
int Demuxer::read(std::uint8_t* buffer, int size)
{
    if (isExhausted())
        return AVERROR_EXIT;
    m_isKnown = m_context->iformat && m_context->probe_score > AVPROBE_SCORE_RETRY;
    m_hasEnded = m_isKnown && m_position >= m_bytes->file().size();
    const std::size_t count =
        m_bytes->read(m_position, buffer, static_cast<std::size_t>(size), m_context->iformat);
    if (count == 0)
        return m_position < m_bytes->file().size() ? AVERROR(EIO) : AVERROR_EOF;
    m_position += count;
    return static_cast<int>(count);
}

std::int64_t Demuxer::seekBytes(void* demuxer, std::int64_t offset, int whence)
{
    auto* self = static_cast<Demuxer*>(demuxer);
    const auto size = static_cast<std::int64_t>(self->m_bytes->file().size());
    std::int64_t base = 0;
    switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE:
        return size;
    case SEEK_SET:
        break;
    case SEEK_CUR:
        base = static_cast<std::int64_t>(self->m_position);
        break;
    case SEEK_END:
        base = size;
        break;
    default:
        return AVERROR(EINVAL);
    }
    if (offset < -base || offset > size - base)
        return AVERROR(EIO);
    self->m_position = static_cast<std::uint64_t>(base + offset);
    return base + offset;
}

void Demuxer::FreeIo::operator()(AVIOContext* io) const
{
    av_freep(&io->buffer); // libav may have put another one in its place
    avio_context_free(&io);
}

} // namespace engine
