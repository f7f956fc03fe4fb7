// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/bytesource.h"
#include "deadline.h"
#include "libav.h"
#include "media/claimguard.h"
#include "vspavbased/enginecontrol.h"

#include <memory>
#include <optional>
#include <string>

namespace engine {

/// An open libav demuxer that always comes back: every read looks at a deadline and at how much has
/// been read. Restricted to media formats that do not lead to other files, and without any protocol
/// by which it could open one.
class Demuxer
{
public:
    /// Opens the regular file at `path`. `format` saves the search for one that is known. Null,
    /// with the reason in the log, when it cannot be opened.
    static std::unique_ptr<Demuxer> openFile(const std::string& path,
                                             const AVInputFormat* format = nullptr);

    /// Opens `bytes` as `format`, or as whatever they are when null. They are called `name` in the
    /// log; where that is the name of a file, its ending helps to find the format.
    static std::unique_ptr<Demuxer> openBytes(ByteSourcePtr bytes, const std::string& name,
                                              const AVInputFormat* format = nullptr);

    ~Demuxer();

    /// Reads until libav knows the streams, or the deadline passes. False when nothing came of it.
    bool findStreamInfo();

    /// Begins a new piece of work, which may take `limit` and read as much as any may.
    void allow(std::chrono::milliseconds limit);
    /// Whether the piece of work at hand has used up what it may.
    bool isExhausted();
    /// Whether isExhausted() has answered true.
    bool gaveUp() const { return m_deadline.givenUp(); }

    /// Why nothing came of it, if nothing has.
    AVBased::Refusal refusal() const;

    AVFormatContext* context() const { return m_context.get(); }

    Demuxer(const Demuxer&) = delete;
    Demuxer& operator=(const Demuxer&) = delete;

private:
    Demuxer();

    int open(const std::string& url, const AVInputFormat* format);
    std::int64_t bytesRead() const;
    void allowBytes(std::int64_t most);
    bool attachBytes(ByteSourcePtr bytes);
    static int interrupt(void* demuxer);
    int read(std::uint8_t* buffer, int size);
    static int readBytes(void* demuxer, std::uint8_t* buffer, int size);
    static std::int64_t seekBytes(void* demuxer, std::int64_t offset, int whence);

    struct FreeIo
    {
        void operator()(AVIOContext* io) const;
    };

    // Closing the context may still read and ask the deadline, so it goes first.
    Deadline m_deadline;
    std::int64_t m_mostBytesRead; ///< by this piece of work and those before
    std::optional<ClaimGuard> m_bytes;
    std::uint64_t m_position = 0; ///< of the next read from m_bytes
    bool m_isKnown = false;       ///< libav was sure of the format
    bool m_hasEnded = false;      ///< and looked for more of it behind the end
    std::unique_ptr<AVIOContext, FreeIo> m_io;
    FormatContextPtr m_context;
};

} // namespace engine
