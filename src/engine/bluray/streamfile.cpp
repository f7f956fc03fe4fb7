// SPDX-License-Identifier: GPL-2.0-or-later
#include "bluray/streamfile.h"

#include "bluray/codings.h"
#include "bluray/navigationfile.h"
#include "media/streamdescription.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace engine {

namespace {

/// The module adds up durations in whole milliseconds, cut off, to places on a timeline, and discs
/// can have a hundred files of a single picture. So a duration is a number of whole milliseconds,
/// never shorter than the file, and one that is still the same number after its multiplication.
double wholeDuration(std::int64_t ticks)
{
    const std::int64_t whole = (ticks * 1000 + blurayTicksPerSecond - 1) / blurayTicksPerSecond;
    const auto milliseconds = static_cast<double>(whole);
    const double seconds = milliseconds / 1000.0;
    return seconds * 1000.0 < milliseconds ? std::nextafter(seconds, seconds + 1.0) : seconds;
}

void setDuration(MovieFacts& movie, std::int64_t ticks)
{
    for (StreamFacts& stream : movie.streams)
        stream.duration = wholeDuration(ticks);
}

/// Streams by their PID instead of libav's index; of two that share one, as sound with a core does,
/// the first. The code is the codec's: that of the container is the same for all.
std::vector<StreamFacts> byPid(std::vector<StreamFacts> streams, const AVFormatContext& context)
{
    std::vector<StreamFacts> kept;
    for (StreamFacts& stream : streams) {
        const AVStream& source = *context.streams[stream.id];
        stream.id = source.id;
        if (stream.kind == AVBased::StreamKindVideo)
            stream.fourcc = fourccOf(source.codecpar->codec_id);
        const bool isKnown = std::any_of(kept.begin(), kept.end(), [&](const StreamFacts& other) {
            return other.id == stream.id;
        });
        if (!isKnown)
            kept.push_back(std::move(stream));
    }
    return kept;
}

/// Encrypted files have their packets' first bytes in the clear only once in so many.
bool isEncrypted(const DiscFiles& files, const std::string& path)
{
    constexpr std::size_t packetsOfUnit = 32;
    constexpr std::uint8_t syncByte = 0x47;
    const ByteSourcePtr file = files.openFile(path);
    Bytes unit(packetsOfUnit * streamPacketSize);
    unit.resize(file ? file->read(0, unit.data(), unit.size()) : 0);
    for (std::size_t at = streamPacketHeader; at < unit.size(); at += streamPacketSize) {
        if (unit[at] != syncByte)
            return true;
    }
    return false;
}

/// The file with its streams; null when it is missing, encrypted or none.
std::unique_ptr<Demuxer> demuxStream(const DiscFiles& files, const std::string& path,
                                     std::int64_t mostBytes)
{
    auto demuxer = isEncrypted(files, path) ? nullptr : openStreamFile(files, path);
    if (!demuxer || !isTransportStream(*demuxer->context()))
        return nullptr;
    demuxer->context()->probesize = mostBytes;
    return demuxer->findStreamInfo() ? std::move(demuxer) : nullptr;
}

bool lacksSound(const StreamFacts& stream)
{
    return stream.kind == AVBased::StreamKindAudio &&
           (stream.channels == 0 || stream.sampleRate == 0);
}

/// The first time stamp of the pictures, to which playlists refer, else of anything.
std::int64_t startTicks(const AVFormatContext& context)
{
    for (unsigned i = 0; i < context.nb_streams; ++i) {
        const AVStream& stream = *context.streams[i];
        if (isMovingPicture(stream) && stream.start_time != AV_NOPTS_VALUE)
            return av_rescale_q(stream.start_time, stream.time_base, blurayTickBase);
    }
    return context.start_time == AV_NOPTS_VALUE
               ? 0
               : av_rescale_q(context.start_time, AV_TIME_BASE_Q, blurayTickBase);
}

} // namespace

std::unique_ptr<Demuxer> openStreamFile(const DiscFiles& files, const std::string& path)
{
    ByteSourcePtr file = files.openFile(path);
    return file ? Demuxer::openBytes(std::move(file), files.nameOf(path)) : nullptr;
}

std::optional<ClipInformation> findClipInformation(const DiscFiles& files, const std::string& path)
{
    const std::filesystem::path stream(path);
    const std::string root = stream.parent_path().parent_path().string();
    const std::string name = "CLIPINF/" + stream.stem().string();
    for (const char* suffix : {".clpi", ".CPI", ".cpi", ".CLPI"}) {
        if (auto clip = parseNavigationFile(files, root, name + suffix, parseClipInformation))
            return clip;
    }
    return std::nullopt;
}

StreamFileDescription describeByClipInformation(const ClipInformation& clip)
{
    StreamFileDescription description;
    description.sequences = clip.sequences;
    description.movie.format = "mpegts";
    for (const ClipStream& stream : clip.streams)
        description.movie.streams.push_back(describeStream(stream));
    setDuration(description.movie, clip.duration());
    return description;
}

std::optional<StreamFileDescription> describeByStream(const DiscFiles& files,
                                                      const std::string& path)
{
    constexpr std::int64_t enoughForAll = 5000000;
    const auto demuxer = demuxStream(files, path, enoughForAll);
    if (!demuxer)
        return std::nullopt;
    AVFormatContext& context = *demuxer->context();
    const std::int64_t start = startTicks(context);
    const std::int64_t length =
        av_rescale(std::max<std::int64_t>(context.duration, 0), blurayTicksPerSecond, AV_TIME_BASE);
    if (context.nb_streams == 0 || start < 0 || length == 0 || start + length > UINT32_MAX)
        return std::nullopt;

    StreamFileDescription description;
    description.movie = describeMovie(context);
    description.movie.streams = byPid(std::move(description.movie.streams), context);
    description.sequences = {
        {0, static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(start + length)}};
    setDuration(description.movie, length);
    return description;
}

bool lacksSound(const MovieFacts& movie)
{
    return std::any_of(movie.streams.begin(), movie.streams.end(),
                       [](const StreamFacts& stream) { return lacksSound(stream); });
}

void completeSound(const DiscFiles& files, const std::string& path, MovieFacts& movie)
{
    constexpr std::int64_t enoughForSound = 2500000;
    const auto demuxer = demuxStream(files, path, enoughForSound);
    if (!demuxer)
        return;
    AVFormatContext& context = *demuxer->context();
    const std::vector<StreamFacts> found = byPid(describeMovie(context).streams, context);
    for (StreamFacts& stream : movie.streams) {
        const auto same = std::find_if(found.begin(), found.end(), [&](const StreamFacts& other) {
            return other.id == stream.id && other.channels > 0;
        });
        if (!lacksSound(stream) || same == found.end())
            continue;
        stream.channels = same->channels;
        stream.channelLayout = same->channelLayout;
        stream.sampleRate = same->sampleRate;
    }
}

StreamFileDescription describeByTimes(std::uint32_t start, std::uint32_t end)
{
    StreamFileDescription description;
    description.sequences = {{0, start, end}};
    description.movie.format = "mpegts";
    description.movie.streams.resize(1);
    setDuration(description.movie, std::int64_t{end} - start);
    return description;
}

} // namespace engine
