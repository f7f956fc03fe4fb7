// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/formats.h"

#include "libav.h"
#include "text.h"

#include <algorithm>
#include <iterator>

namespace engine {

namespace {

const char* const refused[] = {
    // They lead to other files, or to the network.
    "avisynth", "concat", "concatf", "dash", "hls", "imf", "mlv", "rtp", "rtsp", "sap", "sdp",
    "vapoursynth", "webm_dash_manifest",
    // Still images; the piped ones are recognized by their ending.
    "image2", "image2pipe", "alias_pix", "brender_pix", "fits", "ico", "mpjpeg",
    // Text that is shown, and metadata without media.
    "bin", "adf", "idf", "xbin", "tty", "ffmetadata", "sbg",
    // Subtitles alone; "vobsub" opens a second file besides.
    "aqtitle", "ass", "dvbsub", "dvbtxt", "jacosub", "lrc", "microdvd", "mpl2", "mpsub", "pjs",
    "realtext", "sami", "scc", "srt", "stl", "subviewer", "subviewer1", "sup", "tedcaptions",
    "vobsub", "vplayer", "webvtt", "mcc",
    // Samples without a header: any file would do.
    "rawvideo", "data", "bitpacked", "v210", "v210x"};

bool isMediaFormat(const std::string& name)
{
    return !endsWith(name, "_pipe") &&
           std::find(std::begin(refused), std::end(refused), name) == std::end(refused);
}

std::string listNames()
{
    std::string names;
    void* position = nullptr;
    while (const AVInputFormat* format = av_demuxer_iterate(&position)) {
        if (!isMediaFormat(format->name))
            continue;
        if (!names.empty())
            names += ',';
        names += format->name;
    }
    return names;
}

} // namespace

const std::string& mediaFormatNames()
{
    static const std::string names = listNames();
    return names;
}

} // namespace engine
