// SPDX-License-Identifier: GPL-2.0-or-later
#include "libavlog.h"

#include "enginelink/log.h"
#include "libav.h"

#include <mutex>
#include <new>

namespace engine {

namespace {

void receiveFromLibav(void* object, int level, const char* format, va_list arguments)
{
    if (level > AV_LOG_WARNING || !logIsOpen())
        return;
    const AVClass* type = object ? *static_cast<const AVClass* const*>(object) : nullptr;
    try {
        logFormatted(type ? type->item_name(object) : "libav", format, arguments);
    } catch (const std::bad_alloc&) {
        return; // no exception may pass through libav; the line is lost
    }
}

} // namespace

void joinLibavLog()
{
    static std::once_flag once;
    std::call_once(once, [] { av_log_set_callback(receiveFromLibav); });
}

} // namespace engine
