// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/protection.h"

#include "media/mp4protection.h"

#include <cstring>

namespace engine {

namespace {

/// Keys under which demuxers tell of protection in a file's or a stream's metadata.
const char* const containerKeys[] = {"ASF_Protection_Type", "ASF_Key_ID", "ASF_License_URL",
                                     "encryption"};
const char* const streamKeys[] = {"enc_key_id"};

template <size_t N>
bool hasAnyKey(const AVDictionary* metadata, const char* const (&keys)[N])
{
    for (const char* key : keys) {
        if (av_dict_get(metadata, key, nullptr, 0))
            return true;
    }
    return false;
}

bool isProtectedStream(const AVStream* stream)
{
    const std::uint32_t tag = stream->codecpar->codec_tag;
    return tag == MKTAG('d', 'r', 'm', 's') || tag == MKTAG('d', 'r', 'm', 'i') ||
           hasAnyKey(stream->metadata, streamKeys) ||
           sideDataOf(*stream, AV_PKT_DATA_ENCRYPTION_INIT_INFO, 0);
}

bool isMp4(const AVFormatContext& context)
{
    return std::strstr(context.iformat->name, "mp4") != nullptr;
}

} // namespace

bool isProtected(const AVFormatContext& context, const std::string& path, Deadline& deadline)
{
    if (hasAnyKey(context.metadata, containerKeys))
        return true;
    for (unsigned i = 0; i < context.nb_streams; ++i) {
        if (isProtectedStream(context.streams[i]))
            return true;
    }
    return isMp4(context) && mp4DeclaresProtection(path, deadline);
}

} // namespace engine
