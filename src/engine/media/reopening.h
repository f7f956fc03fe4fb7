// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/bytesource.h"
#include "media/mediasource.h"
#include "media/streamdescription.h"

#include <memory>
#include <optional>
#include <vector>

namespace engine {

/// What is kept of a media file after it was described, so that its pictures can be taken without
/// another look for its streams.
struct Reopening
{
    const AVInputFormat* format = nullptr;
    MediaSource::Span span;
    std::shared_ptr<const std::vector<VideoTrack>> tracks; ///< shared with the sources

    /// The same as bytes, for another process of this program.
    Bytes toBytes() const;

    /// Nothing when the bytes are not of toBytes().
    static std::optional<Reopening> fromBytes(const std::uint8_t* bytes, std::size_t size);
};

} // namespace engine
