// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "picture/frame.h"
#include "vspavbased/iavsource.h"

namespace engine {

/// What all sources of frames have in common: the frame that was read last stays theirs, and is
/// given once more when there is no other.
class FrameSource : public AVBased::IAVSource
{
public:
    bool readFrame(std::int64_t* positionMs, AVBased::IAVFrame** frame, std::int32_t* flags,
                   std::int32_t mode) final;
    void release() final;

protected:
    FrameSource() = default;
    virtual ~FrameSource() = default;

    /// Puts the next frame into `m_frame` and its time into `m_frameMs`. False, and what was there
    /// stays, when there is none.
    virtual bool readNext() = 0;

    /// To be called by seek().
    void forgetFrame();

    AVBased::IAVFrame m_frame;
    std::int64_t m_frameMs = -1; ///< -1 for unknown
};

} // namespace engine
