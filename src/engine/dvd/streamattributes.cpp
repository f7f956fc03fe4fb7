// SPDX-License-Identifier: GPL-2.0-or-later
#include "dvd/streamattributes.h"

#include <algorithm>
#include <iterator>

namespace engine {

namespace {

// Offsets within the IFO file, and sizes; bytes.
constexpr std::size_t videoAttributes = 0x200;
constexpr std::size_t audioCount = 0x203;
constexpr std::size_t audioAttributes = 0x204;
constexpr std::size_t audioAttributesSize = 8;
constexpr std::size_t subpictureCount = 0x255;
constexpr std::size_t subpictureAttributes = 0x256;
constexpr std::size_t subpictureAttributesSize = 6;

constexpr int languageGiven = 1; ///< a track's type, when it has a language
constexpr int subpictureBaseId = 0x20;

struct AudioFormat
{
    int code; ///< the disc's
    const char* codec;
    int baseId; ///< the demuxer's number of the first track
};
const AudioFormat audioFormats[] = {
    {0, "ac3", 0x80},     {2, "mp2", 0x1C0},
    {3, "mp2", 0x1C0}, // with an extension for more channels
    {4, "pcm_dvd", 0xA0}, {6, "dts", 0x88},
    {7, "", 0x90}, // SDDS, which libav has no name for
};

/// By codeExtension.
const char* const contentKinds[] = {"", "normal", "impaired", "commentary", "commentary2"};

const AudioFormat* findAudioFormat(int code)
{
    const auto format = std::find_if(std::begin(audioFormats), std::end(audioFormats),
                                     [code](const AudioFormat& each) { return each.code == code; });
    return format == std::end(audioFormats) ? nullptr : format;
}

AudioTrack parseAudioTrack(const ByteView& attributes, const AudioFormat& format,
                           std::uint16_t control)
{
    AudioTrack track;
    track.codec = format.codec;
    track.streamId = format.baseId + (control >> 8 & 7);
    if ((attributes.u8(0) >> 2 & 3) == languageGiven)
        track.language = parseLanguage(attributes.u16(2));
    track.channels = (attributes.u8(1) & 7) + 1;
    track.sampleRate = (attributes.u8(1) >> 4 & 3) == 1 ? 96000 : 48000;
    track.codeExtension = attributes.u8(5);
    return track;
}

/// How many streams of a kind the set says it has, up to what it can have.
std::size_t streamCount(const ByteView& ifo, std::size_t offset, std::size_t most, const char* kind,
                        IfoFindings& findings)
{
    const std::size_t count = ifo.u8(offset);
    if (count > most)
        findings.add(std::string("more ") + kind + " streams than a disc can have");
    return std::min(count, most);
}

} // namespace

const char* AudioTrack::kind() const
{
    const auto index = static_cast<std::size_t>(codeExtension);
    return index < std::size(contentKinds) ? contentKinds[index] : "";
}

VideoAttributes parseVideoAttributes(const ByteView& ifo)
{
    const std::uint8_t coding = ifo.u8(videoAttributes);
    const int size = ifo.u8(videoAttributes + 1) >> 2 & 3;
    VideoAttributes video;
    video.isMpeg1 = coding >> 6 == 0;
    video.isNtsc = (coding >> 4 & 3) == 0;
    video.displayAspect = (coding >> 2 & 3) == 3 ? Ratio{16, 9} : Ratio{4, 3};
    const int widths[] = {720, 704, 352, 352};
    const int fullHeight = video.isNtsc ? 480 : 576;
    video.width = widths[size];
    video.height = size == 3 ? fullHeight / 2 : fullHeight;
    return video;
}

std::vector<AudioTrack> parseAudioTracks(const ByteView& ifo, const ProgramChain& chain,
                                         IfoFindings& findings)
{
    std::vector<AudioTrack> tracks;
    const std::size_t count = streamCount(ifo, audioCount, mostAudioStreams, "audio", findings);
    for (std::size_t i = 0; i < count; ++i) {
        const bool isInTitle = chain.audioControl[i] & 0x8000;
        if (!isInTitle)
            continue;
        const ByteView attributes = ifo.from(audioAttributes + i * audioAttributesSize);
        if (const AudioFormat* format = findAudioFormat(attributes.u8(0) >> 5))
            tracks.push_back(parseAudioTrack(attributes, *format, chain.audioControl[i]));
        else
            findings.add("an audio stream in an unknown format");
    }
    return tracks;
}

std::vector<SubpictureTrack> parseSubpictureTracks(const ByteView& ifo, const ProgramChain& chain,
                                                   bool isWide, IfoFindings& findings)
{
    std::vector<SubpictureTrack> tracks;
    const std::size_t count =
        streamCount(ifo, subpictureCount, mostSubpictureStreams, "subpicture", findings);
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t control = chain.subpictureControl[i];
        const bool isInTitle = control & 0x80000000;
        if (!isInTitle)
            continue;
        const ByteView attributes = ifo.from(subpictureAttributes + i * subpictureAttributesSize);
        SubpictureTrack track;
        track.streamId = subpictureBaseId + static_cast<int>(control >> (isWide ? 16 : 24) & 31);
        if ((attributes.u8(0) & 3) == languageGiven)
            track.language = parseLanguage(attributes.u16(2));
        tracks.push_back(track);
    }
    return tracks;
}

} // namespace engine
