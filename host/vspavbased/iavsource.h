// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/vspavbasedglobal.h"

namespace AVBased {

/// A decoded frame, known to the engine alone. Owned by its source and valid until the source's
/// next seek() or readFrame().
class IAVFrame;

/// Decodes the frames of one movie.
class IAVSource
{
public:
    virtual void reserved0() {}

    /// Moves to `positionMs` milliseconds from the movie's start.
    virtual void seek(std::int32_t positionMs) = 0;

    virtual void reserved2() {}
    virtual void reserved3() {}
    virtual void reserved4() {}
    virtual void reserved5() {}

    /// Decodes the next frame. `frame` receives it, or null when this call delivered none.
    ///
    /// False when no frame can be read any more: the end, an error, or no progress within the time
    /// that one picture may take. The last frame since the seek, if any, is then given once more,
    /// so that a movie of one frame still has a picture.
    ///
    /// `positionMs` receives the frame's time from the movie's start, -1 when unknown; `flags`
    /// receives 0; `mode` is 1.
    virtual bool readFrame(std::int64_t* positionMs, IAVFrame** frame, std::int32_t* flags,
                           std::int32_t mode) = 0;

    virtual void reserved7() {}

    /// Ends the source.
    virtual void release() = 0;

protected:
    ~IAVSource() {}
};

} // namespace AVBased
