// SPDX-License-Identifier: GPL-2.0-or-later
#include "libav.h"

namespace engine {

std::string errorText(int code)
{
    char text[AV_ERROR_MAX_STRING_SIZE] = "";
    av_strerror(code, text, sizeof(text));
    return text;
}

} // namespace engine
