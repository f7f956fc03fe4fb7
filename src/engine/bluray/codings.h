// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bluray/clipinformation.h"
#include "libav.h"
#include "moviefacts.h"

namespace engine {

/// What a disc's code for a coding means.
struct Coding
{
    /// Which attributes follow the code in the disc's tables.
    enum class Attributes
    {
        none,
        picture,
        sound,
        graphics,
        text
    };

    int code;
    AVCodecID codec;
    int kind; ///< an AVBased::StreamKind, 0 for others
    Attributes attributes;
};

/// The coding of that code; one without codec, kind and attributes when nobody knows it.
const Coding& findCoding(int code);

/// What the disc says about a stream, in the terms of media files; its id is the stream's PID.
StreamFacts describeStream(const ClipStream& stream);

} // namespace engine
