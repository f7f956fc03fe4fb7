// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "libav.h"
#include "moviefacts.h"
#include "picture/orientation.h"

#include <vector>

namespace engine {

/// What an idle importer keeps of a video stream, so that it can be decoded again without another
/// look through the file.
struct VideoTrack
{
    int streamIndex = -1;
    int demuxerId = 0; ///< the container's own number of the stream
    CodecParametersPtr parameters;
    AVRational pixelAspect{1, 1};
    Orientation orientation;
};

/// Shape of a pixel, width to height; square when neither the file nor the frame says it.
AVRational pixelAspectOf(AVFormatContext& context, AVStream& stream, AVFrame* frame = nullptr);

/// All streams, the name and the tags of an open file, as libav knows them after findStreamInfo().
/// May read on in the file.
MovieFacts describeMovie(AVFormatContext& context);

/// The streams that can be decoded to pictures: attached pictures are none.
std::vector<VideoTrack> videoTracks(AVFormatContext& context);

bool isMovingPicture(const AVStream& stream);

/// Whether the file's own numbers of its streams, AVStream::id, are the PIDs of a transport stream.
bool isTransportStream(const AVFormatContext& context);

/// The container's code for a stream where it is a text, else the one that is usual for the codec;
/// four blanks when there is none.
std::string fourccOf(AVCodecID codec, std::uint32_t containerTag = 0);

/// A copy that the caller owns; null when memory runs out.
CodecParametersPtr copyParameters(const AVCodecParameters& parameters);

} // namespace engine
