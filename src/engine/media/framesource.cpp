// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/framesource.h"

namespace engine {

bool FrameSource::readFrame(std::int64_t* positionMs, AVBased::IAVFrame** frame,
                            std::int32_t* flags, std::int32_t /*mode*/)
{
    const bool isRead = readNext();
    *frame = m_frame.picture ? &m_frame : nullptr;
    *positionMs = m_frameMs;
    *flags = 0;
    return isRead;
}

void FrameSource::release()
{
    delete this;
}

void FrameSource::forgetFrame()
{
    m_frame.picture.reset();
    m_frameMs = -1;
}

} // namespace engine
