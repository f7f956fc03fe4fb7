// SPDX-License-Identifier: GPL-2.0-or-later
#include "libav.h"

#include <new>

namespace engine {

FramePtr makeFrame(int pixelFormat, int width, int height)
{
    FramePtr frame(av_frame_alloc());
    if (!frame)
        throw std::bad_alloc();
    frame->format = pixelFormat;
    frame->width = width;
    frame->height = height;
    if (av_frame_get_buffer(frame.get(), 0) < 0)
        throw std::bad_alloc();
    return frame;
}

std::string errorText(int code)
{
    char text[AV_ERROR_MAX_STRING_SIZE] = "";
    av_strerror(code, text, sizeof(text));
    return text;
}

} // namespace engine
