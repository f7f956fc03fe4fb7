// SPDX-License-Identifier: GPL-2.0-or-later
#include "bluray/codings.h"

#include "media/streamdescription.h"

#include <algorithm>
#include <iterator>

namespace engine {

namespace {

using Attributes = Coding::Attributes;

constexpr int video = AVBased::StreamKindVideo;
constexpr int audio = AVBased::StreamKindAudio;
constexpr int subtitle = AVBased::StreamKindSubtitle;

const Coding codings[] = {
    {0x01, AV_CODEC_ID_MPEG1VIDEO, video, Attributes::picture},
    {0x02, AV_CODEC_ID_MPEG2VIDEO, video, Attributes::picture},
    {0x1B, AV_CODEC_ID_H264, video, Attributes::picture},
    {0x20, AV_CODEC_ID_H264, video, Attributes::picture}, // second view of a 3D film
    {0x24, AV_CODEC_ID_HEVC, video, Attributes::picture},
    {0xEA, AV_CODEC_ID_VC1, video, Attributes::picture},
    {0x03, AV_CODEC_ID_MP2, audio, Attributes::sound},
    {0x04, AV_CODEC_ID_MP2, audio, Attributes::sound},
    {0x80, AV_CODEC_ID_PCM_BLURAY, audio, Attributes::sound},
    {0x81, AV_CODEC_ID_AC3, audio, Attributes::sound},
    {0x82, AV_CODEC_ID_DTS, audio, Attributes::sound},
    {0x83, AV_CODEC_ID_TRUEHD, audio, Attributes::sound},
    {0x84, AV_CODEC_ID_EAC3, audio, Attributes::sound},
    {0x85, AV_CODEC_ID_DTS, audio, Attributes::sound},  // DTS-HD
    {0x86, AV_CODEC_ID_DTS, audio, Attributes::sound},  // DTS-HD, lossless
    {0xA1, AV_CODEC_ID_EAC3, audio, Attributes::sound}, // commentaries mixed in
    {0xA2, AV_CODEC_ID_DTS, audio, Attributes::sound},
    {0x90, AV_CODEC_ID_HDMV_PGS_SUBTITLE, subtitle, Attributes::graphics},
    {0x91, AV_CODEC_ID_NONE, 0, Attributes::graphics}, // menus
    {0x92, AV_CODEC_ID_HDMV_TEXT_SUBTITLE, subtitle, Attributes::text},
};

struct PictureSize
{
    int width;
    int height;
};

/// By the disc's code, as are the tables below.
const PictureSize pictureSizes[] = {{0, 0},       {720, 480},   {720, 576},
                                    {720, 480},   {1920, 1080}, {1280, 720},
                                    {1920, 1080}, {720, 576},   {3840, 2160}};
const Ratio frameRates[] = {{0, 0},        {24000, 1001}, {24, 1}, {25, 1},
                            {30000, 1001}, {0, 0},        {50, 1}, {60000, 1001}};
const Ratio aspects[] = {{0, 0}, {0, 0}, {4, 3}, {16, 9}};

template <typename T, std::size_t N>
T entryOf(const T (&table)[N], int code)
{
    return table[static_cast<std::size_t>(code) < N ? code : 0];
}

void describePicture(const ClipStream& stream, StreamFacts& facts)
{
    const PictureSize size = entryOf(pictureSizes, stream.format);
    facts.width = size.width;
    facts.height = size.height;
    facts.frameRate = entryOf(frameRates, stream.rate);
    facts.displayAspect = entryOf(aspects, stream.aspect);
}

/// Sound of more than two channels has any number of them: the disc does not say how many. Of codes
/// for a core with an extension the extension's rate counts.
void describeSound(const ClipStream& stream, StreamFacts& facts)
{
    switch (stream.format) {
    case 1:
        facts.channels = 1;
        facts.channelLayout = AV_CH_LAYOUT_MONO;
        break;
    case 3:
        facts.channels = 2;
        facts.channelLayout = AV_CH_LAYOUT_STEREO;
        break;
    }
    switch (stream.rate) {
    case 1:
        facts.sampleRate = 48000;
        break;
    case 4:
    case 14:
        facts.sampleRate = 96000;
        break;
    case 5:
    case 12:
        facts.sampleRate = 192000;
        break;
    }
}

} // namespace

const Coding& findCoding(int code)
{
    static const Coding unknown = {0, AV_CODEC_ID_NONE, 0, Attributes::none};
    const auto found = std::find_if(std::begin(codings), std::end(codings),
                                    [code](const Coding& coding) { return coding.code == code; });
    return found == std::end(codings) ? unknown : *found;
}

StreamFacts describeStream(const ClipStream& stream)
{
    const Coding& coding = findCoding(stream.coding);
    StreamFacts facts;
    facts.kind = coding.kind;
    facts.id = stream.pid;
    if (coding.codec != AV_CODEC_ID_NONE)
        facts.codec = avcodec_get_name(coding.codec);
    facts.language = stream.language;
    if (coding.kind == video) {
        facts.fourcc = fourccOf(coding.codec);
        describePicture(stream, facts);
    } else if (coding.kind == audio) {
        describeSound(stream, facts);
    }
    return facts;
}

} // namespace engine
