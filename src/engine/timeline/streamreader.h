// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bluray/clipinformation.h"
#include "media/framereader.h"
#include "picture/frame.h"
#include "picturebudget.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace engine {

/// Reads one stream file, or another media file, from exact positions. Positions are ticks of
/// 1/45000 s from the start of the file, as playlists count them.
///
/// Stream files of a disc come with a map of the places where decoding can begin; with it a seek
/// reads one group of pictures. Without it, or where it is wrong, libav searches by time stamps,
/// which in these files takes several attempts.
class StreamReader
{
public:
    /// Opens the file, or the file inside an image, at `path`. Null, with the reason in the log,
    /// when it or its video stream is missing or cannot be decoded. `videoStream` is the stream's
    /// PID in a stream file, libav's index elsewhere. `budget` limits what is done here and later,
    /// and lives longer.
    static std::unique_ptr<StreamReader> open(const std::string& path, std::int32_t videoStream,
                                              const PictureBudget& budget);

    /// Makes the frame that is shown at `position` the next one. False when there is none, or it
    /// cannot be found within the time for one picture.
    bool seek(std::int64_t position);

    /// The next frame in the order of showing; null at the end.
    FramePtr next();

    /// A frame with what the file says of how it is shown.
    AVBased::IAVFrame shownAs(FramePtr frame) const;

    /// Where a frame is shown; nothing when the file does not say.
    std::optional<std::int64_t> positionOf(const AVFrame& frame) const;

    /// Whether the last seek has taken so long that it was given up.
    bool tookTooLong() const { return m_reader->demuxer().gaveUp(); }

private:
    /// A place where decoding can begin.
    struct Entry
    {
        std::int64_t position; ///< at most a few milliseconds before its picture's
        std::int64_t byte;     ///< of its first packet, behind the packet's extra header
    };

    enum class Search
    {
        found,
        missing, ///< the file ends before
        failed   ///< what the map says is not so
    };

    StreamReader(std::unique_ptr<FrameReader> reader, const Orientation& orientation,
                 ClipInformation clip, const PictureBudget& budget);

    Search searchFromEntries(std::int64_t position);
    bool searchByTimeStamps(std::int64_t position);
    std::size_t entryBefore(std::int64_t position) const;
    bool moveToByte(std::int64_t byte);
    bool moveToTimeStamp(std::int64_t position);
    std::optional<std::int64_t> readUpTo(std::int64_t position);
    bool isBehind(const AVFrame& frame, std::int64_t position) const;
    bool isShownAt(const AVFrame& frame, std::int64_t position) const;
    std::size_t sequenceAtByte(std::int64_t byte) const;

    std::unique_ptr<FrameReader> m_reader;
    Orientation m_orientation;
    ClipInformation m_clip;
    const PictureBudget& m_budget;
    std::vector<Entry> m_entries;
    std::deque<FramePtr> m_ready; ///< frames that a seek has read already
};

} // namespace engine
